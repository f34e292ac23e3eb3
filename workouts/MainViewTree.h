#pragma once

#include "platform/qt/TreeView.h"
#include "workouts/NodeTarget.h"

#include <cstdint>
#include <optional>

class CCorvanaDoc;
class CMemberTreeModel;

/// The tree of members in the left pane of the main window: every member with the profile, the
/// workouts, the evaluations and the body compositions. It loads the members when its root is
/// opened for the first time, and the records of a branch when that is opened.
///
/// A double click or Enter edits, Delete deletes, a right click or the menu key shows a summary;
/// all of them once the members are loaded.
class CMainViewTree : public CTreeView
{
    Q_OBJECT
public:
    /// The document must outlive the tree.
    explicit CMainViewTree(CCorvanaDoc& doc, QWidget* parent = nullptr);

    /// Opens the root as soon as the tree has been painted.
    void LoadWhenShown() { m_bLoadWhenShown = true; }

    // For the document; see CDocViews.
    void ResetTree();
    bool AddMemberNode(std::int32_t memberID);
    bool RemoveMemberNode(std::int32_t memberID);
    bool RefreshMemberNode(std::int32_t memberID, CTreeNode kind, std::int32_t previousID);

Q_SIGNALS:
    // The user wants to change or delete something.
    void EditAsked(CNodeTarget const& target);
    void DeleteAsked(CNodeTarget const& target);

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void LoadNode(QModelIndex const& node);
    bool LoadMembers();
    bool LoadBranch(QModelIndex const& branch);
    bool Fail(QString const& text, QString const& detail);
    std::optional<CNodeTarget> TargetOf(QModelIndex const& node) const;
    QModelIndex SelectedNode() const;
    void EditNode(QModelIndex const& node);
    void DeleteNode(QModelIndex const& node);
    void ShowTip(QModelIndex const& node);
    void HideTip();
    void TellTip(QString const& text);

    CCorvanaDoc& m_doc;
    CMemberTreeModel* const m_pModel;
    bool m_bMembersLoaded = false;
    bool m_bLoading = false;
    bool m_bLoadWhenShown = false;
    bool m_bTipShown = false;
};
