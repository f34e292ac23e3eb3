#include "tests/workouts/TreeFixture.h"

#include "tests/QtTests.h"

#include <QContextMenuEvent>
#include <QScrollBar>
#include <QToolTip>

#include <array>

using namespace Qt::StringLiterals;

class MemberTreeTest : public CTreeTest
{
    Q_OBJECT
private Q_SLOTS:
    void init() { m_window = std::make_unique<CTreeWindow>(); }
    void cleanup() { m_window.reset(); }
    void loadsWhatIsOpenedAndCanBeRead();
    void ordersByTextAndBearsHostileRows();
    void refreshReloadsWhatChanged();
    void whatIsInSightStaysThere();
    void editsDeletesAndSumsUp();
    void keysGoOpenAndFind();

private:
    /// Double clicks, Enter and Delete on a node ask for the target, whose date ends the path; a
    /// member is opened instead of edited. Then its summary.
    void Use(QString const& path, QString const& target, QString const& tip);
};

void MemberTreeTest::loadsWhatIsOpenedAndCanBeRead()
{
    auto const& messages = m_window->m_messages;
    auto const openWithout = [this](std::string const& table, QString const& path) {
        RunOnMembers("ALTER TABLE " + table + " RENAME TO hidden");
        Open(path);
        RunOnMembers("ALTER TABLE hidden RENAME TO " + table);
        QVERIFY(Children(path).isEmpty() && !IsOpen(path));
    };
    openWithout("members", {});
    QCOMPARE(messages.Texts(), QStringList{u"Error: the members could not be loaded."_s});
    QVERIFY(!messages.Messages().constFirst().m_strDetail.isEmpty());
    StoreAnn(); // what is there before a node is opened is seen, what comes later is not
    ClickButton(Node());
    QCOMPARE(Children(), QStringList{kAnn});
    StoreRecords(5, CEFOleDateTime(2026, 2, 3));
    openWithout("workouts", kWorkouts);
    for (auto const& branch : Children(kAnn)) {
        Open(kAnn + u'|' + branch);
    }
    RunOnMembers("DELETE FROM members");
    for (auto const& path : {kWorkouts, QString()}) {
        Tree().collapse(Node(path));
        Open(path);
    }
    QCOMPARE(Children(kWorkouts), (QStringList{kNewerText, u"02/03/2026 00:00:00"_s, kOlderText}));
    QCOMPARE(messages.Texts().size(), 2);
}

