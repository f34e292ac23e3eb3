#include "doc/FitnessRecord.h"
#include "store/fitness/HydroStat.h"
#include "store/fitness/SkinFold.h"
#include "store/fitness/TapeMsr.h"
#include "tests/QtTests.h"
#include "tests/members/MemberDesk.h"
#include "tests/platform/db/Faults.h"
#include "tests/ui/FormCheck.h"
#include "tests/ui/LargeFont.h"

#include <QListWidget>

#include <cerrno>

using namespace Qt::StringLiterals;

namespace
{

CEFOleDateTime const kWhen(2026, 5, 4, 9, 30, 15);
auto const kDateText = u"05/04/2026 09:30:15"_s;
auto const kProfile = u"weightEdit=180 heightEdit=70 waistEdit=36 hipEdit=40 @1 "_s;

/// Steps of the user: types into a field ("wristEdit=7"), goes to a page ("@1"), presses a button.
void Do(QDialog const& sheet, QString const& steps)
{
    for (auto const& step : steps.split(u' ', Qt::SkipEmptyParts)) {
        auto const name = step.section(u'=', 0, 0).toLatin1();
        if (step.startsWith(u'@')) {
            ShowPage(sheet, step.mid(1).toInt());
        } else if (step.contains(u'=')) {
            Type(Edit(sheet, name), step.section(u'=', 1));
        } else {
            Child<QAbstractButton>(sheet, name).click();
        }
    }
}

/// Of a label or field.
QString Text(QDialog const& sheet, char const* name)
{
    return Child<QWidget>(sheet, name).property("text").toString();
}

/// A desk at which member 7 is a man of 35 or a woman of 28, with one body composition.
class CBodyCompDesk : public CMemberDesk
{
public:
    explicit CBodyCompDesk(int method = 1, bool isMale = true)
    {
        auto const born = CEFOleDateTime(2026 - (isMale ? 35 : 28), 3, 1).Seconds();
        RunOnMembers("UPDATE profiles SET sex = " + std::to_string(isMale ? 255 : 0)
            + ", birthday = " + std::to_string(born));
        Store(kWhen, method);
    }

    static void Store(CEFOleDateTime const& when, int method, double weight = 180)
    {
        RunOnMembers("INSERT INTO body_compositions VALUES (NULL, 7, "
            + std::to_string(when.Seconds()) + ", 4, 70, " + std::to_string(weight) + ", 0, "
            + std::to_string(method) + ", 0, 36, 7, 40, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0)");
    }
    static void Change(std::string const& assignments)
    {
        RunOnMembers("UPDATE body_compositions SET " + assignments);
    }
    static QStringList All() { return Rows({u"body_compositions"_s}); }
    bool Add(CDialogUser::Step const& method, CDialogUser::Step const& sheet)
    {
        return Use({EnterSeven, method, sheet}, [this] { return m_doc.AddEditBodyComp(nullptr); });
    }
    bool Add(int method, CDialogUser::Step const& sheet)
    {
        auto const choose = [method](QDialog& dialog) {
            Child<QListWidget>(dialog, "methodList").setCurrentRow(method);
            ClickOk(dialog);
        };
        return Add(choose, sheet);
    }
    bool EditIt(CDialogUser::Step const& step)
    {
        return Use({step}, [this] { return m_doc.EditBodyCompAt(7, kDateText); });
    }
    static void EnterSeven(QDialog& prompt)
    {
        Type(::Edit(prompt, "memberIDEdit"), u"7"_s);
        ClickOk(prompt);
    }
};

} // namespace

/// Body compositions, used through their real form over a real file.
class BodyCompTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void asksForTheMethod();
    void resultsAreTheCalculators();
    void refusesWhatIsOutOfBounds();
    void sitesDecideWhatCanBeTyped();
    void leavingCalculatesWithTheFirstPage();
    void unitsComeBackAsSaved();
    void whatIsNotShownIsWrittenBack();
    void showsTheValuesBefore();
    void otherDesksAndFaultsLoseNothing();
    void deletesAndFinds();
};

void BodyCompTest::asksForTheMethod()
{
    CBodyCompDesk desk;
    auto const choose = [&](QDialog& dialog) {
        QCOMPARE(FaultsOf(dialog), QStringList());
        auto& list = Child<QListWidget>(dialog, "methodList");
        QCOMPARE(list.currentItem()->text(), u"Skinfolds"_s);
        auto const place = list.visualItemRect(list.item(1)).center();
        QTest::mouseClick(list.viewport(), Qt::LeftButton, Qt::ControlModifier, place);
        QCOMPARE(desk.Ok(dialog), u"Error: select a measurement method @methodList"_s);
        QTest::keyClick(&list, Qt::Key_Down);
        ClickOk(dialog);
    };
    auto const look = [](QDialog& sheet) {
        QCOMPARE(sheet.windowTitle(), u"Add Body Composition for Member ID 7"_s);
        QCOMPARE(Tabs(sheet).tabText(1), u"Hydrostatic Weighing"_s);
        ClickCancel(sheet);
    };
    QVERIFY(!desk.Add(choose, look));
    QCOMPARE(desk.All().size(), 1);
}

