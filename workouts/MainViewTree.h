#pragma once

#include "workouts/NodeTarget.h"

#include <QElapsedTimer>
#include <QPersistentModelIndex>
#include <QTreeView>

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
///
/// What is in sight stays there when nodes come or go above it. The toolkit lays all open rows out
/// again then, once for all changes up to the next painting: some milliseconds with 100,000
/// members.
class CMainViewTree : public QTreeView
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

    void keyboardSearch(QString const& typed) override;

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
    void changeEvent(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void drawBranches(
        QPainter* painter, QRect const& rect, QModelIndex const& index) const override;
    void updateGeometries() override;
    void scrollContentsBy(int dx, int dy) override;

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
    bool IsTyping() const;
    void TakeCurrentOut(QModelIndex closed);
    void FitColumn();

    CCorvanaDoc& m_doc;
    CMemberTreeModel* const m_pModel;
    bool m_bMembersLoaded = false;
    bool m_bLoading = false;
    bool m_bLoadWhenShown = false;
    bool m_bTipShown = false;
    int m_nTextWidth = 0; ///< of the widest node that has been in sight
    QPersistentModelIndex m_firstInSight;
    QElapsedTimer m_sinceTyped;
};
