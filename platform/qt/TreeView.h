#pragma once

#include "platform/qt/TreeRows.h"

#include <QAbstractItemView>
#include <QElapsedTimer>
#include <QPersistentModelIndex>

/// A tree of one column and of rows of one height, in which one node at a time is selected. It
/// looks and answers to mouse, keys and assistive programs as the toolkit's own tree does, with
/// buttons and lines. What differs:
/// - A node that comes, goes or changes costs the same whatever the number of rows: one step for
///   each open node, and the painting of what is in sight. The toolkit's own lays all its open rows
///   out again.
/// - What is in sight stays there when nodes come or go above it.
/// - Closing a node that the current one is in makes it the current one.
/// - A double click does not open or close.
/// - The width grows with what has been in sight.
///
/// The model keeps all its nodes at hand: it is not asked to fetch more.
class CTreeView : public QAbstractItemView
{
    Q_OBJECT
public:
    explicit CTreeView(QWidget* parent = nullptr);
    ~CTreeView() override;

    bool IsExpanded(QModelIndex const& node) const { return m_rows.IsOpen(node); }
    void Expand(QModelIndex const& node);
    void Collapse(QModelIndex const& node);

    /// The number of rows, in sight or not; every node in an open one has one.
    int RowCount() const { return m_rows.Count(); }
    /// From 0; -1 for a node in a closed one.
    int RowOf(QModelIndex const& node) const { return m_rows.RowOf(node); }
    QModelIndex NodeAt(int row) const { return m_rows.At(row); }

    void setModel(QAbstractItemModel* model) override;
    void reset() override;
    QRect visualRect(QModelIndex const& node) const override;
    QModelIndex indexAt(QPoint const& place) const override;
    /// Opens what the node is in.
    void scrollTo(QModelIndex const& node, ScrollHint hint = EnsureVisible) override;
    /// Looks for the text typed so far at the beginning of the nodes', from the current one down
    /// and on from the first. Costs one look at every row if there is none.
    void keyboardSearch(QString const& typed) override;

Q_SIGNALS:
    void Expanded(QModelIndex const& node);
    void Collapsed(QModelIndex const& node);

protected:
    QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override;
    int horizontalOffset() const override;
    int verticalOffset() const override;
    bool isIndexHidden(QModelIndex const& node) const override;
    void setSelection(QRect const& rect, QItemSelectionModel::SelectionFlags command) override;
    QRegion visualRegionForSelection(QItemSelection const& selection) const override;
    void updateGeometries() override;
    void currentChanged(QModelIndex const& current, QModelIndex const& previous) override;
    void dataChanged(QModelIndex const& topLeft, QModelIndex const& bottomRight,
        QList<int> const& roles) override;
    void rowsInserted(QModelIndex const& parent, int first, int last) override;
    void rowsAboutToBeRemoved(QModelIndex const& parent, int first, int last) override;
    void scrollContentsBy(int dx, int dy) override;
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void RowsChanged();
    void OrderChanged();
    int RowsInSight() const;
    int TextLeft(QModelIndex const& node) const;
    QSize SizeInSight() const;
    int ContentWidth() const;
    QRect Place(int row, int left, int width) const;
    QModelIndex ButtonAt(QPoint const& place) const;
    bool ClickButton(QMouseEvent const& event);
    bool IsTyping() const;
    bool FindText(QString const& start, int row);
    QModelIndex GoLeft(QModelIndex const& current);
    QModelIndex GoRight(QModelIndex const& current);
    void DrawRow(QPainter& painter, QStyleOptionViewItem option, int row, QModelIndex const& node);
    void DrawBranches(QPainter& painter, int row, QModelIndex const& node);

    CTreeRows m_rows;
    QPersistentModelIndex m_firstInSight;
    int m_nRowHeight = 1;
    int m_nWidthSeen = 0; ///< of the widest row that has been in sight
    bool m_bButtonPressed = false;
    QString m_strTyped; ///< so far, of the text that is looked for
    QElapsedTimer m_sinceTyped;
};
