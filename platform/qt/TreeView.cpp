#include "platform/qt/TreeView.h"

#include "platform/qt/TreeAccess.h"

#include <QApplication>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>
#include <QStyleOptionViewItem>

#include <algorithm>
#include <cassert>
#include <utility>

CTreeView::CTreeView(QWidget* parent)
    : QAbstractItemView(parent)
{
    InstallTreeAccess();
    setSelectionBehavior(SelectRows);
    setSelectionMode(SingleSelection);
    setEditTriggers(NoEditTriggers);
}

/// A model that the tree is the parent of goes after the tree's own part has gone.
CTreeView::~CTreeView()
{
    if (model() != nullptr) {
        model()->disconnect(this);
    }
}

// ---- nodes that open, come and go

void CTreeView::setModel(QAbstractItemModel* model)
{
    assert(this->model() == nullptr); // set once
    connect(model, &QAbstractItemModel::rowsRemoved, this, &CTreeView::RowsChanged);
    connect(model, &QAbstractItemModel::rowsMoved, this, &CTreeView::OrderChanged);
    connect(model, &QAbstractItemModel::layoutChanged, this, &CTreeView::OrderChanged);
    connect(model, &QObject::destroyed, this, [this] { m_rows.SetModel(nullptr); });
    QAbstractItemView::setModel(model);
}

void CTreeView::reset()
{
    m_rows.SetModel(model());
    m_firstInSight = QModelIndex();
    m_nWidthSeen = 0;
    QAbstractItemView::reset();
    RowsChanged();
}

void CTreeView::Expand(QModelIndex const& node)
{
    bool const canOpen = node.isValid() && !node.flags().testFlag(Qt::ItemNeverHasChildren);
    if (canOpen && m_rows.SetOpen(node, true)) {
        RowsChanged();
        TellOpen(*this, node, true);
        Q_EMIT Expanded(node);
    }
}

void CTreeView::Collapse(QModelIndex const& node)
{
    if (!node.isValid() || !IsExpanded(node)) {
        return;
    }
    for (auto above = currentIndex().parent(); above.isValid(); above = above.parent()) {
        if (above == node) {
            setCurrentIndex(node);
        }
    }
    m_rows.SetOpen(node, false);
    RowsChanged();
    TellOpen(*this, node, false);
    Q_EMIT Collapsed(node);
}

/// What is in sight stays there, unless the first row is in sight too.
void CTreeView::RowsChanged()
{
    int const first = RowOf(m_firstInSight);
    updateGeometries();
    if (first > 0 && verticalScrollBar()->value() > 0) {
        verticalScrollBar()->setValue(first);
    }
    m_firstInSight = NodeAt(verticalScrollBar()->value());
    viewport()->update();
}

void CTreeView::OrderChanged()
{
    m_rows.Reorder();
    RowsChanged();
}

void CTreeView::rowsInserted(QModelIndex const& parent, int first, int last)
{
    QAbstractItemView::rowsInserted(parent, first, last);
    RowsChanged();
}

void CTreeView::rowsAboutToBeRemoved(QModelIndex const& parent, int first, int last)
{
    QAbstractItemView::rowsAboutToBeRemoved(parent, first, last); // finds another current node
    m_rows.Forget(parent, first, last);
}

void CTreeView::dataChanged(
    QModelIndex const& topLeft, QModelIndex const& bottomRight, QList<int> const& roles)
{
    QAbstractItemView::dataChanged(topLeft, bottomRight, roles);
    updateGeometries(); // the text may be wider
}

// ---- where things are

/// The nodes stand as far apart as the text is high: names are long and panes are narrow.
int CTreeView::TextLeft(QModelIndex const& node) const
{
    int depth = 1;
    for (auto above = node.parent(); above.isValid(); above = above.parent()) {
        ++depth;
    }
    return depth * fontMetrics().height();
}

int CTreeView::ContentWidth() const
{
    return std::max(m_nWidthSeen, viewport()->width());
}

/// A part of a row in the viewport, from so far left in the whole width.
QRect CTreeView::Place(int row, int left, int width) const
{
    QRect const place(left - horizontalScrollBar()->value(),
        (row - verticalScrollBar()->value()) * m_nRowHeight, width, m_nRowHeight);
    return QStyle::visualRect(layoutDirection(), viewport()->rect(), place);
}

