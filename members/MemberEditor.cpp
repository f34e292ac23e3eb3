#include "members/MemberEditor.h"

#include "doc/CorvanaDoc.h"
#include "members/MemberEnrollPg.h"
#include "members/MemberGoalsPg.h"
#include "members/MemberMedHistPg.h"
#include "members/MemberProfilePg.h"
#include "store/services/MemberServices.h"
#include "store/sets/SetCloser.h"

#include <algorithm>
#include <array>

namespace
{

// Fields of the profile page and where they are stored, for both ways.

template <typename Set>
struct CStoredText
{
    std::string CMemberProfilePg::*m_page;
    std::string Set::*m_stored;
};

constexpr std::array kNames = {
    CStoredText<CDAOSmMem>{&CMemberProfilePg::m_strFirstName, &CDAOSmMem::m_FirstName},
    CStoredText<CDAOSmMem>{&CMemberProfilePg::m_strMiddleInit, &CDAOSmMem::m_MiddleInit},
    CStoredText<CDAOSmMem>{&CMemberProfilePg::m_strLastName, &CDAOSmMem::m_LastName},
};

constexpr std::array kProfileTexts = {
    CStoredText<CDAOProf>{&CMemberProfilePg::m_strAddress, &CDAOProf::m_Address},
    CStoredText<CDAOProf>{&CMemberProfilePg::m_strCity, &CDAOProf::m_City},
    CStoredText<CDAOProf>{&CMemberProfilePg::m_strState, &CDAOProf::m_State},
    CStoredText<CDAOProf>{&CMemberProfilePg::m_strZip, &CDAOProf::m_Zip},
    CStoredText<CDAOProf>{&CMemberProfilePg::m_strPhone, &CDAOProf::m_Phone},
    CStoredText<CDAOProf>{&CMemberProfilePg::m_strEmail, &CDAOProf::m_Email},
    CStoredText<CDAOProf>{&CMemberProfilePg::m_strEmergName, &CDAOProf::m_EmergName},
    CStoredText<CDAOProf>{&CMemberProfilePg::m_strEmergPhone, &CDAOProf::m_EmergPhone},
    CStoredText<CDAOProf>{&CMemberProfilePg::m_strPhysician, &CDAOProf::m_Physician},
};

struct CStoredFlag
{
    bool CMemberProfilePg::*m_page;
    std::uint8_t CDAOProf::*m_stored;
};

constexpr std::array kProfileFlags = {
    CStoredFlag{&CMemberProfilePg::m_bMale, &CDAOProf::m_Sex},
    CStoredFlag{&CMemberProfilePg::m_bEmployee, &CDAOProf::m_Employee},
    CStoredFlag{&CMemberProfilePg::m_bRelease, &CDAOProf::m_Release},
};

/// The document's record sets of a member, closed when this goes.
class CMemberSets
{
public:
    explicit CMemberSets(CCorvanaDoc& doc)
        : m_closeSmMem(doc.m_setSmMem)
        , m_closeProf(doc.m_setProf)
        , m_closeEnr(doc.m_setEnr)
        , m_closeCls(doc.m_setCls)
        , m_closeMsg(doc.m_setMsg)
    {
    }

private:
    CSetCloser const m_closeSmMem;
    CSetCloser const m_closeProf;
    CSetCloser const m_closeEnr;
    CSetCloser const m_closeCls;
    CSetCloser const m_closeMsg;
};

/// Another program's way of saying yes stays as it is.
void SetFlag(std::uint8_t& field, bool value)
{
    if ((field != 0) != value) {
        field = value ? 1 : 0;
    }
}

bool Begin(CDAOEFSet& set, bool isThere)
{
    return set.Op(isThere ? CDAOEFSet::opEdit : CDAOEFSet::opAddNew);
}

} // namespace

CMemberEditor::CMemberEditor(CCorvanaDoc& doc, CMemberPages const& pages, std::int32_t memberID)
    : m_doc(doc)
    , m_pages(pages)
    , m_lMemberID(memberID)
{
}

