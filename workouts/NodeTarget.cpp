#include "workouts/NodeTarget.h"

#include "doc/CorvanaDoc.h"
#include "ui/CellText.h"
#include "ui/Convert.h"

#include <QCoreApplication>

using namespace Qt::StringLiterals;

namespace
{

struct CTips
{
    Q_DECLARE_TR_FUNCTIONS(CTips)
};

QString MemberTip(std::int32_t memberID)
{
    CDAOMem set;
    if (set.FindMember(CDAOSmMem::idMember, memberID) == 0) {
        return {};
    }
    return CTips::tr("ID: %1").arg(memberID)
        + (set.m_Status != 0 ? CTips::tr(", Status: Current") : CTips::tr(", Status: Past"))
        + CTips::tr(", Expiration: ") + ToQt(set.m_ExpireDate.DateStrLongYear());
}

QString WorkoutTip(std::int32_t memberID, CEFOleDateTime const& checkIn)
{
    CDAOWk set;
    if (set.FindWks(memberID, checkIn) == 0) {
        return {};
    }
    return CTips::tr("Total Minutes: %1").arg(set.TotalMinutes())
        + (set.m_bWorkoutOK ? CTips::tr(", Status: OK") : CTips::tr(", Status: Not OK"));
}

QString EvaluationTip(std::int32_t memberID, CEFOleDateTime const& date)
{
    CDAOSmEval set;
    if (set.FindEvals(memberID, date) == 0) {
        return {};
    }
    return CTips::tr("Resting HR: %1, BP: %2/%3, Wt: %4")
        .arg(set.m_nRestingHR)
        .arg(set.m_nSystolic)
        .arg(set.m_nDiastolic)
        .arg(Truncated(set.m_dWeight));
}

QString BodyCompTip(std::int32_t memberID, CEFOleDateTime const& date)
{
    CDAOBodyComp set;
    if (set.FindBodyComps(memberID, date) == 0) {
        return {};
    }
    return CTips::tr("Body Fat%: %1, Wt: %2")
        .arg(QString::number(set.m_dPercentFat, 'f', 2))
        .arg(Truncated(set.m_dWeight));
}

} // namespace

QString TipOf(CNodeTarget const& target)
{
    auto const memberID = target.m_lMemberID;
    if (target.m_kind == kMembersNode) {
        return MemberTip(memberID);
    }
    auto const date = CEFOleDateTime::Parse(FromQt(target.m_strDate));
    if (!date.ChkStatus()) {
        return {};
    }
    switch (target.m_kind) {
    case kWorkoutsNode:
        return WorkoutTip(memberID, date);
    case kEvaluationsNode:
        return EvaluationTip(memberID, date);
    default:
        return BodyCompTip(memberID, date);
    }
}

bool EditTarget(CCorvanaDoc& doc, CNodeTarget const& target)
{
    switch (target.m_kind) {
    case kWorkoutsNode:
        return doc.EditWorkoutAt(target.m_lMemberID, target.m_strDate);
    case kEvaluationsNode:
        return doc.EditEvaluationAt(target.m_lMemberID, target.m_strDate);
    case kBodyCompsNode:
        return doc.EditBodyCompAt(target.m_lMemberID, target.m_strDate);
    default:
        return doc.EditMember(target.m_lMemberID);
    }
}

bool DeleteTarget(CCorvanaDoc& doc, CNodeTarget const& target)
{
    switch (target.m_kind) {
    case kWorkoutsNode:
        return doc.DeleteWorkoutAt(target.m_lMemberID, target.m_strDate);
    case kEvaluationsNode:
        return doc.DeleteEvaluationAt(target.m_lMemberID, target.m_strDate);
    case kBodyCompsNode:
        return doc.DeleteBodyCompAt(target.m_lMemberID, target.m_strDate);
    default:
        return doc.DeleteMember(target.m_lMemberID, {});
    }
}
