#include "doc/FitnessRecord.h"
#include "store/fitness/HydroStat.h"
#include "store/fitness/SkinFold.h"
#include "store/fitness/TapeMsr.h"
#include "tests/QtTests.h"
#include "tests/members/RecordDesk.h"
#include "tests/ui/FormCheck.h"
#include "tests/ui/LargeFont.h"

#include <QListWidget>

#include <memory>

using namespace Qt::StringLiterals;

namespace
{

auto const kProfile = u"weightEdit=180 heightEdit=70 waistEdit=36 hipEdit=40 @1 "_s;

/// A desk at which member 7 is a man of 35 or a woman of 28, with one body composition.
class CBodyCompDesk
    : public CRecordDesk<&CCorvanaDoc::AddEditBodyComp, &CCorvanaDoc::EditBodyCompAt,
          &CCorvanaDoc::DeleteBodyCompAt, &CCorvanaDoc::ShowMemberBodyComps>
{
public:
    /// The method is that of the one there is and of those that are added.
    explicit CBodyCompDesk(int method = 1, bool isMale = true)
        : CRecordDesk(u"body composition"_s, {u"body_compositions"_s}, u"05/04/2026 09:30:15"_s,
            kBodyCompsNode)
    {
        m_lstPrompts += Steps(u"methodList=%1 OK"_s.arg(method));
        auto const born = CEFOleDateTime(2026 - (isMale ? 35 : 28), 3, 1).Seconds();
        RunOnMembers("UPDATE profiles SET sex = " + std::to_string(isMale ? 255 : 0)
            + ", birthday = " + std::to_string(born));
        Store(CEFOleDateTime(2026, 5, 4, 9, 30, 15), method);
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
};

} // namespace

/// Body compositions, used through their real form over a real file.
class BodyCompTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void asksForTheMethodAndForNothingOfAMember();
    void resultsAreTheCalculators();
    void refusesWhatIsOutOfBounds();
    void sitesDecideWhatCanBeTyped();
    void leavingCalculatesWithTheFirstPage();
    void unitsComeBackAsSaved();
    void whatIsNotShownIsWrittenBack();
    void showsTheValuesBefore();
    void anotherDesksChangesAreNotOverwritten();
    void losesNothing() { CBodyCompDesk().LosesNothing(kProfile + u"@0 hipEdit=41"_s); }
};

void BodyCompTest::asksForTheMethodAndForNothingOfAMember()
{
    CBodyCompDesk desk;
    auto const choose = [&desk](QDialog& dialog) {
        QCOMPARE(FaultsOf(dialog), QStringList());
        auto& list = Child<QListWidget>(dialog, "methodList");
        QCOMPARE(list.currentItem()->text(), u"Skinfolds"_s);
        auto const place = list.visualItemRect(list.item(1)).center();
        QTest::mouseClick(list.viewport(), Qt::LeftButton, Qt::ControlModifier, place);
        QCOMPARE(desk.Ok(dialog), u"Error: select a measurement method @methodList"_s);
        QTest::keyClick(&list, Qt::Key_Down);
        ClickOk(dialog);
    };
    QVERIFY(!desk.Use({Steps(u"memberIDEdit=7 OK"_s), choose, ClickCancel},
        [&desk] { return desk.m_doc.AddEditBodyComp(nullptr); }));
    RunOnMembers("CREATE TABLE nobody AS SELECT * FROM member_view WHERE 0");
    RunOnMembers("DROP VIEW member_view");
    RunOnMembers("ALTER TABLE nobody RENAME TO member_view");
    QVERIFY(!desk.EditIt([](QDialog& sheet) {
        QCOMPARE(Texts(sheet, u"ageText sexText"_s), u"|"_s);
        ClickCancel(sheet);
    }));
    RunOnMembers("DROP TABLE member_view"); // but a file that can be read
    QCOMPARE(desk.Told({}, [&] { desk.m_doc.EditBodyCompAt(7, u"05/04/2026 09:30:15"_s); }),
        u"Error: the body composition could not be read."_s);
}

