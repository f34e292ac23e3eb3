#include "app/MainFrame.h"

#include "doc/CommandTable.h"
#include "tests/QtTests.h"
#include "tests/doc/TestDesk.h"
#include "tests/ui/FormCheck.h"
#include "ui/ControlID.h"

#include <QAction>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QScrollArea>
#include <QSplitter>
#include <QStatusBar>
#include <QTreeView>

using namespace Qt::StringLiterals;

namespace
{

auto const kNotYet = u"This command is not available yet."_s;

/// The main window, on an evening in 2026.
class CWindowDesk : public CTestDesk
{
public:
    CMainFrame m_frame{m_doc, m_app};
    QStringList m_lstTitles; ///< of the dialogs that were cancelled

    CWindowDesk()
    {
        CEFOleDateTime::SetClock(CEFOleDateTime(2026, 11, 6, 18, 5, 9));
        m_doc.SetViews(&m_frame);
    }

    void Show()
    {
        QVERIFY(m_doc.OnNewDocument());
        m_frame.show();
        Activate();
    }
    /// What a window manager does when a dialog has closed.
    void Activate()
    {
        m_frame.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&m_frame));
    }
    /// The steps of who cancels so many dialogs.
    QList<CDialogUser::Step> Cancel(int dialogs)
    {
        return QList<CDialogUser::Step>(dialogs, [this](QDialog& dialog) {
            m_lstTitles += dialog.windowTitle();
            // Of the statistics, Cancel is another button.
            dialog.windowTitle() == u"Quick Statistics"_s ? dialog.accept() : dialog.reject();
        });
    }
    QWidget& View() const { return Child<QWidget>(m_frame, "mainView"); }
    QPushButton& Button(char const* name) const { return Child<QPushButton>(m_frame, name); }
};

} // namespace

class MainWindowTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void everythingHasItsPlace();
    void everyCommandReachesItsOperation();
    void statusBarShowsPromptsAndLockKeys();
    void buttonsReachTheirOperations();
    void bannerHasItsColoursAndIsReadOut();
    void treeAsksTheDocument();
};

void MainWindowTest::everythingHasItsPlace()
{
    CWindowDesk desk;
    auto& frame = desk.m_frame;
    QCOMPARE(frame.geometry(), QRect(75, 75, 700, 550));
    desk.Show();
    auto const* const splitter = frame.findChild<QSplitter*>();
    QCOMPARE(splitter->sizes()[0], 233);
    QVERIFY(qAbs(splitter->sizes()[1] - 466) <= 5); // the handle takes its share
    frame.resize(1200, 800);
    QTRY_COMPARE(splitter->width(), 1200);
    QCOMPARE(splitter->sizes()[0], 233);

    auto const& view = desk.View();
    auto const& member = desk.Button("memberButton");
    auto const& report = desk.Button("memberReportButton"); // the two together in the middle
    QTRY_COMPARE(member.x(), view.width() / 2 - (2 * member.width() + 7) / 2);
    QCOMPARE(report.geometry(), member.geometry().translated(member.width() + 7, 0));
    QCOMPARE(FaultsOf(view), QStringList());
    QCOMPARE(ControlID(&desk.Button("evaluationReportButton")), 1200);

    frame.resize(300, 200); // nothing is out of reach
    auto const* const viewport = frame.findChild<QScrollArea*>()->viewport();
    QTRY_VERIFY(viewport->height() < view.height());
    for (auto const* const button : view.findChildren<QPushButton*>()) {
        QVERIFY(view.rect().contains(button->geometry()));
    }
}

