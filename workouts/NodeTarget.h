#pragma once

#include "doc/TreeNode.h"

#include <QString>

#include <cstdint>

class CCorvanaDoc;

/// What an action on a node of the member tree is about: a member, or one record of a member.
struct CNodeTarget
{
    CTreeNode m_kind = kMembersNode; ///< or the branch of the record
    std::int32_t m_lMemberID = 0;
    QString m_strDate; ///< of the record, as the node shows it
};

/// A summary in one line; empty when the member or the record is not found. Reads one row, beside
/// the record sets of the document: one of those may be open for a list.
QString TipOf(CNodeTarget const& target);
/// Edits or deletes it; true when something was changed.
bool EditTarget(CCorvanaDoc& doc, CNodeTarget const& target);
bool DeleteTarget(CCorvanaDoc& doc, CNodeTarget const& target);