// ---- reading

bool CMemberEditor::Load()
{
    CMemberSets const close(m_doc);
    if (!Find(m_lMemberID, m_known)) {
        return false;
    }
    auto const classes = m_known.m_lstClasses.size();
    if (IsNew() && !Reset()) {
        return Fail({DbError::failed, "The defaults of the centre cannot be read."});
    }
    FillProfile();
    FillEnrollment();
    FillSlots(classes);
    return true;
}

bool CMemberEditor::Find(std::int32_t memberID, CState& state)
{
    auto& doc = m_doc;
    state.m_summary = CRowSnapshot(
        doc.m_setSmMem, doc.m_setSmMem.FindMember(CDAOSmMem::idMember, memberID) != 0);
    state.m_profile = CRowSnapshot(doc.m_setProf, doc.m_setProf.FindProfile(memberID) != 0);
    state.m_enrollment = CRowSnapshot(doc.m_setEnr, doc.m_setEnr.FindEnrollment(memberID) != 0);
    state.m_message = CRowSnapshot(doc.m_setMsg, doc.m_setMsg.FindMessages(memberID) != 0);
    state.m_strMessage = doc.m_setMsg.m_Message;
    FindClasses(memberID, state);
    for (CDAOEFSet const* const set : std::initializer_list<CDAOEFSet const*>{
             &doc.m_setSmMem, &doc.m_setProf, &doc.m_setEnr, &doc.m_setMsg, &doc.m_setCls}) {
        if (!set->LastStatus()) {
            return Fail(set->LastStatus());
        }
    }
    return true;
}

void CMemberEditor::FindClasses(std::int32_t memberID, CState& state)
{
    auto& set = m_doc.m_setCls;
    state.m_lstClasses.clear();
    int const count = set.FindClasses(memberID);
    for (int row = 0; row < count; ++row) {
        state.m_lstClasses.emplace_back(set.m_ClassIndex, CRowSnapshot(set, true));
        set.Op(CDAOEFSet::opMoveNext);
    }
    if (count > 0) {
        set.Op(CDAOEFSet::opMoveFirst);
    } else {
        set.ClearFields();
    }
}

/// A new member starts with the defaults, and in the class that is worked with.
bool CMemberEditor::Reset()
{
    auto& classes = m_doc.m_setCls;
    if (!ResetMember(m_doc.m_setSmMem, m_doc.m_setEnr, m_doc.m_setProf, classes, m_doc.m_setMsg)) {
        return false;
    }
    classes.m_Category += m_doc.m_strDefCategory;
    classes.m_Course += m_doc.m_strDefCourse;
    classes.m_Section += m_doc.m_strDefSection;
    return true;
}

void CMemberEditor::FillProfile()
{
    auto& page = m_pages.m_profile;
    auto const& member = m_doc.m_setSmMem;
    auto const& profile = m_doc.m_setProf;
    page.m_lMemberID = m_lMemberID;
    page.m_lWorkoutNum = member.m_WorkoutNum;
    for (auto const& name : kNames) {
        page.*name.m_page = member.*name.m_stored;
    }
    page.m_bCurrent = member.m_Status != 0;
    for (auto const& text : kProfileTexts) {
        page.*text.m_page = profile.*text.m_stored;
    }
    for (auto const& flag : kProfileFlags) {
        page.*flag.m_page = profile.*flag.m_stored != 0;
    }
    page.m_dtBirthday = profile.m_Birthday;
    page.m_strMessage = m_doc.m_setMsg.m_Message;
    m_pages.m_goals.SetMask(profile.m_Goals);
    m_pages.m_medHist.SetMask(profile.m_MedHist);
}