void MainWindowTest::everyCommandReachesItsOperation()
{
    CWindowDesk desk;
    desk.Show();
    QMap<int, QString> const others{{57664, u"ShowAbout"_s}, {57606, u"SetUpPrinter"_s},
        {57665, u"Exit"_s}, {32885, u"StartReportServer;Report Server is running on this PC."_s},
        {32822, u"queued 1"_s}, {32894, u"queued 13"_s}};
    QMap<int, QString> dialogs{{32815, u"Date"_s}, {32864, u"Find Workouts"_s}};
    for (auto const& [title, commands] :
        {std::pair(u"Member ID"_s,
             QList{32863, 32784, 32785, 32829, 32817, 32813, 32814, 32883, 32886, 32806, 32808,
                 32810, 32811, 32866, 32868}),
            {u"Report - Options"_s, {32887, 32819, 32816}},
            {u"Category/Course/Section"_s, {32820, 32818}}}) {
        for (int const command : commands) {
            dialogs[command] = title;
        }
    }
    QStringList keys;
    for (auto const& command : CommandTable()) {
        auto const number = QByteArray::number(command.m_nNumber);
        auto* const action
            = desk.m_frame.findChild<QAction*>(u"command%1"_s.arg(command.m_nNumber));
        QVERIFY2((action != nullptr) == command.m_menu.has_value(), number);
        if (action == nullptr || command.m_option) {
            continue;
        }
        QVERIFY2(action->isEnabled() && !action->associatedObjects().isEmpty(), number);
        auto const dialog = dialogs.value(command.m_nNumber);
        auto const expected = dialog.isEmpty() ? others.value(command.m_nNumber, kNotYet) : dialog;
        auto const messages = desk.m_messages.Texts().size();
        desk.m_app.m_lstCalls.clear();
        desk.m_lstTitles.clear();
        CDialogUser const user(desk.Cancel(dialog.isEmpty() ? 0 : 1));
        if (command.m_strKey.isEmpty()) {
            action->trigger();
        } else {
            keys += command.m_strKey;
            desk.Activate();
            QTest::keySequence(&desk.m_frame, QKeySequence(command.m_strKey));
        }
        auto did
            = desk.m_app.m_lstCalls + desk.m_lstTitles + desk.m_messages.Texts().sliced(messages);
        CDAOReport queue;
        if (queue.FindReports() != 0) {
            did += u"queued %1"_s.arg(queue.m_nRptType);
            QVERIFY(desk.m_frame.statusBar()->currentMessage().contains(u"queued"_s));
            queue.DelAll();
        }
        QCOMPARE(did.join(u';'), expected);
        QCOMPARE(user.Faults(), QStringList());
    }
    QCOMPARE(keys.join(u' '),
        u"Ctrl+M Ctrl+Alt+M Ctrl+W Ctrl+Alt+W Ctrl+E Ctrl+Alt+E Ctrl+B Ctrl+Alt+B"_s);
}

void MainWindowTest::statusBarShowsPromptsAndLockKeys()
{
    CWindowDesk desk;
    desk.Show();
    auto const* const bar = desk.m_frame.statusBar();
    QVERIFY(bar->findChild<QLabel*>(QString())->isVisible()); // "Ready"
    auto* const file = desk.m_frame.menuBar()->actions().constFirst()->menu();
    QTest::keyClick(&desk.m_frame, Qt::Key_F, Qt::AltModifier);
    QTRY_COMPARE(QApplication::activePopupWidget(), file);
    QCOMPARE(bar->currentMessage(), u"Change printer or printing options"_s);
    QTest::keyClick(file, Qt::Key_Down);
    QVERIFY(bar->currentMessage().startsWith(u"Copy members, workouts, evaluations,"_s));
    QTest::keyClick(file, Qt::Key_Escape);
    QCOMPARE(bar->currentMessage(), QString());

    for (auto const& [key, modifiers, caps, num] :
        {std::tuple(Qt::Key_CapsLock, 0x02U, u"CAP"_s, QString()),
            {Qt::Key_NumLock, 0x10U, QString(), u"NUM"_s}}) {
        QKeyEvent event(QEvent::KeyPress, key, {}, 0, 0, modifiers);
        QCoreApplication::sendEvent(desk.m_frame.focusWidget(), &event);
        QCOMPARE(Child<QLabel>(*bar, "capPane").text(), caps);
        QCOMPARE(Child<QLabel>(*bar, "numPane").text(), num);
    }
}

