#include "tests/workouts/TreeFixture.h"

#include "tests/QtTests.h"

#include <algorithm>
#include <map>

using namespace Qt::StringLiterals;

class MemberTreeTest : public CTreeTest
{
    Q_OBJECT
private Q_SLOTS:
    void init() { MakeWindow(); }
    void cleanup() { CloseWindow(); }
    void loadsOnlyWhatIsOpened();
    void loadsAtStartOnceItIsPainted();
    void ordersByText();
    void composesNames_data();
    void composesNames();
    void showsWhereNothingIsFound();
    void refreshReloadsTheBranchOfItsKind();
    void changedMembersKeepTheirPlace();
    void longNamesScroll();
    void addedMembersStandWhereTheyBelong();
    void tellsWhatCannotBeRead();
    void bearsHostileRows();
    void knowsTheKindsOfRecordSets();
};

void MemberTreeTest::loadsOnlyWhatIsOpened()
{
    QCOMPARE(Children({u"Members"_s}), QStringList());
    QVERIFY(!m_tree->isExpanded(Node({u"Members"_s})));
    StoreAnn(); // what is there before a node is opened is seen, what comes later is not

    auto const root = Node({u"Members"_s});
    auto const arrow = QPoint(m_tree->visualRect(root).left() / 2, Place(root).y());
    QTest::mouseClick(m_tree->viewport(), Qt::LeftButton, {}, arrow);
    QCOMPARE(Children({u"Members"_s}), QStringList{kAnn});
    QCOMPARE(m_progress->m_lstSentences, QStringList{u"Loading members, please wait... 1"_s});

    QStringList const branches{
        u"Body Compositions"_s, u"Evaluations"_s, u"Profile"_s, u"Workouts"_s};
    Open({u"Members"_s, kAnn});
    QCOMPARE(Children({u"Members"_s, kAnn}), branches);
    StoreWorkout(5, CEFOleDateTime(2026, 2, 3));
    for (auto const& branch : branches) {
        QCOMPARE(Children({u"Members"_s, kAnn, branch}), QStringList());
        Open({u"Members"_s, kAnn, branch});
    }
    QCOMPARE(Children({u"Members"_s, kAnn, u"Workouts"_s}),
        (QStringList{kNewerText, u"02/03/2026 00:00:00"_s, kOlderText}));
    QCOMPARE(m_progress->m_lstSentences.mid(1),
        (QStringList{
            u"Loading evaluations, please wait... 1"_s, u"Loading workouts, please wait... 3"_s}));

    RunOnMembers("DELETE FROM members");
    for (auto const& texts : {QStringList{u"Members"_s, kAnn, u"Workouts"_s}, {u"Members"_s}}) {
        m_tree->collapse(Node(texts));
        Open(texts);
    }
    QCOMPARE(Children({u"Members"_s, kAnn, u"Workouts"_s}).size(), 3);
    QCOMPARE(m_progress->m_lstSentences.size(), 3);
    QVERIFY(m_messages->Texts().isEmpty());
}

void MemberTreeTest::loadsAtStartOnceItIsPainted()
{
    StoreAnn();
    m_window->hide();
    m_tree->LoadWhenShown();
    QCoreApplication::processEvents();
    QCOMPARE(Children({u"Members"_s}), QStringList());
    m_window->show();
    QTRY_COMPARE(Children({u"Members"_s}), QStringList{kAnn});
    QVERIFY(m_tree->isExpanded(Node({u"Members"_s})));
    QCOMPARE(m_progress->m_lstSentences.size(), 1);
}

void MemberTreeTest::ordersByText()
{
    // In the order of last names "Lee" stands before "Lee Ann"; by text "," comes after " ".
    StoreMember(3, "zeta", "Al");
    StoreMember(4, "Lee", "Zoe", {}, 0); // past members are shown too
    StoreMember(6, "Lee Ann", "Bo");
    StoreMember(9, "LEE", "abe");
    StoreMember(8, "Lee", "Abe");
    StoreMember(7, "", "Yan");
    StoreAnn();
    Open({u"Members"_s});
    QCOMPARE(Children({u"Members"_s}),
        (QStringList{kAnn, u"Lee Ann, Bo "_s, u"LEE, abe "_s, u"Lee, Abe "_s, u"Lee, Zoe "_s,
            u"Yan "_s, u"zeta, Al "_s}));
    // By time the older one would come first.
    Open({u"Members"_s, kAnn, u"Workouts"_s});
    QCOMPARE(Children({u"Members"_s, kAnn, u"Workouts"_s}), (QStringList{kNewerText, kOlderText}));

    std::map<QString, int> const codes{{u"Body Compositions"_s, -7}, {u"Evaluations"_s, -8},
        {u"Profile"_s, -6}, {u"Workouts"_s, -9}};
    QCOMPARE(Node({u"Members"_s}).data(CMemberTreeModel::kCodeRole).toInt(), -10);
    QCOMPARE(Node({u"Members"_s, kAnn}).data(CMemberTreeModel::kCodeRole).toInt(), 5);
    QVERIFY(Node({u"Members"_s, kAnn}).data(Qt::FontRole).value<QFont>().bold());
    for (auto const& [text, code] : codes) {
        auto const node = Node({u"Members"_s, kAnn, text});
        QCOMPARE(node.data(CMemberTreeModel::kCodeRole).toInt(), code);
        QVERIFY(!node.data(Qt::FontRole).isValid());
        QCOMPARE(Model().hasChildren(node), code != -6);
    }
}

