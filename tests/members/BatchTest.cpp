#include "tests/QtTests.h"
#include "tests/members/MemberDesk.h"
#include "tests/ui/FormCheck.h"
#include "tests/ui/LargeFont.h"
#include "ui/ProgressDlg.h"

using namespace Qt::StringLiterals;

namespace
{

/// A desk with member 7, who comes first, and more from 8 on; and the list of those found.
class CBatchDesk : public CMemberDesk
{
public:
    explicit CBatchDesk(int last)
    {
        for (int id = 8; id <= last; ++id) {
            AddMember(id);
        }
    }

    void UseList(QString const& search, CDialogUser::Step const& step)
    {
        auto const useAndClose = [&step](QDialog& list) {
            step(list);
            list.reject();
        };
        Use({Steps(search), useAndClose}, [this] { return m_doc.FindMembers(), true; });
    }
    /// What is told after a button of the list, whose dialog takes the step, was pressed.
    QString PressAndWalk(QDialog const& list, QString const& button, CDialogUser::Step const& step)
    {
        auto const walkThrough = [&step](QDialog& form) {
            QCoreApplication::processEvents();
            QCOMPARE(FaultsOf(form), QStringList());
            step(form);
        };
        return Press(list, button, {walkThrough});
    }
    QString Result() const { return m_views.m_lstResults.constLast(); }
};

int RowsOf(QDialog const& list)
{
    return Child<QTreeView>(list, "recordList").model()->rowCount();
}

} // namespace

/// What is changed for all members of a list together.
class BatchTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void updatesEnrollmentsAndFillsTheListAnew();
    void replacesTheClassThatWasFound();
    void postsMessagesWhereThereIsNone();
    void passesOverWhoCannotBeChangedAndStops();
};

void BatchTest::updatesEnrollmentsAndFillsTheListAnew()
{
    CBatchDesk desk(21);
    auto const check = [](qsizetype count, int day, QString const& periodAndClub) {
        auto const date = QString::number(CEFOleDateTime(2026, 12, day).Seconds());
        auto const rows = CMemberDesk::Rows({u"enrollments"_s, u"members"_s});
        QCOMPARE(rows.filter(u"|%1|%1|"_s.arg(date) + periodAndClub).size(), count);
        QCOMPARE(rows.filter(u"|Doe|0"_s).size(), count - 1); // past, as is member 7
    };
    desk.UseList(u"OK"_s, [&](QDialog& list) {
        AddMember(22); // seen once the list is filled anew
        auto const enroll = [&](CDialogUser::Step const& step) {
            return desk.PressAndWalk(list, u"updateEnrollButton"_s, step);
        };
        // 15 members are no reason to ask.
        QCOMPARE(enroll([](QDialog& form) {
            QCOMPARE(Texts(form, u"enrollEdit expireEdit"_s), u"11/06/2026|12/06/2026"_s);
            QVERIFY(Edit(form, "enrollEdit").hasSelectedText()); // typing replaces it at once
            Do(form, u"enrollEdit=12/7/26 OK"_s);
            QVERIFY(Edit(form, "expireEdit").hasFocus());
            Do(form, u"expireEdit=120726 periodList=2 incentiveYesRadio pastRadio OK"_s);
        }),
            u"Error: expiration date cannot precede enrollment date"_s);
        check(15, 7, u"2|1"_s);
        QCOMPARE(desk.Result(), u"Enrollments updated for 15 of 15 members."_s);
        QCOMPARE(RowsOf(list), 16);

        // 16 are. Without the defaults of new members there is no period.
        CTestCentre::Run("DELETE FROM defaults");
        CLargeFont const large;
        desk.m_messages.AnswerNext({false, true});
        auto const question = u"This operation will alter numerous records and\n"
                              "may take a significant amount of time to complete.\n"
                              "Do you want to continue?"_s;
        auto const later = Steps(u"expireEdit=12/8/26 enrollEdit=12/8/26 OK"_s);
        QCOMPARE(enroll(later), question);
        check(15, 7, u"2|1"_s);
        QCOMPARE(enroll(later), question);
        check(16, 8, u"255|0"_s);
    });
    QCOMPARE(desk.m_views.m_lstTreeCalls, QStringList());
}