void CMemberEditor::FillEnrollment()
{
    auto& page = m_pages.m_enroll;
    auto const& enrollment = m_doc.m_setEnr;
    page.m_dtEnroll = enrollment.m_EnrollDate;
    page.m_dtExpire = enrollment.m_ExpireDate;
    page.m_nEnrollPer = enrollment.m_EnrollPer;
    page.m_bIncentive = enrollment.m_Incentive != 0;
    page.m_lMemberID = m_lMemberID;
}

void CMemberEditor::FillSlots(std::size_t count)
{
    auto& set = m_doc.m_setCls;
    auto& slots = m_pages.m_enroll.m_lstSlots;
    // A new member's first class stands in the fields without a row.
    auto const filled = IsNew() ? 1 : std::min(count, slots.size());
    if (filled == 0) {
        set.m_ClassIndex = set.GenerateIndex(m_lMemberID, 1);
        slots[0] = EmptySlot(m_doc.m_setDef, set.m_ClassIndex);
    }
    for (std::size_t i = 0; i < filled; ++i) {
        if (i > 0) {
            set.Op(CDAOEFSet::opMoveNext);
        }
        slots[i] = {set.m_Category, set.m_Course, set.m_Section, set.m_GradeStat, set.m_Orient != 0,
            set.m_ReEval, set.m_Other, set.m_ClassIndex};
    }
    // The seed counts from the last class that was read.
    for (auto i = std::max<std::size_t>(filled, 1); i < slots.size(); ++i) {
        auto const seed = static_cast<std::uint8_t>(set.m_ClassIndex + i);
        slots[i] = EmptySlot(m_doc.m_setDef, set.GenerateIndex(m_lMemberID, seed));
    }
}

// ---- writing

CSaveOutcome CMemberEditor::Save()
{
    CMemberSets const close(m_doc);
    auto* const database = CDatabaseSession::Get().Open(DataFile::member, m_status);
    if (database == nullptr) {
        return CSaveOutcome::failed;
    }
    CTransaction transaction(*database);
    m_status = transaction.Status();
    if (!m_status || !Find(IsNew() ? m_pages.m_profile.m_lMemberID : m_lMemberID, m_found)) {
        return CSaveOutcome::failed;
    }
    auto const verdict = Check();
    if (verdict != CSaveOutcome::saved) {
        return verdict;
    }
    if (!WriteRows()) {
        return CSaveOutcome::failed;
    }
    bool const classesStored = WriteClasses();
    m_status = transaction.Commit(); // where a service failed, this tells why
    if (m_status && !classesStored) {
        m_status = {DbError::failed, "The classes of the member could not be stored."};
    }
    return m_status ? CSaveOutcome::saved : CSaveOutcome::failed;
}

/// Whether the member can be written; "saved" if so.
CSaveOutcome CMemberEditor::Check()
{
    auto const& profile = m_pages.m_profile;
    bool const isThere = m_found.m_summary.IsThere();
    if (IsNew() && isThere) {
        return Taken(CTakenNumber::memberID);
    }
    if (!IsNew() && !isThere) {
        return CSaveOutcome::deleted;
    }
    if (!IsNew() && !IsAsKnown()) {
        return CSaveOutcome::changed;
    }
    if (profile.m_lMemberID != m_lMemberID && !IsNew()
        && IsMember(profile.m_lMemberID, CDAOSmMem::idMember)) {
        return Taken(CTakenNumber::memberID);
    }
    if (profile.m_lWorkoutNum != m_doc.m_setSmMem.m_WorkoutNum
        && IsMember(profile.m_lWorkoutNum, CDAOSmMem::idWorkout)) {
        return Taken(CTakenNumber::workoutNum);
    }
    return CSaveOutcome::saved;
}

CSaveOutcome CMemberEditor::Taken(CTakenNumber number)
{
    m_taken = number;
    return CSaveOutcome::refused;
}

