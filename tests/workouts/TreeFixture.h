#pragma once

#include "workouts/MainViewTree.h"

#include "tests/doc/TestDesk.h"

#include <QAbstractItemModelTester>
#include <QMainWindow>
#include <QStatusBar>

#include <memory>

inline CEFOleDateTime const kOlder(2025, 12, 31, 8, 0, 0);
inline CEFOleDateTime const kNewer(2026, 1, 2, 7, 30, 5);
inline auto const kOlderText = QStringLiteral("12/31/2025 08:00:00");
inline auto const kNewerText = QStringLiteral("01/02/2026 07:30:05");
// Paths of nodes, below the root.
inline auto const kAnn = QStringLiteral("Archer, Ann B");
inline QString const kWorkouts = kAnn + QStringLiteral("|Workouts");
inline QString const kEvaluations = kAnn + QStringLiteral("|Evaluations");
inline QString const kBodyComps = kAnn + QStringLiteral("|Body Compositions");
inline QStringList const kBranches{kWorkouts, kEvaluations, kBodyComps};
inline QString const kProfile = kAnn + QStringLiteral("|Profile");

/// A member with two records of each kind.
inline void StoreAnn()
{
    StoreMember(5, "Archer", "Ann", "B");
    StoreRecords(5, kOlder, 45, 180.9, 21.456);
    StoreRecords(5, kNewer, 9, 1e300, -3.999);
}

/// A window with a member tree over a fresh centre. Every change of its model is checked.
class CTreeWindow : public QMainWindow, public CTestDesk
{
public:
    CTreeWindow()
    {
        auto const note = [this](QString const& what) {
            return [this, what](CNodeTarget const& target) {
                auto const text = what.arg(target.m_kind).arg(target.m_lMemberID);
                m_lstAsked += (text + target.m_strDate).trimmed();
            };
        };
        connect(&m_tree, &CMainViewTree::EditAsked, this, note(QStringLiteral("Edit %1 %2 ")));
        connect(&m_tree, &CMainViewTree::DeleteAsked, this, note(QStringLiteral("Delete %1 %2 ")));
        setCentralWidget(&m_tree);
        resize(300, 500);
        show();
        QVERIFY(QTest::qWaitForWindowExposed(this));
    }

    CMainViewTree m_tree{m_doc};
    QAbstractItemModelTester m_tester{
        m_tree.model(), QAbstractItemModelTester::FailureReportingMode::QtTest};
    QStringList m_lstAsked; ///< "Edit -9 5 01/02/2026 07:30:05"
};

/// The means to use a member tree as the user does.
class CTreeTest : public QObject
{
protected:
    CMainViewTree& Tree() const { return m_window->m_tree; }
    QModelIndex First(QModelIndex const& node) const { return Tree().model()->index(0, 0, node); }
    /// The node of that path; the root without one.
    QModelIndex Node(QString const& path = {}) const
    {
        auto node = First({});
        for (auto const& text : path.split(u'|', Qt::SkipEmptyParts)) {
            node = Tree().model()->match(First(node), Qt::DisplayRole, text, 1, {}).value(0);
        }
        return node;
    }
    QStringList Children(QString const& path = {}) const
    {
        QStringList texts;
        for (auto i = First(Node(path)); i.isValid(); i = i.siblingAtRow(i.row() + 1)) {
            texts += i.data().toString();
        }
        return texts;
    }
    bool IsOpen(QString const& path = {}) const { return Tree().isExpanded(Node(path)); }
    QString Current() const { return Tree().currentIndex().data().toString(); }

    void Press(Qt::Key key) { QTest::keyClick(Tree().viewport(), key); }
    /// Opens every node on the way with the key for it.
    void Open(QString const& path = {})
    {
        if (!path.isEmpty()) {
            Open(path.section(u'|', 0, -2));
        }
        Tree().setCurrentIndex(Node(path));
        if (!IsOpen(path)) {
            Press(Qt::Key_Right);
        }
    }
    void Click(QModelIndex const& node, Qt::MouseButton button, bool twice = false)
    {
        auto const place = Tree().visualRect(node).center();
        QTest::mouseClick(Tree().viewport(), button, {}, place);
        if (twice) {
            QTest::mouseDClick(Tree().viewport(), button, {}, place); // the second press alone
            QTest::mouseRelease(Tree().viewport(), button, {}, place);
        }
    }
    /// Clicks what opens a node, left of its text.
    void ClickButton(QModelIndex const& node, Qt::MouseButton button = Qt::LeftButton)
    {
        auto const place = Tree().visualRect(node).bottomLeft() - QPoint(8, 8);
        QTest::mouseClick(Tree().viewport(), button, {}, place);
    }

    std::unique_ptr<CTreeWindow> m_window;
};
