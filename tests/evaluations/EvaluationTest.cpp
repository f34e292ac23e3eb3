#include "evaluations/EvaluationRecord.h"
#include "evaluations/EvaluationWorkWtPg.h"
#include "platform/qt/DropDown.h"
#include "store/fitness/HeartRate.h"
#include "store/fitness/SkinFold.h"
#include "store/sets/AddRow.h"
#include "tests/QtTests.h"
#include "tests/members/MemberDesk.h"
#include "tests/platform/db/Faults.h"
#include "tests/ui/FormCheck.h"
#include "tests/ui/LargeFont.h"

#include <QLabel>
#include <QRadioButton>

#include <cerrno>

using namespace Qt::StringLiterals;

namespace
{

CEFOleDateTime const kDate(2026, 11, 5, 17, 30, 9);
auto const kDateText = u"11/05/2026 17:30:09"_s;

/// A desk whose member 7 has an evaluation, of number 3, and whose circuit has two stations.
class CEvaluationDesk : public CMemberDesk
{
public:
    CEvaluationDesk()
    {
        m_doc.m_circuit.m_nNumStations = 2;
        m_doc.m_circuit.m_arrStnName = {"Leg Press", "Push & Pull"};
        m_doc.m_circuit.m_arrStnMinLift = {12.5, 0};
        m_doc.m_circuit.m_arrStnMaxLift = {300, 47.9};
        Store(3, kDate, 61);
    }

    static void Store(std::int32_t number, CEFOleDateTime const& date, int restingHR)
    {
        QVERIFY(AddRow<CDAOSmEval>([&](CDAOSmEval& set) {
            set.m_lEvalID = number;
            set.m_lMemberID = 7;
            set.m_dtEvalDate = date;
            set.m_nClassIndex = 4;
            set.m_dHeight = 65.5;
            set.m_dWeight = 140.125; // more decimals than are shown
            set.m_nActLevel = 9; // no level there is
            set.m_nRestingHR = restingHR;
            set.m_nRunSeconds = 754;
        }));
        QVERIFY(AddRow<CDAOCirc>([&](CDAOCirc& set) {
            set.m_lEvalID = number;
            set.SetStnVal(0, 67.5);
            set.SetStnVal(23, 99.5); // no station of the centre
        }));
        QVERIFY(AddRow<CDAOEvalBodyComp>([&](CDAOEvalBodyComp& set) {
            set.m_lEvalID = number;
            set.m_dPercentFat = 24.00149;
            set.m_dTriceps = 18.2;
            set.m_dSuprailiac = 15;
            set.m_dThigh = 27;
        }));
    }

    static QStringList Evaluations()
    {
        return Rows({u"evaluations"_s, u"skinfolds"_s, u"lifts"_s});
    }
    bool Add(CDialogUser::Step const& step)
    {
        return Use({[](QDialog& prompt) {
                        Type(::Edit(prompt, "memberIDEdit"), u"7"_s);
                        ClickOk(prompt);
                    },
                       step},
            [this] { return m_doc.AddEditEvaluation(nullptr); });
    }
    bool EditIt(CDialogUser::Step const& step)
    {
        return Use({step}, [this] { return m_doc.EditEvaluationAt(7, kDateText); });
    }
};

void Fill(QDialog const& sheet, QList<std::pair<char const*, QString>> const& fields)
{
    for (auto const& [field, text] : fields) {
        Type(Edit(sheet, field), text);
    }
}

QString TextsOf(QDialog const& sheet, QList<char const*> const& fields)
{
    QStringList texts;
    for (auto const* const field : fields) {
        texts += Edit(sheet, field).text();
    }
    return texts.join(u' ');
}

QString Whole(double value)
{
    return QString::number(static_cast<int>(value));
}

} // namespace

/// Evaluations, used through their real sheet over a real file.
class EvaluationTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void calculatesAsTheCalculatorsDo();
    void addsOneNumberInThreeTables();
    void refusesInTheOrderOfThePages();
    void okWithoutChangesKeepsEveryByte();
    void showsTheRowsOfTheCircuit();
    void anotherDesksChangesAreNotOverwritten();
    void aFailedWriteKeepsTheSheetAndTheRows();
    void deletesAllThreeRowsAfterAsking();
};