void BodyCompTest::resultsAreTheCalculators()
{
    auto const folds = u"sevenRadio tricepsEdit=10 chestEdit=12 subscapularEdit=13 thighEdit=16 "
                       "suprailiacEdit=14.25 abdomenEdit=20 midaxillaryEdit=11 "_s;
    for (bool const isMale : {true, false}) {
        auto const large = isMale ? nullptr : std::make_unique<CLargeFont>();
        auto const sex = isMale ? CBodyComp::sMale : CBodyComp::sFemale;
        int const age = isMale ? 35 : 28;
        CSkinFold const bySkin(sex, age, 180, 70, 16, 12, 20, 10, 14.25, 11, 13);
        CHydroStat const plain(sex, age, 180, 70, 92, 14.2, 7);
        CHydroStat const metric(sex, age, 180, 70, 95, 4.409245243697551, 7);
        // With wrist, suprailiac, tare weight and units as they are stored.
        for (auto const& [method, steps, fat, stored] :
            {std::tuple(0, u"wristEdit=7.5"_s, CTapeMsr(sex, age, 180, 70, 36, 7.5, 40).Fat(),
                 u"7.5 0 0 0"_s),
                {1, folds + u"threeRadio"_s, bySkin.PercentFat(3), u"0 14.25 0 0"_s},
                {1, folds + u"fourRadio"_s, bySkin.PercentFat(4), u"0 14.25 0 0"_s},
                {1, folds, bySkin.PercentFat(7), u"0 14.25 0 0"_s},
                {2, u"waterTempEdit=92 wetWeightEdit=14.2 tareWeightEdit=7"_s,
                    plain.Fat(CHydroStat::cmSiri), u"0 0 7 0"_s},
                {2,
                    u"celsiusRadio waterTempEdit=35 wetKilogramsRadio wetWeightEdit=2 "
                    "tareWeightEdit=7 brozekRadio"_s,
                    metric.Fat(CHydroStat::cmBrozek), u"0 0 7 176"_s},
                {3, u"percentFatEdit=23.456"_s, CBodyFat{23.456}, u"0 0 0 0"_s}}) {
            CBodyCompDesk desk(1, isMale);
            auto const use = [&, &did = steps, &result = fat](QDialog& sheet) {
                QCOMPARE(Text(sheet, "ageText") + Text(sheet, "sexText"),
                    QString::number(age) + (isMale ? u'M' : u'F'));
                QCOMPARE(FaultsOf(sheet), QStringList());
                Do(sheet, kProfile + did);
                if (auto* const calculate = sheet.findChild<QPushButton*>(u"calculateButton"_s)) {
                    calculate->click();
                    QCOMPARE(Text(sheet, "basisLabel"), BasisText(result));
                    QCOMPARE(
                        Text(sheet, "percentFatEdit"), QString::number(result.m_dPercent, 'f', 2));
                }
                QCoreApplication::processEvents();
                QCOMPARE(FaultsOf(sheet), QStringList());
                ClickOk(sheet);
            };
            QVERIFY(desk.Add(method, use));
            CDAOBodyComp set;
            QCOMPARE(set.FindBodyComps(7, CEFOleDateTime::GetCurrentTime()), 1);
            QCOMPARE(set.m_dPercentFat, fat.m_dPercent);
            QCOMPARE(int(set.m_nMethod), method);
            QCOMPARE(u"%1 %2 %3 %4"_s.arg(set.m_dWrist)
                         .arg(set.m_dSuprailiac)
                         .arg(set.m_dTareWeight)
                         .arg(set.m_dwUnits),
                stored);
            QCOMPARE(desk.m_views.m_lstTreeCalls, QStringList{u"Refresh 7 -7 0"_s});
            QVERIFY(desk.m_doc.m_setBodyComp.IsEOF() != 0);
        }
    }
}

