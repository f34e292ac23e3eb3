#pragma once

#include "doc/RecordEditor.h"
#include "doc/RowSnapshot.h"

#include <cstdint>

class CCorvanaDoc;
struct CEvaluationRecord;
struct CEvaluationValues;

/// Reads an evaluation for its form and writes it back: its row, its skinfolds and its progressive
/// lifts, which have one number, in one transaction. What others did to it in between is noticed
/// and not written over, unless that is asked for. Uses the document's record sets and leaves them
/// closed. Costs three look-ups, and one pass over the member's evaluations to find the one before.
class CEvaluationEditor : public CRecordEditor
{
public:
    /// The document and the record must outlive the editor. Number 0 is a new evaluation.
    CEvaluationEditor(CCorvanaDoc& doc, CEvaluationRecord& record, std::int32_t evalID);

    /// Fills the record, of which the caller has set the member's ID. False when that cannot be
    /// read, or when there is no such evaluation any more.
    bool Load();
    CSaveOutcome Save() override;
    void TakeOver() override { m_known = m_found; }

private:
    /// The evaluation as it stands in the tables, to see whether it is still the one that was read.
    struct CState
    {
        CRowSnapshot m_summary; ///< of no row when there is no such evaluation
        CRowSnapshot m_lifts;
        CRowSnapshot m_folds;

        bool operator==(CState const&) const = default;
    };

    bool Find(std::int32_t evalID, CState& state);
    CEvaluationValues Values() const;
    bool FindLast();
    bool Begin();
    void TakeValues();
    bool Write();
    bool Fail(CDbStatus const& status);

    CCorvanaDoc& m_doc;
    CEvaluationRecord& m_record;
    std::int32_t const m_lEvalID;
    CState m_known; ///< as the form was filled from it
    CState m_found; ///< as the last Save found it
};
