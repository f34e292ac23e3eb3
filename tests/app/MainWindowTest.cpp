#include "app/MainFrame.h"

#include "doc/CommandTable.h"
#include "tests/QtTests.h"
#include "tests/doc/TestDesk.h"
#include "tests/ui/FileRecorder.h"
#include "tests/ui/FormCheck.h"

#include <QAction>
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

/// The main window, on an evening in 2026.
class CWindowDesk : public CTestDesk
{
public:
    CMainFrame m_frame{m_doc, m_app};

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
    /// What has happened since the last time: what was asked of the application, dialogs that came
    /// up, and were cancelled, messages and queued reports.
    QString Did()
    {
        auto did = std::exchange(m_app.m_lstCalls, {}) + std::exchange(m_lstTitles, {})
            + m_messages.Texts().sliced(std::exchange(m_nTold, m_messages.Texts().size()));
        CDAOReport queue;
        if (queue.FindReports() != 0) {
            did += u"queued %1"_s.arg(queue.m_nRptType);
            [&] { QVERIFY(m_frame.statusBar()->currentMessage().contains(u"queued"_s)); }();
            queue.DelAll();
        }
        return did.join(u';');
    }
    /// Who cancels so many dialogs.
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

private:
    QStringList m_lstTitles;
    qsizetype m_nTold = 0;
};

} // namespace

class MainWindowTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void everythingHasItsPlace();
    void everyCommandReachesItsOperation();
    void mnemonicsAreUniqueInEachMenu();
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
    frame.resize(1200, 800);
    QTRY_COMPARE(splitter->width(), 1200);
    QCOMPARE(splitter->sizes()[0], 233);
    auto const& view = desk.View();
    auto const& member = desk.Button("memberButton");
    auto const& report = desk.Button("memberReportButton"); // the two together in the middle
    QTRY_COMPARE(member.x(), view.width() / 2 - (2 * member.width() + 7) / 2);
    QCOMPARE(report.geometry(), member.geometry().translated(member.width() + 7, 0));
    QCOMPARE(FaultsOf(view), QStringList());
    frame.resize(300, 200); // nothing is out of reach
    QTRY_VERIFY(frame.findChild<QScrollArea*>()->viewport()->height() < view.height());
}

void MainWindowTest::everyCommandReachesItsOperation()
{
    CWindowDesk desk;
    desk.Show();
    QMap<QString, QList<int>> did; // what was done, and by which commands
    QString keys;
    CFileRecorder const files;
    CDialogUser const user(desk.Cancel(26));
    for (auto const& command : CommandTable()) {
        auto const number = QByteArray::number(command.m_nNumber);
        auto* const action
            = desk.m_frame.findChild<QAction*>(QLatin1StringView("command" + number));
        QVERIFY2((action != nullptr) == command.m_menu.has_value(), number);
        QVERIFY2(!TipOf(command).isEmpty() && !command.m_strPrompt.isEmpty(), number);
        QVERIFY(command.m_nNumber != 32820 // no mnemonics, no dots
            || TipOf(command) == u"Category/Course/Section Roster"_s);
        if (action == nullptr || command.m_option) {
            continue;
        }
        QVERIFY2(action->isEnabled() && !action->associatedObjects().isEmpty(), number);
        if (command.m_strKey.isEmpty()) {
            action->trigger();
        } else {
            keys += command.m_strKey + u' ';
            desk.Activate();
            QTest::keySequence(&desk.m_frame, QKeySequence(command.m_strKey));
        }
        did[desk.Did().section(u'\n', 0, 0)] += command.m_nNumber;
    }
    QCOMPARE(user.Faults(), QStringList());
    QCOMPARE(keys, u"Ctrl+M Ctrl+Alt+M Ctrl+W Ctrl+Alt+W Ctrl+E Ctrl+Alt+E Ctrl+B Ctrl+Alt+B "_s);
    QMap<QString, QList<int>> const expected{{u"ShowAbout"_s, {57664}},
        {u"SetUpPrinter"_s, {57606}}, {u"Exit"_s, {57665}},
        {u"You have selected to compact your database. Before proceeding,"_s, {32892}},
        {u"StartReportServer;Report Server is running on this PC."_s, {32885}},
        {u"queued 1"_s, {32822}}, {u"queued 13"_s, {32894}}, {u"Date"_s, {32815}},
        {u"Enter Password"_s, {32809, 32812, 32870}},
        {u"No records are available for backup."_s, {32871, 32872, 32873, 32874}},
        {u"No records are available for archive."_s, {32875, 32876, 32877, 32878}},
        {u"Do you want to restore records for a specific member?"_s, {32880, 32881, 32882}},
        {u"Do you want to restore records for a specific member?;In the case of duplicate members, "
         "do you want to overwrite existing members?"_s,
            {32879}},
        {u"Find Members"_s, {32890}}, {u"Find Workouts"_s, {32864}},
        {u"Report - Options"_s, {32887, 32819, 32816}},
        {u"Category/Course/Section"_s, {32820, 32818}},
        {u"Member ID"_s,
            {32863, 32784, 32785, 32829, 32806, 32808, 32817, 32810, 32811, 32813, 32814, 32866,
                32868, 32883, 32886}}};
    QCOMPARE(did.keys(), expected.keys());
    QCOMPARE(did.values(), expected.values());
}

