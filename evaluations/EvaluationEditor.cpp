#include "evaluations/EvaluationEditor.h"

#include "doc/CorvanaDoc.h"
#include "evaluations/EvaluationRecord.h"
#include "store/sets/SetCloser.h"

#include <limits>

namespace
{

/// The document's record sets of an evaluation, closed when this goes.
class CEvaluationSets
{
public:
    explicit CEvaluationSets(CCorvanaDoc& doc)
        : m_closeEval(doc.m_setSmEval)
        , m_closeCirc(doc.m_setCirc)
        , m_closeFolds(doc.m_setEvalBodyComp)
    {
    }

private:
    CSetCloser const m_closeEval;
    CSetCloser const m_closeCirc;
    CSetCloser const m_closeFolds;
};

/// Toward zero; the largest or smallest number for what none can hold.
std::int32_t Truncated(double value)
{
    using CLimits = std::numeric_limits<std::int32_t>;
    return value >= CLimits::max() ? CLimits::max()
        : value > CLimits::min()   ? static_cast<std::int32_t>(value)
                                   : CLimits::min();
}

} // namespace

CEvaluationEditor::CEvaluationEditor(
    CCorvanaDoc& doc, CEvaluationRecord& record, std::int32_t evalID)
    : m_doc(doc)
    , m_record(record)
    , m_lEvalID(evalID)
{
}

// ---- reading

bool CEvaluationEditor::Load()
{
    CEvaluationSets const close(m_doc);
    auto const memberID = m_record.m_member.m_lMemberID;
    if (!ReadMemberFacts(m_doc, memberID, m_record.m_member)) {
        return Fail(m_doc.m_setMem.LastStatus());
    }
    if (m_lEvalID != 0) {
        if (!Find(m_lEvalID, m_known)) {
            return false;
        }
        if (!m_known.m_summary.IsThere()) {
            return Fail({DbError::gone, "There is no such record any more."});
        }
        m_record.m_now = Values();
    }
    return FindLast();
}

bool CEvaluationEditor::Find(std::int32_t evalID, CState& state)
{
    auto& doc = m_doc;
    state.m_summary
        = CRowSnapshot(doc.m_setSmEval, doc.m_setSmEval.FindEvals(CDAOSmEval::idEval, evalID) != 0);
    state.m_lifts = CRowSnapshot(doc.m_setCirc, doc.m_setCirc.FindCircuit(evalID) != 0);
    state.m_folds
        = CRowSnapshot(doc.m_setEvalBodyComp, doc.m_setEvalBodyComp.FindEvalBodyComp(evalID) != 0);
    for (CDAOEFSet const* const set : std::initializer_list<CDAOEFSet const*>{
             &doc.m_setSmEval, &doc.m_setCirc, &doc.m_setEvalBodyComp}) {
        if (!set->LastStatus()) {
            return Fail(set->LastStatus());
        }
    }
    return true;
}

/// Of the evaluation that was just found.
CEvaluationValues CEvaluationEditor::Values() const
{
    constexpr int kMinute = 60;
    auto const& eval = m_doc.m_setSmEval;
    CEvaluationValues values{
        .m_basics
        = {eval.m_dWeight, eval.m_dHeight, eval.m_dtEvalDate, eval.m_nActLevel, eval.m_nClassIndex},
        .m_nRestingHR = eval.m_nRestingHR,
        .m_nSystolic = eval.m_nSystolic,
        .m_nDiastolic = eval.m_nDiastolic,
        .m_dTrunkFlexion = eval.m_dTrunkFlexion,
        .m_nSitUps = eval.m_nSitUps,
        .m_nAbCrunches = eval.m_nAbCrunches,
        .m_nStepTest = eval.m_nStepTest,
        .m_nRunMinutes = eval.m_nRunSeconds / kMinute,
        .m_nRunSeconds = eval.m_nRunSeconds % kMinute,
        .m_nErgometer = eval.m_nErgometer,
        .m_dPercentFat = m_doc.m_setEvalBodyComp.m_dPercentFat,
        .m_folds = SkinfoldsOf(m_doc.m_setEvalBodyComp),
    };
    for (int station = 0; station < m_doc.m_circuit.m_nNumStations; ++station) {
        values.m_nLifts[static_cast<std::size_t>(station)]
            = Truncated(m_doc.m_setCirc.GetStnVal(station));
    }
    return values;
}

/// Goes through the member's evaluations: all of them are its history, the one before this one, for
/// a new one the latest, is the last.
bool CEvaluationEditor::FindLast()
{
    CDAOEval set; // the document's own may stand on the row that is edited
    m_record.m_history.clear();
    std::int32_t last = 0;
    int const count = set.FindEvals(CDAOSmEval::idMember, m_record.m_member.m_lMemberID);
    for (int row = 0; row < count && set.LastStatus(); ++row) {
        if (set.m_lEvalID != 0) { // else the row is gone or damaged
            m_record.m_history.push_back({set.m_dtEvalDate, set.m_dWeight, set.m_dPercentFat});
            bool const isBefore = m_lEvalID == 0
                || (set.m_lEvalID != m_lEvalID
                    && set.m_dtEvalDate <= m_record.m_now.m_basics.m_dtDate);
            last = isBefore ? set.m_lEvalID : last;
        }
        set.Op(CDAOEFSet::opMoveNext);
    }
    if (!set.LastStatus()) {
        return Fail(set.LastStatus());
    }
    if (CState state; last != 0) {
        if (!Find(last, state)) {
            return false;
        }
        m_record.m_last = Values();
    }
    return true;
}

