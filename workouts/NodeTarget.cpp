#include "workouts/NodeTarget.h"

#include "doc/CorvanaDoc.h"
#include "store/sets/SetCloser.h"
#include "ui/Convert.h"

#include <QCoreApplication>

#include <limits>

using namespace Qt::StringLiterals;

namespace
{

struct CTips
{
    Q_DECLARE_TR_FUNCTIONS(CTips)
};

/// 0 for what no whole number can hold: another program may have written anything.
int Truncated(double value)
{
    constexpr double kMost = std::numeric_limits<int>::max();
    return value >= -kMost && value <= kMost ? static_cast<int>(value) : 0;
}

QString MemberTip(CDAOMem& set, std::int32_t memberID)
{
    CSetCloser const close(set);
    if (set.FindMember(CDAOSmMem::idMember, memberID) == 0) {
        return {};
    }
    return CTips::tr("ID: %1").arg(memberID)
        + (set.m_Status != 0 ? CTips::tr(", Status: Current") : CTips::tr(", Status: Past"))
        + CTips::tr(", Expiration: ") + ToQt(set.m_ExpireDate.DateStrLongYear());
}

QString WorkoutTip(CDAOWk& set, std::int32_t memberID, CEFOleDateTime const& checkIn)
{
    CSetCloser const close(set);
    if (set.FindWks(memberID, checkIn) == 0) {
        return {};
    }
    return CTips::tr("Total Minutes: %1").arg(set.TotalMinutes())
        + (set.m_bWorkoutOK ? CTips::tr(", Status: OK") : CTips::tr(", Status: Not OK"));
}

QString EvaluationTip(CDAOSmEval& set, std::int32_t memberID, CEFOleDateTime const& date)
{
    CSetCloser const close(set);
    if (set.FindEvals(memberID, date) == 0) {
        return {};
    }
    return CTips::tr("Resting HR: %1, BP: %2/%3, Wt: %4")
        .arg(set.m_nRestingHR)
        .arg(set.m_nSystolic)
        .arg(set.m_nDiastolic)
        .arg(Truncated(set.m_dWeight));
}

QString BodyCompTip(CDAOBodyComp& set, std::int32_t memberID, CEFOleDateTime const& date)
{
    CSetCloser const close(set);
    if (set.FindBodyComps(memberID, date) == 0) {
        return {};
    }
    return CTips::tr("Body Fat%: %1, Wt: %2")
        .arg(QString::number(set.m_dPercentFat, 'f', 2))
        .arg(Truncated(set.m_dWeight));
}

} // namespace

QString TipOf(CCorvanaDoc& doc, CNodeTarget const& target)
{
    auto const memberID = target.m_lMemberID;
    if (target.m_kind == kMembersNode) {
        return MemberTip(doc.m_setMem, memberID);
    }
    auto const date = CEFOleDateTime::Parse(FromQt(target.m_strDate));
    if (!date.ChkStatus()) {
        return {};
    }
    switch (target.m_kind) {
    case kWorkoutsNode:
        return WorkoutTip(doc.m_setWk, memberID, date);
    case kEvaluationsNode:
        return EvaluationTip(doc.m_setSmEval, memberID, date);
    default:
        return BodyCompTip(doc.m_setBodyComp, memberID, date);
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
