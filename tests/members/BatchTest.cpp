#include "tests/QtTests.h"
#include "tests/members/MemberDesk.h"
#include "tests/ui/FormCheck.h"
#include "tests/ui/LargeFont.h"
#include "ui/ProgressDlg.h"

#include <QRadioButton>

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
    QStringList Press(QDialog const& list, QString const& button, CDialogUser::Step const& step)
    {
        auto const before = m_messages.Texts().size();
        auto const walkThrough = [&step](QDialog& form) {
            QCoreApplication::processEvents();
            QCOMPARE(FaultsOf(form), QStringList());
            step(form);
        };
        Use({walkThrough}, [&] { return Do(list, button), true; });
        return m_messages.Texts().sliced(before);
    }
    /// How many rows of a table read so.
    static qsizetype Count(QString const& table, QString const& cells)
    {
        return Rows({table}).filter(cells).size();
    }
    QString Result() const { return m_views.m_lstResults.constLast(); }
};

int RowsOf(QDialog const& list)
{
    return Child<QTreeView>(list, "recordList").model()->rowCount();
}

auto const kEnroll = u"updateEnrollButton"_s;
auto const kPost = u"postMessageButton"_s;
auto const kClass = u"updateClassButton"_s;
auto const kNumerous = u"This operation will alter numerous records and\n"
                       "may take a significant amount of time to complete.\n"
                       "Do you want to continue?"_s;

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
    desk.UseList(u"OK"_s, [&](QDialog& list) {
        QCOMPARE(desk.Press(list, kEnroll, ClickCancel), QStringList());
        AddMember(22); // seen once the list is filled anew
        auto const begin = u"enrollments: %1|"_s;
        auto const told = desk.Press(list, kEnroll, [&](QDialog& form) {
            QCOMPARE(Edit(form, "enrollEdit").selectedText(), u"11/06/2026"_s);
            QCOMPARE(Texts(form, u"expireEdit"_s), u"12/06/2026"_s);
            QCOMPARE(Child<QComboBox>(form, "periodList").currentIndex(), 0);
            QVERIFY(Child<QRadioButton>(form, "currentRadio").isChecked());
            desk.Refuses(form,
                {{u"enrollEdit=12/7/26"_s,
                     u"Error: expiration date cannot precede enrollment date @expireEdit"_s},
                    {u"expireEdit=soon"_s, u"Enter a date, such as 11/24/2026. @expireEdit"_s}});
            Do(form, u"expireEdit=120726 periodList=2 incentiveYesRadio pastRadio OK"_s);
        });
        QCOMPARE(told.size(), 2); // 15 members are no reason to ask
        auto const day = QString::number(CEFOleDateTime(2026, 12, 7).Seconds());
        QCOMPARE(desk.Count(u"enrollments"_s, u"|%1|%1|2|1"_s.arg(day)), 15);
        QCOMPARE(desk.Count(u"members"_s, u"|0"_s), 15);
        QCOMPARE(desk.Result(), u"Enrollments updated for 15 of 15 members."_s);
        QCOMPARE(RowsOf(list), 16);

        // Without the defaults of new members; 16 are.
        CTestCentre::Run("DELETE FROM defaults");
        auto const rows = desk.Rows();
        QCOMPARE(desk.Press(list, kEnroll, ClickOk), QStringList{kNumerous});
        QCOMPARE(desk.Rows(), rows);
        desk.m_messages.AnswerNext({true});
        CLargeFont const large;
        QCOMPARE(desk.Press(list, kEnroll, ClickOk), QStringList{kNumerous});
        auto const today = QString::number(CEFOleDateTime(2026, 11, 6).Seconds());
        QCOMPARE(desk.Count(u"enrollments"_s, u"|%1|%1|255|0"_s.arg(today)), 16);
        QCOMPARE(desk.Count(u"members"_s, u"|0"_s), 16);
    });
    QCOMPARE(desk.m_views.m_lstTreeCalls, QStringList());
}

void BatchTest::replacesTheClassThatWasFound()
{
    CBatchDesk desk(8);
    AddClass(8, 2, "'Guests', '', ''");
    AddClass(8, 5, "'Staff', 'Wellness', 'Morning'");
    for (auto const* const index : {"2", "5"}) {
        RunOnMembers(std::string("INSERT INTO workouts SELECT NULL, 8, 1, ") + index
            + ", 4000000000 + " + index + ", 4000003000, 2, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12");
    }
    auto const none = u"No further member records are available."_s;
    auto const change = [&](QString const& search, QString const& steps) {
        desk.UseList(search, [&](QDialog& list) {
            QCOMPARE(desk.Press(list, kClass, Steps(steps)), QStringList{none});
            QVERIFY(!list.isVisible());
        });
    };
    auto classes = desk.Rows({u"classes"_s});
    auto workouts = desk.Rows({u"workouts"_s});
    change(u"@1 categoryList=Staff OK"_s,
        u"categoryList=Students orientNoButton reEvalSpin=8 otherSpin=9 gradeList=2 OK"_s);
    classes[0] = u"classes: 7|4|Students|PE 101||2|0|8|9"_s;
    classes[2] = u"classes: 8|5|Students|PE 101||2|0|8|9"_s;
    QCOMPARE(desk.Rows({u"classes"_s}), classes);
    QCOMPARE(desk.Rows({u"workouts"_s}), workouts);
    QCOMPARE(desk.Result(), u"Classes updated for 2 of 2 members."_s);
    QCOMPARE(
        desk.m_views.m_lstTreeCalls, (QStringList{u"Refresh 7 -10 0"_s, u"Refresh 8 -10 0"_s}));
    change(u"@1 categoryList=Students OK"_s, u"categoryList=Staff deleteButton OK"_s);
    QCOMPARE(desk.Count(u"classes"_s, u"|Staff|Wellness|Morning|"_s), 2);
    QCOMPARE(desk.Rows({u"workouts"_s}), workouts.filter(u": 8|1|2|"_s));
}

