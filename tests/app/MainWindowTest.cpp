#include "app/MainFrame.h"

#include "doc/CorvanaDoc.h"
#include "tests/QtTests.h"
#include "tests/doc/TestApp.h"
#include "tests/doc/TestCentre.h"
#include "tests/ui/DialogUser.h"
#include "tests/ui/MessageRecorder.h"
#include "ui/ControlID.h"

#include <QAction>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QScrollArea>
#include <QSplitter>
#include <QStatusBar>
#include <QTest>
#include <QTreeView>

using namespace Qt::StringLiterals;

class MainWindowTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init();
    void cleanup();
    void everythingHasItsPlace();
    void everyCommandReachesItsOperation();
    void statusBarShowsPromptsAndLockKeys();
    void buttonsReachTheirOperations();
    void bannerHasItsColours();
    void bannerIsReadOut();
    void treeAsksTheDocument();
    void treeLoadsAtStartIfWanted();

private:
    void Show();
    /// What a window manager does when a dialog has closed.
    void Activate()
    {
        m_frame->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(m_frame.get()));
    }
    QWidget& View() const { return *m_frame->findChild<QWidget*>(u"mainView"_s); }
    QPushButton& Button(char const* name) const
    {
        return *m_frame->findChild<QPushButton*>(QLatin1StringView(name));
    }

    std::unique_ptr<CTestCentre> m_centre;
    std::unique_ptr<CMessageRecorder> m_messages;
    std::unique_ptr<CTestApp> m_app;
    std::unique_ptr<CCorvanaDoc> m_doc;
    std::unique_ptr<CMainFrame> m_frame;
};

namespace
{

auto const kNotYet = u"This command is not available yet."_s;

/// Cancels the dialogs that open and keeps their titles.
class CCanceller
{
public:
    QStringList m_lstTitles;

    explicit CCanceller(int dialogs)
        : m_user(QList<CDialogUser::Step>(dialogs, [this](QDialog& dialog) {
            m_lstTitles += dialog.windowTitle();
            dialog.reject();
        }))
    {
    }
    QStringList Faults() const { return m_user.Faults(); }

private:
    CDialogUser const m_user;
};

} // namespace

void MainWindowTest::init()
{
    m_centre = std::make_unique<CTestCentre>();
    m_messages = std::make_unique<CMessageRecorder>();
    m_app = std::make_unique<CTestApp>();
    m_doc = std::make_unique<CCorvanaDoc>(*m_app);
    CEFOleDateTime::SetClock(CEFOleDateTime(2026, 11, 6, 18, 5, 9));
    m_frame = std::make_unique<CMainFrame>(*m_doc, *m_app);
    m_doc->SetViews(m_frame.get());
}

void MainWindowTest::cleanup()
{
    CEFOleDateTime::SetClock(std::nullopt);
    m_frame.reset();
    m_doc.reset();
    m_app.reset();
    m_messages.reset();
    m_centre.reset();
}

void MainWindowTest::Show()
{
    QVERIFY(m_doc->OnNewDocument());
    m_frame->show();
    QVERIFY(QTest::qWaitForWindowActive(m_frame.get()));
}

void MainWindowTest::everythingHasItsPlace()
{
    QCOMPARE(m_frame->geometry(), QRect(75, 75, 700, 550));
    QCOMPARE(m_frame->windowTitle(), u"Corvana"_s);
    Show();
    auto const* const splitter = m_frame->findChild<QSplitter*>();
    QCOMPARE(splitter->sizes()[0], 233);
    QVERIFY(qAbs(splitter->sizes()[1] - 466) <= 5); // the handle takes its share
    m_frame->resize(1200, 800);
    QTRY_COMPARE(splitter->width(), 1200);
    QCOMPARE(splitter->sizes()[0], 233);

    // Buttons in two columns, with one more below, in the order of Tab.
    auto const size = Button("memberButton").size();
    QPoint const step(size.width() + 7, size.height() + 7);
    QTRY_COMPARE(Button("memberButton").x(), View().width() / 2 - (2 * size.width() + 7) / 2);
    auto const first = Button("memberButton").pos();
    Button("memberButton").setFocus();
    QStringList texts;
    for (int i = 0; i < 9; ++i) {
        auto* const button = m_frame->focusWidget();
        texts += qobject_cast<QPushButton*>(button)->text();
        int const across = i < 8 ? i % 2 * step.x() : step.x() / 2;
        QCOMPARE(button->geometry(), QRect(first + QPoint(across, i / 2 * step.y()), size));
        QTest::keyClick(button, Qt::Key_Tab);
    }
    QCOMPARE(texts,
        (QStringList{u"Member"_s, u"Member Report"_s, u"Workout"_s, u"Workout Report"_s,
            u"Evaluation"_s, u"Evaluation Report"_s, u"Body Composition"_s,
            u"Body Composition Report"_s, u"Quick Statistics"_s}));
    QCOMPARE(ControlID(&Button("quickStatsButton")), 1188);
    QCOMPARE(ControlID(&Button("evaluationReportButton")), 1200);

    m_frame->resize(300, 200); // nothing is out of reach
    auto const* const scrollArea = m_frame->findChild<QScrollArea*>();
    QTRY_VERIFY(scrollArea->viewport()->height() < View().height());
    for (auto const* const button : View().findChildren<QPushButton*>()) {
        QVERIFY(View().rect().contains(button->geometry()));
    }
}