QRect CTreeView::visualRect(QModelIndex const& node) const
{
    int const row = RowOf(node);
    if (row < 0) {
        return {};
    }
    int const left = TextLeft(node);
    return Place(row, left, ContentWidth() - left);
}

QModelIndex CTreeView::indexAt(QPoint const& place) const
{
    return place.y() < 0 ? QModelIndex()
                         : NodeAt(verticalScrollBar()->value() + place.y() / m_nRowHeight);
}

/// The node whose button is there.
QModelIndex CTreeView::ButtonAt(QPoint const& place) const
{
    auto const node = indexAt(place);
    if (!node.isValid() || !model()->hasChildren(node)) {
        return {};
    }
    int const width = fontMetrics().height();
    return Place(RowOf(node), TextLeft(node) - width, width).contains(place) ? node : QModelIndex();
}

int CTreeView::RowsInSight() const
{
    return std::max(1, viewport()->height() / m_nRowHeight);
}

/// The width and the height that the rows in sight need.
QSize CTreeView::SizeInSight() const
{
    QSize size;
    QStyleOptionViewItem option;
    initViewItemOption(&option);
    auto node = NodeAt(verticalScrollBar()->value());
    for (int row = 0; row <= RowsInSight() && node.isValid(); ++row, node = m_rows.After(node)) {
        auto const hint = itemDelegateForIndex(node)->sizeHint(option, node);
        size = size.expandedTo({TextLeft(node) + hint.width(), hint.height()});
    }
    return size;
}

void CTreeView::updateGeometries()
{
    auto const size = SizeInSight();
    m_nRowHeight = std::max(m_nRowHeight, size.height());
    m_nWidthSeen = std::max(m_nWidthSeen, size.width());
    int const count = RowCount();
    auto room = viewport()->size();
    auto const most = maximumViewportSize();
    if (count <= most.height() / m_nRowHeight && m_nWidthSeen <= most.width()) {
        room = most; // without the bars, which would need each other
    }
    int const page = std::max(1, room.height() / m_nRowHeight);
    verticalScrollBar()->setPageStep(page);
    verticalScrollBar()->setRange(0, std::max(0, count - page));
    horizontalScrollBar()->setSingleStep(fontMetrics().height());
    horizontalScrollBar()->setPageStep(room.width());
    horizontalScrollBar()->setRange(0, std::max(0, m_nWidthSeen - room.width()));
    QAbstractItemView::updateGeometries();
}

int CTreeView::horizontalOffset() const
{
    return horizontalScrollBar()->value();
}

int CTreeView::verticalOffset() const
{
    return verticalScrollBar()->value() * m_nRowHeight;
}

bool CTreeView::isIndexHidden(QModelIndex const&) const
{
    return false;
}

void CTreeView::scrollContentsBy(int, int)
{
    m_firstInSight = NodeAt(verticalScrollBar()->value());
    updateGeometries(); // what comes into sight may be wider
    viewport()->update();
}

void CTreeView::scrollTo(QModelIndex const& node, ScrollHint hint)
{
    if (!node.isValid()) {
        return;
    }
    for (auto above = node.parent(); above.isValid(); above = above.parent()) {
        Expand(above);
    }
    int const row = RowOf(node);
    int const first = verticalScrollBar()->value();
    int const page = RowsInSight();
    if (hint == PositionAtCenter) {
        verticalScrollBar()->setValue(row - page / 2);
    } else if (hint == PositionAtTop || (hint == EnsureVisible && row < first)) {
        verticalScrollBar()->setValue(row);
    } else if (hint == PositionAtBottom || row >= first + page) {
        verticalScrollBar()->setValue(row - page + 1);
    }
    int const left = TextLeft(node) - fontMetrics().height();
    int const offset = horizontalScrollBar()->value();
    if (left < offset || left >= offset + viewport()->width()) {
        horizontalScrollBar()->setValue(left);
    }
}

// ---- the current node and the selected one

void CTreeView::currentChanged(QModelIndex const& current, QModelIndex const& previous)
{
    QAbstractItemView::currentChanged(current, previous);
    if (current.isValid()) {
        TellFocus(*this, current);
    }
}

