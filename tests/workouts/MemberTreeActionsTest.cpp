#include "tests/workouts/TreeFixture.h"

#include "tests/QtTests.h"

#include <QContextMenuEvent>
#include <QToolTip>

using namespace Qt::StringLiterals;

class MemberTreeActionsTest : public CTreeTest
{
    Q_OBJECT
private Q_SLOTS:
    void init() { MakeWindow(); }
    void cleanup() { CloseWindow(); }
    void keysAndDoubleClickActOnTheirNodes_data();
    void keysAndDoubleClickActOnTheirNodes();
    void nothingActsBeforeMembersAreLoaded();
    void tipsSumUp_data();
    void tipsSumUp();
    void tipsAreReadOutAndGoAway();
    void tipsSurviveWhatOthersWrote();
    void otherButtonsOpenNothing();

private:
    void DoubleClick(QModelIndex const& node, Qt::MouseButton button = Qt::LeftButton)
    {
        QTest::mouseClick(m_tree->viewport(), button, {}, Place(node));
        QTest::mouseDClick(m_tree->viewport(), button, {}, Place(node)); // the second press alone
        QTest::mouseRelease(m_tree->viewport(), button, {}, Place(node));
    }
    void RightClick(QModelIndex const& node)
    {
        QTest::mouseClick(m_tree->viewport(), Qt::RightButton, {}, Place(node));
    }
    void OpenAll();
};

/// Opens the branches of two members, the second of whom has no records.
void MemberTreeActionsTest::OpenAll()
{
    Open({u"Members"_s});
    for (auto const* const branch : {"Workouts", "Evaluations", "Body Compositions"}) {
        Open({u"Members"_s, kAnn, QLatin1StringView(branch)});
    }
    if (Node({u"Members"_s, u"Baker, Cy "_s}).isValid()) {
        Open({u"Members"_s, u"Baker, Cy "_s, u"Workouts"_s});
    }
}

void MemberTreeActionsTest::keysAndDoubleClickActOnTheirNodes_data()
{
    QTest::addColumn<QStringList>("path"); // below the root
    QTest::addColumn<QString>("edited"); // what double click and Enter ask for
    QTest::addColumn<QString>("deleted");
    QTest::newRow("root") << QStringList() << QString() << QString();
    QTest::newRow("member") << QStringList{kAnn} << QString() << u"-10 5"_s;
    QTest::newRow("profile") << QStringList{kAnn, u"Profile"_s} << u"-10 5"_s << u"-10 5"_s;
    QTest::newRow("branch") << QStringList{kAnn, u"Workouts"_s} << QString() << QString();
    QTest::newRow("workout") << QStringList{kAnn, u"Workouts"_s, kOlderText}
                             << u"-9 5 "_s + kOlderText << u"-9 5 "_s + kOlderText;
    QTest::newRow("evaluation") << QStringList{kAnn, u"Evaluations"_s, kNewerText}
                                << u"-8 5 "_s + kNewerText << u"-8 5 "_s + kNewerText;
    QTest::newRow("body composition") << QStringList{kAnn, u"Body Compositions"_s, kOlderText}
                                      << u"-7 5 "_s + kOlderText << u"-7 5 "_s + kOlderText;
    QTest::newRow("none found") << QStringList{u"Baker, Cy "_s, u"Workouts"_s, u"None Found"_s}
                                << QString() << QString();
}

void MemberTreeActionsTest::keysAndDoubleClickActOnTheirNodes()
{
    QFETCH(QStringList const, path);
    QFETCH(QString const, edited);
    QFETCH(QString const, deleted);
    StoreAnn();
    StoreBodyComp(5, kOlder, 20.0, 150.0);
    StoreMember(6, "Baker", "Cy");
    OpenAll();

    auto const node = Node(QStringList{u"Members"_s} + path);
    QVERIFY(node.isValid());
    QVERIFY(m_tree->viewport()->rect().contains(Place(node)));
    auto const expected = [](QString const& what, QString const& target) {
        return target.isEmpty() ? QStringList() : QStringList{what + target};
    };
    for (auto const open : {true, false}) {
        if (open) {
            m_tree->expand(node);
        } else {
            m_tree->collapse(node);
        }
        auto const parentWasOpen = m_tree->isExpanded(node.parent());
        m_lstAsked.clear();
        DoubleClick(node);
        QCOMPARE(m_lstAsked, expected(u"Edit "_s, edited));
        QCOMPARE(m_tree->isExpanded(node), open && Model().hasChildren(node));
        QCOMPARE(m_tree->isExpanded(node.parent()), parentWasOpen);
    }
    m_lstAsked.clear();
    m_tree->setCurrentIndex(node);
    Press(Qt::Key_Return);
    QCOMPARE(m_lstAsked, expected(u"Edit "_s, edited));
    m_lstAsked.clear();
    Press(Qt::Key_Delete);
    QCOMPARE(m_lstAsked, expected(u"Delete "_s, deleted));
}