void BodyCompTest::resultsAreTheCalculators()
{
    auto const folds = u"sevenRadio tricepsEdit=10 chestEdit=12 subscapularEdit=13 thighEdit=16 "
                       "suprailiacEdit=14.25 abdomenEdit=20 midaxillaryEdit=11 "_s;
    auto const foldsStored = u"0|40|16|12|20|10|14.25|11|13|0|0|0|0"_s; // from the wrist on
    auto const nothing = u"0|40|0|0|0|0|0|0|0|"_s;
    for (bool const isMale : {true, false}) {
        auto const large = isMale ? nullptr : std::make_unique<CLargeFont>();
        auto const sex = isMale ? CBodyComp::sMale : CBodyComp::sFemale;
        int const age = isMale ? 35 : 28;
        CSkinFold const bySkin(sex, age, 180, 70, 16, 12, 20, 10, 14.25, 11, 13);
        CHydroStat const plain(sex, age, 180, 70, 92, 14.2, 7);
        CHydroStat const metric(sex, age, 180, 70, 95, 4.409245243697551, 7);
        for (auto const& [method, steps, fat, stored] :
            {std::tuple(0, u"wristEdit=7.5"_s, CTapeMsr(sex, age, 180, 70, 36, 7.5, 40).Fat(),
                 u"7.5|40|0|0|0|0|0|0|0|0|0|0|0"_s),
                {1, folds + u"threeRadio"_s, bySkin.PercentFat(3), foldsStored},
                {1, folds + u"fourRadio"_s, bySkin.PercentFat(4), foldsStored},
                {1, folds, bySkin.PercentFat(7), foldsStored},
                {2, u"waterTempEdit=92 wetWeightEdit=14.2 tareWeightEdit=7"_s,
                    plain.Fat(CHydroStat::cmSiri), nothing + u"92|14.2|7|0"_s},
                {2,
                    u"celsiusRadio waterTempEdit=35 wetKilogramsRadio wetWeightEdit=2 "
                    "tareWeightEdit=7 brozekRadio"_s,
                    metric.Fat(CHydroStat::cmBrozek), nothing + u"35|2|7|176"_s},
                {3, u"percentFatEdit=23.456"_s, CBodyFat{23.456}, nothing + u"0|0|0|0"_s}}) {
            CBodyCompDesk desk(method, isMale);
            QVERIFY(desk.Add([&, &did = steps, &result = fat](QDialog& sheet) {
                QCOMPARE(sheet.windowTitle(), u"Add Body Composition for Member ID 7"_s);
                QCOMPARE(Texts(sheet, u"ageText sexText"_s), isMale ? u"35|M"_s : u"28|F"_s);
                QCOMPARE(FaultsOf(sheet), QStringList());
                Do(sheet, kProfile + did);
                if (*result.m_source != '\0') { // else it is typed
                    Shows(sheet, u"percentFatEdit basisLabel"_s,
                        {{u"calculateButton"_s,
                            u"%1|%2"_s.arg(result.m_dPercent, 0, 'f', 2).arg(BasisText(result))}});
                }
                QCoreApplication::processEvents();
                QCOMPARE(FaultsOf(sheet), QStringList());
                ClickOk(sheet);
            }));
            QCOMPARE(desk.All()[1].section(u'|', 3),
                u"70|180|0|%1|%2|36|%3"_s.arg(method).arg(fat.m_dPercent).arg(stored));
        }
    }
}

