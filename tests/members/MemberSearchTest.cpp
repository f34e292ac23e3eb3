#include "tests/QtTests.h"
#include "tests/members/RecordDesk.h"
#include "tests/ui/FormCheck.h"
#include "tests/ui/LargeFont.h"

using namespace Qt::StringLiterals;

namespace
{

/// Two members beside member 7. Number 8, who is 40 years old today, has no text in common with
/// the others; of what is one or the other each of the three has something alone.
void StoreOthers()
{
    CTestCentre::Run("INSERT INTO categories (number, name) VALUES (5, 'Guests')");
    auto const born = std::to_string(CEFOleDateTime(1986, 11, 6).Seconds());
    auto const late = std::to_string(CEFOleDateTime(2031, 3, 4, 23, 59, 59).Seconds());
    RunOnMembers("INSERT INTO members VALUES (NULL, 8, 42, 'Bo', '', 'Carter', 1),"
                 " (NULL, 9, 9, 'Al', '', 'Young', 0)");
    RunOnMembers("INSERT INTO profiles VALUES (NULL, 8, '1 Oak', 'Fargo', 'WA', '98701', '541-7',"
                 " 'info@x.org', '', '', 'Lee', 0, 0, "
        + born + ", 1, 0x14, 0x100000)");
    RunOnMembers(
        "INSERT INTO enrollments VALUES (NULL, 8, " + late + " - 86400, " + late + ", 0, 0)");
    RunOnMembers("INSERT INTO profiles SELECT NULL, 9, address, city, state, zip, phone, email,"
                 " '', '', physician, 0, 1, birthday, 0, goals, medical_history FROM profiles"
                 " WHERE member_id = 7");
    RunOnMembers("INSERT INTO enrollments SELECT NULL, 9, enroll_date, expire_date, period, 1"
                 " FROM enrollments WHERE member_id = 7");
    AddClass(8, 1, "'Guests', 'Yoga', 'Late'");
    AddClass(8, 2, "'guests', '', ''");
}

/// The caption of the list of what is found, the message why there is none, or the refusal of the
/// sheet with what the field in focus stands in.
QString Found(CMemberDesk& desk, QString const& steps, bool isList)
{
    QString refusal;
    QString list;
    auto const use = [&](QDialog& sheet) {
        Do(sheet, steps);
        QCoreApplication::processEvents();
        QCOMPARE(FaultsOf(sheet), QStringList());
        refusal = desk.Ok(sheet);
        if (!refusal.isEmpty()) {
            refusal += u' ' + sheet.focusWidget()->parentWidget()->objectName();
            ClickCancel(sheet);
        }
    };
    auto const see = [&](QDialog& found) {
        QCOMPARE(Child<QPushButton>(found, "updateClassButton").isEnabled(),
            steps.contains(u"categoryList="_s) && !steps.endsWith(u'='));
        SeeList(list)(found);
    };
    QList<CDialogUser::Step> dialogs{use, see};
    dialogs.resize(isList ? 2 : 1);
    auto const told = desk.Told(dialogs, &CCorvanaDoc::FindMembers);
    [&] { QVERIFY(desk.m_doc.m_setMem.IsEOF() != 0); }(); // closed
    return !refusal.isEmpty() ? refusal : isList ? list.section(u'|', 0, 0) : told;
}

} // namespace

/// The search for members, through its sheet.
class MemberSearchTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void findsWhoMeetsAllCriteria();
};

void MemberSearchTest::findsWhoMeetsAllCriteria()
{
    CMemberDesk desk;
    StoreOthers();
    CLargeFont const large;
    auto const number = u"Enter an integer between 0 and %1. @%2 MemberFindPg"_s;
    auto const half
        = u"Error: to search by %1 date range, select and set both dates @check %2FromField"_s;
    for (auto const& [found, all] :
        {
            std::pair(u"Member ID 8"_s,
                u"memberIDEdit=8|workoutNumEdit=42|firstNameEdit=b|lastNameEdit=car|addressEdit=1|"
                "phoneEdit=54|cityEdit=FAR|zipEdit=98|physicianEdit=lee|emailEdit=INF|maleRadio|"
                "ageFromSpin=35 ageToSpin=50|ageFromSpin=40 ageToSpin=125|stateList=48|"
                "@1 incentiveNoRadio|@1 periodList=0|"
                "@1 enrollFromField=3/3/2031 enrollToField=03032031|"
                "@1 expireFromField=2031-03-04 expireToField=3/4/31|@1 categoryList=Guests|"
                "@2 loseWeightCheck gainWeightCheck|@3 tobaccoCheck|"
                // What was set when its page was left stays.
                "lastNameEdit=car @1 @0 lastNameEdit=|@1 expireFromField=3/4/31"
                " expireToField=3/4/31 @0 @1 expireFromField= expireToField="_s),
            {u"Member ID 7"_s,
                u"releaseYesRadio|@1 categoryList=Staff|lastNameEdit=car @1 @0 lastNameEdit=arch"_s},
            {u"Member ID 9"_s, u"pastRadio|employeeYesRadio"_s},
            {u"Member Search Results"_s,
                u"maleRadio femaleRadio|currentRadio|employeeNoRadio|releaseNoRadio|"
                "@1 incentiveYesRadio|@1 @2 @3|memberIDEdit=0 stateList=0|@1 categoryList=Staff "
                "categoryList=|"
                // A page that was refused has set nothing.
                "@1 enrollFromField=3/3/31 enrollToField=3/3/31 expireFromField=3/4/31 @0"
                " enrollFromField= enrollToField= expireFromField="_s},
            {u"No members are recorded for the specified search criteria"_s,
                u"lastNameEdit=car @1 incentiveYesRadio|ageFromSpin=50 ageToSpin=35|"
                "@2 strengthCheck loseWeightCheck|@1 categoryList=Students"_s},
            {number.arg(999999999).arg(u"memberIDEdit"_s), u"memberIDEdit=1000000000"_s},
            {number.arg(999999999).arg(u"workoutNumEdit"_s), u"workoutNumEdit=1000000000 @1"_s},
            {number.arg(125).arg(u"ageFromSpin"_s), u"ageFromSpin=126"_s},
            {number.arg(125).arg(u"ageToSpin"_s), u"ageToSpin=126 @2"_s},
            {half.arg(u"enrollment"_s, u"enroll"_s), u"@1 enrollToField=3/4/26 @0"_s},
            {half.arg(u"expiration"_s, u"expire"_s), u"@1 expireFromField=3/4/26"_s},
        }) {
        for (auto const& steps : all.split(u'|')) {
            QCOMPARE(Found(desk, steps, found.startsWith(u"Member "_s)), found);
        }
    }
    // A search that failed is not one that found nobody.
    RunOnMembers("DROP VIEW member_view");
    RunOnMembers("DROP VIEW member_class_view");
    for (auto const& steps : {u"@0"_s, u"@1 categoryList=Staff"_s}) {
        QCOMPARE(Found(desk, steps, false), u"Error: the members could not be read."_s);
    }
}

static CTestEntryOf<MemberSearchTest> const g_entry;
#include "MemberSearchTest.moc"