void MainWindowTest::everyCommandReachesItsOperation()
{
    Show();
    QMap<int, QString> const others{{57664, u"ShowAbout"_s}, {57606, u"SetUpPrinter"_s},
        {57665, u"Exit"_s}, {32885, u"StartReportServer;Report Server is running on this PC."_s},
        {32822, u"queued 1"_s}, {32894, u"queued 13"_s}};
    QMap<int, QString> dialogs{{32815, u"Date"_s}};
    for (int const command : {32863, 32784, 32785, 32829, 32817, 32813, 32814, 32883, 32886}) {
        dialogs[command] = u"Member ID"_s;
    }
    for (int const command : {32887, 32819, 32816}) {
        dialogs[command] = u"Report - Options"_s;
    }
    for (int const command : {32820, 32818}) {
        dialogs[command] = u"Category/Course/Section"_s;
    }
    QMap<int, QString> const keys{{32863, u"Ctrl+M"_s}, {32784, u"Ctrl+Alt+M"_s},
        {32806, u"Ctrl+W"_s}, {32808, u"Ctrl+Alt+W"_s}, {32810, u"Ctrl+E"_s},
        {32811, u"Ctrl+Alt+E"_s}, {32866, u"Ctrl+B"_s}, {32868, u"Ctrl+Alt+B"_s}};
    for (auto const& command : CommandTable()) {
        auto const number = QByteArray::number(command.m_nNumber);
        auto* const action = m_frame->findChild<QAction*>(u"command%1"_s.arg(command.m_nNumber));
        QVERIFY2((action != nullptr) == command.m_menu.has_value(), number);
        if (action == nullptr || command.m_option) {
            continue;
        }
        QVERIFY2(action->isEnabled() && !action->associatedObjects().isEmpty(), number);
        auto const dialog = dialogs.value(command.m_nNumber);
        auto const expected = dialog.isEmpty() ? others.value(command.m_nNumber, kNotYet) : dialog;
        auto const messages = m_messages->Texts().size();
        m_app->m_lstCalls.clear();
        CCanceller const canceller(dialog.isEmpty() ? 0 : 1);
        if (auto const key = keys.value(command.m_nNumber); key.isEmpty()) {
            action->trigger();
        } else {
            Activate();
            QTest::keySequence(m_frame.get(), QKeySequence(key));
        }
        auto did = m_app->m_lstCalls + canceller.m_lstTitles + m_messages->Texts().sliced(messages);
        CDAOReport queue;
        if (queue.FindReports() != 0) {
            did += u"queued %1"_s.arg(queue.m_nRptType);
            QVERIFY(m_frame->statusBar()->currentMessage().contains(u"queued"_s));
            queue.DelAll();
        }
        QCOMPARE(did.join(u';'), expected);
        QCOMPARE(canceller.Faults(), QStringList());
    }
}

void MainWindowTest::statusBarShowsPromptsAndLockKeys()
{
    Show();
    auto const* const bar = m_frame->statusBar();
    auto const* const ready = bar->findChild<QLabel*>(QString());
    QCOMPARE(ready->text(), u"Ready"_s);
    QVERIFY(ready->isVisible());
    auto* const file = m_frame->menuBar()->actions().constFirst()->menu();
    QTest::keyClick(m_frame.get(), Qt::Key_F, Qt::AltModifier);
    QTRY_COMPARE(QApplication::activePopupWidget(), file);
    QCOMPARE(bar->currentMessage(), u"Change printer or printing options"_s);
    QTest::keyClick(file, Qt::Key_Down);
    QCOMPARE(bar->currentMessage(),
        u"Copy members, workouts, evaluations, or body compositions from database"_s);
    QTest::keyClick(file, Qt::Key_Escape);
    QCOMPARE(bar->currentMessage(), QString());

    for (auto const& [key, modifiers, caps, num] :
        {std::tuple(Qt::Key_CapsLock, 0x02U, u"CAP"_s, QString()),
            {Qt::Key_NumLock, 0x10U, QString(), u"NUM"_s}}) {
        QKeyEvent event(QEvent::KeyPress, key, {}, 0, 0, modifiers);
        QCoreApplication::sendEvent(m_frame->focusWidget(), &event);
        QCOMPARE(bar->findChild<QLabel*>(u"capPane"_s)->text(), caps);
        QCOMPARE(bar->findChild<QLabel*>(u"numPane"_s)->text(), num);
    }
}