void EvaluationTest::calculatesAsTheCalculatorsDo()
{
    CEvaluationDesk desk;
    for (auto const& [sex, birthYear, sites] : {std::tuple(0, 1995, 3), {1, 1971, 3}, {0, 1960, 4},
             {255, 1996, 4}, {0, 2001, 7}, {1, 1950, 7}}) {
        RunOnMembers("UPDATE profiles SET sex = " + std::to_string(sex)
            + ", birthday = " + std::to_string(CEFOleDateTime(birthYear, 3, 2).Seconds()));
        bool const isMan = sex != 0;
        int const age = 2026 - birthYear;
        desk.EditIt([&, sites = sites](QDialog& sheet) {
            QCOMPARE(Child<QLabel>(sheet, "sexText").text(), isMan ? u"M"_s : u"F"_s);
            QCOMPARE(Child<QLabel>(sheet, "ageText").text(), QString::number(age));
            QList<char const*> const levels{"maximumEdit", "safeEdit", "upperEdit", "lowerEdit"};
            auto const range = [&](double rest) {
                CHeartRate const rate(isMan ? CHeartRate::sMale : CHeartRate::sFemale, age, rest);
                return (QStringList{Whole(rate.PredictedMaximum()), Whole(rate.SafeMaximum()),
                            Whole(rate.UpperLevel()), Whole(rate.LowerLevel())})
                    .join(u' ');
            };
            ShowPage(sheet, 1);
            QCOMPARE(TextsOf(sheet, levels), range(61));
            Fill(sheet, {{"restingHREdit", u"72"_s}});
            QCOMPARE(TextsOf(sheet, levels), range(61)); // until the button is pressed
            Child<QPushButton>(*Tabs(sheet).currentWidget(), "calculateButton").click();
            QCOMPARE(TextsOf(sheet, levels), range(72));

            auto const& page = ShowPage(sheet, 3);
            QVERIFY(Child<QRadioButton>(page, "threeRadio").isChecked());
            Child<QRadioButton>(page, "sevenRadio").click();
            Fill(sheet,
                {{"chestEdit", u"12.25"_s}, {"abdomenEdit", u"70"_s}, {"thighEdit", u"16"_s},
                    {"tricepsEdit", u"10"_s}, {"suprailiacEdit", u"14"_s},
                    {"midaxillaryEdit", u"9"_s}, {"subscapularEdit", u"51"_s}});
            Child<QRadioButton>(page,
                sites == 3       ? "threeRadio"
                    : sites == 4 ? "fourRadio"
                                 : "sevenRadio")
                .click();
            for (auto const& site : kSkinfoldSites) {
                QCOMPARE(!Edit(sheet, site.m_widget).isReadOnly(), site.IsUsed(sites, isMan));
            }
            Child<QPushButton>(page, "calculateButton").click();
            CSkinFold const folds(isMan ? CBodyComp::sMale : CBodyComp::sFemale, age, 140.125, 65.5,
                16, 12.25, 70, 10, 14, 9, 51);
            auto const fat = folds.PercentFat(sites);
            QCOMPARE(Edit(sheet, "percentFatEdit").text(), QString::number(fat.m_dPercent, 'f', 2));
            auto const basis = Child<QLabel>(page, "basisLabel").text();
            QVERIFY(basis.startsWith(QLatin1StringView(fat.m_source)));
            QCOMPARE(basis.endsWith(u"g/ml"_s), sites != 4);
            Fill(sheet, {{"percentFatEdit", u"33"_s}});
            QCOMPARE(Child<QLabel>(page, "basisLabel").text(), QString()); // it is the user's now

            ShowPage(sheet, 4);
            Fill(sheet, {{"lift1Edit", u"135"_s}, {"lift2Edit", u"0"_s}});
            for (auto const& [button, weight] : {std::pair("calculate40Button", u"54"_s),
                     {"calculate50Button", u"67"_s}, {"calculate70Button", u"94"_s}}) {
                Child<QPushButton>(sheet, button).click();
                QCOMPARE(TextsOf(sheet, {"work1Edit", "work2Edit"}), weight + u" 0"_s);
            }
            ShowPage(sheet, 3);
            QCOMPARE(Edit(sheet, "percentFatEdit").text(), u"33"_s); // leaving calculates nothing
            ClickCancel(sheet);
        });
    }
    QCOMPARE(desk.m_messages.Texts(), QStringList());
}

