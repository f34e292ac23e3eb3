#include "doc/FitnessRecord.h"
#include "store/fitness/HeartRate.h"
#include "store/fitness/SkinFold.h"
#include "tests/QtTests.h"
#include "tests/members/RecordDesk.h"
#include "tests/ui/FormCheck.h"
#include "tests/ui/LargeFont.h"

#include <QLabel>

using namespace Qt::StringLiterals;

namespace
{

CEFOleDateTime const kDate(2026, 11, 5, 17, 30, 9);

/// A desk whose member 7 has an evaluation, of number 3, and whose circuit has two stations.
class CEvaluationDesk
    : public CRecordDesk<&CCorvanaDoc::AddEditEvaluation, &CCorvanaDoc::EditEvaluationAt,
          &CCorvanaDoc::DeleteEvaluationAt, &CCorvanaDoc::ShowMemberEvaluations>
{
public:
    CEvaluationDesk()
        : CRecordDesk(u"evaluation"_s, {u"evaluations"_s, u"skinfolds"_s, u"lifts"_s},
            u"11/05/2026 17:30:09"_s, kEvaluationsNode)
    {
        m_doc.m_circuit.m_nNumStations = 2;
        m_doc.m_circuit.m_arrStnName = {"Leg Press", "Push & Pull"};
        m_doc.m_circuit.m_arrStnMinLift = {12.5, 0};
        m_doc.m_circuit.m_arrStnMaxLift = {300, 47.9};
        Store(3, kDate, 61);
    }

    static void Store(std::int32_t number, CEFOleDateTime const& date, int restingHR)
    {
        auto const id = "(NULL, " + std::to_string(number) + ", ";
        // A weight with more decimals than are shown, and no level of activity there is.
        RunOnMembers("INSERT INTO evaluations VALUES " + id + "7, " + std::to_string(date.Seconds())
            + ", 4, 65.5, 140.125, 9, " + std::to_string(restingHR)
            + ", 0, 0, 0, 0, 0, 0, 754, 0)");
        RunOnMembers("INSERT INTO skinfolds VALUES " + id + "24.00149, 27, 0, 0, 18.2, 15, 0, 0)");
        RunOnMembers("INSERT INTO lifts VALUES " + id // the last is of no station of the centre
            + "67.5, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 99.5)");
    }
};

} // namespace

/// Evaluations, used through their real sheet over a real file.
class EvaluationTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void calculatesAsTheCalculatorsDo();
    void addsOneNumberInThreeTables();
    void refusesWhatIsOutOfBounds();
    void okWithoutChangesKeepsEveryByte();
    void showsTheRowsOfTheCircuit();
    void anotherDesksChangesAreNotOverwritten();
    void losesNothing();
};

void EvaluationTest::calculatesAsTheCalculatorsDo()
{
    CEvaluationDesk desk;
    for (auto const& [sex, age, sites, button] : {std::tuple(0, 31, 3, u"threeRadio"_s),
             {1, 55, 3, u"threeRadio"_s}, {0, 66, 4, u"fourRadio"_s}, {255, 30, 4, u"fourRadio"_s},
             {0, 25, 7, u"sevenRadio"_s}, {1, 76, 7, u"sevenRadio"_s}}) {
        bool const isMan = sex != 0;
        RunOnMembers("UPDATE profiles SET sex = " + std::to_string(sex)
            + ", birthday = " + std::to_string(CEFOleDateTime(2026 - age, 3, 2).Seconds()));
        auto const range = [isMan, years = age](double rest) {
            CHeartRate const rate(isMan ? CHeartRate::sMale : CHeartRate::sFemale, years, rest);
            return u"%1|%2|%3|%4"_s.arg(int(rate.PredictedMaximum()))
                .arg(int(rate.SafeMaximum()))
                .arg(int(rate.UpperLevel()))
                .arg(int(rate.LowerLevel()));
        };
        auto const fat = CSkinFold(isMan ? CBodyComp::sMale : CBodyComp::sFemale, age, 140.125,
            65.5, 16, 12.25, 70, 10, 14, 9, 51)
                             .PercentFat(sites);
        auto const percent = QString::number(fat.m_dPercent, 'f', 2) + u'|';
        auto const basis = BasisText(fat);
        QCOMPARE(basis.endsWith(u" g/ml"_s), fat.m_dDensity > 0);
        auto const member = (isMan ? u"M|%1"_s : u"F|%1"_s).arg(age);
        desk.EditIt([&, chosen = button](QDialog& sheet) {
            QCOMPARE(Texts(sheet, u"sexText ageText"_s), member);
            Shows(sheet, u"maximumEdit safeEdit upperEdit lowerEdit"_s,
                {{u"@1"_s, range(61)}, {u"restingHREdit=72"_s, range(61)}, // not yet calculated
                    {u"calculateButton"_s, range(72)}});
            Do(sheet, u"@3"_s);
            QCOMPARE(Edit(sheet, "chestEdit").isReadOnly(), !isMan); // with three sites
            Do(sheet,
                u"sevenRadio chestEdit=12.25 abdomenEdit=70 thighEdit=16 tricepsEdit=10 "
                "suprailiacEdit=14 midaxillaryEdit=9 subscapularEdit=51 calculateButton"_s);
            Shows(sheet, u"basisLabel"_s, {{chosen, QString()}}); // it is one of other sites
            Shows(sheet, u"percentFatEdit basisLabel"_s,
                {{u"calculateButton"_s, percent + basis},
                    {u"percentFatEdit=33"_s, u"33|"_s}, // it is the user's now
                    {u"@4 @3"_s, u"33|"_s}}); // leaving calculates nothing
            Shows(sheet, u"work1Edit work2Edit"_s,
                {{u"@4 lift1Edit=135 lift2Edit=0 calculate40Button"_s, u"54|0"_s},
                    {u"calculate50Button"_s, u"67|0"_s}, {u"calculate70Button"_s, u"94|0"_s}});
            ClickCancel(sheet);
        });
    }
    QCOMPARE(desk.m_messages.Texts(), QStringList());
}

