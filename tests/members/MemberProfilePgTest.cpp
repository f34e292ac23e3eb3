#include "members/MemberProfilePg.h"

#include "platform/qt/OneLineList.h"
#include "tests/QtTests.h"
#include "tests/members/PageUser.h"
#include "ui/Convert.h"

#include <QLineEdit>

#include <array>
#include <tuple>

using namespace Qt::StringLiterals;

namespace
{

CEFOleDateTime const kNow(2026, 11, 24, 15, 30, 0);
CEFOleDateTime const kToday(2026, 11, 24);

/// The page of Ann, member 5 with workout number 50.
class CProfileUser : public CPageUser<CMemberProfilePg>
{
public:
    CProfileUser()
    {
        m_page.m_lMemberID = 5;
        m_page.m_lWorkoutNum = 50;
        m_page.m_strFirstName = "Ann";
        m_page.m_strLastName = "Archer";
    }
};

} // namespace

class MemberProfilePgTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase() { AddMember(7); } // with workout number 7
    void init() { CEFOleDateTime::SetClock(kNow); }
    void cleanup() { CEFOleDateTime::SetClock({}); }
    void checksInOrder();
    void ownNumbersAreNotLookedUp();
    void takesBirthdaysUpToToday();
    void textsAreTakenUpToTheirLimit();
    void takesChoices();
    void anUntouchedPageKeepsWhatFieldsCannotShow();

private:
    CTestCentre const m_centre;
};

void MemberProfilePgTest::checksInOrder()
{
    CProfileUser user;
    user.m_page.m_strFirstName = user.m_page.m_strLastName = "";
    user.m_page.m_dtBirthday = CEFOleDateTime(2026, 11, 25);
    user.Show();
    auto const range = u"Enter an integer between 1 and 999999999. @%1"_s;
    user.Enter("memberIDEdit", u""_s);
    user.Enter("workoutNumEdit", u"0"_s);
    QCOMPARE(user.Ok(), u"Enter an integer. @memberIDEdit"_s);
    user.Enter("memberIDEdit", u"1000000000"_s);
    QCOMPARE(user.Ok(), range.arg(u"memberIDEdit"_s));
    QCOMPARE(user.Field<QLineEdit>("memberIDEdit").selectedText(), u"1000000000"_s);
    user.Enter("memberIDEdit", u"7"_s);
    QCOMPARE(user.Ok(), range.arg(u"workoutNumEdit"_s));
    user.Enter("workoutNumEdit", u"7"_s);
    QCOMPARE(user.Ok(), u"Error: enter first name @firstNameEdit"_s);
    user.Enter("firstNameEdit", u"Bo"_s);
    QCOMPARE(user.Ok(), u"Error: enter last name @lastNameEdit"_s);
    user.Enter("lastNameEdit", u"Baker"_s);
    auto const taken = u"Error: %1 ID 7 is already\nin use for an existing member @%2"_s;
    QCOMPARE(user.Ok(), taken.arg(u"Member"_s, u"memberIDEdit"_s));
    user.Enter("memberIDEdit", u"999999999"_s);
    QCOMPARE(user.Ok(), taken.arg(u"Workout"_s, u"workoutNumEdit"_s));
    user.Enter("workoutNumEdit", u"1"_s);
    QCOMPARE(user.Ok(), u"Error: invalid birthday @birthdayEdit"_s);
    QCOMPARE(user.m_page.m_lMemberID, 5); // a refused page changes nothing
    QCOMPARE(user.m_page.m_strFirstName, std::string());
    user.Enter("birthdayEdit", u"2/29/00"_s);
    QCOMPARE(user.Ok(), QString());
    QCOMPARE(user.m_page.m_lMemberID, 999999999);
    QCOMPARE(user.m_page.m_lWorkoutNum, 1);
    QCOMPARE(user.m_page.m_dtBirthday, CEFOleDateTime(2000, 2, 29));
}

void MemberProfilePgTest::ownNumbersAreNotLookedUp()
{
    AddMember(8);
    CTestCentre::Run(
        "UPDATE members SET workout_number = 80 WHERE member_id = 8", DataFile::member);
    CProfileUser user;
    user.m_page.m_lMemberID = user.m_page.m_lWorkoutNum = 7;
    user.Show();
    QCOMPARE(user.Ok(), QString());
    user.Show();
    user.Enter("memberIDEdit", u"6"_s);
    user.Enter("workoutNumEdit", u"8"_s); // a member ID only
    QCOMPARE(user.Ok(), QString());
    QCOMPARE(user.m_page.m_lMemberID, 6);
    QCOMPARE(user.m_page.m_lWorkoutNum, 8);
}

