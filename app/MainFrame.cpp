#include "app/MainFrame.h"

#include "app/MainView.h"
#include "platform/qt/LockKeys.h"
#include "workouts/MainViewTree.h"

#include <QAction>
#include <QApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QMenuBar>
#include <QScrollArea>
#include <QSplitter>
#include <QStatusBar>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace
{

constexpr QPoint kPosition(75, 75);
constexpr QSize kSize(700, 550);

} // namespace

CMainFrame::CMainFrame(CCorvanaDoc& doc, CAppCommands& app)
    : m_doc(doc)
    , m_app(app)
{
    setWindowTitle(u"Corvana"_s);
    move(kPosition);
    resize(kSize);
    MakePanes();
    MakeStatusBar();
    MakeMenus();
}

void CMainFrame::MakePanes()
{
    auto* const view = new CMainView(m_doc);
    auto* const scrollArea = new QScrollArea; // for windows smaller than what stands in it
    scrollArea->setWidget(view);
    scrollArea->setWidgetResizable(true);
    scrollArea->setFrameShape(QFrame::NoFrame);
    scrollArea->setFocusPolicy(Qt::NoFocus);

    auto* const splitter = new QSplitter;
    splitter->setObjectName(u"splitter"_s);
    m_pTree = new CMainViewTree(m_doc);
    connect(m_pTree, &CMainViewTree::EditAsked, this,
        [this](CNodeTarget const& target) { EditTarget(m_doc, target); });
    connect(m_pTree, &CMainViewTree::DeleteAsked, this,
        [this](CNodeTarget const& target) { DeleteTarget(m_doc, target); });
    if (m_app.IsOptionOn(CAppOption::loadMembers)) {
        m_pTree->LoadWhenShown();
    }
    splitter->addWidget(m_pTree);
    splitter->addWidget(scrollArea);
    splitter->setChildrenCollapsible(false);
    splitter->setStretchFactor(0, 0); // the tree keeps its width when the window grows
    splitter->setStretchFactor(1, 1);
    int const third = kSize.width() / 3;
    splitter->setSizes({third, kSize.width() - third - splitter->handleWidth()});
    setCentralWidget(splitter);
    view->setFocus();
}

void CMainFrame::MakeStatusBar()
{
    auto* const bar = statusBar();
    bar->addWidget(new QLabel(tr("Ready"))); // prompts cover it while they show
    auto const pane = [this, bar](char const* name, QString const& text) {
        auto* const label = new QLabel(this);
        label->setObjectName(QLatin1StringView(name));
        label->setFrameStyle(QFrame::Panel | QFrame::Sunken);
        label->setMinimumWidth(label->fontMetrics().horizontalAdvance(text + u"  "_s));
        bar->addPermanentWidget(label);
        return label;
    };
    m_pCapPane = pane("capPane", tr("CAP"));
    m_pNumPane = pane("numPane", tr("NUM"));
    qApp->installEventFilter(this); // the keys reach whatever window is in front
}

void CMainFrame::MakeMenus()
{
    auto const table = MenuTable();
    CMenus menus;
    for (auto const& command : CommandTable()) {
        if (command.m_menu) {
            MenuOf(*command.m_menu, table, menus)->addAction(MakeAction(command));
        }
    }
}

/// The menu itself; made, and the ones it stands in, when it is asked for the first time.
QMenu* CMainFrame::MenuOf(CMenuID id, std::vector<CMenu> const& table, CMenus& menus)
{
    auto& menu = menus[id];
    if (menu == nullptr) {
        auto const row = std::ranges::find(table, id, &CMenu::m_id);
        menu = row->m_parent ? MenuOf(*row->m_parent, table, menus)->addMenu(row->m_strTitle)
                             : menuBar()->addMenu(row->m_strTitle);
        menu->menuAction()->setStatusTip(row->m_strPrompt);
    }
    return menu;
}

QAction* CMainFrame::MakeAction(CCommand const& command)
{
    auto* const action = new QAction(command.m_strText, this);
    action->setObjectName(u"command%1"_s.arg(command.m_nNumber));
    action->setShortcut(QKeySequence(command.m_strKey, QKeySequence::PortableText));
    action->setStatusTip(command.m_strPrompt);
    action->setToolTip(TipOf(command));
    action->setMenuRole(QAction::NoRole);
    auto const option = command.m_option;
    if (option) {
        action->setCheckable(true);
        action->setChecked(m_app.IsOptionOn(*option));
    }
    connect(action, &QAction::triggered, this, [this, action, option, run = command.m_fnRun] {
        run(m_doc, m_app);
        if (option) {
            action->setChecked(m_app.IsOptionOn(*option));
        }
    });
    return action;
}

void CMainFrame::ShowResult(QString const& text)
{
    statusBar()->showMessage(text);
}

void CMainFrame::ResetTree()
{
    m_pTree->ResetTree();
}

bool CMainFrame::AddMemberNode(std::int32_t memberID)
{
    return m_pTree->AddMemberNode(memberID);
}

bool CMainFrame::RemoveMemberNode(std::int32_t memberID)
{
    return m_pTree->RemoveMemberNode(memberID);
}

bool CMainFrame::RefreshMemberNode(std::int32_t memberID, CTreeNode kind, std::int32_t previousID)
{
    return m_pTree->RefreshMemberNode(memberID, kind, previousID);
}

bool CMainFrame::eventFilter(QObject* object, QEvent* event)
{
    if (event->type() == QEvent::KeyPress || event->type() == QEvent::KeyRelease) {
        auto const& key = static_cast<QKeyEvent&>(*event);
        if (key.key() == Qt::Key_CapsLock || key.key() == Qt::Key_NumLock) {
            ShowLockKeys(key.nativeModifiers());
        }
    }
    return QMainWindow::eventFilter(object, event);
}

void CMainFrame::changeEvent(QEvent* event)
{
    QMainWindow::changeEvent(event);
    if (event->type() == QEvent::ActivationChange) {
        ShowLockKeys(0);
    }
}

void CMainFrame::ShowLockKeys(quint32 nativeModifiers)
{
    auto const keys = CurrentLockKeys(nativeModifiers);
    m_pCapPane->setText(keys.caps ? tr("CAP") : QString());
    m_pNumPane->setText(keys.num ? tr("NUM") : QString());
}