void MemberTreeTest::composesNames_data()
{
    QTest::addColumn<QString>("last");
    QTest::addColumn<QString>("first");
    QTest::addColumn<QString>("middle");
    QTest::addColumn<QString>("text");
    QTest::newRow("whole") << u"Archer"_s << u"Ann"_s << u"B"_s << u"Archer, Ann B"_s;
    QTest::newRow("no first") << u"Archer"_s << QString() << u"B"_s << u"Archer, B"_s;
    QTest::newRow("no last") << QString() << u"Ann"_s << u"B"_s << u"Ann B"_s;
    QTest::newRow("no initial") << u"Archer"_s << u"Ann"_s << QString() << u"Archer, Ann "_s;
    QTest::newRow("none") << QString() << QString() << QString() << QString();
    QTest::newRow("accents") << u"Äßel"_s << u"Éva"_s << u"Ő"_s << u"Äßel, Éva Ő"_s;
}

void MemberTreeTest::composesNames()
{
    QFETCH(QString const, last);
    QFETCH(QString const, first);
    QFETCH(QString const, middle);
    QFETCH(QString const, text);
    StoreMember(5, FromQt(last), FromQt(first), FromQt(middle));
    Open({u"Members"_s});
    QCOMPARE(Children({u"Members"_s}), QStringList{text});
}

void MemberTreeTest::showsWhereNothingIsFound()
{
    QStringList const none{u"None Found"_s};
    auto const root = Open({u"Members"_s});
    QCOMPARE(Children({u"Members"_s}), none);
    QCOMPARE(Node({u"Members"_s, u"None Found"_s}).data(CMemberTreeModel::kCodeRole).toInt(), -5);
    QVERIFY(m_progress->m_lstSentences.isEmpty());
    m_tree->collapse(root);
    Open({u"Members"_s});
    QCOMPARE(Children({u"Members"_s}), none);

    StoreAnn();
    QVERIFY(m_tree->AddMemberNode(5)); // takes the place of "None Found"
    QCOMPARE(Children({u"Members"_s}), QStringList{kAnn});
    StoreMember(6, "Baker", "Cy");
    m_tree->collapse(root);
    Open({u"Members"_s}); // only now the members are loaded
    QCOMPARE(Children({u"Members"_s}), (QStringList{kAnn, u"Baker, Cy "_s}));

    QStringList const branch{u"Members"_s, kAnn, u"Body Compositions"_s};
    Open(branch);
    QCOMPARE(Children(branch), none);
    StoreBodyComp(5, kNewer, 0.0, 0.0);
    m_tree->collapse(Node(branch));
    Open(branch);
    QCOMPARE(Children(branch), none); // loaded, until it is told
    QVERIFY(m_tree->RefreshMemberNode(5, kBodyCompsNode, 0));
    QVERIFY(!m_tree->isExpanded(Node(branch)));
    Open(branch);
    QCOMPARE(Children(branch), QStringList{kNewerText});
}

void MemberTreeTest::refreshReloadsTheBranchOfItsKind()
{
    StoreAnn();
    QVERIFY(!m_tree->RefreshMemberNode(5, kWorkoutsNode, 0)); // not loaded, so not shown
    QStringList const workouts{u"Members"_s, kAnn, u"Workouts"_s};
    QStringList const evaluations{u"Members"_s, kAnn, u"Evaluations"_s};
    Open({u"Members"_s});
    auto const reloads = [&](CTreeNode kind) {
        Open(workouts);
        Open(evaluations);
        RunOnMembers("DELETE FROM workouts");
        StoreWorkout(5, kNewer);
        StoreWorkout(5, CEFOleDateTime(2026, 11, 5));
        RunOnMembers("DELETE FROM evaluations");
        StoreEvaluation(5, kOlder);
        StoreEvaluation(5, kNewer);
        StoreEvaluation(5, CEFOleDateTime(2026, 11, 5));
        auto const before = Children(workouts) + Children(evaluations);
        bool const known = m_tree->RefreshMemberNode(5, kind, 0);
        QString open;
        open += m_tree->isExpanded(Node(workouts)) ? u"W"_s : QString();
        open += m_tree->isExpanded(Node(evaluations)) ? u"E"_s : QString();
        return u"%1 %2 %3 %4"_s.arg(known ? 1 : 0)
            .arg(open)
            .arg(Children(workouts).size())
            .arg(Children(evaluations).size());
    };
    QCOMPARE(reloads(kWorkoutsNode), u"1 E 0 1"_s);
    QCOMPARE(reloads(kEvaluationsNode), u"1 W 2 0"_s);
    QCOMPARE(reloads(kNoneFoundNode), u"1 WE 2 3"_s);
    QCOMPARE(reloads(kMembersNode), u"1  0 0"_s);
    QVERIFY(m_tree->isExpanded(Node({u"Members"_s, kAnn})));
    QVERIFY(!m_tree->RefreshMemberNode(6, kMembersNode, 0));
    QVERIFY(!m_tree->RefreshMemberNode(5, kMembersNode, 6));
}

