#pragma once

#include "workouts/MainViewTree.h"

#include "doc/CorvanaDoc.h"
#include "store/sets/AddRow.h"
#include "tests/doc/TestApp.h"
#include "tests/doc/TestMembers.h"
#include "tests/ui/MessageRecorder.h"
#include "ui/Convert.h"
#include "ui/ProgressDlg.h"
#include "workouts/MemberTreeModel.h"

#include <QAbstractItemModelTester>
#include <QLabel>
#include <QMainWindow>
#include <QProgressBar>
#include <QStatusBar>
#include <QTest>

#include <memory>
#include <string>

/// Notes the sentences of the progress windows, with the number of their steps.
class CProgressSpy : public QObject
{
public:
    QStringList m_lstSentences;

    CProgressSpy() { qApp->installEventFilter(this); }

    bool eventFilter(QObject* object, QEvent* event) override
    {
        auto const* const window = qobject_cast<CProgressDlg*>(object);
        if (window != nullptr && event->type() == QEvent::Show) {
            m_lstSentences += window->findChild<QLabel*>(QStringLiteral("waitText"))->text()
                + QStringLiteral(" %1").arg(window->findChild<QProgressBar*>()->maximum());
        }
        return false;
    }
};

template <typename Set, typename Fill>
void Store(Fill const& fill)
{
    if (auto const status = AddRow<Set>(fill); !status) {
        qFatal("%s", status.Text().c_str());
    }
}

inline void StoreMember(std::int32_t memberID, std::string const& last, std::string const& first,
    std::string const& middle = {}, std::uint8_t status = 1)
{
    Store<CDAOSmMem>([&](CDAOSmMem& set) {
        set.m_MemberID = set.m_WorkoutNum = memberID;
        set.m_LastName = last;
        set.m_FirstName = first;
        set.m_MiddleInit = middle;
        set.m_Status = status;
    });
}

inline void StoreWorkout(std::int32_t memberID, CEFOleDateTime const& checkIn,
    std::int64_t minutes = 0, bool isOK = false)
{
    Store<CDAOWk>([&](CDAOWk& set) {
        set.m_lMemberID = memberID;
        set.m_dtCheckIn = checkIn;
        set.m_dtCheckOut = CEFOleDateTime::FromSeconds(checkIn.Seconds() + minutes * 60);
        set.m_bWorkoutOK = isOK;
    });
}

inline void StoreEvaluation(std::int32_t memberID, CEFOleDateTime const& date, double weight = 0.0)
{
    Store<CDAOSmEval>([&](CDAOSmEval& set) {
        set.m_lEvalID = set.GenerateIDNum();
        set.m_lMemberID = memberID;
        set.m_dtEvalDate = date;
        set.m_nRestingHR = 62;
        set.m_nSystolic = 121;
        set.m_nDiastolic = 79;
        set.m_dWeight = weight;
    });
}

inline void StoreBodyComp(
    std::int32_t memberID, CEFOleDateTime const& date, double fat, double weight)
{
    Store<CDAOBodyComp>([&](CDAOBodyComp& set) {
        set.m_lMemberID = memberID;
        set.m_dtBodyCompDate = date;
        set.m_dPercentFat = fat;
        set.m_dWeight = weight;
    });
}

inline CEFOleDateTime const kOlder(2025, 12, 31, 8, 0, 0);
inline CEFOleDateTime const kNewer(2026, 1, 2, 7, 30, 5);
inline auto const kOlderText = QStringLiteral("12/31/2025 08:00:00");
inline auto const kNewerText = QStringLiteral("01/02/2026 07:30:05");
inline auto const kAnn = QStringLiteral("Archer, Ann B");