void CTreeView::setSelection(QRect const& rect, QItemSelectionModel::SelectionFlags command)
{
    auto const node = indexAt(rect.bottomRight());
    selectionModel()->select(node, command);
}

/// The whole rows: styles may mark the part left of the text too.
QRegion CTreeView::visualRegionForSelection(QItemSelection const& selection) const
{
    QRegion region;
    for (auto const& node : selection.indexes()) {
        if (int const row = RowOf(node); row >= 0) {
            region += Place(row, 0, ContentWidth());
        }
    }
    return region;
}

QModelIndex CTreeView::moveCursor(CursorAction action, Qt::KeyboardModifiers)
{
    auto const current = currentIndex();
    int const last = RowCount() - 1;
    int const row = RowOf(current);
    auto const at = [this, last](int wanted) { return NodeAt(std::clamp(wanted, 0, last)); };
    if (last < 0) {
        return {};
    }
    switch (action) {
    case MoveLeft:
        return isRightToLeft() ? GoRight(current) : GoLeft(current);
    case MoveRight:
        return isRightToLeft() ? GoLeft(current) : GoRight(current);
    case MoveUp:
    case MovePrevious:
        return at(row - 1);
    case MoveDown:
    case MoveNext:
        return at(row + 1);
    case MovePageUp:
        return at(row - RowsInSight());
    case MovePageDown:
        return at(row + RowsInSight());
    case MoveHome:
        return at(0);
    case MoveEnd:
        return at(last);
    }
    return current;
}

/// Closes the node, else goes to the one that it is in, else scrolls.
QModelIndex CTreeView::GoLeft(QModelIndex const& current)
{
    if (IsExpanded(current)) {
        Collapse(current);
        return current;
    }
    if (!current.parent().isValid()) {
        horizontalScrollBar()->triggerAction(QScrollBar::SliderSingleStepSub);
        return current;
    }
    return current.parent();
}

/// Opens the node, else goes to the first one in it, else scrolls.
QModelIndex CTreeView::GoRight(QModelIndex const& current)
{
    if (!current.isValid() || !model()->hasChildren(current)) {
        horizontalScrollBar()->triggerAction(QScrollBar::SliderSingleStepAdd);
        return current;
    }
    if (!IsExpanded(current)) {
        Expand(current);
        return current;
    }
    auto const child = model()->index(0, 0, current);
    return child.isValid() ? child : current;
}

bool CTreeView::IsTyping() const
{
    return m_sinceTyped.isValid()
        && !m_sinceTyped.hasExpired(QApplication::keyboardInputInterval());
}

bool CTreeView::FindText(QString const& start, int row)
{
    auto node = NodeAt(row);
    for (int rest = RowCount(); rest > 0; --rest) {
        node = node.isValid() ? node : NodeAt(0);
        if (node.data().toString().startsWith(start, Qt::CaseInsensitive)) {
            setCurrentIndex(node);
            return true;
        }
        node = m_rows.After(node);
    }
    return false;
}

void CTreeView::keyboardSearch(QString const& typed)
{
    bool const goesOn = IsTyping();
    if (typed.isEmpty()) {
        m_sinceTyped.invalidate();
        return;
    }
    m_strTyped = goesOn ? m_strTyped + typed : typed;
    m_sinceTyped.start();
    int const row = RowOf(currentIndex());
    if (FindText(m_strTyped, goesOn ? std::max(row, 0) : row + 1)) {
        return;
    }
    if (m_strTyped.count(m_strTyped.front(), Qt::CaseInsensitive) == m_strTyped.size()) {
        FindText(m_strTyped.first(1), row + 1); // the same letter again goes from one to the next
    }
}

// ---- keys and mouse

void CTreeView::keyPressEvent(QKeyEvent* event)
{
    auto const key = event->key();
    bool const isText = key == Qt::Key_Space || key == Qt::Key_Plus || key == Qt::Key_Minus
        || key == Qt::Key_Asterisk;
    if (isText && IsTyping()) {
        keyboardSearch(event->text());
    } else if (key == Qt::Key_Plus || key == Qt::Key_Asterisk) {
        Expand(currentIndex());
    } else if (key == Qt::Key_Minus) {
        Collapse(currentIndex());
    } else {
        QAbstractItemView::keyPressEvent(event);
    }
}