void BodyCompTest::refusesWhatIsOutOfBounds()
{
    for (auto const& [method, bounds] : {std::pair(0, u"1 wristEdit 1 100"_s),
             {1,
                 u"1 tricepsEdit 0 51,1 chestEdit 0 51,1 subscapularEdit 0 51,"
                 "1 suprailiacEdit 0 51,1 abdomenEdit 0 70,1 thighEdit 0 70,"
                 "1 midaxillaryEdit 0 51"_s},
             {2, u"1 waterTempEdit 0 98,1 wetWeightEdit 0 1000,1 tareWeightEdit 0 1000"_s},
             {3,
                 u"0 weightEdit 1 500,0 heightEdit 1 90,0 waistEdit 1 255,0 hipEdit 1 155,"
                 "1 percentFatEdit 1 99"_s}}) {
        CBodyCompDesk desk(method);
        QVERIFY(desk.EditIt([&, &limits = bounds](QDialog& sheet) {
            Do(sheet, limits.contains(u"chest"_s) ? u"@1 sevenRadio"_s : QString());
            desk.RefusesBeyond(sheet, limits);
            ClickOk(sheet);
        }));
        RunOnMembers("DELETE FROM classes"); // after the bounds: the day, then the class
        QVERIFY(!desk.EditIt([&](QDialog& sheet) {
            desk.Refuses(sheet,
                {{u""_s, u"Error: select a category, course, section @classList"_s},
                    {u"dateEdit=11/7/2026"_s, u" @dateEdit"_s},
                    {u"hipEdit=200"_s, u"Enter a number between 1 and 155. @hipEdit"_s}});
            ClickCancel(sheet);
        }));
    }
}

