#include "bench/RawList.h"

#include "bench/RawMember.h"

#include <QHeaderView>
#include <QTreeView>
#include <QVBoxLayout>

#include <algorithm>
#include <chrono>

using namespace Qt::StringLiterals;

namespace
{

constexpr int kNameColumns = 3;
constexpr int kStationValues = 13;
constexpr std::int64_t kDay = 86'400;
constexpr char const* kNames = "m.last_name, m.first_name, m.middle_initial, ";

QString DateText(std::int64_t seconds)
{
    constexpr auto kFirst = std::chrono::sys_days(std::chrono::year(1899) / 12 / 30);
    std::chrono::year_month_day const date(kFirst + std::chrono::days(seconds / kDay));
    return QString::asprintf("%02u/%02u/%02d", static_cast<unsigned>(date.month()),
        static_cast<unsigned>(date.day()), static_cast<int>(date.year()) % 100);
}

QString TimeText(std::int64_t seconds)
{
    auto const minutes = static_cast<int>(seconds % kDay / 60);
    return QString::asprintf("%02d:%02d", minutes / 60, minutes % 60);
}

} // namespace

CRawSelection const& RawMembers()
{
    using C = CRawSelection::CColumn;
    static CRawSelection const members
        = {"r.last_name, r.first_name, r.middle_initial, r.member_id, r.workout_number, r.status, "
           "e.expire_date",
            "members", "LEFT JOIN enrollments AS e ON e.member_id = r.member_id",
            "r.last_name COLLATE NOCASE, r.first_name COLLATE NOCASE, "
            "r.middle_initial COLLATE NOCASE, r.id",
            {{C::name, 0}, {C::number, 3}, {C::number, 4}, {C::status, 5}, {C::date, 6}}};
    return members;
}

CRawSelection const& RawWorkouts()
{
    using C = CRawSelection::CColumn;
    static CRawSelection const workouts = [] {
        CRawSelection made
            = {kNames + std::string("r.member_id, r.check_in, r.check_out, r.circuits"), "workouts",
                "LEFT JOIN members AS m ON m.member_id = r.member_id", "r.check_in, r.id",
                {{C::name, 0}, {C::number, 3}, {C::date, 4}, {C::time, 4}, {C::time, 5},
                    {C::minutes, 4}, {C::number, 6}}};
        for (int station = 1; station < kStationValues; ++station) {
            made.columns += ", r.station" + std::to_string(station);
            made.shown.push_back({C::number, 6 + station});
        }
        return made;
    }();
    return workouts;
}

CRawListModel::CRawListModel(CRawDatabase const& raw, CRawSelection const& selection)
    : m_raw(raw)
    , m_selection(selection)
    , m_row(raw, selection.Rows(" WHERE r.id = ?"))
{
    CRawStatement const select(raw, selection.Keys());
    while (select.Step()) {
        m_keys.push_back(select.Integer(0));
    }
}

int CRawListModel::rowCount(QModelIndex const& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_keys.size());
}

int CRawListModel::columnCount(QModelIndex const& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_selection.shown.size());
}

QVariant CRawListModel::data(QModelIndex const& cell, int role) const
{
    if (role != Qt::DisplayRole) {
        return {};
    }
    auto const& row = RowAt(cell.row());
    auto const& column = m_selection.shown[static_cast<std::size_t>(cell.column())];
    auto const* const value
        = &row.numbers[static_cast<std::size_t>(std::max(column.from - kNameColumns, 0))];
    using C = CRawSelection::CColumn;
    switch (column.kind) {
    case C::name:
        return QString::fromStdString(
            row.name[0] + ", " + row.name[1] + (row.name[2].empty() ? "" : " ") + row.name[2]);
    case C::number:
        return QString::number(*value);
    case C::status:
        return *value != 0 ? u"Current"_s : u"Past"_s;
    case C::date:
        return DateText(*value);
    case C::time:
        return TimeText(*value);
    case C::minutes:
        return QString::number(std::max<std::int64_t>(value[1] - value[0], 0) / 60);
    }
    return {};
}

CRawListModel::CRow const& CRawListModel::RowAt(int row) const
{
    int const first = row - row % kBlockRows;
    auto& block = m_blocks[static_cast<std::size_t>(row / kBlockRows) % m_blocks.size()];
    if (block.first != first) {
        Read(block, first);
    }
    return block.rows[static_cast<std::size_t>(row - first)];
}

