#pragma once

#include "doc/TreeNode.h"

#include <QAbstractItemModel>
#include <QHash>
#include <QVariant>

#include <cstdint>
#include <memory>
#include <vector>

/// The nodes of the member tree: the root, under it the members, under each member its branches,
/// and under these the dates of the records. It holds what it is given and reads no database; who
/// fills it asks IsLoaded first.
///
/// Siblings stand in the order of their text, ignoring case. A member whose name changes keeps its
/// place. Adding, removing and changing one member costs one binary search, and for a new or a gone
/// one the move of the pointers behind it (8 bytes for each). A view asks for every open row again
/// after that, so index, flags and hasChildren are quick.
class CMemberTreeModel : public QAbstractItemModel
{
    Q_OBJECT
public:
    /// The code of a node, an int: the ID of a member, else a CTreeNode.
    static constexpr int kCodeRole = Qt::UserRole;

    struct CName
    {
        std::int32_t m_lMemberID = 0; ///< positive
        QString m_strName;
    };

    explicit CMemberTreeModel(QObject* parent = nullptr);
    ~CMemberTreeModel() override;

    /// Back to the root alone.
    void Reset();
    /// Adds members where their names belong; those that are there already stay as they are.
    void AddMembers(std::vector<CName> const& names);
    /// Shows that there is no member, unless one is there.
    void ShowNoMembers();
    bool HasMember(std::int32_t memberID) const { return m_members.contains(memberID); }
    bool RemoveMember(std::int32_t memberID);
    /// Changes the name and the ID of a member that is there. Another member that has the new ID
    /// goes: it must have lost it.
    void ChangeMember(std::int32_t memberID, CName const& to);

    QModelIndex Root() const { return createIndex(0, 0); }
    QModelIndex Member(std::int32_t memberID) const;
    /// A branch of a member: kWorkoutsNode, kEvaluationsNode or kBodyCompsNode.
    QModelIndex Branch(std::int32_t memberID, CTreeNode kind) const;
    bool IsLoaded(QModelIndex const& branch) const;
    /// Gives a branch its records, which may be none; it counts as loaded then.
    void SetRecords(QModelIndex const& branch, std::vector<QString> dates);
    /// Takes the records of a branch away; it is not loaded any more.
    void Unload(QModelIndex const& branch);
    /// The ID of the member that a node is or belongs to; 0 for those of no member.
    std::int32_t MemberIDOf(QModelIndex const& node) const;

    QModelIndex index(int row, int column, QModelIndex const& parent = {}) const override;
    QModelIndex parent(QModelIndex const& child) const override;
    int rowCount(QModelIndex const& parent = {}) const override;
    int columnCount(QModelIndex const& parent = {}) const override;
    bool hasChildren(QModelIndex const& parent = {}) const override;
    QVariant data(QModelIndex const& node, int role = Qt::DisplayRole) const override;
    QVariant headerData(
        int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;
    Qt::ItemFlags flags(QModelIndex const& node) const override;

private:
    // An index points to what its parent is. It never holds the row of a member, which changes
    // whenever another member comes or goes.
    struct CParent;
    struct CMember;
    struct CBranch;
    using CMembers = std::vector<std::unique_ptr<CMember>>;

    static bool StandsBefore(CMember const& left, CMember const& right);
    static CMember const& Itself(std::unique_ptr<CMember> const& member);
    CMembers Sorted(std::vector<CName> const& names);
    void HideNoMembers();
    int RowOf(CMember const& member) const;
    CMember* MemberOf(QModelIndex const& node) const;
    CBranch* BranchOf(QModelIndex const& node) const;
    CParent const* ParentFor(QModelIndex const& node) const;
    int CodeOf(QModelIndex const& node) const;
    QString TextOf(QModelIndex const& node) const;

    std::unique_ptr<CParent> const m_root;
    CMembers m_lstMembers; // as they stand in the tree
    QHash<std::int32_t, CMember*> m_members; // by their IDs
    std::uint32_t m_nNextTurn = 0;
    bool m_bNoneFound = false;
    QVariant const m_boldFont;
};
