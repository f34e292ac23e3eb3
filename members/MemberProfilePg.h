#pragma once

#include "platform/qt/PropertySheet.h"
#include "store/EFOleDateTime.h"
#include "ui/FormFields.h"

#include <cstdint>
#include <memory>
#include <string>

namespace Ui
{
class MemberProfilePg;
}

/// Who a member is: numbers, name, address, whom to call in an emergency, and the message for the
/// next check-in. Refuses a number that another member has.
class CMemberProfilePg : public CPropertyPage
{
    Q_OBJECT
public:
    explicit CMemberProfilePg(QWidget* parent = nullptr);
    ~CMemberProfilePg() override;

    std::int32_t m_lMemberID = 0; ///< 1 to 999999999 when taken
    std::int32_t m_lWorkoutNum = 0; ///< 1 to 999999999 when taken
    bool m_bMale = false;
    std::string m_strFirstName;
    std::string m_strMiddleInit;
    std::string m_strLastName;
    std::string m_strAddress;
    std::string m_strPhone;
    std::string m_strCity;
    std::string m_strState; ///< of CStateAbbrev, or empty, when taken
    std::string m_strZip;
    CEFOleDateTime m_dtBirthday; ///< today, unless the caller sets it
    std::string m_strEmail;
    bool m_bCurrent = false;
    bool m_bEmployee = false;
    bool m_bRelease = false; ///< a signed release form is on file
    std::string m_strEmergName;
    std::string m_strEmergPhone;
    std::string m_strPhysician;
    std::string m_strMessage;

    // Refuse a number that another member has, with the focus on its field; always false.
    bool RefuseMemberID(std::int32_t number);
    bool RefuseWorkoutNum(std::int32_t number);

protected:
    void ShowFields() override;
    bool TakeFields() override;

private:
    bool CheckNames() const;
    bool CheckNumbers();

    std::unique_ptr<Ui::MemberProfilePg> const m_ui;
    CFormFields m_fields;
    std::int32_t m_lEntryMemberID = 0; ///< the two numbers that are the member's own
    std::int32_t m_lEntryWorkoutNum = 0;
};