void BatchTest::replacesTheClassThatWasFound()
{
    CBatchDesk desk(8);
    AddClass(8, 2, "'Guests', '', ''");
    AddClass(8, 5, "'Staff', 'Wellness', 'Morning'");
    RunOnMembers("INSERT INTO workouts SELECT NULL, 8, 1, class_index, 4000000000 + class_index,"
                 " 4000003000, 2, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12 FROM classes"
                 " WHERE member_id = 8");
    CTestCentre::Run("UPDATE defaults SET grade_status = 3, re_eval_bonuses = 3, "
                     "other_bonuses = 4, flags = 0x20");
    QVERIFY(desk.m_doc.OnNewDocument());
    auto const change = [&](QString const& search, CDialogUser::Step const& step) {
        desk.UseList(search, [&](QDialog& list) {
            QVERIFY(desk.PressAndWalk(list, u"updateClassButton"_s, step)
                        .endsWith(u"No further member records are available."_s));
            QVERIFY(!list.isVisible());
        });
    };
    auto classes = desk.Rows({u"classes"_s});
    auto const workouts = desk.Rows({u"workouts"_s});
    change(u"@1 categoryList=Staff OK"_s, [&desk](QDialog& form) {
        desk.Refuses(form,
            {{u"reEvalSpin=100 otherSpin="_s, u"Enter an integer between 0 and 99. @reEvalSpin"_s},
                {u"reEvalSpin=3"_s, u"Enter an integer. @otherSpin"_s},
                {u"otherSpin=4"_s,
                    u"Error: select a category, course, and/or section @categoryList"_s}});
        Do(form, u"categoryList=Students OK"_s);
    });
    classes[0] = u"classes: 7|4|Students|PE 101||3|1|3|4"_s; // the centre's defaults
    classes[2] = u"classes: 8|5|Students|PE 101||3|1|3|4"_s;
    QCOMPARE(desk.Rows({u"classes"_s}), classes);
    QCOMPARE(desk.Rows({u"workouts"_s}), workouts);
    QCOMPARE(desk.Result(), u"Classes updated for 2 of 2 members."_s);
    QCOMPARE(
        desk.m_views.m_lstTreeCalls, (QStringList{u"Refresh 7 -10 0"_s, u"Refresh 8 -10 0"_s}));
    change(u"@1 categoryList=Students OK"_s,
        Steps(u"categoryList=Staff orientNoButton reEvalSpin=8 otherSpin=9 gradeList=2 "
              "deleteButton OK"_s));
    QCOMPARE(desk.Rows({u"classes"_s})[0], u"classes: 7|4|Staff|Wellness|Morning|2|0|8|9"_s);
    QCOMPARE(desk.Rows({u"workouts"_s}), workouts.filter(u": 8|1|2|"_s));
}

void BatchTest::postsMessagesWhereThereIsNone()
{
    CBatchDesk desk(8);
    CLargeFont const large;
    desk.UseList(u"OK"_s, [&](QDialog& list) {
        AddMember(9); // the list is not filled anew
        auto const longest = QString(200, u'x');
        for (auto const& [steps, first, second, result] :
            {std::tuple(u"messageEdit=%1y OK"_s.arg(longest), u"Bring a towel"_s, longest,
                 u"posted or kept"_s),
                {u"messageEdit=Closed replaceYesRadio OK"_s, u"Closed"_s, u"Closed"_s, u"posted"_s},
                {u"replaceYesRadio OK"_s, QString(), QString(), u"posted"_s}}) {
            QCOMPARE(desk.PressAndWalk(list, u"postMessageButton"_s, Steps(steps)), QString());
            QCOMPARE(desk.Rows({u"messages"_s}),
                (QStringList{u"messages: 7|"_s + first, u"messages: 8|"_s + second}));
            QCOMPARE(desk.Result(), u"Messages %1 for 2 of 2 members."_s.arg(result));
        }
        QCOMPARE(RowsOf(list), 2);
    });
}

void BatchTest::passesOverWhoCannotBeChangedAndStops()
{
    CBatchDesk desk(21);
    auto& messages = desk.m_messages;
    RunOnMembers("CREATE TRIGGER refuse BEFORE UPDATE ON members WHEN OLD.member_id IN"
                 " (9, 10, 11, 13, 14) BEGIN SELECT RAISE(ABORT, 'no'); END");
    auto const failed = u"Failed to update enrollment for "_s;
    desk.UseList(u"OK"_s, [&](QDialog& list) {
        // Meanwhile another program deletes one, and gives the ID of one to another member.
        messages.m_fnWhileShown = [&] {
            messages.m_fnWhileShown = nullptr;
            RunOnMembers("DELETE FROM members WHERE member_id = 12");
            RunOnMembers("UPDATE members SET member_id = 90, workout_number = 90"
                         " WHERE member_id = 15");
            AddMember(15);
        };
        QCOMPARE(desk.PressAndWalk(list, u"updateEnrollButton"_s, ClickOk),
            failed + u"Member ID 9|"_s + failed + u"Member ID 10|"_s + failed + u"Member ID 11|"_s
                + failed + u"3 more members"_s);
        QCOMPARE(messages.Messages().constLast().m_strDetail, u"Member IDs: 12, 13, 14"_s);
        QCOMPARE(messages.Messages().constLast().m_icon, CMessageIcon::exclamation);
        QCOMPARE(desk.Result(), u"Enrollments updated for 9 of 15 members, failed for 6."_s);
        auto const rows = desk.Rows({u"enrollments"_s}).join(u' ');
        QVERIFY(!rows.contains(u" 9|"_s) && !rows.contains(u" 15|"_s) && rows.contains(u" 90|"_s));
        // Stop ends after the member who is being changed. Nothing tells the ID of this one.
        RunOnMembers("DELETE FROM members WHERE member_id = 8");
        messages.m_fnWhileShown = [] {
            for (auto const* const window : QApplication::topLevelWidgets()) {
                if (qobject_cast<CProgressDlg const*>(window) != nullptr) {
                    Do(*window, u"stopButton"_s);
                }
            }
        };
        QCOMPARE(desk.PressAndWalk(list, u"updateEnrollButton"_s, ClickOk),
            failed + u"a member who was deleted"_s);
        QCOMPARE(
            desk.Result(), u"Enrollments updated for 1 of 15 members, failed for 1, stopped."_s);
        // Rows that are not shown are changed only when that is what the user wants.
        Type(Edit(list, "findEdit"), u"Archer"_s);
        QTRY_COMPARE(RowsOf(list), 1);
        messages.m_fnWhileShown = nullptr;
        auto const told = desk.Told( // no dialog opens
            {}, [&] { Do(list, u"updateEnrollButton postMessageButton"_s); });
        QCOMPARE(told.count(u"Only 1 of the 14 rows"_s), 2);
    });
}

static CTestEntryOf<BatchTest> const g_entry;
#include "BatchTest.moc"