void BodyCompTest::refusesWhatIsOutOfBounds()
{
    auto const range = u"Enter a number between %1 and %2. @%3"_s;
    for (auto const& bound :
        u"3 0 weightEdit 1 500,3 0 heightEdit 1 90,3 0 waistEdit 1 255,3 0 hipEdit 1 155,"
        "0 1 wristEdit 1 100,1 1 abdomenEdit 0 70,1 1 thighEdit 0 70,1 1 tricepsEdit 0 51,"
        "1 1 chestEdit 0 51,1 1 suprailiacEdit 0 51,1 1 subscapularEdit 0 51,"
        "1 1 midaxillaryEdit 0 51,2 1 waterTempEdit 0 98,2 1 wetWeightEdit 0 1000,"
        "2 1 tareWeightEdit 0 1000,3 1 percentFatEdit 1 99"_s.split(u',')) {
        auto const part = bound.split(u' ');
        int const page = part[1].toInt();
        CBodyCompDesk desk(part[0].toInt());
        QVERIFY(desk.EditIt([&](QDialog& sheet) {
            ShowPage(sheet, page);
            Do(sheet, part[0] == u"1" ? u"sevenRadio"_s : QString());
            for (auto const& [limit, beyond] : {std::pair(3, -0.01), {4, 0.01}}) {
                Do(sheet, part[2] + u"=%1 @%2"_s.arg(part[limit].toInt() + beyond).arg(1 - page));
                QCOMPARE(Tabs(sheet).currentIndex(), page);
                QCOMPARE(desk.Ok(sheet), range.arg(part[3], part[4], part[2]));
                Do(sheet, part[2] + u'=' + part[limit]);
            }
            ClickOk(sheet);
        }));
    }
    CBodyCompDesk desk; // after the bounds: the day, then the class
    RunOnMembers("DELETE FROM classes");
    QVERIFY(!desk.EditIt([&](QDialog& sheet) {
        QCOMPARE(desk.Ok(sheet), u"Error: select a category, course, section @classList"_s);
        Do(sheet, u"dateEdit=11/7/2026"_s);
        QCOMPARE(desk.Ok(sheet), u" @dateEdit"_s);
        Do(sheet, u"hipEdit=200"_s);
        QCOMPARE(desk.Ok(sheet), range.arg(1).arg(155).arg(u"hipEdit"_s));
        ClickCancel(sheet);
    }));
}

void BodyCompTest::sitesDecideWhatCanBeTyped()
{
    auto const all
        = u"abdomen chest midaxillary subscapular suprailiac thigh triceps"_s.split(u' ');
    auto const typed = [&all](QDialog const& sheet, QString const& button) {
        Do(sheet, button);
        QString initials;
        for (auto const& name : all) {
            bool const isTyped = !Edit(sheet, qPrintable(name + u"Edit"_s)).isReadOnly();
            initials += isTyped ? name.first(2) : QString();
        }
        return initials;
    };
    auto const seven = u"abchmisusuthtr"_s;
    auto const four = u"absuthtr"_s;
    for (auto const& [isMale, three] : {std::pair(true, u"abchth"_s), {false, u"suthtr"_s}}) {
        CBodyCompDesk desk(1, isMale);
        for (int measured = 0; measured <= 7; ++measured) {
            desk.Change(measured > 0 ? FromQt(all[measured - 1]) + " = 10" : "units = 0");
            auto const first = measured == 7 ? seven : measured == 4 ? four : three;
            QVERIFY(!desk.EditIt([&, &few = three](QDialog& sheet) {
                QCOMPARE(typed(sheet, u"@1"_s), first);
                QCOMPARE(typed(sheet, u"sevenRadio"_s), seven);
                QCOMPARE(typed(sheet, u"fourRadio"_s), four);
                QCOMPARE(typed(sheet, u"threeRadio"_s), few);
                ClickCancel(sheet);
            }));
        }
    }
}

void BodyCompTest::leavingCalculatesWithTheFirstPage()
{
    CBodyCompDesk desk(0);
    auto const fat = [](double waist, double wrist) {
        return CTapeMsr(CBodyComp::sMale, 35, 200, 70, waist, wrist, 40).PercentFat();
    };
    QVERIFY(desk.EditIt([&](QDialog& sheet) {
        auto const shown = [&] { return Text(sheet, "percentFatEdit"); };
        Do(sheet, u"weightEdit=200 waistEdit=41 @1 wristEdit=8"_s);
        QCOMPARE(shown(), u"0.00"_s);
        Do(sheet, u"@0"_s);
        QCOMPARE(shown(), QString::number(fat(41, 8), 'f', 2));
        Do(sheet, u"waistEdit=38 @1 calculateButton"_s);
        QCOMPARE(shown(), QString::number(fat(38, 8), 'f', 2));
        Do(sheet, u"wristEdit=101 calculateButton"_s); // refused
        QCOMPARE(shown(), QString::number(fat(38, 8), 'f', 2));
        QCOMPARE(Text(sheet, "basisLabel"), QString());
        Do(sheet, u"wristEdit=7.5"_s);
        ClickOk(sheet);
    }));
    CDAOBodyComp set;
    set.FindBodyComps(7);
    QCOMPARE(set.m_dPercentFat, fat(38, 7.5));
}