void MainWindowTest::buttonsReachTheirOperations()
{
    Show();
    QStringList pressed;
    auto const buttons = View().findChildren<QPushButton*>();
    for (auto* const button : buttons) {
        connect(button, &QPushButton::clicked, this,
            [&pressed, button] { pressed += button->objectName(); });
    }
    CCanceller const canceller(8); // of the member's and of the reports
    for (auto* const button : buttons) {
        QTest::mouseClick(button, Qt::LeftButton);
    }
    QCOMPARE(pressed.size(), 9);
    QCOMPARE(m_messages->Texts(), QStringList(4, kNotYet));

    pressed.clear(); // Enter presses the button in focus, else the first one
    View().setFocus();
    QTest::keyClick(m_frame->focusWidget(), Qt::Key_Return);
    Activate();
    Button("workoutReportButton").setFocus();
    QTest::keyClick(m_frame->focusWidget(), Qt::Key_Enter);
    View().setFocus();
    QTest::keyClick(m_frame->focusWidget(), Qt::Key_Enter);
    QCOMPARE(
        pressed, (QStringList{u"memberButton"_s, u"workoutReportButton"_s, u"memberButton"_s}));
    QCOMPARE(canceller.Faults(), QStringList());
}

void MainWindowTest::bannerHasItsColours()
{
    for (auto const& [panel, shown, text] : // red is in the low byte, as stored
        {std::tuple("0xF2E6D9", QColor(0xD9, 0xE6, 0xF2), Qt::black),
            {"0x400000", QColor(0, 0, 0x40), Qt::white},
            {"0x0000C0", QColor(0xC0, 0, 0), Qt::white}}) {
        CTestCentre::Run(std::string("UPDATE touch SET panel_color = ") + panel);
        Show();
        auto const image = View().grab().toImage();
        int const centre = View().width() / 2;
        // The banner's text begins 40 below the top, the panel 10 above it, the frame 20 above it.
        QCOMPARE(image.pixelColor(centre, 25), QColor(0x16, 0x4A, 0x78));
        QCOMPARE(image.pixelColor(centre, 35), shown);
        int textPixels = 0;
        for (int x = centre - 60; x < centre + 60; ++x) {
            for (int y = 40; y < 60; ++y) {
                textPixels += image.pixelColor(x, y) == text ? 1 : 0;
            }
        }
        QVERIFY(textPixels > 20);
    }

    m_frame->hide();
    CTestCentre::Run("UPDATE center SET name = ''"); // no banner
    Show();
    auto const window = View().palette().color(QPalette::Window);
    QCOMPARE(View().grab().toImage().pixelColor(View().width() / 2, 25), window);
    QVERIFY(Button("memberButton").y() > 40);
    QVERIFY(Button("memberButton").y() < 40 + 3 * 20); // the date stands where it would
}

void MainWindowTest::bannerIsReadOut()
{
    CTestCentre::Run("UPDATE center SET zip = '', address2 = ''");
    Show();
    QTRY_COMPARE(View().accessibleName(),
        u"Riverside Fitness Center\n12 Harbor Street\n(217) 555-0142\n"
        "Web: www.riverside.example\nEmail: desk@riverside.example"_s);
    QCOMPARE(View().accessibleDescription(), u"Friday - November  06, 2026"_s);
    CEFOleDateTime::SetClock(CEFOleDateTime(2026, 11, 7));
    View().repaint();
    QCOMPARE(View().accessibleDescription(), u"Saturday - November  07, 2026"_s);
}

void MainWindowTest::treeAsksTheDocument()
{
    CTestCentre::Run("INSERT INTO members (member_id, workout_number, first_name, middle_initial,"
                     " last_name, status) VALUES (5, 5, 'Ann', 'B', 'Archer', 1)",
        DataFile::member);
    Show();
    auto& tree = *m_frame->findChild<QTreeView*>(u"memberTree"_s);
    CDocViews& views = *m_frame;
    auto const root = tree.model()->index(0, 0);
    QVERIFY(!tree.isExpanded(root));
    tree.expand(root);
    QCOMPARE(tree.model()->rowCount(root), 1);
    auto const member = tree.model()->index(0, 0, root);
    tree.expand(member);
    tree.setCurrentIndex(tree.model()->index(2, 0, member));
    CCanceller const canceller(2);
    QTest::keyClick(&tree, Qt::Key_Return);
    QTest::keyClick(&tree, Qt::Key_Delete);
    QCOMPARE(
        canceller.m_lstTitles, (QStringList{u"Member ID 5"_s, u"Delete Member -  Confirmation"_s}));

    QVERIFY(views.RefreshMemberNode(5, kWorkoutsNode, 0));
    QVERIFY(views.AddMemberNode(5) && !views.AddMemberNode(6));
    QVERIFY(views.RemoveMemberNode(5));
    views.ResetTree();
    QVERIFY(!tree.isExpanded(root));
}

void MainWindowTest::treeLoadsAtStartIfWanted()
{
    m_app->m_options = {CAppOption::loadMembers};
    m_frame = std::make_unique<CMainFrame>(*m_doc, *m_app);
    auto& tree = *m_frame->findChild<QTreeView*>(u"memberTree"_s);
    Show();
    QTRY_VERIFY(tree.isExpanded(tree.model()->index(0, 0)));
}

static CTestEntryOf<MainWindowTest> const g_entry;
#include "MainWindowTest.moc"
