#pragma once

#include "bench/RawSqlite.h"

#include <QAbstractTableModel>
#include <QDialog>

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

class QTreeView;

// A list as someone would write it who needs speed and nothing else: what the program's lists are
// measured against.

/// What is listed, in plain SQL over a table r and what is joined to it.
struct CRawSelection
{
    /// One column on the screen, and where it begins among those of the SELECT.
    struct CColumn
    {
        enum Kind
        {
            name, ///< last name, first name, middle initial
            number,
            status,
            date,
            time,
            minutes ///< between this column and the next one
        };
        Kind kind;
        int from;
    };

    std::string columns; ///< three texts, the name, and then numbers
    std::string table;
    std::string join; ///< "LEFT JOIN ..."
    std::string order; ///< the terms of an ORDER BY
    std::vector<CColumn> shown;

    /// By its order, or by further terms before it.
    std::string Keys(std::string const& by = {}, bool isJoined = false) const
    {
        return "SELECT r.id FROM " + table + " AS r " + (isJoined ? join : "") + " ORDER BY " + by
            + order;
    }
    std::string Rows(char const* which = "") const
    {
        return "SELECT " + columns + " FROM " + table + " AS r " + join + which;
    }
};

CRawSelection const& RawMembers();
CRawSelection const& RawWorkouts();

/// One pass for the keys; rows by blocks as they are needed, texts of cells as they are asked for.
class CRawListModel : public QAbstractTableModel
{
public:
    CRawListModel(CRawDatabase const& raw, CRawSelection const& selection);

    int rowCount(QModelIndex const& parent = {}) const override;
    int columnCount(QModelIndex const& parent = {}) const override;
    QVariant data(QModelIndex const& cell, int role = Qt::DisplayRole) const override;
    int BlocksRead() const { return m_nBlocksRead; }

private:
    static constexpr int kBlockRows = 256;
    struct CRow
    {
        std::array<std::string, 3> name;
        std::vector<std::int64_t> numbers; ///< from the fourth column on
    };
    struct CBlock
    {
        int first = -1;
        std::vector<CRow> rows;
    };

    CRow const& RowAt(int row) const;
    void Read(CBlock& block, int first) const;

    CRawDatabase const& m_raw;
    CRawSelection const& m_selection;
    CRawStatement const m_row;
    std::vector<std::int64_t> m_keys;
    mutable std::array<CBlock, 4> m_blocks;
    mutable int m_nBlocksRead = 0;
};

/// The model in a window of its own.
class CRawListWindow : public QDialog
{
public:
    CRawListWindow(CRawDatabase const& raw, CRawSelection const& selection, QSize const& viewSize,
        std::vector<int> const& widths);

    QTreeView& View() const { return *m_pView; }
    bool IsPainted() const { return m_model.BlocksRead() > 0; }

private:
    CRawListModel m_model;
    QTreeView* m_pView;
};

/// Members of many names, in no order, each with a profile and an enrollment.
void StoreListedMembers(int count);
/// As years leave them: in the order of time, members mixed.
void StoreListedWorkouts(int members, int count);

/// Runs a SELECT of keys and keeps them; returns how many.
std::size_t ReadRawKeys(CRawDatabase const& raw, std::string const& sql);
/// Reads all rows of a selection, each text made a string; returns a sum over them, so that nothing
/// is read in vain.
std::size_t ScanRaw(CRawDatabase const& raw, CRawSelection const& selection);