bool CMemberEditor::IsAsKnown() const
{
    auto classes = m_known.m_lstClasses;
    std::erase_if(classes, [this](auto const& row) {
        return std::ranges::any_of(m_pages.m_enroll.m_lstDeleted,
            [&row](CClassSlot const& slot) { return slot.classIndex == row.first; });
    });
    return m_found.m_summary == m_known.m_summary && m_found.m_profile == m_known.m_profile
        && m_found.m_enrollment == m_known.m_enrollment && m_found.m_lstClasses == classes
        && (m_found.m_message == m_known.m_message || IsMessageShown());
}

/// A check-in station has shown the message, which it does once, and taken it away.
bool CMemberEditor::IsMessageShown() const
{
    return m_found.m_strMessage.empty() && !m_known.m_strMessage.empty()
        && m_pages.m_profile.m_strMessage == m_known.m_strMessage;
}

bool CMemberEditor::WriteRows()
{
    auto& doc = m_doc;
    bool const begun = Begin(doc.m_setSmMem, m_found.m_summary.IsThere())
        && Begin(doc.m_setProf, m_found.m_profile.IsThere())
        && Begin(doc.m_setEnr, m_found.m_enrollment.IsThere())
        && Begin(doc.m_setMsg, m_found.m_message.IsThere());
    if (begun) {
        TakeSummary();
        TakeProfile();
        TakeEnrollment();
        doc.m_setMsg.m_MemberID = m_pages.m_profile.m_lMemberID;
        doc.m_setMsg.m_Message = IsMessageShown() ? std::string() : m_pages.m_profile.m_strMessage;
    }
    // The summary row comes first: the others hang on it, and follow a changed ID.
    for (CDAOEFSet* const set : std::initializer_list<CDAOEFSet*>{
             &doc.m_setSmMem, &doc.m_setProf, &doc.m_setEnr, &doc.m_setMsg}) {
        if (!begun || !set->Op(CDAOEFSet::opUpdate)) {
            return Fail(set->LastStatus());
        }
    }
    return true;
}

void CMemberEditor::TakeSummary()
{
    auto const& page = m_pages.m_profile;
    auto& member = m_doc.m_setSmMem;
    member.m_MemberID = page.m_lMemberID;
    member.m_WorkoutNum = page.m_lWorkoutNum;
    for (auto const& name : kNames) {
        member.*name.m_stored = page.*name.m_page;
    }
    SetFlag(member.m_Status, page.m_bCurrent);
}

void CMemberEditor::TakeProfile()
{
    auto const& page = m_pages.m_profile;
    auto& profile = m_doc.m_setProf;
    profile.m_MemberID = page.m_lMemberID;
    for (auto const& text : kProfileTexts) {
        profile.*text.m_stored = page.*text.m_page;
    }
    for (auto const& flag : kProfileFlags) {
        SetFlag(profile.*flag.m_stored, page.*flag.m_page);
    }
    profile.m_Birthday = page.m_dtBirthday;
    // In a row just begun there are no bits that no box stands for.
    profile.m_Goals = m_pages.m_goals.MaskIn(profile.m_Goals);
    profile.m_MedHist = m_pages.m_medHist.MaskIn(profile.m_MedHist);
}

void CMemberEditor::TakeEnrollment()
{
    auto const& page = m_pages.m_enroll;
    auto& enrollment = m_doc.m_setEnr;
    enrollment.m_MemberID = m_pages.m_profile.m_lMemberID;
    enrollment.m_EnrollDate = page.m_dtEnroll;
    enrollment.m_ExpireDate = page.m_dtExpire;
    enrollment.m_EnrollPer = static_cast<std::uint8_t>(page.m_nEnrollPer);
    SetFlag(enrollment.m_Incentive, page.m_bIncentive);
}

bool CMemberEditor::WriteClasses() const
{
    auto const& slots = m_pages.m_enroll.m_lstSlots;
    return UpdateClasses(m_pages.m_profile.m_lMemberID, slots[0], slots[1], slots[2]);
}

bool CMemberEditor::Fail(CDbStatus const& status)
{
    m_status = status ? CDbStatus(DbError::failed, "The member could not be stored.") : status;
    return false;
}