void EvaluationTest::addsOneNumberInThreeTables()
{
    CEvaluationDesk desk;
    desk.Store(9, CEFOleDateTime(2026, 11, 6, 8, 0, 0), 150); // the last one
    QVERIFY(desk.Add([](QDialog& sheet) {
        QCOMPARE(sheet.windowTitle(), u"Add Evaluation for Member ID 7"_s);
        Do(sheet,
            u"weightEdit=152 heightEdit=65.5 dateEdit=11-6-26 activityList=3 "
            "@1 restingHREdit=20 systolicEdit=120 diastolicEdit=80 "
            "@2 trunkFlexionEdit=31 sitUpsEdit=40 abCrunchesEdit=41 stepTestEdit=99 "
            "ergometerEdit=7 minutesSpin=60 secondsSpin=59 "
            "@3 thighEdit=12.5 percentFatEdit=20 @4 lift1Edit=13 lift2Edit=47"_s);
        QCOMPARE(Texts(sheet, u"weightEditNote restingHREditNote runNote lift1EditNote"_s),
            u"last 140.13, 8 % more|last 150, unusually low|last 12:34|last 67"_s);
        ClickOk(sheet);
    }));
    QCOMPARE(desk.m_messages.Texts(), QStringList());
    auto const rows = desk.All();
    QCOMPARE(rows[2],
        u"evaluations: 10|7|%1|4|65.5|152|3|20|120|80|31|40|41|99|3659|7"_s.arg(
            CEFOleDateTime(2026, 11, 6, 18, 5, 9).Seconds()));
    QCOMPARE(rows[5], u"skinfolds: 10|20|12.5|0|0|0|0|0|0"_s);
    QVERIFY(rows[8].startsWith(u"lifts: 10|13|47|0|"_s));
}

/// Weight, height, day, class and skinfolds are those of body compositions.
void EvaluationTest::refusesWhatIsOutOfBounds()
{
    CEvaluationDesk desk;
    auto const legs = u"Error: Leg Press\nmust be in the range 12 to 300 @lift1Edit"_s;
    QVERIFY(!desk.EditIt([&](QDialog& sheet) {
        desk.RefusesBeyond(sheet,
            u"0 weightEdit 1 500,1 restingHREdit 0 to 200,1 systolicEdit 0 to 300,"
            "1 diastolicEdit 0 to 300,2 trunkFlexionEdit 0 31,2 sitUpsEdit 0 to 99,"
            "2 abCrunchesEdit 0 to 99,2 stepTestEdit 0 to 200,2 minutesSpin 0 to 60,"
            "2 secondsSpin 0 to 59,2 ergometerEdit 0 to 99,3 thighEdit 0 70,3 percentFatEdit 0 99"_s);
        desk.Refuses(sheet,
            {{u"@4 lift1Edit=12"_s, legs}, {u"lift1Edit=301"_s, legs},
                {u"lift1Edit=13 lift2Edit=48"_s,
                    u"Error: Push & Pull\nmust be in the range 0 to 47 @lift2Edit"_s}});
        Do(sheet, u"lift1Edit=12 calculate40Button"_s); // the first one alone is told
        QCOMPARE(desk.m_messages.Texts().constLast() + u" @lift1Edit"_s, legs);
        QCOMPARE(Texts(sheet, u"work1Edit"_s), u"0"_s);
        ClickCancel(sheet);
    }));
}