void MemberTreeTest::ordersByTextAndBearsHostileRows()
{
    using namespace std::string_literals;
    auto const width = [this] { return Tree().visualRect(Node()).right() + 1; };
    auto const withNul = u"a\0b, c\nd "_s;
    // In the order of last names "Lee" stands before "Lee Ann"; by text "," comes after " ".
    StoreMember(3, "zeta", "Al");
    StoreMember(5, "Lee", "Zoe", {}, 0); // past members are shown too
    StoreMember(6, "Lee Ann", "Bo");
    StoreMember(9, "LEE", "abe");
    StoreMember(7, "", "Yan", "Q");
    StoreMember(12, "Äßel", "Éva", "Ő");
    StoreMember(2, "a\0b"s, "c\nd");
    // NOLINTNEXTLINE(misc-misleading-bidirectional): it is to mislead
    StoreMember(1, "\xD7\x9B\xD7\x94\xD7\x9F\xE2\x80\xAE", "\xD7\x93"); // right to left
    StoreMember(4, "<b>x</b>", "\xFF\xFE");
    StoreMember(999'999'999, "");
    for (auto const& when : {kNewer, kNewer, CEFOleDateTime(), CEFOleDateTime::Invalid()}) {
        StoreRecords(2, when); // two of one second: both are shown
    }
    Open(withNul + u"|Workouts"_s);
    QCOMPARE(Children().first(9),
        (QStringList{{}, u"<b>x</b>, \uFFFD\uFFFD "_s, withNul, u"Lee Ann, Bo "_s, u"LEE, abe "_s,
            u"Lee, Zoe "_s, u"Yan Q"_s, u"zeta, Al "_s, u"Äßel, Éva Ő"_s}));
    QCOMPARE(Children(withNul + u"|Workouts"_s),
        (QStringList{kNewerText, kNewerText, u"12/30/1899 00:00:00"_s, u"Invalid DateTime"_s}));
    QVERIFY(Node(withNul).data(Qt::FontRole).value<QFont>().bold());
    QCOMPARE(Tree().visualRect(Node(withNul)).height(), Tree().visualRect(Node()).height());
    QCOMPARE(width(), Tree().viewport()->width());
    RunOnMembers("UPDATE members SET last_name = printf('%.20000c', 'W') WHERE member_id = 3");
    QVERIFY(Tree().RefreshMemberNode(3, kMembersNode, 0));
    QVERIFY(width() > 20'000 && !Tree().grab().isNull());
    Tree().ResetTree();
    QCOMPARE(width(), Tree().viewport()->width());
    Open();
    QCOMPARE(Children().size(), 10); // loaded anew
}

void MemberTreeTest::refreshReloadsWhatChanged()
{
    StoreAnn();
    StoreMember(6, "Baker");
    QVERIFY(!Tree().RefreshMemberNode(5, kWorkoutsNode, 0)); // not loaded, so not shown
    QString shown; // the branches and their records after each refresh
    for (auto const kind : {TreeNodeOf(CDAOWk()), TreeNodeOf(CDAOEval()),
             TreeNodeOf(CDAOBodyComp()), kNoneFoundNode, TreeNodeOf(CDAOMem())}) {
        for (auto const& branch : kBranches) {
            Open(branch);
        }
        StoreRecords(5, CEFOleDateTime(2026, 11, -kind));
        QVERIFY(Tree().RefreshMemberNode(5, kind, 0));
        shown += u' ';
        for (auto const& branch : kBranches) {
            shown += (IsOpen(branch) ? u'+' : u'-') + QString::number(Children(branch).size());
        }
    }
    QCOMPARE(shown, u" -0+2+2 +3-0+2 +3+4-0 +3+4+5 -0-0-0"_s);
    QCOMPARE(TreeNodeOf(CDAOSmEval()), kEvaluationsNode);

    auto const young = u"Young, Ann B"_s;
    Tree().setCurrentIndex(Node(kAnn));
    RunOnMembers("UPDATE members SET member_id = 50, last_name = 'Young' WHERE member_id = 5");
    QVERIFY(!Tree().RefreshMemberNode(5, kMembersNode, 60));
    QVERIFY(Tree().RefreshMemberNode(50, kMembersNode, 5));
    QCOMPARE(Children(), (QStringList{young, u"Baker, "_s})); // it keeps its place
    QVERIFY(Current() == young && IsOpen(young));
    Open(young + u"|Workouts|"_s + kNewerText); // by the new number
    Press(Qt::Key_Return);
    QCOMPARE(m_window->m_lstAsked, QStringList{u"Edit -9 50 "_s + kNewerText});
    RunOnMembers("DELETE FROM members"); // one that is gone keeps its name until it is removed
    QVERIFY(Tree().RefreshMemberNode(50, kMembersNode, 0));
    Tree().setCurrentIndex(Node(young));
    QVERIFY(Tree().RemoveMemberNode(50));
    QCOMPARE(Current(), u"Baker, "_s);
}

void MemberTreeTest::whatIsInSightStaysThere()
{
    for (int i = 100; i < 190; ++i) {
        StoreMember(i, "M" + std::to_string(i));
    }
    StoreMember(190, std::string(60, 'W')); // out of sight
    StoreRecords(110, kNewer);
    auto const first = [this] { return Tree().indexAt({}).data().toString(); };
    QVERIFY(!Tree().AddMemberNode(99) && Tree().AddMemberNode(185)); // before the others load
    Open(u"M110, |Workouts"_s);
    QCOMPARE(Children().size(), 91);
    Tree().setCurrentIndex(Node(u"M140, "_s));
    Tree().scrollTo(Node(u"M130, "_s), QAbstractItemView::PositionAtTop);
    StoreMember(2, "m109b");
    QVERIFY(Tree().AddMemberNode(2));
    QVERIFY(Tree().RemoveMemberNode(105) && Tree().RemoveMemberNode(106));
    QVERIFY(Tree().RefreshMemberNode(110, kWorkoutsNode, 0));
    QCOMPARE(first(), u"M130, "_s);
    QVERIFY(Tree().RemoveMemberNode(130));
    QCOMPARE(first(), u"M131, "_s);
    QCOMPARE(Tree().selectionModel()->selectedIndexes(), QModelIndexList{Node(u"M140, "_s)});
    QCOMPARE(Current(), u"M140, "_s);

    Open(u"M110, |Workouts"_s);
    QCOMPARE(Tree().columnWidth(0), Tree().viewport()->width());
    Tree().scrollToBottom();
    QVERIFY(Tree().columnWidth(0) > Tree().viewport()->width());
    Tree().verticalScrollBar()->setValue(Tree().verticalScrollBar()->value() - 1);
    auto const before = first();
    QVERIFY(Tree().RemoveMemberNode(107) && Tree().RefreshMemberNode(110, kWorkoutsNode, 0));
    QCOMPARE(first(), before);
}

void MemberTreeTest::editsDeletesAndSumsUp()
{
    Open();
    QCOMPARE(Children(), QStringList{u"None Found"_s});
    StoreAnn();
    QVERIFY(Tree().AddMemberNode(5)); // takes the place of "None Found"
    Open(kAnn);
    Use(kProfile, {}, {}); // before the members are loaded
    Tree().collapse(Node());
    StoreMember(6, "Baker", {}, {}, 0);
    RunOnMembers("INSERT INTO enrollments (member_id, enroll_date, expire_date, period, incentive)"
                 " SELECT 5, 0, check_in, 0, 0 FROM workouts WHERE check_out > check_in + 1000");
    StoreRecords(5, CEFOleDateTime::FromSeconds(std::int64_t(1) << 60)); // no date
    for (auto const& branch : kBranches + QStringList{u"Baker, |Workouts"_s}) {
        Open(branch);
    }
    QCOMPARE(Children(), (QStringList{kAnn, u"Baker, "_s}));
    auto const ann = u"ID: 5, Status: Current, Expiration: 12/31/2025"_s;
    QString const member = u"-10 5 "_s, wk = u"-9 5 "_s, eval = u"-8 5 "_s, comp = u"-7 5 "_s;
    QString const older = u'|' + kOlderText, newer = u'|' + kNewerText;
    using CRow = std::array<QString, 3>;
    for (auto const& [path, target, tip] :
        {CRow{}, {kAnn, member, ann}, {kProfile, member, ann}, {kWorkouts},
            {u"Baker, "_s, u"-10 6 "_s, u"ID: 6, Status: Past, Expiration: 12/30/1899"_s},
            {u"Baker, |Workouts|None Found"_s},
            {kWorkouts + older, wk, u"Total Minutes: 45, Status: OK"_s},
            {kWorkouts + newer, wk, u"Total Minutes: 9, Status: Not OK"_s},
            {kWorkouts + u"|Invalid DateTime"_s, wk},
            {kEvaluations + older, eval, u"Resting HR: 62, BP: 121/79, Wt: 180"_s},
            {kEvaluations + newer, eval, u"Resting HR: 62, BP: 121/79, Wt: 0"_s},
            {kBodyComps + older, comp, u"Body Fat%: 21.46, Wt: 180"_s},
            {kBodyComps + newer, comp, u"Body Fat%: -4.00, Wt: 0"_s}}) {
        Use(path, target, tip);
    }
    RunOnMembers("DELETE FROM members");
    Use(kProfile, member, {});
    Use(kWorkouts + older, wk, {});
}

void MemberTreeTest::Use(QString const& path, QString const& target, QString const& tip)
{
    auto const node = Node(path);
    auto const asked = (target + path.section(u'|', 2)).trimmed();
    int const edits = target.isEmpty() || !path.contains(u'|') ? 0 : 3;
    auto const isShown = [this](QString const& text) {
        return QToolTip::isVisible() == !text.isEmpty() && QToolTip::text() == text
            && m_window->statusBar()->currentMessage() == text
            && Tree().accessibleDescription() == text;
    };
    m_window->m_lstAsked = {path};
    for (bool const open : {false, true}) {
        Tree().setExpanded(node, open);
        for (auto const button : {Qt::MiddleButton, Qt::RightButton, Qt::LeftButton}) {
            Click(node, button, true);
        }
        QCOMPARE(Tree().isExpanded(node), open && Tree().model()->hasChildren(node));
        QVERIFY(!node.parent().isValid() || Tree().isExpanded(node.parent()));
    }
    Press(Qt::Key_Return);
    Press(Qt::Key_Delete);
    QCOMPARE(m_window->m_lstAsked,
        QStringList{path} + QStringList(edits, u"Edit "_s + asked)
            + QStringList(target.isEmpty() ? 0 : 1, u"Delete "_s + asked));
    QContextMenuEvent menuKey(QContextMenuEvent::Keyboard, {}, {});
    QCoreApplication::sendEvent(Tree().viewport(), &menuKey);
    QVERIFY2(isShown(tip), qPrintable(path));
    Tree().setCurrentIndex(node.siblingAtRow(node.row() == 0 ? 1 : 0)); // takes it away
    QTRY_VERIFY(isShown({}));
    Click(node, Qt::RightButton);
    QVERIFY2(isShown(tip), qPrintable(path));
    QCOMPARE(Tree().currentIndex(), node);
    QVERIFY(Tree().RefreshMemberNode(5, kNoneFoundNode, 0)); // too
    QTRY_VERIFY(isShown({}));
}

void MemberTreeTest::keysGoOpenAndFind()
{
    auto const al = u"Baker, Al "_s;
    auto const cy = u"Baker-Cy, Di "_s;
    StoreAnn();
    StoreMember(6, "Baker", "Al");
    StoreMember(7, "Baker-Cy", "Di");
    auto const root = u"Members"_s;
    Tree().setCurrentIndex(Node());
    // "*" would load every record of the centre if it opened everything below.
    for (auto const& [key, current] : {std::pair(Qt::Key_Asterisk, root), {Qt::Key_End, cy},
             {Qt::Key_Home, root}, {Qt::Key_Down, kAnn}, {Qt::Key_Plus, kAnn},
             {Qt::Key_Right, u"Body Compositions"_s}, {Qt::Key_Left, kAnn}, {Qt::Key_Left, kAnn},
             {Qt::Key_Down, al}, {Qt::Key_Home, root}, {Qt::Key_Minus, root}, {Qt::Key_Down, root},
             {Qt::Key_Plus, root}, {Qt::Key_Down, kAnn}}) {
        Press(key);
        QCOMPARE(Current(), current);
        QVERIFY(Tree().selectionModel()->isSelected(Tree().currentIndex()));
    }
    Tree().expand(Node(cy));
    auto const interval = QApplication::keyboardInputInterval();
    QApplication::setKeyboardInputInterval(60'000);
    QTest::keyClicks(Tree().viewport(), u"b"_s);
    QCOMPARE(Current(), al);
    QTest::keyClicks(Tree().viewport(), u"aker-CY, d"_s);
    QApplication::setKeyboardInputInterval(interval);
    QVERIFY(Current() == cy && IsOpen(cy)); // not closed by the minus
    ClickButton(Node(), Qt::RightButton);
    QVERIFY(IsOpen());
    Tree().setCurrentIndex(First(Node(cy)));
    ClickButton(Node());
    QCOMPARE(Current(), root); // closed with the current one in it
}

static CTestEntryOf<MemberTreeTest> const g_entry;
#include "MemberTreeTest.moc"