/// A window with a member tree over a fresh centre for each case, and the means to use it as the
/// user does. Every change of its model is checked for consistency.
class CTreeTest : public QObject
{
protected:
    void MakeWindow()
    {
        m_centre = std::make_unique<CTestCentre>();
        m_messages = std::make_unique<CMessageRecorder>();
        m_app = std::make_unique<CTestApp>();
        m_doc = std::make_unique<CCorvanaDoc>(*m_app);
        m_window = std::make_unique<QMainWindow>();
        m_progress = std::make_unique<CProgressSpy>();
        m_tree = new CMainViewTree(*m_doc);
        new QAbstractItemModelTester(
            &Model(), QAbstractItemModelTester::FailureReportingMode::QtTest, m_tree);
        m_lstAsked.clear();
        auto const note = [this](char const* what) {
            return [this, what](CNodeTarget const& target) {
                m_lstAsked += QStringLiteral("%1 %2 %3 %4")
                                  .arg(QLatin1StringView(what))
                                  .arg(target.m_kind)
                                  .arg(target.m_lMemberID)
                                  .arg(target.m_strDate)
                                  .trimmed();
            };
        };
        connect(m_tree, &CMainViewTree::EditAsked, this, note("Edit"));
        connect(m_tree, &CMainViewTree::DeleteAsked, this, note("Delete"));
        m_window->setCentralWidget(m_tree);
        m_window->statusBar();
        m_window->resize(300, 500);
        m_window->show();
        QVERIFY(QTest::qWaitForWindowExposed(m_window.get()));
        m_tree->setFocus();
    }

    void CloseWindow()
    {
        m_window.reset();
        m_progress.reset();
        m_doc.reset();
        m_app.reset();
        m_messages.reset();
        m_centre.reset();
    }

    QAbstractItemModel& Model() const { return *m_tree->model(); }

    /// The node reached from the top by these texts; invalid when there is none.
    QModelIndex Node(QStringList const& texts) const
    {
        QModelIndex node;
        for (auto const& text : texts) {
            QModelIndex next;
            for (int row = 0; row < Model().rowCount(node) && !next.isValid(); ++row) {
                auto const child = Model().index(row, 0, node);
                next = child.data().toString() == text ? child : QModelIndex();
            }
            if (!next.isValid()) {
                return {};
            }
            node = next;
        }
        return node;
    }

    QStringList Children(QStringList const& texts) const
    {
        auto const node = Node(texts);
        QStringList children;
        for (int row = 0; node.isValid() && row < Model().rowCount(node); ++row) {
            children += Model().index(row, 0, node).data().toString();
        }
        return children;
    }

    /// Opens every node on the way with the key for it.
    QModelIndex Open(QStringList const& texts)
    {
        for (qsizetype depth = 1; depth <= texts.size(); ++depth) {
            auto const node = Node(texts.first(depth));
            m_tree->setCurrentIndex(node);
            if (!m_tree->isExpanded(node)) {
                Press(Qt::Key_Right);
            }
        }
        return Node(texts);
    }

    QPoint Place(QModelIndex const& node) const { return m_tree->visualRect(node).center(); }
    void Press(Qt::Key key) { QTest::keyClick(m_tree->viewport(), key); }

    /// One member with two workouts, an evaluation and no body composition.
    void StoreAnn()
    {
        StoreMember(5, "Archer", "Ann", "B");
        RunOnMembers(
            "INSERT INTO enrollments (member_id, enroll_date, expire_date, period, incentive)"
            " VALUES (5, 0, "
            + std::to_string(CEFOleDateTime(2027, 3, 9).Seconds()) + ", 0, 0)");
        StoreWorkout(5, kOlder, 45, true);
        StoreWorkout(5, kNewer, 9, false);
        StoreEvaluation(5, kNewer, 180.9);
    }

    std::unique_ptr<CTestCentre> m_centre;
    std::unique_ptr<CMessageRecorder> m_messages;
    std::unique_ptr<CTestApp> m_app;
    std::unique_ptr<CCorvanaDoc> m_doc;
    std::unique_ptr<QMainWindow> m_window;
    std::unique_ptr<CProgressSpy> m_progress;
    CMainViewTree* m_tree = nullptr;
    QStringList m_lstAsked; ///< "Edit -9 5 01/02/2026 07:30:05"
};