void EvaluationTest::okWithoutChangesKeepsEveryByte()
{
    CEvaluationDesk desk;
    auto const before = desk.All();
    auto const look = [&desk](QString const& note, QString const& trend) {
        QVERIFY(desk.EditIt([&](QDialog& sheet) {
            QCOMPARE(sheet.windowTitle(), u"Edit Evaluation for Member ID 7"_s);
            QCOMPARE(Texts(sheet, u"weightEditNote"_s), note);
            auto const* const chart = sheet.findChild<QWidget*>(u"trendChart"_s);
            QCOMPARE(chart != nullptr ? chart->accessibleDescription() : QString(), trend);
            for (int page = 0; page < 5; ++page) {
                ShowPage(sheet, page);
                QCoreApplication::processEvents();
                QCOMPARE(FaultsOf(sheet), QStringList());
            }
            ClickOk(sheet);
        }));
    };
    look({}, {});
    QCOMPARE(desk.All(), before);
    desk.Store(2, CEFOleDateTime(2026, 1, 2), 70); // one before it, whose values stand beside
    RunOnMembers("DELETE FROM skinfolds WHERE eval_id = 3"); // rows that are not there are made
    CLargeFont const large;
    look(u"last 140.13"_s,
        u"01/02/2026 to 11/05/2026; weight in pounds: 140.1 to 140.1; "
        "body fat in percent: 24.0 to 24.0"_s);
    QCOMPARE(desk.All()[0], before[0]);
    QCOMPARE(desk.All().filter(u"skinfolds: 3|0|0|0|"_s).size(), 1);
}

void EvaluationTest::showsTheRowsOfTheCircuit()
{
    CEvaluationDesk desk;
    auto& circuit = desk.m_doc.m_circuit;
    for (int const count : {0, 12, 13, 24}) {
        circuit.m_nNumStations = count;
        circuit.m_arrStnName.assign(std::size_t(count), "Row");
        circuit.m_arrStnMinLift.assign(std::size_t(count), 5);
        circuit.m_arrStnMaxLift.assign(std::size_t(count), 300);
        QVERIFY(!desk.EditIt([count](QDialog& sheet) {
            ShowPage(sheet, 4);
            int headings = 0;
            for (auto const* const label : sheet.findChildren<QLabel*>()) {
                headings += label->text() == u"Prog. Lift" && label->isVisible() ? 1 : 0;
            }
            QCOMPARE(headings, count == 0 ? 0 : count > 12 ? 2 : 1);
            for (int row = 1; row <= 24; ++row) {
                auto const& lift = Edit(sheet, u"lift%1Edit"_s.arg(row).toLatin1());
                QCOMPARE(lift.isVisible(), row <= count);
            }
            // Lifts are entered one after the other; Tab goes back up to the results afterwards.
            QCOMPARE(FaultsOf(sheet),
                count > 12 ? QStringList{u"Tab jumps from lift%1Edit to work1Edit"_s.arg(count)}
                           : QStringList());
            ClickCancel(sheet);
        }));
    }
}

void EvaluationTest::anotherDesksChangesAreNotOverwritten()
{
    CEvaluationDesk desk;
    int number = 3;
    for (std::string const sql :
        {"UPDATE evaluations SET sit_ups = 5", "UPDATE skinfolds SET chest = 5",
            "UPDATE lifts SET lift1 = 5", "DELETE FROM skinfolds", "DELETE FROM evaluations"}) {
        desk.AsksBeforeReplacing(u"@2 @3 @4 @1 restingHREdit=77"_s, sql); // all of it is seen
        auto const rows = desk.All();
        number = sql == "DELETE FROM evaluations" ? 1 : number; // the next free one
        QCOMPARE(rows.size(), 3);
        QVERIFY(rows[0].contains(u"|77|0|"_s));
        QVERIFY(rows[1].startsWith(u"skinfolds: %1|24.0015|27|0|"_s.arg(number)));
    }
}

void EvaluationTest::losesNothing()
{
    CEvaluationDesk desk;
    desk.LosesNothing(u"weightEdit=150 heightEdit=66"_s);
    QCOMPARE(desk.m_doc.m_nEvalMemberSel, 7);
    auto const proposed = [&desk] {
        QString seen;
        desk.Told({Steps(u"memberIDEdit=7 OK"_s), ClickOk, SeeList(seen)},
            &CCorvanaDoc::ShowMemberEvaluations);
        return int(desk.m_doc.m_nEvalClassSel);
    };
    QCOMPARE(proposed(), 4); // the member's only class
    AddClass(7, 5, "'Students', '', ''");
    QCOMPARE(proposed(), int(CDAOCls::kAllClasses));
    // Another desk deletes the evaluation while this one is asked.
    desk.Store(11, kDate, 60);
    desk.m_messages.AnswerNext({true});
    desk.m_messages.m_fnWhileShown = [] { RunOnMembers("DELETE FROM evaluations"); };
    QVERIFY(!desk.Delete());
    QCOMPARE(desk.m_views.m_lstResults.constLast(),
        u"Member ID 7 does not have this evaluation any more."_s);
}

static CTestEntryOf<EvaluationTest> const g_entry;
#include "EvaluationTest.moc"
