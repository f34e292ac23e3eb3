#include "workouts/MemberTreeModel.h"

#include <QFont>

#include <algorithm>
#include <array>
#include <cassert>
#include <iterator>

namespace
{

/// What stands under every member, in the order of the texts.
constexpr std::array kBranchCodes = {kBodyCompsNode, kEvaluationsNode, kItemNode, kWorkoutsNode};

QFont BoldFont()
{
    QFont font;
    font.setBold(true); // the view's font in everything else
    return font;
}

} // namespace

struct CMemberTreeModel::CParent
{
    enum class Kind : std::uint8_t
    {
        root,
        member,
        branch
    };

    explicit CParent(Kind kind)
        : m_kind(kind)
    {
    }

    Kind m_kind;
};

struct CMemberTreeModel::CBranch : CParent
{
    CBranch()
        : CParent(Kind::branch)
    {
    }

    CMember* m_pMember = nullptr;
    int m_nRow = 0;
    bool m_bLoaded = false;
    std::vector<QString> m_lstDates;
};

struct CMemberTreeModel::CMember : CParent
{
    using CBranches = std::array<CBranch, kBranchCodes.size()>;

    CMember(CName const& name, std::uint32_t turn)
        : CParent(Kind::member)
        , m_nTurn(turn)
        , m_lMemberID(name.m_lMemberID)
        , m_strName(name.m_strName)
        , m_strPlace(name.m_strName)
    {
    }

    CBranches& Branches()
    {
        if (m_branches == nullptr) {
            m_branches = std::make_unique<CBranches>();
            for (std::size_t row = 0; row < m_branches->size(); ++row) {
                (*m_branches)[row].m_pMember = this;
                (*m_branches)[row].m_nRow = static_cast<int>(row);
            }
        }
        return *m_branches;
    }

    std::uint32_t const m_nTurn; ///< members of one name stand as they came
    std::int32_t m_lMemberID;
    QString m_strName;
    QString const m_strPlace; ///< the name it came with, by which it is found among its siblings
    std::unique_ptr<CBranches> m_branches; ///< made when the first of them is loaded
};

CMemberTreeModel::CMemberTreeModel(QObject* parent)
    : QAbstractItemModel(parent)
    , m_root(std::make_unique<CParent>(CParent::Kind::root))
    , m_boldFont(BoldFont())
{
}

CMemberTreeModel::~CMemberTreeModel() = default;

// ---- members

void CMemberTreeModel::Reset()
{
    beginResetModel();
    m_lstMembers.clear();
    m_members.clear();
    m_bNoneFound = false;
    endResetModel();
}

bool CMemberTreeModel::StandsBefore(CMember const& left, CMember const& right)
{
    int const order = left.m_strPlace.compare(right.m_strPlace, Qt::CaseInsensitive);
    return order != 0 ? order < 0 : left.m_nTurn < right.m_nTurn;
}

CMemberTreeModel::CMember const& CMemberTreeModel::Itself(std::unique_ptr<CMember> const& member)
{
    return *member;
}

/// Makes the members that are new. Names come nearly sorted: only those that fall behind are.
CMemberTreeModel::CMembers CMemberTreeModel::Sorted(std::vector<CName> const& names)
{
    CMembers sorted;
    CMembers late;
    sorted.reserve(names.size());
    m_members.reserve(m_members.size() + static_cast<qsizetype>(names.size()));
    for (auto const& name : names) {
        assert(name.m_lMemberID > 0);
        if (HasMember(name.m_lMemberID)) {
            continue;
        }
        auto member = std::make_unique<CMember>(name, m_nNextTurn++);
        m_members.insert(name.m_lMemberID, member.get());
        bool const isLate = !sorted.empty() && StandsBefore(*member, *sorted.back());
        (isLate ? late : sorted).push_back(std::move(member));
    }
    std::ranges::sort(late, StandsBefore, Itself);
    auto const count = static_cast<std::ptrdiff_t>(sorted.size());
    std::ranges::move(late, std::back_inserter(sorted));
    std::ranges::inplace_merge(sorted, sorted.begin() + count, StandsBefore, Itself);
    return sorted;
}

void CMemberTreeModel::AddMembers(std::vector<CName> const& names)
{
    auto added = Sorted(names);
    if (!added.empty()) {
        HideNoMembers();
    }
    // Each run of new members that no old one parts goes in at once: all of them, as a rule.
    for (auto next = added.begin(); next != added.end();) {
        auto const place = std::ranges::upper_bound(m_lstMembers, **next, StandsBefore, Itself);
        auto const end = place == m_lstMembers.end()
            ? added.end()
            : std::ranges::lower_bound(next, added.end(), **place, StandsBefore, Itself);
        auto const row = static_cast<int>(place - m_lstMembers.begin());
        beginInsertRows(Root(), row, row + static_cast<int>(end - next) - 1);
        m_lstMembers.insert(place, std::move_iterator(next), std::move_iterator(end));
        endInsertRows();
        next = end;
    }
}