void MemberTreeTest::changedMembersKeepTheirPlace()
{
    StoreAnn();
    StoreMember(6, "Baker", "Cy");
    StoreMember(7, "Cole", "Di");
    Open({u"Members"_s, kAnn, u"Workouts"_s});
    m_tree->setCurrentIndex(Node({u"Members"_s, kAnn}));
    RunOnMembers("UPDATE members SET member_id = 50, last_name = 'Young' WHERE member_id = 5");
    QVERIFY(m_tree->RefreshMemberNode(50, kMembersNode, 5));
    QCOMPARE(Children({u"Members"_s}),
        (QStringList{u"Young, Ann B"_s, u"Baker, Cy "_s, u"Cole, Di "_s}));
    QCOMPARE(m_tree->currentIndex().data().toString(), u"Young, Ann B"_s);
    QVERIFY(m_tree->isExpanded(m_tree->currentIndex()));
    QVERIFY(!m_tree->RemoveMemberNode(5));
    Open({u"Members"_s, u"Young, Ann B"_s, u"Workouts"_s}); // by the new number
    QCOMPARE(Children({u"Members"_s, u"Young, Ann B"_s, u"Workouts"_s}),
        (QStringList{kNewerText, kOlderText}));
    m_tree->setCurrentIndex(Node({u"Members"_s, u"Young, Ann B"_s, u"Workouts"_s, kNewerText}));
    Press(Qt::Key_Return);
    QCOMPARE(m_lstAsked, QStringList{u"Edit -9 50 "_s + kNewerText});

    // Another program deleted a member, and its number went to the next one.
    RunOnMembers("DELETE FROM members WHERE member_id = 6");
    RunOnMembers("UPDATE members SET member_id = 6 WHERE member_id = 7");
    QVERIFY(m_tree->RefreshMemberNode(6, kMembersNode, 7));
    QCOMPARE(Children({u"Members"_s}), (QStringList{u"Young, Ann B"_s, u"Cole, Di "_s}));
    // One that is gone keeps its name until it is removed.
    RunOnMembers("DELETE FROM members");
    QVERIFY(m_tree->RefreshMemberNode(6, kMembersNode, 0));
    QVERIFY(m_tree->RemoveMemberNode(6));
    QVERIFY(m_tree->RemoveMemberNode(50));
    QCOMPARE(Children({u"Members"_s}), QStringList());
}

void MemberTreeTest::longNamesScroll()
{
    auto const width = [this] { return m_tree->visualRect(Node({u"Members"_s})).right() + 1; };
    QCOMPARE(width(), m_tree->viewport()->width());
    StoreAnn();
    Open({u"Members"_s});
    QCOMPARE(width(), m_tree->viewport()->width());
    std::string const wide(60, 'W');
    StoreMember(6, wide, "");
    QVERIFY(m_tree->AddMemberNode(6));
    auto const added = width();
    QVERIFY(added > m_tree->fontMetrics().horizontalAdvance(ToQt(wide)));
    RunOnMembers("UPDATE members SET last_name = last_name || last_name WHERE member_id = 6");
    QVERIFY(m_tree->RefreshMemberNode(6, kMembersNode, 0));
    QVERIFY(width() > added);
    m_tree->ResetTree();
    QCOMPARE(width(), m_tree->viewport()->width());
}