void EvaluationTest::addsOneNumberInThreeTables()
{
    CEvaluationDesk desk;
    desk.Store(9, CEFOleDateTime(2026, 11, 6, 8, 0, 0), 150); // the last one
    QVERIFY(!desk.Use({ClickCancel}, [&] { return desk.m_doc.AddEditEvaluation(nullptr); }));
    auto const before = desk.Evaluations();
    QVERIFY(!desk.Add(ClickCancel));
    QCOMPARE(desk.Evaluations(), before);
    QVERIFY(desk.Add([](QDialog& sheet) {
        QCOMPARE(sheet.windowTitle(), u"Add Evaluation for Member ID 7"_s);
        QCOMPARE(Child<QLabel>(sheet, "weightEditNote").text(), u"last 140.13"_s);
        Fill(sheet,
            {{"weightEdit", u"152"_s}, {"heightEdit", u"65.5"_s}, {"dateEdit", u"11-6-26"_s}});
        QCOMPARE(Child<QLabel>(sheet, "weightEditNote").text(), u"last 140.13, 8 % more"_s);
        Choose(Child<CDropDown>(sheet, "activityList"), 3);
        ShowPage(sheet, 1);
        QCOMPARE(Child<QLabel>(sheet, "restingHREditNote").text(), u"last 150"_s);
        Fill(sheet,
            {{"restingHREdit", u"20"_s}, {"systolicEdit", u"120"_s}, {"diastolicEdit", u"80"_s}});
        QCOMPARE(Child<QLabel>(sheet, "restingHREditNote").text(), u"last 150, unusually low"_s);
        ShowPage(sheet, 2);
        QCOMPARE(Child<QLabel>(sheet, "runNote").text(), u"last 12:34"_s);
        Fill(sheet,
            {{"trunkFlexionEdit", u"31"_s}, {"sitUpsEdit", u"40"_s}, {"abCrunchesEdit", u"41"_s},
                {"stepTestEdit", u"99"_s}, {"ergometerEdit", u"7"_s}});
        for (auto const& [spin, text] :
            {std::pair("minutesSpin", u"60"_s), {"secondsSpin", u"59"_s}}) {
            Type(*Child<QWidget>(sheet, spin).findChild<QLineEdit*>(), text);
        }
        ShowPage(sheet, 3);
        Fill(sheet, {{"thighEdit", u"12.5"_s}, {"percentFatEdit", u"20"_s}});
        ShowPage(sheet, 4);
        QCOMPARE(Child<QLabel>(sheet, "lift1EditNote").text(), u"last 67"_s);
        Fill(sheet, {{"lift1Edit", u"13"_s}, {"lift2Edit", u"47"_s}});
        ClickOk(sheet);
    }));
    QCOMPARE(desk.m_messages.Texts(), QStringList());
    auto const rows = desk.Evaluations();
    QCOMPARE(rows[2],
        u"evaluations: 10|7|%1|4|65.5|152|3|20|120|80|31|40|41|99|3659|7"_s.arg(
            CEFOleDateTime(2026, 11, 6, 18, 5, 9).Seconds()));
    QCOMPARE(rows[5], u"skinfolds: 10|20|12.5|0|0|0|0|0|0"_s);
    QVERIFY(rows[8].startsWith(u"lifts: 10|13|47|0|"_s));
    QCOMPARE(desk.m_views.m_lstTreeCalls, QStringList{u"Refresh 7 -8 0"_s});
    QCOMPARE(desk.m_views.m_lstResults, QStringList{u"The evaluation of member ID 7 was saved."_s});
}

