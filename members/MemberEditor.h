#pragma once

#include "platform/db/Status.h"
#include "platform/db/Value.h"

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

/// What became of a save.
enum class CMemberSave
{
    saved,
    changed, ///< another program changed the member since it was read; nothing was written
    deleted, ///< another program deleted the member since; nothing was written
    memberIDTaken, ///< another member has the ID meanwhile; nothing was written
    workoutNumTaken, ///< the same for the workout number
    failed, ///< Status() tells why; nothing was written
};

/// Reads a member whole into the pages of the editor and writes them back, in one transaction over
/// all tables. What others did to the member in between is noticed and not written over, unless
/// that is asked for. Uses the document's record sets and leaves them closed. Costs a fixed number
/// of look-ups, whatever the number of members.
class CMemberEditor
{
public:
    /// The document and the pages must outlive the editor. memberID is the one that was asked for,
    /// of a member or not.
    CMemberEditor(CCorvanaDoc& doc, CMemberPages const& pages, std::int32_t memberID);

    /// Reads the member, or the defaults of a new one. False when it cannot be read.
    bool Load();
    CMemberSave Save();
    /// After "changed" or "deleted": the next Save writes over what was found, or adds the member
    /// again.
    void TakeOver() { m_known = m_found; }

    /// No member had the ID when it was read or last taken over.
    bool IsNew() const { return m_known.m_lstSummary.empty(); }
    /// What made Load or Save fail.
    CDbStatus const& Status() const { return m_status; }

private:
    using CRow = std::vector<DbValue>;

    /// The member as it stands in the tables, to see whether it is still the one that was read.
    struct CState
    {
        CRow m_lstSummary; ///< empty when there is no such member
        CRow m_lstProfile;
        CRow m_lstEnrollment;
        std::vector<std::pair<std::uint8_t, CRow>> m_lstClasses; ///< with their class indexes
        CRow m_lstMessage;
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
    CMemberSave Check();
    bool WriteRows();
    void TakeSummary();
    void TakeProfile();
    void TakeEnrollment();
    bool WriteClasses() const;
    bool Fail(CDbStatus const& status);

    CCorvanaDoc& m_doc;
    CMemberPages const m_pages;
    std::int32_t const m_lMemberID;
    CDbStatus m_status;
    CState m_known; ///< as the pages were filled from it
    CState m_found; ///< as the last Save found it
};