void BatchTest::postsMessagesWhereThereIsNone()
{
    CBatchDesk desk(8);
    desk.UseList(u"OK"_s, [&](QDialog& list) {
        auto const post = [&](QString const& steps, QStringList const& rows) {
            QCOMPARE(desk.Press(list, kPost, Steps(steps)), QStringList());
            QCOMPARE(desk.Rows({u"messages"_s}), rows);
        };
        AddMember(9); // the list is not filled anew
        auto const towel = u"messages: 7|Bring a towel"_s;
        auto const longest = QString(200, u'x');
        post(u"messageEdit=%1y OK"_s.arg(longest), {towel, u"messages: 8|"_s + longest});
        QCOMPARE(desk.Result(), u"Messages posted or kept for 2 of 2 members."_s);
        CLargeFont const large;
        post(u"messageEdit=Closed replaceYesRadio OK"_s,
            {u"messages: 7|Closed"_s, u"messages: 8|Closed"_s});
        post(u"replaceYesRadio OK"_s, {u"messages: 7|"_s, u"messages: 8|"_s});
        QCOMPARE(desk.Result(), u"Messages posted for 2 of 2 members."_s);
        QCOMPARE(RowsOf(list), 2);
    });
}

void BatchTest::passesOverWhoCannotBeChangedAndStops()
{
    CBatchDesk desk(21);
    RunOnMembers("CREATE TRIGGER refuse BEFORE UPDATE ON members WHEN OLD.member_id IN"
                 " (9, 10, 11, 13, 14) BEGIN SELECT RAISE(ABORT, 'no'); END");
    auto const failed
        = [](QString const& whom) { return u"Failed to update enrollment for "_s + whom; };
    QStringList const first
        = {failed(u"Member ID 9"_s), failed(u"Member ID 10"_s), failed(u"Member ID 11"_s)};
    desk.UseList(u"OK"_s, [&](QDialog& list) {
        // Meanwhile another program deletes one, and gives the ID of one to another member.
        desk.m_messages.m_fnWhileShown = [&] {
            desk.m_messages.m_fnWhileShown = nullptr;
            RunOnMembers("DELETE FROM members WHERE member_id = 12");
            RunOnMembers("UPDATE members SET member_id = 90 WHERE member_id = 15");
            AddMember(15);
        };
        RunOnMembers("UPDATE members SET workout_number = 91 WHERE member_id = 15");
        QCOMPARE(
            desk.Press(list, kEnroll, ClickOk), first + QStringList{failed(u"3 more members"_s)});
        auto const& last = desk.m_messages.Messages().constLast();
        QCOMPARE(last.m_strDetail, u"Member IDs: 12, 13, 14"_s);
        QCOMPARE(last.m_icon, CMessageIcon::exclamation);
        QCOMPARE(desk.Result(), u"Enrollments updated for 9 of 15 members, failed for 6."_s);
        for (auto const& [id, count] : {std::pair(9, 0), {15, 0}, {16, 1}, {90, 1}}) {
            QCOMPARE(desk.Count(u"enrollments"_s, u": %1|"_s.arg(id)), count);
        }

        // Of one deleted before, nothing tells the ID. A row more that failed is told by itself.
        RunOnMembers("DELETE FROM members WHERE member_id IN (13, 21)");
        desk.Press(list, kEnroll, ClickOk);
        QCOMPARE(desk.m_messages.Messages().constLast().m_strDetail,
            u"Member IDs: deleted, 14, deleted"_s);
        QCOMPARE(
            desk.Press(list, kEnroll, ClickOk), first + QStringList{failed(u"Member ID 14"_s)});

        // Stop ends after the member who is being changed.
        desk.m_messages.m_fnWhileShown = [] {
            for (auto* const window : QApplication::topLevelWidgets()) {
                if (qobject_cast<CProgressDlg*>(window) != nullptr) {
                    Do(*window, u"stopButton"_s);
                }
            }
        };
        QCOMPARE(desk.Press(list, kEnroll, ClickOk), first.first(1));
        QCOMPARE(
            desk.Result(), u"Enrollments updated for 2 of 13 members, failed for 1, stopped."_s);
        desk.m_messages.m_fnWhileShown = nullptr;

        // Rows that are not shown are changed only when that is what the user wants.
        Type(Edit(list, "findEdit"), u"Archer"_s);
        QTRY_COMPARE(RowsOf(list), 1);
        auto const rows = desk.Rows();
        auto const before = desk.m_messages.Texts().size();
        Do(list, kEnroll + u' ' + kPost);
        QCOMPARE(
            desk.m_messages.Texts().sliced(before).filter(u"Only 1 of the 13 rows"_s).size(), 2);
        QCOMPARE(desk.Rows(), rows);
    });
}

static CTestEntryOf<BatchTest> const g_entry;
#include "BatchTest.moc"