void MemberTreeActionsTest::nothingActsBeforeMembersAreLoaded()
{
    StoreAnn();
    Open({u"Members"_s}); // finds them,
    m_tree->ResetTree();
    QVERIFY(m_tree->AddMemberNode(5)); // but now only this one is told of
    m_tree->expand(Node({u"Members"_s}));
    RunOnMembers("DELETE FROM members");
    m_tree->ResetTree();
    Open({u"Members"_s});
    StoreAnn();
    QVERIFY(m_tree->AddMemberNode(5));
    auto const profile = Open({u"Members"_s, kAnn, u"Profile"_s});
    DoubleClick(profile);
    Press(Qt::Key_Delete);
    RightClick(profile);
    QCOMPARE(m_lstAsked, QStringList());
    QVERIFY(!QToolTip::isVisible());

    m_tree->collapse(Node({u"Members"_s}));
    Open({u"Members"_s, kAnn, u"Profile"_s});
    Press(Qt::Key_Delete);
    QCOMPARE(m_lstAsked, QStringList{u"Delete -10 5"_s});
}

void MemberTreeActionsTest::tipsSumUp_data()
{
    QTest::addColumn<QStringList>("path");
    QTest::addColumn<QString>("tip");
    auto const member = u"ID: 5, Status: Current, Expiration: 03/09/2027"_s;
    QTest::newRow("root") << QStringList() << QString();
    QTest::newRow("member") << QStringList{kAnn} << member;
    QTest::newRow("profile") << QStringList{kAnn, u"Profile"_s} << member;
    QTest::newRow("branch") << QStringList{kAnn, u"Workouts"_s} << QString();
    QTest::newRow("good workout") << QStringList{kAnn, u"Workouts"_s, kOlderText}
                                  << u"Total Minutes: 45, Status: OK"_s;
    QTest::newRow("short workout")
        << QStringList{kAnn, u"Workouts"_s, kNewerText} << u"Total Minutes: 9, Status: Not OK"_s;
    QTest::newRow("evaluation") << QStringList{kAnn, u"Evaluations"_s, kNewerText}
                                << u"Resting HR: 62, BP: 121/79, Wt: 180"_s;
    QTest::newRow("body composition")
        << QStringList{kAnn, u"Body Compositions"_s, kOlderText} << u"Body Fat%: 21.46, Wt: 199"_s;
    QTest::newRow("past member") << QStringList{u"Baker, Cy "_s}
                                 << u"ID: 6, Status: Past, Expiration: 12/30/1899"_s;
    QTest::newRow("none found") << QStringList{u"Baker, Cy "_s, u"Workouts"_s, u"None Found"_s}
                                << QString();
}

void MemberTreeActionsTest::tipsSumUp()
{
    QFETCH(QStringList const, path);
    QFETCH(QString const, tip);
    StoreAnn();
    StoreBodyComp(5, kOlder, 21.456, 199.99);
    StoreMember(6, "Baker", "Cy", {}, 0);
    RunOnMembers("INSERT INTO enrollments (member_id, enroll_date, expire_date, period, incentive)"
                 " VALUES (6, 0, 0, 0, 0)");
    OpenAll();
    auto const node = Node(QStringList{u"Members"_s} + path);

    RightClick(node);
    QCOMPARE(QToolTip::isVisible(), !tip.isEmpty());
    QCOMPARE(QToolTip::text(), tip);
    QCOMPARE(m_tree->currentIndex(), node);
    QCOMPARE(m_window->statusBar()->currentMessage(), tip);
    QCOMPARE(m_tree->accessibleDescription(), tip);

    // The menu key shows the same for the selected node.
    m_tree->setCurrentIndex(Node({u"Members"_s}));
    QTRY_VERIFY(!QToolTip::isVisible());
    QCOMPARE(m_window->statusBar()->currentMessage(), QString());
    m_tree->setCurrentIndex(node);
    QContextMenuEvent menuKey(QContextMenuEvent::Keyboard, {}, {});
    QCoreApplication::sendEvent(m_tree->viewport(), &menuKey);
    QCOMPARE(QToolTip::text(), tip);
    QToolTip::hideText();
    QTRY_VERIFY(!QToolTip::isVisible());
}

