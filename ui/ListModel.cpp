#include "ui/ListModel.h"

#include "ui/Convert.h"

#include <algorithm>
#include <iterator>
#include <numeric>
#include <span>
#include <utility>

namespace
{

constexpr int kSliceMs = 8; // of a search, between which the user's keys are handled
constexpr int kShowMs = 150; // a view lays out all its rows when some are added

bool IsPlain(std::string const& text)
{
    return std::ranges::all_of(text, [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

char Lower(char c)
{
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

} // namespace

CListModel::CListModel(
    CListRows& rows, std::vector<CListColumn> columns, CListPictures pictures, QObject* parent)
    : QAbstractTableModel(parent)
    , m_rows(rows)
    , m_columns(std::move(columns))
    , m_pictures(std::move(pictures))
{
    m_timer.setInterval(0);
    connect(&m_timer, &QTimer::timeout, this, &CListModel::GoOnSearching);
}

void CListModel::Reset(std::function<void()> const& change)
{
    beginResetModel();
    m_nShown = 0; // a view may be laid out while a wait window handles events
    m_blocks.clear();
    change();
    m_blocks.clear();
    endResetModel();
}

void CListModel::Fill(int count, CStep const& step)
{
    Reset([&] {
        m_nFound = count;
        m_sorted.clear();
        if (m_nSortColumn >= 0
            && !m_rows.Found().Sort(m_columns[static_cast<std::size_t>(m_nSortColumn)].m_sort,
                m_bSortedDown, m_sorted)) {
            m_nSortColumn = -1;
        }
        m_timer.stop();
        SearchAll();
        if (IsNarrowed()) {
            SearchFor(-1, step);
        } else {
            step(count);
        }
        SortMatches();
    });
}

bool CListModel::Sort(int column, bool down)
{
    std::vector<std::int32_t> sorted;
    if (column >= 0
        && !m_rows.Found().Sort(m_columns[static_cast<std::size_t>(column)].m_sort, down, sorted)) {
        return false;
    }
    Reset([&] {
        m_nSortColumn = column;
        m_bSortedDown = down;
        m_sorted = std::move(sorted);
        SortMatches();
    });
    return true;
}

std::vector<bool> CListModel::AreMatches() const
{
    std::vector<bool> areMatches(static_cast<std::size_t>(m_nFound));
    for (auto const place : m_matches) {
        areMatches[static_cast<std::size_t>(place)] = true;
    }
    return areMatches;
}

/// Puts all matches found so far in the order shown.
void CListModel::SortMatches()
{
    if (IsNarrowed()) {
        auto const areMatches = AreMatches();
        m_matches = PlacesFound();
        std::erase_if(
            m_matches, [&](auto place) { return !areMatches[static_cast<std::size_t>(place)]; });
    }
    m_nShown = static_cast<int>(m_matches.size());
    m_blocks.clear();
}

// ---- narrowing

void CListModel::Narrow(QString const& text)
{
    auto const folded = text.toCaseFolded().simplified();
    if (folded == m_strNarrowedTo) {
        return;
    }
    bool const isLonger = IsNarrowed() && folded.startsWith(m_strNarrowedTo);
    m_strNarrowedTo = folded;
    m_lstWords.clear();
    for (auto const& word : folded.split(u' ', Qt::SkipEmptyParts)) {
        m_lstWords.push_back(FromQt(word));
    }
    m_bPlainWords = std::ranges::all_of(m_lstWords, IsPlain);
    Reset([&] {
        m_timer.stop();
        if (isLonger) { // only what was left of all, and what was not looked at yet
            auto const areMatches = AreMatches();
            auto const searched
                = std::next(m_toSearch.begin(), static_cast<std::ptrdiff_t>(m_nSearched));
            auto const left = std::remove_if(m_toSearch.begin(), searched,
                [&](std::int32_t place) { return !areMatches[static_cast<std::size_t>(place)]; });
            m_toSearch.erase(left, searched);
            m_matches.clear();
            m_nSearched = 0;
        } else {
            SearchAll();
        }
        SearchFor(kSliceMs, {});
        SortMatches();
    });
    Q_EMIT narrowed();
}

/// By key: in the order of names, most rows would be read from a page of the file of their own.
void CListModel::SearchAll()
{
    m_matches.clear();
    m_toSearch.clear();
    if (IsNarrowed() && m_nFound > 0) {
        m_toSearch = m_rows.Found().PlacesByKey();
    }
    m_nSearched = 0;
}

/// Searches for so long, or to the end when that is negative; the timer goes on when more is left.
/// True when all is searched.
bool CListModel::SearchFor(int ms, CStep const& step)
{
    QElapsedTimer clock;
    clock.start();
    while (m_nSearched < m_toSearch.size() && (ms < 0 || !clock.hasExpired(ms))) {
        auto const some
            = std::span(m_toSearch)
                  .subspan(m_nSearched)
                  .first(std::min(CDatabase::kBlockRows, m_toSearch.size() - m_nSearched));
        m_rows.Read(some, [&](std::size_t i, CListRows::Row row) {
            if (row == CListRows::Row::read && Matches()) {
                m_matches.push_back(some[i]);
            }
            return true;
        });
        m_nSearched += some.size();
        if (step) {
            step(static_cast<int>(some.size()));
        }
    }
    bool const isDone = m_nSearched == m_toSearch.size();
    if (isDone) {
        m_timer.stop();
    } else {
        m_timer.start();
    }
    return isDone;
}

/// Whether the row that is read has all words in its cells.
bool CListModel::Matches() const
{
    m_strRow.clear();
    for (auto const& column : m_columns) {
        m_strRow += column.m_fnText();
        m_strRow += '\n';
    }
    if (m_bPlainWords) {
        std::ranges::transform(m_strRow, m_strRow.begin(), Lower);
    } else {
        m_strRow = FromQt(ToQt(m_strRow).toCaseFolded());
    }
    return std::ranges::all_of(
        m_lstWords, [&](auto const& word) { return m_strRow.find(word) != std::string::npos; });
}

void CListModel::GoOnSearching()
{
    bool const isDone = SearchFor(kSliceMs, {});
    int const matches = static_cast<int>(m_matches.size());
    if (!isDone && m_lastShown.isValid() && !m_lastShown.hasExpired(kShowMs)) {
        return;
    }
    m_lastShown.start();
    if (matches > m_nShown) {
        ShowNewMatches();
    }
    Q_EMIT narrowed();
}

/// They come in between those shown; what views have marked stays the same row.
void CListModel::ShowNewMatches()
{
    beginInsertRows({}, m_nShown, static_cast<int>(m_matches.size()) - 1);
    m_nShown = static_cast<int>(m_matches.size());
    m_blocks.clear(); // who was told before may have read the last one, which was not full
    endInsertRows();
    Q_EMIT layoutAboutToBeChanged();
    auto const marked = persistentIndexList();
    std::vector<std::int32_t> places;
    for (auto const& cell : marked) {
        places.push_back(PlaceOf(cell.row()));
    }
    SortMatches();
    QModelIndexList moved;
    for (qsizetype i = 0; i < marked.size(); ++i) {
        auto const found = std::ranges::find(m_matches, places[static_cast<std::size_t>(i)]);
        moved += index(static_cast<int>(found - m_matches.begin()), marked[i].column());
    }
    changePersistentIndexList(marked, moved);
    Q_EMIT layoutChanged();
}

// ---- places

std::int32_t CListModel::PlaceOf(int row) const
{
    auto const at = static_cast<std::size_t>(row);
    return IsNarrowed() ? m_matches[at] : m_sorted.empty() ? row : m_sorted[at];
}

int CListModel::RowOf(std::int64_t key) const
{
    auto const place = key != 0 ? m_rows.Found().PlaceOf(key) : -1;
    if (place < 0 || (!IsNarrowed() && m_sorted.empty())) {
        return place;
    }
    auto const& places = IsNarrowed() ? m_matches : m_sorted;
    auto const end = std::next(places.begin(), rowCount());
    auto const found = std::find(places.begin(), end, place);
    return found == end ? -1 : static_cast<int>(found - places.begin());
}

std::vector<std::int32_t> CListModel::PlacesShown() const
{
    return IsNarrowed() ? m_matches : PlacesFound();
}

std::vector<std::int32_t> CListModel::PlacesFound() const
{
    if (!m_sorted.empty()) {
        return m_sorted;
    }
    std::vector<std::int32_t> places(static_cast<std::size_t>(m_nFound));
    std::iota(places.begin(), places.end(), 0);
    return places;
}

// ---- what views ask

int CListModel::rowCount(QModelIndex const& parent) const
{
    return parent.isValid() ? 0 : IsNarrowed() ? m_nShown : m_nFound;
}

int CListModel::columnCount(QModelIndex const& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_columns.size());
}

QVariant CListModel::data(QModelIndex const& cell, int role) const
{
    bool const isPicture
        = role == Qt::DecorationRole || role == Qt::ToolTipRole || role == Qt::AccessibleTextRole;
    if ((role != Qt::DisplayRole && !(isPicture && cell.column() == 0))
        || !checkIndex(cell, CheckIndexOption::IndexIsValid)) {
        return {};
    }
    auto const& block = BlockOf(cell.row());
    auto const row = static_cast<std::size_t>(cell.row() - block.first);
    auto const& text
        = block.texts[row * m_columns.size() + static_cast<std::size_t>(cell.column())];
    if (role == Qt::DisplayRole) {
        return text;
    }
    if (block.pictures[row] < 0) {
        return {};
    }
    auto const picture = static_cast<std::size_t>(block.pictures[row]);
    if (role == Qt::DecorationRole) {
        return m_pictures.m_icons[picture];
    }
    auto const& meaning = m_pictures.m_texts[picture];
    return role == Qt::ToolTipRole ? meaning : tr("%1, %2").arg(text, meaning);
}

QVariant CListModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    bool const isHeading = orientation == Qt::Horizontal && section >= 0 && section < columnCount()
        && role == Qt::DisplayRole;
    return isHeading ? m_columns[static_cast<std::size_t>(section)].m_strHeading : QVariant();
}

CListModel::CBlock const& CListModel::BlockOf(int row) const
{
    int const first = row - row % kBlockRows;
    auto const known = std::ranges::find(m_blocks, first, &CBlock::first);
    if (known != m_blocks.end()) {
        m_blocks.splice(m_blocks.begin(), m_blocks, known);
    } else {
        if (m_blocks.size() == kBlocks) {
            m_blocks.pop_back();
        }
        m_blocks.emplace_front().first = first;
        ReadBlock(m_blocks.front());
    }
    return m_blocks.front();
}

void CListModel::ReadBlock(CBlock& block) const
{
    std::vector<std::int32_t> places;
    for (int row = block.first; row < std::min(block.first + kBlockRows, rowCount()); ++row) {
        places.push_back(PlaceOf(row));
    }
    block.texts.resize(places.size() * m_columns.size());
    block.pictures.assign(places.size(), -1);
    m_rows.Read(places, [&](std::size_t i, CListRows::Row row) {
        auto* const texts = &block.texts[i * m_columns.size()];
        if (row == CListRows::Row::read) {
            std::ranges::transform(
                m_columns, texts, [](auto const& column) { return ToQt(column.m_fnText()); });
            block.pictures[i] = m_pictures.m_fnOfRow ? m_pictures.m_fnOfRow() : -1;
        } else {
            *texts = row == CListRows::Row::gone ? tr("(deleted)") : tr("(cannot be read)");
        }
        return true;
    });
}