void BodyCompTest::unitsComeBackAsSaved()
{
    CBodyCompDesk desk(2);
    // By their bits, for a bit that is clear and for one that is set.
    QStringList const buttons[]
        = {u"fahrenheitRadio wetPoundsRadio tarePoundsRadio siriRadio"_s.split(u' '),
            u"celsiusRadio wetKilogramsRadio tareKilogramsRadio brozekRadio"_s.split(u' ')};
    constexpr quint32 kForeign = 0xdeadbe00;
    for (quint32 before = 0; before < 16; ++before) {
        for (quint32 const after : {before, ~before & 15}) {
            desk.Change("units = " + std::to_string(kForeign | before << 4 | 0xf));
            QVERIFY(desk.EditIt([&](QDialog& sheet) {
                ShowPage(sheet, 1);
                for (int bit = 0; bit < 4; ++bit) {
                    for (auto const i : {0U, 1U}) {
                        auto const name = buttons[i][bit].toLatin1();
                        QCOMPARE(Child<QAbstractButton>(sheet, name).isChecked(),
                            ((before >> bit) & 1) == i);
                    }
                    Do(sheet, buttons[(after >> bit) & 1][bit]);
                }
                ClickOk(sheet);
            }));
            QCOMPARE(desk.All()[0].section(u'|', -1), QString::number(kForeign | after << 4));
        }
    }
}

/// What no form takes, or shows to the last digit.
void BodyCompTest::whatIsNotShownIsWrittenBack()
{
    for (auto const& [method, title] :
        {std::pair(0, u"Body Measurement"_s), {1, u"Skin Folds"_s}, {2, u"Hydrostatic Weighing"_s},
            {3, u"Body Fat Percentage"_s}, {7, u"Skin Folds"_s}, {255, u"Skin Folds"_s}}) {
        CBodyCompDesk desk(method);
        desk.Change("weight = 181.2345678, wrist = -3.21, thigh = 400, chest = 1e-9,"
                    " wet_weight = 5000, water_temperature = 1234.5678,"
                    " percent_fat = 20.123456789, activity_level = 77, units = 0xabcdef50");
        CDAOBodyComp set;
        set.FindBodyComps(7);
        set.m_dPercentFat = method > 3 ? 0.0 : set.m_dPercentFat;
        auto const expected = set.FieldValues();
        QVERIFY(desk.EditIt([shown = title](QDialog& sheet) {
            QCOMPARE(Tabs(sheet).tabText(1), shown);
            ShowPage(sheet, shown == u"Body Fat Percentage"_s ? 1 : 0);
            ClickOk(sheet);
        }));
        set.FindBodyComps(7);
        QVERIFY(set.FieldValues() == expected);
    }
}

void BodyCompTest::showsTheValuesBefore()
{
    CBodyCompDesk desk(2);
    desk.Change("wet_weight = 4, units = 0x20, percent_fat = 21.5, wrist = 0");
    desk.Store(CEFOleDateTime(2026, 1, 2), 1, 150); // before it in time, not in the table
    QVERIFY(!desk.EditIt([&](QDialog& sheet) {
        Do(sheet, u"waistEdit=200 @1"_s);
        QCOMPARE(Text(sheet, "weightEditNote"), u"last 150.00, 20 % more"_s);
        QVERIFY(Child<QWidget>(sheet, "trendChart").accessibleDescription().contains(u"150.0"_s));
        QCOMPARE(Text(sheet, "waistEditNote"), u"last 36.00, unusually high"_s);
        QCOMPARE(Text(sheet, "wetWeightEditNote") + Text(sheet, "percentFatEditNote"), QString());
        ClickCancel(sheet);
    }));
    auto const look = [&](QDialog& sheet) {
        Do(sheet, kProfile + u"wetWeightEdit=40"_s);
        QCOMPARE(Text(sheet, "percentFatEditNote"), u"last 21.50"_s);
        QCOMPARE(Text(sheet, "wetWeightEditNote"), u"last 8.82"_s);
        Do(sheet, u"wetKilogramsRadio"_s);
        QCOMPARE(Text(sheet, "wetWeightEditNote"), u"last 4.00, unusually high"_s);
        ClickCancel(sheet);
    };
    QVERIFY(!desk.Add(2, look));
    auto const lookAtWrist = [](QDialog& sheet) {
        QCOMPARE(Text(sheet, "wristEditNote"), QString());
        ClickCancel(sheet);
    };
    QVERIFY(!desk.Add(0, lookAtWrist));
}