void CMemberTreeModel::ShowNoMembers()
{
    if (m_lstMembers.empty() && !m_bNoneFound) {
        beginInsertRows(Root(), 0, 0);
        m_bNoneFound = true;
        endInsertRows();
    }
}

void CMemberTreeModel::HideNoMembers()
{
    if (m_bNoneFound) {
        beginRemoveRows(Root(), 0, 0);
        m_bNoneFound = false;
        endRemoveRows();
    }
}

bool CMemberTreeModel::RemoveMember(std::int32_t memberID)
{
    auto* const member = m_members.value(memberID);
    if (member == nullptr) {
        return false;
    }
    int const row = RowOf(*member);
    beginRemoveRows(Root(), row, row);
    auto const place = m_lstMembers.begin() + row;
    auto const gone = std::move(*place); // lives until no index points to it any more
    m_lstMembers.erase(place);
    m_members.remove(memberID);
    endRemoveRows();
    return true;
}

void CMemberTreeModel::ChangeMember(std::int32_t memberID, CName const& to)
{
    auto* const member = m_members.value(memberID);
    assert(member != nullptr && to.m_lMemberID > 0);
    if (to.m_lMemberID == memberID && to.m_strName == member->m_strName) {
        return;
    }
    if (to.m_lMemberID != memberID) {
        RemoveMember(to.m_lMemberID);
        m_members.remove(memberID);
        m_members.insert(to.m_lMemberID, member);
        member->m_lMemberID = to.m_lMemberID;
    }
    member->m_strName = to.m_strName;
    auto const node = Member(to.m_lMemberID);
    Q_EMIT dataChanged(node, node);
}

int CMemberTreeModel::RowOf(CMember const& member) const
{
    auto const place = std::ranges::lower_bound(m_lstMembers, member, StandsBefore, Itself);
    return static_cast<int>(place - m_lstMembers.begin());
}

QModelIndex CMemberTreeModel::Member(std::int32_t memberID) const
{
    auto const* const member = m_members.value(memberID);
    return member != nullptr ? createIndex(RowOf(*member), 0, m_root.get()) : QModelIndex();
}

// ---- branches

QModelIndex CMemberTreeModel::Branch(std::int32_t memberID, CTreeNode kind) const
{
    auto* const member = m_members.value(memberID);
    auto const* const code = std::ranges::find(kBranchCodes, kind);
    assert(kind != kItemNode && code != kBranchCodes.end());
    return member != nullptr ? createIndex(static_cast<int>(code - kBranchCodes.begin()), 0,
               static_cast<CParent const*>(member))
                             : QModelIndex();
}

bool CMemberTreeModel::IsLoaded(QModelIndex const& branch) const
{
    auto const* const found = BranchOf(branch);
    return found != nullptr && found->m_bLoaded;
}

void CMemberTreeModel::SetRecords(QModelIndex const& branch, std::vector<QString> dates)
{
    Unload(branch);
    auto& records = MemberOf(branch)->Branches()[static_cast<std::size_t>(branch.row())];
    std::ranges::stable_sort(dates);
    beginInsertRows(branch, 0, std::max(static_cast<int>(dates.size()), 1) - 1);
    records.m_lstDates = std::move(dates);
    records.m_bLoaded = true;
    endInsertRows();
}

void CMemberTreeModel::Unload(QModelIndex const& branch)
{
    if (!IsLoaded(branch)) {
        return;
    }
    auto& records = *BranchOf(branch);
    beginRemoveRows(branch, 0, rowCount(branch) - 1);
    records.m_lstDates = {};
    records.m_bLoaded = false;
    endRemoveRows();
}

// ---- nodes

/// What the parent of a node is; null for the root.
CMemberTreeModel::CParent const* CMemberTreeModel::ParentFor(QModelIndex const& node) const
{
    assert(!node.isValid() || node.model() == this);
    return static_cast<CParent const*>(node.constInternalPointer());
}

/// The member that a node is or belongs to; null for those of no member.
CMemberTreeModel::CMember* CMemberTreeModel::MemberOf(QModelIndex const& node) const
{
    auto const* const parent = ParentFor(node);
    if (parent == nullptr || (parent == m_root.get() && m_bNoneFound)) {
        return nullptr;
    }
    switch (parent->m_kind) {
    case CParent::Kind::root:
        return m_lstMembers[static_cast<std::size_t>(node.row())].get();
    case CParent::Kind::member:
        // NOLINTNEXTLINE(cppcoreguidelines-pro-type-const-cast): of this model, which is not const
        return const_cast<CMember*>(static_cast<CMember const*>(parent));
    case CParent::Kind::branch:
        break;
    }
    return static_cast<CBranch const*>(parent)->m_pMember;
}

/// The branch that a node is; null when it is none, or nothing of its member was ever loaded.
CMemberTreeModel::CBranch* CMemberTreeModel::BranchOf(QModelIndex const& node) const
{
    auto const* const parent = ParentFor(node);
    if (parent == nullptr || parent->m_kind != CParent::Kind::member) {
        return nullptr;
    }
    auto const& branches = static_cast<CMember const*>(parent)->m_branches;
    return branches != nullptr ? &(*branches)[static_cast<std::size_t>(node.row())] : nullptr;
}