void EvaluationTest::refusesInTheOrderOfThePages()
{
    CEvaluationDesk desk;
    auto const between = [](auto const& least, auto const& most) {
        return u"%1 between %2 and %3."_s
            .arg(std::is_same_v<decltype(least), int const&> ? u"Enter an integer"_s
                                                             : u"Enter a number"_s)
            .arg(least)
            .arg(most);
    };
    struct Case
    {
        int page;
        char const* field;
        QString wrong;
        QString message;
        QString right;
    };
    QVERIFY(!desk.EditIt([&](QDialog& sheet) {
        for (auto const& [page, field, wrong, message, right] :
            std::initializer_list<Case>{{0, "weightEdit", u"0.5"_s, between(1.0, 500.0), u"500"_s},
                {0, "heightEdit", u"90.01"_s, between(1.0, 90.0), u"90"_s},
                {0, "dateEdit", u"11/7/2026"_s, {}, u"11/6/2026"_s},
                {1, "restingHREdit", u"201"_s, between(0, 200), u"200"_s},
                {1, "systolicEdit", u"301"_s, between(0, 300), u"300"_s},
                {1, "diastolicEdit", u"301"_s, between(0, 300), u"0"_s},
                {2, "trunkFlexionEdit", u"31.5"_s, between(0.0, 31.0), u"31"_s},
                {2, "sitUpsEdit", u"100"_s, between(0, 99), u"99"_s},
                {2, "stepTestEdit", u"201"_s, between(0, 200), u"200"_s},
                {2, "ergometerEdit", u"100"_s, between(0, 99), u"99"_s},
                {3, "thighEdit", u"70.5"_s, between(0.0, 70.0), u"70"_s},
                {3, "percentFatEdit", u"100"_s, between(0.0, 99.0), u"99"_s},
                {4, "lift1Edit", u"12"_s, u"Error: Leg Press\nmust be in the range 12 to 300"_s,
                    u"13"_s},
                {4, "lift2Edit", u"48"_s, u"Error: Push & Pull\nmust be in the range 0 to 47"_s,
                    u"47"_s}}) {
            ShowPage(sheet, page);
            Fill(sheet, {{field, wrong}});
            QCOMPARE(desk.Ok(sheet), message + u" @"_s + QLatin1StringView(field));
            auto const told = desk.m_messages.Texts().size();
            ShowPage(sheet, (page + 1) % 5); // nor can the page be left
            QCOMPARE(Tabs(sheet).currentIndex(), page);
            QCOMPARE(desk.m_messages.Texts().size(), told + (message.isEmpty() ? 0 : 1));
            Fill(sheet, {{field, right}});
        }
        Fill(
            sheet, {{"lift1Edit", u"12"_s}, {"lift2Edit", u"48"_s}}); // the first one alone is told
        Child<QPushButton>(sheet, "calculate40Button").click();
        QCOMPARE(desk.m_messages.Texts().constLast().section(u'\n', 0, 0), u"Error: Leg Press"_s);
        QCOMPARE(Edit(sheet, "work1Edit").text(), u"0"_s);
        ClickCancel(sheet);
    }));
    RunOnMembers("DELETE FROM classes");
    QVERIFY(!desk.EditIt([&](QDialog& sheet) {
        QCOMPARE(desk.Ok(sheet), u"Error: select a category, course, section @classList"_s);
        ClickCancel(sheet);
    }));
}

void EvaluationTest::okWithoutChangesKeepsEveryByte()
{
    CEvaluationDesk desk;
    auto const before = desk.Evaluations();
    auto const look = [](QDialog& sheet) {
        QCOMPARE(sheet.windowTitle(), u"Edit Evaluation for Member ID 7"_s);
        for (int page = 0; page < 5; ++page) {
            ShowPage(sheet, page);
            QCOMPARE(Tabs(sheet).currentIndex(), page);
            QCoreApplication::processEvents();
            QCOMPARE(FaultsOf(sheet), QStringList());
        }
        ClickOk(sheet);
    };
    QVERIFY(desk.EditIt([&](QDialog& sheet) {
        QVERIFY(sheet.findChild<QWidget*>(u"trendChart"_s) == nullptr);
        look(sheet);
    }));
    QCOMPARE(desk.Evaluations(), before);
    desk.Store(2, CEFOleDateTime(2026, 1, 2), 70); // one before it, whose values stand beside
    RunOnMembers("DELETE FROM skinfolds WHERE eval_id = 3"); // rows that are not there are made
    CLargeFont const large;
    QVERIFY(desk.EditIt([&](QDialog& sheet) {
        QCOMPARE(Child<QLabel>(sheet, "weightEditNote").text(), u"last 140.13"_s);
        QCOMPARE(Child<QWidget>(sheet, "trendChart").accessibleDescription(),
            u"01/02/2026 to 11/05/2026; weight in pounds: 140.1 to 140.1; "
            "body fat in percent: 24.0 to 24.0"_s);
        look(sheet);
    }));
    QCOMPARE(desk.Evaluations()[0], before[0]);
    QCOMPARE(desk.Evaluations().filter(u"skinfolds: 3|0|0|0|"_s).size(), 1);
}

