#pragma once

#include "doc/AppCommands.h"
#include "doc/CommandTable.h"
#include "doc/DocViews.h"

#include <QMainWindow>

#include <map>

class CCorvanaDoc;
class CMainViewTree;
class QLabel;
class QMenu;
class QSplitter;

/// The main window: menus, the tree of members beside the main view, and the status bar.
class CMainFrame : public QMainWindow, public CDocViews
{
    Q_OBJECT
public:
    /// Both must outlive the window.
    CMainFrame(CCorvanaDoc& doc, CAppCommands& app);

    QWidget* Window() override { return this; }
    void ShowResult(QString const& text) override;
    void ResetTree() override;
    bool AddMemberNode(std::int32_t memberID) override;
    bool RemoveMemberNode(std::int32_t memberID) override;
    bool RefreshMemberNode(std::int32_t memberID, CTreeNode kind, std::int32_t previousID) override;

protected:
    bool eventFilter(QObject* object, QEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    using CMenus = std::map<CMenuID, QMenu*>;

    void MakePanes();
    void MakeStatusBar();
    void MakeMenus();
    QMenu* MenuOf(CMenuID id, std::vector<CMenu> const& table, CMenus& menus);
    QAction* MakeAction(CCommand const& command);
    void ShowLockKeys(quint32 nativeModifiers);

    CCorvanaDoc& m_doc;
    CAppCommands& m_app;
    CMainViewTree* m_pTree = nullptr;
    QLabel* m_pCapPane = nullptr;
    QLabel* m_pNumPane = nullptr;
};
