#pragma once

#include "ui/ListColumn.h"
#include "ui/ListRows.h"

#include <QAbstractTableModel>
#include <QElapsedTimer>
#include <QIcon>
#include <QString>
#include <QTimer>

#include <array>
#include <cstdint>
#include <functional>
#include <list>
#include <string>
#include <vector>

/// What a list shows beside the texts of a row: one of two pictures, which a screen reader reads.
struct CListPictures
{
    std::function<int()>
        m_fnOfRow; ///< 0 or 1, from the fields of the row that is read; may be empty
    std::array<QIcon, 2> m_icons = {};
    std::array<QString, 2> m_texts = {};
};

/// A window onto the rows of a record set's selection: it reads blocks of rows as views ask for
/// them, keeps the texts of a few hundred, and 4 bytes a row when they are sorted or narrowed.
///
/// Rows are in the order in which they were found, or sorted by the values of a column, and all of
/// them or those that a text narrows them to. A row stays the one of its key whatever other
/// programs do: one that they delete shows that it is deleted, until the list is filled again.
class CListModel : public QAbstractTableModel
{
    Q_OBJECT
public:
    using CStep = std::function<void(int rows)>;

    /// The rows must outlive the model.
    CListModel(CListRows& rows, std::vector<CListColumn> columns, CListPictures pictures,
        QObject* parent = nullptr);

    /// Shows the rows of the set's selection, count of them now, sorted and narrowed as before;
    /// calls step as they are dealt with. Costs nothing for each row, but for what Sort and Narrow
    /// say.
    void Fill(int count, CStep const& step);

    /// Sorts by the values of a column, -1 for the order in which the rows were found. False when
    /// they cannot be read, and nothing changes. One ordered pass over the keys of the selection.
    bool Sort(int column, bool down);
    /// The same from the next Fill on.
    void SortFromNowOn(int column, bool down)
    {
        m_nSortColumn = column;
        m_bSortedDown = down;
    }
    int SortColumn() const { return m_nSortColumn; }
    bool IsSortedDown() const { return m_bSortedDown; }

    /// Shows only rows with each word of a text in one of their cells, ignoring case; with an empty
    /// one all. Looks through the rows in slices while events are handled, those shown already when
    /// the text has only become longer; narrowed() follows each time that rows were shown. Rows
    /// appear at their places in the order shown, as they are found.
    void Narrow(QString const& text);
    bool IsNarrowed() const { return !m_strNarrowedTo.isEmpty(); }
    bool IsNarrowing() const { return m_timer.isActive(); }

    int Found() const { return m_nFound; } ///< rows of the selection
    std::int32_t PlaceOf(int row) const; ///< in the selection
    std::int64_t KeyOf(int row) const { return m_rows.Found().KeyAt(PlaceOf(row)); }
    /// Where the row of that key is shown, -1 when it is not. Looks through the rows.
    int RowOf(std::int64_t key) const;
    /// The places of the rows shown, or of all the selection's, in the order shown.
    std::vector<std::int32_t> PlacesShown() const;
    std::vector<std::int32_t> PlacesFound() const;
    std::vector<CListColumn> const& Columns() const { return m_columns; }

    int rowCount(QModelIndex const& parent = {}) const override;
    int columnCount(QModelIndex const& parent = {}) const override;
    QVariant data(QModelIndex const& cell, int role = Qt::DisplayRole) const override;
    QVariant headerData(
        int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;

Q_SIGNALS:
    void narrowed();

private:
    static constexpr int kBlockRows = 64;
    static constexpr std::size_t kBlocks = 16;
    struct CBlock
    {
        int first = 0;
        std::vector<QString> texts; ///< of its rows, one after another
        std::vector<int> pictures; ///< -1 of rows that are not there
    };

    CBlock const& BlockOf(int row) const;
    void ReadBlock(CBlock& block) const;

    std::vector<bool> AreMatches() const;
    void SortMatches();
    void SearchAll();
    bool SearchFor(int ms, CStep const& step);
    bool Matches() const;
    void GoOnSearching();
    void ShowNewMatches();
    void Reset(std::function<void()> const& change);

    CListRows& m_rows;
    std::vector<CListColumn> const m_columns;
    CListPictures const m_pictures;
    int m_nFound = 0;
    int m_nSortColumn = -1;
    bool m_bSortedDown = false;
    std::vector<std::int32_t> m_sorted; ///< all places in their order; none when as they were found

    QString m_strNarrowedTo; ///< folded; empty when all rows are shown
    std::vector<std::string> m_lstWords; ///< of that text
    bool m_bPlainWords = true; ///< they are ASCII
    std::vector<std::int32_t> m_matches; ///< places of the rows that the text leaves
    int m_nShown = 0; ///< of the matches, in the order shown; newer ones follow
    std::vector<std::int32_t> m_toSearch; ///< by key
    std::size_t m_nSearched = 0;
    QTimer m_timer; ///< to the next slice of a search
    QElapsedTimer m_lastShown;
    mutable std::string m_strRow; ///< all texts of a row
    mutable std::list<CBlock> m_blocks; ///< the one used last in front
};