void MainWindowTest::buttonsReachTheirOperations()
{
    CWindowDesk desk;
    desk.Show();
    CDialogUser const user(desk.Cancel(12));
    auto const buttons = desk.View().findChildren<QPushButton*>();
    QStringList texts;
    for (auto* const button : buttons) {
        texts += button->text();
        QTest::mouseClick(button, Qt::LeftButton);
    }
    QCOMPARE(texts.join(u'|'),
        u"Member|Member Report|Workout|Workout Report|Evaluation|Evaluation Report|"
        "Body Composition|Body Composition Report|Quick Statistics"_s);
    QCOMPARE(desk.m_messages.Texts(), QStringList());
    QCOMPARE(std::exchange(desk.m_lstTitles, {}).join(u'|'),
        u"Member ID|Member ID|Member ID|Date|Member ID|Member ID|Member ID|Member ID|"
        "Quick Statistics"_s);
    // Enter presses the button in focus, else the first one.
    for (QWidget* const focus :
        std::initializer_list<QWidget*>{&desk.View(), buttons[3], &desk.View()}) {
        desk.Activate();
        focus->setFocus();
        QTest::keyClick(desk.m_frame.focusWidget(), Qt::Key_Enter);
    }
    QCOMPARE(desk.m_lstTitles.join(u'|'), u"Member ID|Date|Member ID"_s);
}

void MainWindowTest::bannerHasItsColoursAndIsReadOut()
{
    CWindowDesk desk;
    auto& view = desk.View();
    for (auto const& [panel, shown, text] : // red is in the low byte, as stored
        {std::tuple("0xF2E6D9", QColor(0xD9, 0xE6, 0xF2), Qt::black),
            {"0x400000", QColor(0, 0, 0x40), Qt::white},
            {"0x0000C0", QColor(0xC0, 0, 0), Qt::white}}) {
        CTestCentre::Run(std::string("UPDATE touch SET panel_color = ") + panel);
        desk.Show();
        auto const image = view.grab().toImage();
        int const centre = view.width() / 2;
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
    QCOMPARE(view.accessibleDescription(), u"Friday - November  06, 2026"_s);
    CTestCentre::Run("UPDATE center SET zip = '', address2 = ''");
    CEFOleDateTime::SetClock(CEFOleDateTime(2026, 11, 7));
    desk.Show();
    view.repaint();
    QCOMPARE(view.accessibleName(),
        u"Riverside Fitness Center\n12 Harbor Street\n(217) 555-0142\n"
        "Web: www.riverside.example\nEmail: desk@riverside.example"_s);
    QCOMPARE(view.accessibleDescription(), u"Saturday - November  07, 2026"_s);

    desk.m_frame.hide();
    CTestCentre::Run("UPDATE center SET name = ''"); // no banner
    desk.Show();
    auto const window = view.palette().color(QPalette::Window);
    QCOMPARE(view.grab().toImage().pixelColor(view.width() / 2, 25), window);
    int const top = desk.Button("memberButton").y();
    QVERIFY(top > 40 && top < 40 + 3 * 20); // the date stands where it would
}

void MainWindowTest::treeAsksTheDocument()
{
    CWindowDesk desk;
    AddMember(5);
    desk.Show();
    auto& tree = Child<QTreeView>(desk.m_frame, "memberTree");
    CDocViews& views = desk.m_frame;
    auto const root = tree.model()->index(0, 0);
    QVERIFY(!tree.isExpanded(root));
    tree.expand(root);
    auto const member = tree.model()->index(0, 0, root);
    tree.expand(member);
    tree.setCurrentIndex(tree.model()->index(2, 0, member));
    CDialogUser const user(desk.Cancel(2));
    QTest::keyClick(&tree, Qt::Key_Return);
    QTest::keyClick(&tree, Qt::Key_Delete);
    QCOMPARE(desk.m_lstTitles, (QStringList{u"Member ID 5"_s, u"Delete Member -  Confirmation"_s}));

    QVERIFY(views.RefreshMemberNode(5, kWorkoutsNode, 0));
    QVERIFY(views.AddMemberNode(5) && !views.AddMemberNode(6));
    QVERIFY(views.RemoveMemberNode(5));
    views.ResetTree();
    QVERIFY(!tree.isExpanded(root));

    desk.m_app.m_options = {CAppOption::loadMembers};
    CMainFrame loading(desk.m_doc, desk.m_app);
    loading.show();
    auto const& loaded = Child<QTreeView>(loading, "memberTree");
    QTRY_VERIFY(loaded.isExpanded(loaded.model()->index(0, 0)));
}

static CTestEntryOf<MainWindowTest> const g_entry;
#include "MainWindowTest.moc"