void MemberProfilePgTest::takesBirthdaysUpToToday()
{
    for (auto const& [birthday, accepted] : {std::pair(kToday, true), {kNow, true},
             {CEFOleDateTime(2026, 11, 25), false}, {CEFOleDateTime::Invalid(), true}}) {
        CProfileUser user;
        QCOMPARE(user.m_page.m_dtBirthday, kToday);
        user.m_page.m_dtBirthday = birthday;
        user.Show();
        QCOMPARE(user.Ok().isEmpty(), accepted);
        QCOMPARE(user.m_page.m_dtBirthday, birthday);
    }
}

void MemberProfilePgTest::textsAreTakenUpToTheirLimit()
{
    using CPage = CMemberProfilePg;
    using CText = std::tuple<char const*, std::string CPage::*, int>;
    std::array const texts = {CText{"firstNameEdit", &CPage::m_strFirstName, 12},
        CText{"middleInitEdit", &CPage::m_strMiddleInit, 1},
        CText{"lastNameEdit", &CPage::m_strLastName, 20},
        CText{"addressEdit", &CPage::m_strAddress, 28}, CText{"phoneEdit", &CPage::m_strPhone, 14},
        CText{"cityEdit", &CPage::m_strCity, 16}, CText{"zipEdit", &CPage::m_strZip, 10},
        CText{"emailEdit", &CPage::m_strEmail, 32},
        CText{"emergNameEdit", &CPage::m_strEmergName, 32},
        CText{"emergPhoneEdit", &CPage::m_strEmergPhone, 14},
        CText{"physicianEdit", &CPage::m_strPhysician, 32},
        CText{"messageEdit", &CPage::m_strMessage, 200}};
    CProfileUser user;
    user.Show();
    char letter = 'a';
    for (auto const& [name, value, limit] : texts) {
        user.Enter(name, QString(limit + 1, QLatin1Char(letter++)));
    }
    for (auto const* const name : {"memberIDEdit", "workoutNumEdit"}) {
        user.Enter(name, u"-1a2.3"_s);
        QCOMPARE(user.Field<QLineEdit>(name).text(), u"123"_s);
    }
    QCOMPARE(user.Ok(), QString());
    letter = 'a';
    for (auto const& [name, value, limit] : texts) {
        QCOMPARE(user.m_page.*value, std::string(static_cast<std::size_t>(limit), letter++));
    }
}

void MemberProfilePgTest::takesChoices()
{
    CProfileUser user;
    user.m_page.m_strState = "il";
    user.m_page.m_bMale = user.m_page.m_bEmployee = true;
    user.Show();
    QCOMPARE(user.Field<COneLineList>("stateList").SelectedText(), u"IL"_s);
    QTest::keyClicks(&user.Field<COneLineList>("stateList"), u"TX"_s);
    for (auto const* const radio :
        {"femaleRadio", "currentRadio", "employeeNoRadio", "releaseYesRadio"}) {
        user.Check(radio);
    }
    QCOMPARE(user.Ok(), QString());
    QCOMPARE(user.m_page.m_strState, "TX");
    QVERIFY(!user.m_page.m_bMale && user.m_page.m_bCurrent);
    QVERIFY(!user.m_page.m_bEmployee && user.m_page.m_bRelease);
}

void MemberProfilePgTest::anUntouchedPageKeepsWhatFieldsCannotShow()
{
    CProfileUser user;
    std::string message(250, 'm');
    message.append("\r\n\xff");
    user.m_page.m_strFirstName = "Wilhelmina-Josephine";
    user.m_page.m_strMiddleInit = "\xc3\x84\xcc\x81";
    user.m_page.m_strPhone = "555\n0142\xff";
    user.m_page.m_strState = "Ontario";
    user.m_page.m_dtBirthday = CEFOleDateTime(1970, 1, 1, 8, 15, 0);
    user.m_page.m_strMessage = message;
    user.m_page.m_bMale = user.m_page.m_bRelease = true;
    user.Show();
    QCOMPARE(user.Field<COneLineList>("stateList").SelectedText(), QString());
    QCOMPARE(user.Ok(), QString());
    QCOMPARE(user.m_page.m_strFirstName, "Wilhelmina-Josephine");
    QCOMPARE(user.m_page.m_strMiddleInit, "\xc3\x84\xcc\x81");
    QCOMPARE(user.m_page.m_strPhone, "555\n0142\xff");
    QCOMPARE(user.m_page.m_strState, ""); // the one field whose choice alone counts
    QCOMPARE(user.m_page.m_dtBirthday, CEFOleDateTime(1970, 1, 1, 8, 15, 0));
    QCOMPARE(user.m_page.m_strMessage, message);
    QVERIFY(user.m_page.m_bMale && user.m_page.m_bRelease);
    QVERIFY(!user.m_page.m_bCurrent && !user.m_page.m_bEmployee);
}

CORVANA_TEST(MemberProfilePgTest);
#include "MemberProfilePgTest.moc"