void EvaluationTest::showsTheRowsOfTheCircuit()
{
    for (int const count : {0, 8, 12, 13, 24}) {
        CCircuit circuit;
        circuit.m_nNumStations = count;
        circuit.m_arrStnName.assign(std::size_t(count), "Row");
        circuit.m_arrStnMinLift.assign(std::size_t(count), 5);
        circuit.m_arrStnMaxLift.assign(std::size_t(count), 300);
        CEvaluationRecord record;
        CPropertySheet sheet(u"Work"_s);
        sheet.AddPage(new CEvaluationWorkWtPg(circuit, record), u"Work Weights"_s);
        sheet.show();
        QVERIFY(QTest::qWaitForWindowExposed(&sheet));
        int shown = 0;
        for (int row = 1; row <= 24; ++row) {
            bool const isShown = Edit(sheet, u"lift%1Edit"_s.arg(row).toLatin1()).isVisible();
            QCOMPARE(isShown, row <= count);
            shown += isShown ? 1 : 0;
        }
        QCOMPARE(shown, count);
        QStringList headings;
        for (auto const* const label : sheet.findChildren<QLabel*>()) {
            headings += label->text().startsWith(u"Prog"_s) && label->isVisible()
                ? QStringList{label->text()}
                : QStringList();
        }
        QCOMPARE(headings.size(), count == 0 ? 0 : count > 12 ? 2 : 1);
        // Lifts are entered one after the other; Tab goes back up to the results afterwards.
        QCOMPARE(FaultsOf(sheet),
            count > 12 ? QStringList{u"Tab jumps from lift%1Edit to work1Edit"_s.arg(count)}
                       : QStringList());
    }
}

void EvaluationTest::anotherDesksChangesAreNotOverwritten()
{
    CEvaluationDesk desk;
    auto expected = desk.Evaluations();
    expected[0].replace(u"|61|0|"_s, u"|77|0|"_s);
    for (auto const* const sql :
        {"UPDATE evaluations SET sit_ups = 5", "UPDATE skinfolds SET chest = 5",
            "UPDATE lifts SET lift1 = 5", "DELETE FROM skinfolds", "DELETE FROM evaluations"}) {
        bool const isDeleted = QLatin1StringView(sql) == "DELETE FROM evaluations"_L1;
        desk.m_messages.AnswerNext({false, true});
        QVERIFY(desk.EditIt([&](QDialog& sheet) {
            for (int page = 0; page < 5; ++page) { // all of it is the user's
                ShowPage(sheet, page);
            }
            ShowPage(sheet, 1);
            Fill(sheet, {{"restingHREdit", u"77"_s}});
            RunOnMembers(sql);
            auto const theirs = desk.Evaluations();
            QCOMPARE(desk.Ok(sheet),
                (isDeleted ? u"This evaluation has been deleted at another place\nsince you opened "
                             u"the "
                             "form.\nDo you want to add the evaluation again?"_s
                           : u"This evaluation has been changed at another place\nsince you opened "
                             u"the "
                             "form.\nDo you want to replace those changes with yours?"_s)
                    + u" @restingHREdit"_s);
            QCOMPARE(desk.Evaluations(), theirs);
            QCOMPARE(desk.Ok(sheet), QString());
        }));
        auto const rows = desk.Evaluations();
        QCOMPARE(rows.size(), 3);
        QVERIFY(rows[0].contains(u"|77|0|"_s));
        QVERIFY(rows[1].startsWith(u"skinfolds: %1|24.0015|27|0|"_s.arg(isDeleted ? 1 : 3)));
    }
}