std::int32_t CMemberTreeModel::MemberIDOf(QModelIndex const& node) const
{
    auto const* const member = MemberOf(node);
    return member != nullptr ? member->m_lMemberID : 0;
}

int CMemberTreeModel::CodeOf(QModelIndex const& node) const
{
    auto const* const parent = ParentFor(node);
    if (parent == nullptr) {
        return kMembersNode;
    }
    switch (parent->m_kind) {
    case CParent::Kind::root:
        return m_bNoneFound ? int(kNoneFoundNode) : MemberIDOf(node);
    case CParent::Kind::member:
        return kBranchCodes[static_cast<std::size_t>(node.row())];
    case CParent::Kind::branch:
        break;
    }
    return static_cast<CBranch const*>(parent)->m_lstDates.empty() ? kNoneFoundNode : kItemNode;
}

QString CMemberTreeModel::TextOf(QModelIndex const& node) const
{
    switch (CodeOf(node)) {
    case kMembersNode:
        return tr("Members");
    case kWorkoutsNode:
        return tr("Workouts");
    case kEvaluationsNode:
        return tr("Evaluations");
    case kBodyCompsNode:
        return tr("Body Compositions");
    case kNoneFoundNode:
        return tr("None Found");
    case kItemNode:
        break;
    default:
        return MemberOf(node)->m_strName;
    }
    auto const* const parent = ParentFor(node);
    return parent->m_kind == CParent::Kind::member
        ? tr("Profile")
        : static_cast<CBranch const*>(parent)->m_lstDates[static_cast<std::size_t>(node.row())];
}

QModelIndex CMemberTreeModel::index(int row, int column, QModelIndex const& parent) const
{
    if (row < 0 || column != 0 || parent.column() > 0 || row >= rowCount(parent)) {
        return {};
    }
    if (!parent.isValid()) {
        return Root();
    }
    auto const* const above = ParentFor(parent);
    if (above == nullptr) {
        return createIndex(row, column, m_root.get());
    }
    return above->m_kind == CParent::Kind::root
        ? createIndex(row, column, static_cast<CParent const*>(MemberOf(parent)))
        : createIndex(row, column, static_cast<CParent const*>(BranchOf(parent)));
}

QModelIndex CMemberTreeModel::parent(QModelIndex const& child) const
{
    auto const* const parent = ParentFor(child);
    if (parent == nullptr) {
        return {};
    }
    switch (parent->m_kind) {
    case CParent::Kind::root:
        return Root();
    case CParent::Kind::member:
        return createIndex(RowOf(*static_cast<CMember const*>(parent)), 0, m_root.get());
    case CParent::Kind::branch:
        break;
    }
    auto const& branch = *static_cast<CBranch const*>(parent);
    return createIndex(branch.m_nRow, 0, static_cast<CParent const*>(branch.m_pMember));
}

int CMemberTreeModel::rowCount(QModelIndex const& parent) const
{
    if (!parent.isValid()) {
        return 1;
    }
    auto const* const above = ParentFor(parent);
    if (above == nullptr) {
        return m_bNoneFound ? 1 : static_cast<int>(m_lstMembers.size());
    }
    if (above->m_kind == CParent::Kind::root) {
        return m_bNoneFound ? 0 : static_cast<int>(kBranchCodes.size());
    }
    auto const* const branch = BranchOf(parent);
    return branch != nullptr && branch->m_bLoaded
        ? std::max(static_cast<int>(branch->m_lstDates.size()), 1)
        : 0;
}

int CMemberTreeModel::columnCount(QModelIndex const&) const
{
    return 1;
}

bool CMemberTreeModel::hasChildren(QModelIndex const& parent) const
{
    auto const* const above = ParentFor(parent);
    if (above == nullptr) {
        return true;
    }
    switch (above->m_kind) {
    case CParent::Kind::root:
        return !m_bNoneFound;
    case CParent::Kind::member:
        return kBranchCodes[static_cast<std::size_t>(parent.row())] != kItemNode;
    case CParent::Kind::branch:
        break;
    }
    return false;
}

QVariant CMemberTreeModel::data(QModelIndex const& node, int role) const
{
    if (!node.isValid()) {
        return {};
    }
    switch (role) {
    case Qt::DisplayRole:
        return TextOf(node);
    case Qt::FontRole:
        return CodeOf(node) > 0 ? m_boldFont : QVariant();
    case kCodeRole:
        return CodeOf(node);
    default:
        return {};
    }
}

QVariant CMemberTreeModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    bool const isTitle = section == 0 && orientation == Qt::Horizontal && role == Qt::DisplayRole;
    return isTitle ? QVariant(tr("Members")) : QVariant(); // not shown, but read out
}

Qt::ItemFlags CMemberTreeModel::flags(QModelIndex const& node) const
{
    if (!node.isValid()) {
        return {};
    }
    auto const flags = Qt::ItemIsSelectable | Qt::ItemIsEnabled;
    return hasChildren(node) ? flags : flags | Qt::ItemNeverHasChildren;
}