// ---- writing

CSaveOutcome CEvaluationEditor::Save()
{
    CEvaluationSets const close(m_doc);
    auto* const database = CDatabaseSession::Get().Open(DataFile::member, m_status);
    if (database == nullptr) {
        return CSaveOutcome::failed;
    }
    CTransaction transaction(*database);
    m_status = transaction.Status();
    if (!m_status) {
        return CSaveOutcome::failed;
    }
    if (m_known.m_summary.IsThere()) {
        if (!Find(m_lEvalID, m_found)) {
            return CSaveOutcome::failed;
        }
        if (!m_found.m_summary.IsThere()) {
            return CSaveOutcome::deleted;
        }
        if (m_found != m_known) {
            return CSaveOutcome::changed;
        }
    }
    if (!Begin() || !Write()) {
        return CSaveOutcome::failed;
    }
    m_status = transaction.Commit();
    return m_status ? CSaveOutcome::saved : CSaveOutcome::failed;
}

/// Begins the change of the rows, or new ones where there are none.
bool CEvaluationEditor::Begin()
{
    auto& doc = m_doc;
    bool const isNew = !m_known.m_summary.IsThere();
    auto const evalID = isNew ? doc.m_setSmEval.GenerateIDNum() : m_lEvalID;
    auto const begin = [](CDAOEFSet& set, bool isThere) {
        if (!isThere) {
            set.OpenSet(false);
        }
        return set.Op(isThere ? CDAOEFSet::opEdit : CDAOEFSet::opAddNew);
    };
    if (evalID == 0 || !begin(doc.m_setSmEval, !isNew)
        || !begin(doc.m_setCirc, !isNew && m_found.m_lifts.IsThere())
        || !begin(doc.m_setEvalBodyComp, !isNew && m_found.m_folds.IsThere())) {
        return Fail({DbError::failed, "The evaluation could not be stored."});
    }
    doc.m_setSmEval.m_lEvalID = doc.m_setCirc.m_lEvalID = doc.m_setEvalBodyComp.m_lEvalID = evalID;
    doc.m_setSmEval.m_lMemberID = m_record.m_member.m_lMemberID;
    TakeValues();
    return true;
}

void CEvaluationEditor::TakeValues()
{
    constexpr int kMinute = 60;
    auto const& now = m_record.m_now;
    auto& eval = m_doc.m_setSmEval;
    eval.m_dtEvalDate = now.m_basics.m_dtDate;
    eval.m_dWeight = now.m_basics.m_dWeight;
    eval.m_dHeight = now.m_basics.m_dHeight;
    eval.m_nClassIndex = now.m_basics.m_nClassIndex;
    eval.m_nActLevel = now.m_basics.m_nActLevel;
    eval.m_dTrunkFlexion = now.m_dTrunkFlexion;
    eval.m_nDiastolic = now.m_nDiastolic;
    eval.m_nSystolic = now.m_nSystolic;
    eval.m_nRestingHR = now.m_nRestingHR;
    eval.m_nSitUps = now.m_nSitUps;
    eval.m_nAbCrunches = now.m_nAbCrunches;
    eval.m_nStepTest = now.m_nStepTest;
    eval.m_nErgometer = now.m_nErgometer;
    eval.m_nRunSeconds = now.m_nRunMinutes * kMinute + now.m_nRunSeconds;
    auto& circuit = m_doc.m_setCirc;
    for (int station = 0; station < m_doc.m_circuit.m_nNumStations; ++station) {
        auto const lift = now.m_nLifts[static_cast<std::size_t>(station)];
        if (lift != Truncated(circuit.GetStnVal(station))) { // else its fraction stays
            circuit.SetStnVal(station, lift);
        }
    }
    auto& folds = m_doc.m_setEvalBodyComp;
    folds.m_dPercentFat = now.m_dPercentFat;
    PutSkinfolds(now.m_folds, folds);
}

/// The evaluation comes first: the others hang on it.
bool CEvaluationEditor::Write()
{
    for (CDAOEFSet* const set : std::initializer_list<CDAOEFSet*>{
             &m_doc.m_setSmEval, &m_doc.m_setCirc, &m_doc.m_setEvalBodyComp}) {
        if (!set->Op(CDAOEFSet::opUpdate)) {
            return Fail(set->LastStatus());
        }
    }
    return true;
}

bool CEvaluationEditor::Fail(CDbStatus const& status)
{
    m_status = status ? CDbStatus(DbError::failed, "The evaluation could not be stored.") : status;
    return false;
}