void EvaluationTest::aFailedWriteKeepsTheSheetAndTheRows()
{
    CEvaluationDesk desk;
    auto const failing = [&desk](int& failures) {
        return [&desk, &failures](QDialog& sheet) {
            Fill(sheet, {{"weightEdit", u"150"_s}, {"heightEdit", u"66"_s}});
            auto const before = desk.Evaluations();
            for (int nth = 1; sheet.isVisible() && nth < 60; ++nth) {
                Faults::Begin(nth, ENOSPC, true);
                auto const refusal = desk.Ok(sheet);
                bool const hit = Faults::End();
                if (!refusal.isEmpty()) {
                    QVERIFY(hit);
                    ++failures;
                    QCOMPARE(refusal,
                        u"Error: the evaluation was not saved.\n"
                        "Your entries are still in the form. @heightEdit"_s);
                    QCOMPARE(desk.Evaluations(), before);
                }
            }
        };
    };
    for (bool const isNew : {false, true}) {
        int failures = 0;
        QVERIFY(isNew ? desk.Add(failing(failures)) : desk.EditIt(failing(failures)));
        QVERIFY(failures > 0);
    }
    QCOMPARE(desk.Evaluations().size(), 6);
    RunOnMembers("ALTER TABLE skinfolds RENAME TO away");
    QVERIFY(!desk.Use({}, [&] { return desk.m_doc.EditEvaluationAt(7, kDateText); }));
    QVERIFY(desk.m_messages.Texts().constLast().endsWith(u"evaluation could not be read."_s));
}

void EvaluationTest::deletesAllThreeRowsAfterAsking()
{
    CEvaluationDesk desk;
    desk.Store(9, CEFOleDateTime(2026, 11, 6, 8, 0, 0), 62);
    auto const before = desk.Evaluations();
    QVERIFY(!desk.m_doc.DeleteEvaluationAt(7, kDateText));
    QCOMPARE(desk.Evaluations(), before);
    desk.m_messages.AnswerNext({true, true});
    QVERIFY(desk.m_doc.DeleteEvaluationAt(7, kDateText));
    QCOMPARE(desk.Evaluations(), (QStringList{before[1], before[3], before[5]}));
    QCOMPARE(desk.m_messages.Texts().constLast(),
        u"Are you sure you want to delete the evaluation\nfor Member ID: 7 dated 11/05/2026?"_s);
    QCOMPARE(desk.m_views.m_lstTreeCalls, QStringList{u"Refresh 7 -8 0"_s});
    // Another desk was faster.
    desk.m_messages.m_fnWhileShown = [] { RunOnMembers("DELETE FROM evaluations"); };
    QVERIFY(!desk.m_doc.DeleteEvaluationAt(7, u"11/06/2026 08:00:00"_s));
    QVERIFY(!desk.m_doc.EditEvaluationAt(7, kDateText));
    QCOMPARE(desk.m_views.m_lstResults.constLast(),
        u"Member ID 7 does not have this evaluation any more."_s);

    for (auto const& [entry, text] :
        {std::pair(0, u"No evaluations are recorded for Member ID 7 under Unknown"_s),
            {2, u"This command is not available yet."_s}}) {
        desk.m_messages.m_fnWhileShown = nullptr;
        desk.Use({[](QDialog& prompt) {
                      Type(Edit(prompt, "memberIDEdit"), u"7"_s);
                      ClickOk(prompt);
                  },
                     [entry = entry](QDialog& dialog) {
                         Choose(Child<CDropDown>(dialog, "classList"), entry);
                         ClickOk(dialog);
                     }},
            [&] { return desk.m_doc.ShowMemberEvaluations(), true; });
        QCOMPARE(desk.m_messages.Texts().constLast(), text);
        desk.Store(11 + entry, kDate, 60);
    }
    QCOMPARE(int(desk.m_doc.m_nEvalClassSel), 4);
    QCOMPARE(desk.m_doc.m_nEvalMemberSel, 7);
}

static CTestEntryOf<EvaluationTest> const g_entry;
#include "EvaluationTest.moc"