void BodyCompTest::otherDesksAndFaultsLoseNothing()
{
    CBodyCompDesk desk(3);
    desk.Change("units = 0xf00");
    auto expected = desk.All();
    expected.replaceInStrings(u"|3|0|"_s, u"|3|30.5|"_s);
    for (auto const& [sql, told] :
        {std::pair("UPDATE body_compositions SET wrist = 6", u"changed"_s),
            {"DELETE FROM body_compositions", u"deleted"_s}}) {
        desk.m_messages.AnswerNext({false, true});
        QVERIFY(desk.EditIt([&, change = sql, &was = told](QDialog& sheet) {
            Do(sheet, u"@1 percentFatEdit=30.5"_s);
            RunOnMembers(change);
            auto const theirs = desk.All();
            QVERIFY(desk.Ok(sheet).startsWith(
                u"This body composition has been %1 at another place"_s.arg(was)));
            QCOMPARE(desk.All(), theirs);
            QCOMPARE(desk.Ok(sheet), QString());
        }));
        QCOMPARE(desk.All(), expected);
    }
    QVERIFY(desk.EditIt([&](QDialog& sheet) {
        Do(sheet, u"@1 percentFatEdit=33.25"_s);
        Faults::Begin(1, ENOSPC, true);
        QCOMPARE(desk.Ok(sheet),
            u"Error: the body composition was not saved.\n"
            "Your entries are still in the form. @percentFatEdit"_s);
        QVERIFY(Faults::End());
        QCOMPARE(desk.All(), expected);
        ClickOk(sheet);
    }));
    QVERIFY(desk.All()[0].contains(u"|33.25|"_s));
}

void BodyCompTest::deletesAndFinds()
{
    CBodyCompDesk desk;
    desk.Store(CEFOleDateTime(2026, 5, 5), 1);
    auto const before = desk.All();
    desk.m_messages.AnswerNext({false, true});
    QVERIFY(!desk.m_doc.DeleteBodyCompAt(7, kDateText));
    QCOMPARE(desk.All(), before);
    QVERIFY(desk.m_doc.DeleteBodyCompAt(7, kDateText));
    QCOMPARE(desk.All(), QStringList{before[1]});
    QVERIFY(desk.m_messages.Texts()[1].startsWith(
        u"Are you sure you want to delete the body composition\nfor Member ID: 7 dated 05/04/"_s));
    QVERIFY(!desk.Use({}, [&] { return desk.m_doc.EditBodyCompAt(7, kDateText); }));
    QCOMPARE(desk.m_views.m_lstResults.constLast(),
        u"Member ID 7 does not have this body composition any more."_s);
    QCOMPARE(desk.m_views.m_lstTreeCalls, QStringList(2, u"Refresh 7 -7 0"_s));

    for (auto const& [entry, text] :
        {std::pair(0, u"No body compositions are recorded for Member ID 7 under Unknown"_s),
            {1, u"This command is not available yet."_s},
            {2, u"This command is not available yet."_s}}) {
        auto const choose = [entry = entry](QDialog& dialog) {
            Choose(Child<QComboBox>(dialog, "classList"), entry);
            ClickOk(dialog);
        };
        desk.Use({CBodyCompDesk::EnterSeven, choose},
            [&] { return desk.m_doc.ShowMemberBodyComps(), true; });
        QCOMPARE(desk.m_messages.Texts().constLast(), text);
    }
    desk.Store(kWhen, 1); // of a member who is not found, and of one who cannot be read
    RunOnMembers("CREATE TABLE nobody AS SELECT * FROM member_view WHERE 0");
    RunOnMembers("DROP VIEW member_view");
    RunOnMembers("ALTER TABLE nobody RENAME TO member_view");
    QVERIFY(!desk.EditIt([](QDialog& sheet) {
        QCOMPARE(Text(sheet, "ageText") + Text(sheet, "sexText"), QString());
        ClickCancel(sheet);
    }));
    RunOnMembers("DROP TABLE member_view");
    QVERIFY(!desk.Use({}, [&] { return desk.m_doc.EditBodyCompAt(7, kDateText); }));
    QCOMPARE(
        desk.m_messages.Texts().constLast(), u"Error: the body composition could not be read."_s);
}

static CTestEntryOf<BodyCompTest> const g_entry;
#include "BodyCompTest.moc"