void MainWindowTest::mnemonicsAreUniqueInEachMenu()
{
    CWindowDesk const desk;
    auto menus = desk.m_frame.findChildren<QMenu*>();
    QList<QWidget*> bars(menus.begin(), menus.end());
    for (auto const* const bar : bars << desk.m_frame.menuBar()) {
        QString used;
        for (auto const* const action : bar->actions()) {
            // One text carries two mnemonics; both count.
            auto const parts = action->text().toUpper().split(u'&');
            QVERIFY2(parts.size() > 1 || action->isSeparator(), qPrintable(action->text()));
            for (auto const& part : parts.sliced(1)) {
                QVERIFY2(!used.contains(part[0]), qPrintable(action->text()));
                used += part[0];
            }
        }
    }
}

void MainWindowTest::statusBarShowsPromptsAndLockKeys()
{
    CWindowDesk desk;
    desk.Show();
    auto const* const bar = desk.m_frame.statusBar();
    auto* const file = desk.m_frame.menuBar()->actions().constFirst()->menu();
    QTest::keyClick(&desk.m_frame, Qt::Key_F, Qt::AltModifier);
    QTRY_COMPARE(QApplication::activePopupWidget(), file);
    QCOMPARE(bar->currentMessage(), u"Change printer or printing options"_s);
    QTest::keyClick(file, Qt::Key_Down);
    QVERIFY(bar->currentMessage().startsWith(u"Copy members, workouts, evaluations,"_s));
    QTest::keyClick(file, Qt::Key_Escape);
    QCOMPARE(bar->currentMessage(), QString());

    for (auto const& [key, modifiers, shown] :
        {std::tuple(Qt::Key_CapsLock, 0x02U, u"CAP|"_s), {Qt::Key_NumLock, 0x10U, u"|NUM"_s}}) {
        QKeyEvent event(QEvent::KeyPress, key, {}, 0, 0, modifiers);
        QCoreApplication::sendEvent(desk.m_frame.focusWidget(), &event);
        QCOMPARE(Texts(*bar, u"capPane numPane"_s), shown);
    }
}

void MainWindowTest::buttonsReachTheirOperations()
{
    CWindowDesk desk;
    desk.Show();
    CDialogUser const user(desk.Cancel(11));
    auto const buttons = desk.View().findChildren<QPushButton*>();
    QStringList did;
    for (auto* const button : buttons) {
        QTest::mouseClick(button, Qt::LeftButton);
        did += button->text() + u": "_s + desk.Did();
    }
    QCOMPARE(did.join(u'|'),
        u"Member: Member ID|Member Report: Member ID|Workout: Member ID|Workout Report: Date|"
        "Evaluation: Member ID|Evaluation Report: Member ID|Body Composition: Member ID|"
        "Body Composition Report: Member ID|Quick Statistics: Quick Statistics"_s);
    // Enter presses the button in focus, else the first one.
    for (auto const& [focus, title] :
        {std::pair<QWidget*, QString>(buttons[3], u"Date"_s), {&desk.View(), u"Member ID"_s}}) {
        desk.Activate();
        focus->setFocus();
        QTest::keyClick(desk.m_frame.focusWidget(), Qt::Key_Enter);
        QCOMPARE(desk.Did(), title);
    }
    QCOMPARE(user.Faults(), QStringList());
}

void MainWindowTest::bannerHasItsColoursAndIsReadOut()
{
    CWindowDesk desk;
    auto& view = desk.View();
    auto const pixel
        = [&view](int y) { return view.grab().toImage().pixelColor(view.width() / 2, y); };
    CTestCentre::Run("UPDATE center SET zip = '', address2 = ''");
    for (auto const& [panel, shown, text] : // red is in the low byte, as stored
        {std::tuple("0xF2E6D9", QColor(0xD9, 0xE6, 0xF2), Qt::black),
            {"0x400000", QColor(0, 0, 0x40), Qt::white}}) {
        CTestCentre::Run(std::string("UPDATE touch SET panel_color = ") + panel);
        desk.Show();
        // The banner's text begins 40 below the top, the panel 10 above it, the frame 20 above it.
        QCOMPARE(pixel(25), QColor(0x16, 0x4A, 0x78));
        QCOMPARE(pixel(35), shown);
        auto const line = view.grab({view.width() / 2 - 60, 40, 120, 20}).toImage();
        auto const colours = line.convertToFormat(QImage::Format_Indexed8).colorTable();
        QVERIFY(colours.contains(QColor(text).rgb()));
    }
    QCOMPARE(view.accessibleName(),
        u"Riverside Fitness Center\n12 Harbor Street\n(217) 555-0142\n"
        "Web: www.riverside.example\nEmail: desk@riverside.example"_s);
    CEFOleDateTime::SetClock(CEFOleDateTime(2026, 11, 7));
    desk.m_frame.hide();
    CTestCentre::Run("UPDATE center SET name = ''"); // no banner
    desk.Show();
    QCOMPARE(pixel(25), view.palette().color(QPalette::Window));
    QVERIFY(desk.Button("memberButton").y() < 40 + 3 * 20); // the date stands where it would
    QCOMPARE(view.accessibleDescription(), u"Saturday - November  07, 2026"_s);
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
    QCOMPARE(desk.Did(), u"Member ID 5;Delete Member -  Confirmation"_s);

    QVERIFY(views.RefreshMemberNode(5, kWorkoutsNode, 0));
    QVERIFY(views.AddMemberNode(5) && !views.AddMemberNode(6) && views.RemoveMemberNode(5));
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