void MemberTreeActionsTest::tipsAreReadOutAndGoAway()
{
    StoreAnn();
    Open({u"Members"_s, kAnn, u"Workouts"_s});
    auto const workout = Node({u"Members"_s, kAnn, u"Workouts"_s, kOlderText});
    RightClick(workout);
    QVERIFY(QToolTip::isVisible());
    // It goes with its node, which is reloaded, and with a node that has none.
    QVERIFY(m_tree->RefreshMemberNode(5, kWorkoutsNode, 0));
    QTRY_VERIFY(!QToolTip::isVisible());
    QCOMPARE(m_window->statusBar()->currentMessage(), QString());
    RightClick(Node({u"Members"_s, kAnn}));
    QVERIFY(QToolTip::isVisible());
    RightClick(Node({u"Members"_s, kAnn, u"Workouts"_s}));
    QTRY_VERIFY(!QToolTip::isVisible());
    QCOMPARE(m_tree->accessibleDescription(), QString());
}

void MemberTreeActionsTest::tipsSurviveWhatOthersWrote()
{
    StoreAnn();
    StoreEvaluation(5, kOlder, 1e300);
    StoreBodyComp(5, kOlder, -3.999, -1e300);
    StoreWorkout(5, CEFOleDateTime::FromSeconds(std::int64_t(1) << 60));
    OpenAll();
    RightClick(Node({u"Members"_s, kAnn, u"Evaluations"_s, kOlderText}));
    QCOMPARE(QToolTip::text(), u"Resting HR: 62, BP: 121/79, Wt: 0"_s);
    RightClick(Node({u"Members"_s, kAnn, u"Body Compositions"_s, kOlderText}));
    QCOMPARE(QToolTip::text(), u"Body Fat%: -4.00, Wt: 0"_s);
    auto const noDate = Node({u"Members"_s, kAnn, u"Workouts"_s, u"Invalid DateTime"_s});
    QVERIFY(noDate.isValid());
    RightClick(noDate);
    QTRY_VERIFY(!QToolTip::isVisible());

    RunOnMembers("DELETE FROM members");
    for (auto const& node : {Node({u"Members"_s, kAnn}), Node({u"Members"_s, kAnn, u"Profile"_s}),
             Node({u"Members"_s, kAnn, u"Workouts"_s, kOlderText})}) {
        RightClick(node);
        QVERIFY(!QToolTip::isVisible());
        QCOMPARE(m_tree->currentIndex(), node);
    }
}

void MemberTreeActionsTest::otherButtonsOpenNothing()
{
    StoreAnn();
    auto const workouts = Open({u"Members"_s, kAnn, u"Workouts"_s});
    auto const workout = Node({u"Members"_s, kAnn, u"Workouts"_s, kOlderText});
    for (auto const button : {Qt::RightButton, Qt::MiddleButton}) {
        DoubleClick(workout, button);
        auto const arrow = QPoint(m_tree->visualRect(workouts).left() * 5 / 6, Place(workouts).y());
        QTest::mouseClick(m_tree->viewport(), button, {}, arrow);
        QVERIFY(m_tree->isExpanded(workouts));
    }
    QCOMPARE(m_lstAsked, QStringList());
    // The key that opens everything below would load every record of the centre.
    m_tree->collapse(Node({u"Members"_s}));
    m_tree->ResetTree();
    m_tree->setCurrentIndex(Node({u"Members"_s}));
    m_progress->m_lstSentences.clear();
    Press(Qt::Key_Asterisk);
    QCOMPARE(Children({u"Members"_s}), QStringList{kAnn});
    QCOMPARE(m_progress->m_lstSentences.size(), 1);
    QVERIFY(!m_tree->isExpanded(Node({u"Members"_s, kAnn})));
}

CORVANA_TEST(MemberTreeActionsTest);
#include "MemberTreeActionsTest.moc"
