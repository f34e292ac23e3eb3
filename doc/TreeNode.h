#pragma once

class CDAOEFSet;

/// What a node of the member tree is. A member's node carries the member's ID instead, which is
/// positive. The codes of the branches also name the kinds of record.
enum CTreeNode
{
    kMembersNode = -10, ///< the root; as a kind of record: members
    kWorkoutsNode = -9,
    kEvaluationsNode = -8,
    kBodyCompsNode = -7,
    kItemNode = -6, ///< a member's profile, or one record under a branch
    kNoneFoundNode = -5 ///< stands where nothing was found; as a kind of record: any other
};

/// The kind of record that a record set holds: the branch that shows it.
CTreeNode TreeNodeOf(CDAOEFSet const& set);
