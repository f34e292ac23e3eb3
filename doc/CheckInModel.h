#pragma once

#include "platform/db/Status.h"
#include "store/EFOleDateTime.h"

#include <QAbstractTableModel>

#include <cstdint>
#include <string>
#include <vector>

class CDAOChkIn;

/// Who is checked in, a row each, oldest first, as it was read last; the one row "None Found" when
/// nobody is. It reads when it is asked to and keeps no record set.
class CCheckInModel : public QAbstractTableModel
{
    Q_OBJECT
public:
    enum Column
    {
        colDate,
        colName,
        colMinutes,
        colMemberID,
        colWorkoutNo,
        colCount
    };
    /// The member ID of a row, an int; 0 of "None Found".
    static constexpr int kMemberIDRole = Qt::UserRole;

    using QAbstractTableModel::QAbstractTableModel;

    /// Reads the check-ins and tells the views which rows came and went and which cells changed,
    /// each by itself, and nothing about what is as it was. Rows that are gone by the time they are
    /// read, or damaged, are left out. When anything cannot be read the rows stay as they are. One
    /// SELECT, and work for each row; does not wait for a program that uses the file alone.
    CDbStatus Refresh(CDAOChkIn& set);

    /// What stays the row's own as it moves; 0 of "None Found".
    std::int64_t KeyOf(int row) const { return m_rows[static_cast<std::size_t>(row)].m_nKey; }
    /// Where the row of that key stands, -1 when it is not there any more.
    int RowOf(std::int64_t key) const;

    int rowCount(QModelIndex const& parent = {}) const override;
    int columnCount(QModelIndex const& parent = {}) const override;
    QVariant data(QModelIndex const& cell, int role = Qt::DisplayRole) const override;
    QVariant headerData(
        int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;

private:
    struct CRow
    {
        std::int64_t m_nKey = 0;
        CEFOleDateTime m_dtCheckIn;
        std::string m_strFirstName;
        std::string m_strLastName;
        int m_nMinutes = 0; ///< since check-in, when it was read
        std::int32_t m_lMemberID = 0;
        std::int32_t m_lWorkoutNo = 0;

        bool IsNone() const { return m_nKey == 0; }
        /// The order in which check-ins are found.
        bool StandsBefore(CRow const& other) const;
    };
    using CRows = std::vector<CRow>;

    static CDbStatus Read(CDAOChkIn& set, CRows& rows);
    void Show(CRows rows);
    void Change(std::size_t row, CRow&& to);
    QString TextOf(CRow const& row, int column) const;

    CRows m_rows;
};