void CRawListModel::Read(CBlock& block, int first) const
{
    block.first = first;
    block.rows.clear();
    m_raw.Run("BEGIN"); // one look for changes of others instead of one for each row
    for (int row = first; row < std::min(first + kBlockRows, rowCount()); ++row) {
        m_row.Bind(1, m_keys[static_cast<std::size_t>(row)]);
        m_row.Step();
        auto& to = block.rows.emplace_back();
        for (int i = 0; i < kNameColumns; ++i) {
            to.name[static_cast<std::size_t>(i)] = m_row.Text(i);
        }
        for (int i = kNameColumns; i < m_row.Columns(); ++i) {
            to.numbers.push_back(m_row.Integer(i));
        }
        m_row.Reset();
    }
    m_raw.Run("COMMIT");
    ++m_nBlocksRead;
}

CRawListWindow::CRawListWindow(CRawDatabase const& raw, CRawSelection const& selection,
    QSize const& viewSize, std::vector<int> const& widths)
    : m_model(raw, selection)
    , m_pView(new QTreeView)
{
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins({});
    layout->addWidget(m_pView);
    m_pView->setRootIsDecorated(false);
    m_pView->setUniformRowHeights(true);
    m_pView->setItemsExpandable(false);
    m_pView->setAllColumnsShowFocus(true);
    m_pView->setVerticalScrollMode(QAbstractItemView::ScrollPerItem);
    m_pView->setModel(&m_model);
    m_pView->header()->setStretchLastSection(false);
    for (std::size_t column = 0; column < widths.size(); ++column) {
        m_pView->setColumnWidth(static_cast<int>(column), widths[column]);
    }
    resize(viewSize);
}

void StoreListedMembers(int count)
{
    CRawDatabase const raw(MemberPath());
    AddMembers(raw, count);
    raw.Run("UPDATE members SET first_name = char(65 + id * 31 % 26) || 'atharine', "
            "middle_initial = char(65 + id % 26), last_name = char(65 + id * 7919 % 26) || "
            "substr('eatherstone', 1, 3 + id * 13 % 9) || char(97 + id * 17 % 26) || "
            "CASE id % 40 WHEN 0 THEN ' Lee' WHEN 1 THEN '-Lee' ELSE '' END, "
            "status = id % 10 <> 0;"
            "INSERT INTO profiles (member_id, address, city, state, zip, phone, email, "
            "emergency_name, emergency_phone, physician, release, employee, birthday, sex, goals, "
            "medical_history) SELECT member_id, '4711 Evergreen Terrace', 'Springfield', 'WA', "
            "'98101-1234', '(555) 555-0101', 'katharine.q@example.org', 'John Featherstonehaugh', "
            "'(555) 555-0102', 'Dr. Elizabeth Q. Hamilton', 1, 0, 3000000000, 0, 21, 5 "
            "FROM members;"
            "INSERT INTO enrollments (member_id, enroll_date, expire_date, period, incentive) "
            "SELECT member_id, 3980000000, 3980000000 + id * 7919 % 1000 * 86400, 3, 1 "
            "FROM members;"
            "PRAGMA wal_checkpoint(TRUNCATE)");
}

void StoreListedWorkouts(int members, int count)
{
    CRawDatabase const raw(MemberPath());
    raw.Run(("WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < "
        + std::to_string(count)
        + ") INSERT INTO workouts (member_id, workout_ok, class_index, check_in, check_out, "
          "circuits, station1, station2, station3, station4, station5, station6, station7, "
          "station8, station9, station10, station11, station12) SELECT i * 7919 % "
        + std::to_string(members)
        + " + 1, i % 7 <> 0, 1, 3900000000 + i * 300, 3900000000 + i * 300 + i % 90 * 60, 3, "
          "i % 200, 20, 30, 40, 50, 60, 70, 80, 90, 100, 110, 120 FROM n")
                .c_str());
    raw.Run("PRAGMA wal_checkpoint(TRUNCATE)");
}

std::size_t ReadRawKeys(CRawDatabase const& raw, std::string const& sql)
{
    CRawStatement const select(raw, sql);
    std::vector<std::int64_t> keys;
    while (select.Step()) {
        keys.push_back(select.Integer(0));
    }
    return keys.size();
}

std::size_t ScanRaw(CRawDatabase const& raw, CRawSelection const& selection)
{
    CRawStatement const select(raw, selection.Rows());
    std::size_t sum = 0;
    std::array<std::string, kNameColumns> texts;
    while (select.Step()) {
        for (int i = 0; i < kNameColumns; ++i) {
            auto& text = texts[static_cast<std::size_t>(i)];
            text = select.Text(i);
            sum += text.size();
        }
        for (int i = kNameColumns; i < select.Columns(); ++i) {
            sum += static_cast<std::size_t>(select.Integer(i));
        }
    }
    return sum;
}
