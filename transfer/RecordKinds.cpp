#include "transfer/RecordKinds.h"

#include "doc/DocViews.h"
#include "store/services/RecordTransfer.h"

#include <algorithm>

QString NameOf(CRecordKind kind)
{
    switch (kind) {
    case CRecordKind::members:
        return CCorvanaDoc::tr("members");
    case CRecordKind::workouts:
        return CCorvanaDoc::tr("workouts");
    case CRecordKind::evaluations:
        return CCorvanaDoc::tr("evaluations");
    default:
        return CCorvanaDoc::tr("body compositions");
    }
}

CDAOFileSet& SetOf(CCorvanaDoc& doc, CRecordKind kind)
{
    switch (kind) {
    case CRecordKind::members:
        return doc.m_setMem;
    case CRecordKind::workouts:
        return doc.m_setWk;
    case CRecordKind::evaluations:
        return doc.m_setEval;
    default:
        return doc.m_setBodyComp;
    }
}

int FindAll(CCorvanaDoc& doc, CRecordKind kind)
{
    switch (kind) {
    case CRecordKind::members:
        return doc.m_setMem.FindAllMembers(true);
    case CRecordKind::workouts:
        return doc.m_setWk.FindWks(0);
    case CRecordKind::evaluations:
        return doc.m_setEval.FindEvals(CDAOSmEval::idMember, 0);
    default:
        return doc.m_setBodyComp.FindBodyComps(0);
    }
}

QString DataFileFilter()
{
    return CCorvanaDoc::tr("Data Files (*.dat);;Text Files (*.txt);;Backup Files (*.bak);;"
                           "All Files (*)");
}

void FinishDeletion(CCorvanaDoc& doc, CDAOEFSet const& set, std::vector<std::int32_t> memberIDs)
{
    EmptyLog();
    std::ranges::sort(memberIDs);
    memberIDs.erase(std::unique(memberIDs.begin(), memberIDs.end()), memberIDs.end());
    auto* const views = doc.Views();
    if (views == nullptr) {
        return;
    }
    auto const kind = TreeNodeOf(set);
    for (auto const memberID : memberIDs) {
        if (kind == kMembersNode) {
            views->RemoveMemberNode(memberID);
        } else {
            views->RefreshMemberNode(memberID, kind, 0);
        }
    }
}
