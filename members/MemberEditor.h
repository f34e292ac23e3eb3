#pragma once

#include "doc/RecordEditor.h"
#include "doc/RowSnapshot.h"

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

class CCorvanaDoc;
class CMemberEnrollPg;
class CMemberGoalsPg;
class CMemberMedHistPg;
class CMemberProfilePg;

/// The pages of the member editor. Not owned.
struct CMemberPages
{
    CMemberProfilePg& m_profile;
    CMemberEnrollPg& m_enroll;
    CMemberGoalsPg& m_goals;
    CMemberMedHistPg& m_medHist;
};

enum class CTakenNumber
{
    memberID,
    workoutNum
};

/// Reads a member whole into the pages of the editor and writes them back, in one transaction over
/// all tables. What others did to the member in between is noticed and not written over, unless
/// that is asked for. Uses the document's record sets and leaves them closed. Costs a fixed number
/// of look-ups, whatever the number of members.
class CMemberEditor : public CRecordEditor
{
public:
    /// The document and the pages must outlive the editor. memberID is the one that was asked for,
    /// of a member or not.
    CMemberEditor(CCorvanaDoc& doc, CMemberPages const& pages, std::int32_t memberID);

    /// Reads the member, or the defaults of a new one. False when it cannot be read.
    bool Load();
    CSaveOutcome Save() override;
    void TakeOver() override { m_known = m_found; }
    /// After "refused": the number that another member has meanwhile.
    CTakenNumber TakenNumber() const { return m_taken; }

    /// No member had the ID when it was read or last taken over.
    bool IsNew() const { return !m_known.m_summary.IsThere(); }

private:
    /// The member as it stands in the tables, to see whether it is still the one that was read.
    struct CState
    {
        CRowSnapshot m_summary; ///< of no row when there is no such member
        CRowSnapshot m_profile;
        CRowSnapshot m_enrollment;
        std::vector<std::pair<std::uint8_t, CRowSnapshot>> m_lstClasses; ///< with class indexes
        CRowSnapshot m_message;
        std::string m_strMessage;
    };

    bool Find(std::int32_t memberID, CState& state);
    void FindClasses(std::int32_t memberID, CState& state);
    bool Reset();
    void FillProfile();
    void FillEnrollment();
    void FillSlots(std::size_t count);
    bool IsMessageShown() const;
    bool IsAsKnown() const;
    CSaveOutcome Check();
    CSaveOutcome Taken(CTakenNumber number);
    bool WriteRows();
    void TakeSummary();
    void TakeProfile();
    void TakeEnrollment();
    bool WriteClasses() const;
    bool Fail(CDbStatus const& status);

    CCorvanaDoc& m_doc;
    CMemberPages const m_pages;
    std::int32_t const m_lMemberID;
    CTakenNumber m_taken = CTakenNumber::memberID;
    CState m_known; ///< as the pages were filled from it
    CState m_found; ///< as the last Save found it
};