/// Opens or closes the node whose button was hit; false when none was.
bool CTreeView::ClickButton(QMouseEvent const& event)
{
    auto const node = ButtonAt(event.position().toPoint());
    m_bButtonPressed = event.button() == Qt::LeftButton && node.isValid();
    if (m_bButtonPressed && IsExpanded(node)) {
        Collapse(node);
    } else if (m_bButtonPressed) {
        Expand(node);
    }
    return m_bButtonPressed;
}

void CTreeView::mousePressEvent(QMouseEvent* event)
{
    if (!ClickButton(*event)) {
        QAbstractItemView::mousePressEvent(event);
    }
}

void CTreeView::mouseMoveEvent(QMouseEvent* event)
{
    if (!m_bButtonPressed) {
        QAbstractItemView::mouseMoveEvent(event);
    }
}

void CTreeView::mouseReleaseEvent(QMouseEvent* event)
{
    if (!std::exchange(m_bButtonPressed, false)) {
        QAbstractItemView::mouseReleaseEvent(event);
    }
}

void CTreeView::mouseDoubleClickEvent(QMouseEvent* event)
{
    if (!ClickButton(*event)) {
        QAbstractItemView::mouseDoubleClickEvent(event);
    }
}

void CTreeView::changeEvent(QEvent* event)
{
    QAbstractItemView::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) {
        m_nWidthSeen = 0;
        m_nRowHeight = 1;
        updateGeometries();
    }
}

// ---- painting

void CTreeView::paintEvent(QPaintEvent* event)
{
    QPainter painter(viewport());
    QStyleOptionViewItem option;
    initViewItemOption(&option);
    option.viewItemPosition = QStyleOptionViewItem::OnlyOne;
    int row = verticalScrollBar()->value() + event->rect().top() / m_nRowHeight;
    int const last = verticalScrollBar()->value() + event->rect().bottom() / m_nRowHeight;
    for (auto node = NodeAt(row); row <= last && node.isValid(); node = m_rows.After(node)) {
        DrawRow(painter, option, row++, node);
    }
}

void CTreeView::DrawRow(
    QPainter& painter, QStyleOptionViewItem option, int row, QModelIndex const& node)
{
    option.state.setFlag(QStyle::State_Selected, selectionModel()->isSelected(node));
    option.state.setFlag(QStyle::State_HasFocus, hasFocus() && node == currentIndex());
    option.rect = Place(row, 0, ContentWidth());
    style()->drawPrimitive(QStyle::PE_PanelItemViewRow, &option, &painter, this);
    DrawBranches(painter, row, node);
    int const left = TextLeft(node);
    option.rect = Place(row, left, ContentWidth() - left);
    itemDelegateForIndex(node)->paint(&painter, option, node);
}

/// The lines to the nodes around and the button.
void CTreeView::DrawBranches(QPainter& painter, int row, QModelIndex const& node)
{
    painter.save();
    painter.setPen(QPen(palette().color(QPalette::Mid), 1, Qt::DotLine));
    int const width = fontMetrics().height();
    int left = TextLeft(node) - width;
    auto const cell = Place(row, left, width);
    auto const middle = cell.center();
    painter.drawLine(
        middle.x(), middle.y(), isRightToLeft() ? cell.left() : cell.right(), middle.y());
    for (auto above = node; above.isValid(); above = above.parent(), left -= width) {
        bool const isLast = above.row() + 1 == model()->rowCount(above.parent());
        bool const isFirst = row == 0;
        int const x = Place(row, left, width).center().x();
        if (above == node || !isLast) {
            painter.drawLine(
                x, isFirst ? middle.y() : cell.top(), x, isLast ? middle.y() : cell.bottom());
        }
    }
    painter.restore();
    if (model()->hasChildren(node)) {
        QStyleOption option;
        option.initFrom(this);
        option.rect = cell;
        option.state |= QStyle::State_Item | QStyle::State_Children;
        option.state.setFlag(QStyle::State_Open, IsExpanded(node));
        style()->drawPrimitive(QStyle::PE_IndicatorBranch, &option, &painter, this);
    }
}