void MemberTreeTest::addedMembersStandWhereTheyBelong()
{
    for (int i = 1; i <= 5; ++i) {
        StoreMember(i, "M" + std::to_string(i * 2), "A");
    }
    QVERIFY(!m_tree->AddMemberNode(99));
    QVERIFY(m_tree->AddMemberNode(4)); // before the others are loaded around it
    QVERIFY(m_tree->AddMemberNode(2));
    QVERIFY(m_tree->AddMemberNode(2));
    QCOMPARE(Children({u"Members"_s}), (QStringList{u"M4, A "_s, u"M8, A "_s}));
    Open({u"Members"_s});
    QCOMPARE(m_progress->m_lstSentences, QStringList{u"Loading members, please wait... 5"_s});
    StoreMember(7, "m5", "A");
    StoreMember(8, "M4", "A"); // behind the one of the same name
    QVERIFY(m_tree->AddMemberNode(7) && m_tree->AddMemberNode(8));
    QCOMPARE(Children({u"Members"_s}),
        (QStringList{u"M10, A "_s, u"M2, A "_s, u"M4, A "_s, u"M4, A "_s, u"m5, A "_s, u"M6, A "_s,
            u"M8, A "_s}));
    auto const second = Model().index(3, 0, Node({u"Members"_s}));
    QCOMPARE(second.data(CMemberTreeModel::kCodeRole).toInt(), 8);
}

void MemberTreeTest::tellsWhatCannotBeRead()
{
    StoreAnn();
    RunOnMembers("ALTER TABLE members RENAME TO hidden");
    auto const root = Open({u"Members"_s});
    QCOMPARE(m_messages->Texts(), QStringList{u"Error: the members could not be loaded."_s});
    QVERIFY(!m_messages->Messages().constFirst().m_strDetail.isEmpty());
    QCOMPARE(Children({u"Members"_s}), QStringList());
    QVERIFY(!m_tree->isExpanded(root));
    RunOnMembers("ALTER TABLE hidden RENAME TO members");
    Open({u"Members"_s, kAnn});

    RunOnMembers("ALTER TABLE workouts RENAME TO hidden");
    QStringList const branch{u"Members"_s, kAnn, u"Workouts"_s};
    Open(branch);
    QCOMPARE(m_messages->Texts().size(), 2);
    QVERIFY(!m_tree->isExpanded(Node(branch)));
    RunOnMembers("ALTER TABLE hidden RENAME TO workouts");
    Open(branch);
    QCOMPARE(Children(branch).size(), 2);
    QCOMPARE(m_messages->Texts().size(), 2);
}

void MemberTreeTest::bearsHostileRows()
{
    using namespace std::string_literals;
    StoreMember(1, std::string(20'000, 'W'), "");
    StoreMember(2, "a\0b"s, "c\nd");
    // NOLINTNEXTLINE(misc-misleading-bidirectional): it is to mislead
    StoreMember(3, "\xD7\x9B\xD7\x94\xD7\x9F\xE2\x80\xAE", "\xD7\x93"); // right to left
    StoreMember(4, "<b>x</b>", "\xFF\xFE");
    StoreMember(999'999'999, "", "");
    StoreWorkout(2, kNewer); // two of one second: both are shown
    StoreWorkout(2, kNewer);
    StoreWorkout(2, CEFOleDateTime());
    StoreWorkout(2, CEFOleDateTime::Invalid());
    Open({u"Members"_s});
    auto const names = Children({u"Members"_s});
    QCOMPARE(names.size(), 5);
    auto const withNul = u"a\0b, c\nd "_s;
    QVERIFY(names.contains(withNul) && names.contains(QString()));
    QVERIFY(names.contains(u"<b>x</b>, \uFFFD\uFFFD "_s));
    QVERIFY(std::ranges::is_sorted(names, [](auto const& left, auto const& right) {
        return left.compare(right, Qt::CaseInsensitive) < 0;
    }));
    int const height = m_tree->visualRect(Node({u"Members"_s})).height();
    QCOMPARE(m_tree->visualRect(Node({u"Members"_s, withNul})).height(), height);
    Open({u"Members"_s, withNul, u"Workouts"_s});
    QCOMPARE(Children({u"Members"_s, withNul, u"Workouts"_s}),
        (QStringList{kNewerText, kNewerText, u"12/30/1899 00:00:00"_s, u"Invalid DateTime"_s}));
    QVERIFY(!m_tree->grab().isNull());
}

void MemberTreeTest::knowsTheKindsOfRecordSets()
{
    QCOMPARE(TreeNodeOf(CDAOMem()), kMembersNode);
    QCOMPARE(TreeNodeOf(CDAOWk()), kWorkoutsNode);
    QCOMPARE(TreeNodeOf(CDAOSmEval()), kEvaluationsNode);
    QCOMPARE(TreeNodeOf(CDAOEval()), kEvaluationsNode);
    QCOMPARE(TreeNodeOf(CDAOBodyComp()), kBodyCompsNode);
    QCOMPARE(TreeNodeOf(CDAOSmMem()), kNoneFoundNode);
}

CORVANA_TEST(MemberTreeTest);
#include "MemberTreeTest.moc"