void BodyCompTest::sitesDecideWhatCanBeTyped()
{
    auto const all
        = u"abdomen chest midaxillary subscapular suprailiac thigh triceps"_s.split(u' ');
    auto const seven = u"abchmisusuthtr"_s;
    auto const four = u"absuthtr"_s;
    for (bool const isMale : {true, false}) {
        auto const three = isMale ? u"abchth"_s : u"suthtr"_s;
        CBodyCompDesk desk(1, isMale);
        for (int measured = 0; measured <= 7; ++measured) {
            desk.Change(measured > 0 ? FromQt(all[measured - 1]) + " = 10" : "units = 0");
            QVERIFY(!desk.EditIt([&](QDialog& sheet) {
                QStringList typed;
                for (auto const& step :
                    {u"@1"_s, u"sevenRadio"_s, u"fourRadio"_s, u"threeRadio"_s}) {
                    Do(sheet, step);
                    typed += QString();
                    for (auto const& site : all) {
                        auto const& field = Edit(sheet, qPrintable(site + u"Edit"_s));
                        typed.last() += field.isReadOnly() ? QString() : site.first(2);
                    }
                }
                auto const first = measured == 7 ? seven : measured == 4 ? four : three;
                QCOMPARE(typed, (QStringList{first, seven, four, three}));
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
        Do(sheet, u"weightEdit=200 waistEdit=41"_s);
        Shows(sheet, u"percentFatEdit"_s,
            {{u"@1 wristEdit=8"_s, u"0.00"_s}, {u"@0 @1"_s, QString::number(fat(41, 8), 'f', 2)},
                {u"wristEdit=101 calculateButton"_s,
                    QString::number(fat(41, 8), 'f', 2)}}); // refused
        QCOMPARE(Texts(sheet, u"basisLabel"_s), QString());
        Do(sheet, u"wristEdit=7.5 OK"_s);
    }));
    CDAOBodyComp set;
    set.FindBodyComps(7);
    QCOMPARE(set.m_dPercentFat, fat(41, 7.5));
}

void BodyCompTest::unitsComeBackAsSaved()
{
    CBodyCompDesk desk(2);
    // For the bits from 4 on, when they are clear and when they are set.
    auto const clear = u"fahrenheitRadio wetPoundsRadio tarePoundsRadio siriRadio"_s.split(u' ');
    auto const set = u"celsiusRadio wetKilogramsRadio tareKilogramsRadio brozekRadio"_s.split(u' ');
    constexpr quint32 kForeign = 0xdeadbe00;
    for (quint32 bits = 0; bits < 16; ++bits) {
        desk.Change("units = " + std::to_string(kForeign | bits << 4 | 0xf));
        QVERIFY(desk.EditIt([&](QDialog& sheet) {
            ShowPage(sheet, 1);
            for (int bit = 0; bit < 4; ++bit) {
                bool const isSet = (bits >> bit & 1) != 0;
                auto const name = (isSet ? set : clear)[bit].toLatin1();
                QVERIFY(Child<QAbstractButton>(sheet, name).isChecked());
                Do(sheet, (isSet ? clear : set)[bit]);
            }
            ClickOk(sheet);
        }));
        QCOMPARE(desk.All()[0].section(u'|', -1), QString::number(kForeign | (~bits & 15) << 4));
    }
}

/// What no form takes, or shows to the last digit.
void BodyCompTest::whatIsNotShownIsWrittenBack()
{
    for (auto const& [method, page, title] : {std::tuple(0, 0, u"Body Measurement"_s),
             {1, 0, u"Skin Folds"_s}, {2, 0, u"Hydrostatic Weighing"_s},
             {3, 1, u"Body Fat Percentage"_s}, {255, 0, u"Skin Folds"_s}}) {
        CBodyCompDesk desk(method);
        desk.Change("weight = 181.2345678, wrist = -3.21, thigh = 400, chest = 1e-9,"
                    " wet_weight = 5000, water_temperature = 1234.5678,"
                    " percent_fat = 20.123456789, activity_level = 77, units = 0xabcdef50");
        CDAOBodyComp set;
        set.FindBodyComps(7);
        set.m_dPercentFat = method > 3 ? 0.0 : set.m_dPercentFat;
        auto const expected = set.FieldValues();
        QVERIFY(desk.EditIt([shown = page, &name = title](QDialog& sheet) {
            QCOMPARE(Tabs(sheet).tabText(1), name);
            ShowPage(sheet, shown);
            ClickOk(sheet);
        }));
        set.FindBodyComps(7);
        QVERIFY(set.FieldValues() == expected);
    }
}

void BodyCompTest::showsTheValuesBefore()
{
    CBodyCompDesk desk(2);
    desk.Change("wet_weight = 4, units = 0x20, percent_fat = 21.5");
    desk.Store(CEFOleDateTime(2026, 1, 2), 1, 150); // before it in time, not in the table
    auto const notes
        = u"weightEditNote waistEditNote waterTempEditNote wetWeightEditNote percentFatEditNote"_s;
    QVERIFY(!desk.EditIt([&](QDialog& sheet) {
        Do(sheet, u"waistEdit=200 @1 celsiusRadio"_s);
        QCOMPARE(Texts(sheet, notes), u"last 150.00, 20 % more|last 36.00, unusually high|||"_s);
        QVERIFY(Child<QWidget>(sheet, "trendChart").accessibleDescription().contains(u"150.0"_s));
        ClickCancel(sheet);
    }));
    QVERIFY(!desk.Add([&](QDialog& sheet) {
        Do(sheet, kProfile + u"wetWeightEdit=40"_s);
        QCOMPARE(Texts(sheet, notes), u"last 180.00|last 36.00||last 8.82|last 21.50"_s);
        Do(sheet, u"wetKilogramsRadio"_s);
        QCOMPARE(Texts(sheet, u"wetWeightEditNote"_s), u"last 4.00, unusually high"_s);
        ClickCancel(sheet);
    }));
}

void BodyCompTest::anotherDesksChangesAreNotOverwritten()
{
    CBodyCompDesk desk(3);
    desk.Change("units = 0xf00"); // of another program
    auto expected = desk.All();
    expected.replaceInStrings(u"|3|0|"_s, u"|3|30.5|"_s);
    desk.AsksBeforeReplacing(u"@1 percentFatEdit=30.5"_s, "DELETE FROM body_compositions");
    QCOMPARE(desk.All(), expected);
}

static CTestEntryOf<BodyCompTest> const g_entry;
#include "BodyCompTest.moc"
