#include "doc/CheckInModel.h"

#include "store/sets/DAOChkIn.h"
#include "store/sets/SetCloser.h"
#include "ui/Convert.h"

#include <algorithm>
#include <iterator>
#include <tuple>
#include <utility>

namespace
{

// What a timer does must not hold up the user for longer than a blink. An open file needs no wait.
constexpr std::chrono::milliseconds kWait{100};

} // namespace

bool CCheckInModel::CRow::StandsBefore(CRow const& other) const
{
    return std::tie(m_dtCheckIn, m_nKey) < std::tie(other.m_dtCheckIn, other.m_nKey);
}

// ---- reading

CDbStatus CCheckInModel::Refresh(CDAOChkIn& set)
{
    CRows rows;
    auto status = Read(set, rows);
    if (status) {
        if (rows.empty()) {
            rows.emplace_back();
        }
        Show(std::move(rows));
    }
    return status;
}

CDbStatus CCheckInModel::Read(CDAOChkIn& set, CRows& rows)
{
    CDbStatus status;
    if (CDatabaseSession::Get().Open(DataFile::checkIn, status, kWait) == nullptr) {
        return status;
    }
    CSetCloser const close(set);
    auto const now = CEFOleDateTime::GetCurrentTime();
    int const count = set.FindChkIns();
    rows.reserve(static_cast<std::size_t>(count));
    for (int i = 0; i < count && set.LastStatus(); ++i) {
        auto const key = set.CurrentKey();
        if (key && set.m_lMemberID != 0) {
            rows.push_back({*key, set.m_dtCheckIn, set.m_strFirstName, set.m_strLastName,
                MinutesBetween(set.m_dtCheckIn, now), set.m_lMemberID, set.m_lWorkoutNo});
        }
        set.Op(CDAOEFSet::opMoveNext);
    }
    return set.LastStatus();
}

int CCheckInModel::RowOf(std::int64_t key) const
{
    auto const found = std::ranges::find(m_rows, key, &CRow::m_nKey);
    return found == m_rows.end() ? -1 : static_cast<int>(found - m_rows.begin());
}

// ---- what changed

/// Both lists stand in the same order, so one walk through them finds what came and went.
void CCheckInModel::Show(CRows rows)
{
    std::size_t at = 0; // how far the walk is in the rows shown
    auto next = rows.begin();
    while (next != rows.end() || at < m_rows.size()) {
        auto const shown = std::next(m_rows.begin(), static_cast<std::ptrdiff_t>(at));
        auto const gone = std::find_if_not(shown, m_rows.end(),
            [&](CRow const& row) { return next == rows.end() || row.StandsBefore(*next); });
        auto const come = std::find_if_not(next, rows.end(),
            [&](CRow const& row) { return at == m_rows.size() || row.StandsBefore(m_rows[at]); });
        auto const first = static_cast<int>(at);
        if (gone != shown) {
            beginRemoveRows({}, first, first + static_cast<int>(gone - shown) - 1);
            m_rows.erase(shown, gone);
            endRemoveRows();
        } else if (come != next) {
            beginInsertRows({}, first, first + static_cast<int>(come - next) - 1);
            m_rows.insert(shown, std::move_iterator(next), std::move_iterator(come));
            endInsertRows();
            at += static_cast<std::size_t>(come - next);
            next = come;
        } else {
            Change(at++, std::move(*next++));
        }
    }
}

/// A signal for each cell: a view repaints the whole of itself for a range.
void CCheckInModel::Change(std::size_t row, CRow&& to)
{
    auto const from = std::exchange(m_rows[row], std::move(to));
    auto const& now = m_rows[row];
    auto const tell = [&](bool changed, int column) {
        if (changed) {
            auto const cell = index(static_cast<int>(row), column);
            Q_EMIT dataChanged(cell, cell);
        }
    };
    tell(from.m_strFirstName != now.m_strFirstName || from.m_strLastName != now.m_strLastName,
        colName);
    tell(from.m_nMinutes != now.m_nMinutes, colMinutes);
    tell(from.m_lMemberID != now.m_lMemberID, colMemberID);
    tell(from.m_lWorkoutNo != now.m_lWorkoutNo, colWorkoutNo);
}

// ---- what views ask

int CCheckInModel::rowCount(QModelIndex const& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
}

int CCheckInModel::columnCount(QModelIndex const& parent) const
{
    return parent.isValid() ? 0 : colCount;
}

QVariant CCheckInModel::data(QModelIndex const& cell, int role) const
{
    if (!checkIndex(cell, CheckIndexOption::IndexIsValid)) {
        return {};
    }
    auto const& row = m_rows[static_cast<std::size_t>(cell.row())];
    if (role == kMemberIDRole) {
        return row.m_lMemberID;
    }
    return role == Qt::DisplayRole ? TextOf(row, cell.column()) : QVariant();
}

QString CCheckInModel::TextOf(CRow const& row, int column) const
{
    if (row.IsNone()) {
        return column == colDate ? tr("None Found") : QString();
    }
    switch (column) {
    case colDate:
        return ToQt(row.m_dtCheckIn.DateTimeStrShortYear());
    case colName:
        return tr("%1 %2").arg(ToQt(row.m_strFirstName), ToQt(row.m_strLastName));
    case colMinutes:
        return QString::number(row.m_nMinutes);
    case colMemberID:
        return QString::number(row.m_lMemberID);
    default:
        return QString::number(row.m_lWorkoutNo);
    }
}

QVariant CCheckInModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole) {
        return {};
    }
    switch (section) {
    case colDate:
        return tr("Date");
    case colName:
        return tr("Name");
    case colMinutes:
        return tr("Min");
    case colMemberID:
        return tr("ID #");
    default:
        return tr("Workout #");
    }
}
