#include "platform/qt/TreeAccess.h"

#include "platform/qt/TreeView.h"

#include <QAccessibleWidget>
#include <QHash>
#include <QPointer>

#include <utility>

using namespace Qt::StringLiterals;

namespace
{

/// One node. Lives until its tree goes or others are made after the node went. Other programs take
/// a tree for a table of one column.
class CNodeAccess : public QAccessibleInterface,
                    public QAccessibleActionInterface,
                    public QAccessibleTableCellInterface
{
public:
    CNodeAccess(CTreeView& tree, QPersistentModelIndex node)
        : m_tree(&tree)
        , m_node(std::move(node))
    {
    }

    QModelIndex Node() const { return m_node; }

    bool isValid() const override { return m_tree != nullptr && m_node.isValid(); }
    QObject* object() const override { return nullptr; }
    QWindow* window() const override
    {
        return m_tree != nullptr ? m_tree->window()->windowHandle() : nullptr;
    }
    QAccessibleInterface* parent() const override
    {
        return QAccessible::queryAccessibleInterface(m_tree); // none without a tree
    }
    QAccessibleInterface* child(int) const override { return nullptr; }
    QAccessibleInterface* childAt(int, int) const override { return nullptr; }
    int childCount() const override { return 0; }
    int indexOfChild(QAccessibleInterface const*) const override { return -1; }
    QAccessible::Role role() const override { return QAccessible::TreeItem; }

    QString text(QAccessible::Text text) const override
    {
        if (!isValid() || text != QAccessible::Name) {
            return {};
        }
        auto const name = m_node.data(Qt::AccessibleTextRole).toString();
        return name.isEmpty() ? m_node.data().toString() : name;
    }
    void setText(QAccessible::Text, QString const&) override { }

    QRect rect() const override
    {
        auto const place = isValid() ? m_tree->visualRect(m_node) : QRect();
        return place.isEmpty()
            ? QRect()
            : QRect(m_tree->viewport()->mapToGlobal(place.topLeft()), place.size());
    }

    QAccessible::State state() const override
    {
        QAccessible::State state;
        if (!isValid()) {
            state.invalid = true;
            return state;
        }
        state.selectable = state.focusable = true;
        state.selected = m_tree->selectionModel()->isSelected(m_node);
        state.focused = m_tree->hasFocus() && m_tree->currentIndex() == m_node;
        state.expandable = m_tree->model()->hasChildren(m_node);
        state.expanded = state.expandable && m_tree->IsExpanded(m_node);
        state.collapsed = state.expandable && !state.expanded;
        auto const place = m_tree->visualRect(m_node);
        state.invisible = place.isEmpty();
        state.offscreen = !place.intersects(m_tree->viewport()->rect());
        return state;
    }

    void* interface_cast(QAccessible::InterfaceType type) override
    {
        switch (type) {
        case QAccessible::ActionInterface:
            return static_cast<QAccessibleActionInterface*>(this);
        case QAccessible::TableCellInterface:
            return static_cast<QAccessibleTableCellInterface*>(this);
        default:
            return nullptr;
        }
    }

    QStringList actionNames() const override
    {
        QStringList names;
        if (isValid()) {
            names += setFocusAction();
            if (m_tree->model()->hasChildren(m_node)) {
                names += toggleAction();
            }
        }
        return names;
    }

    void doAction(QString const& name) override
    {
        if (!actionNames().contains(name)) {
            return;
        }
        if (name == setFocusAction()) {
            m_tree->setCurrentIndex(m_node);
        } else if (m_tree->IsExpanded(m_node)) {
            m_tree->Collapse(m_node);
        } else {
            m_tree->Expand(m_node);
        }
    }

    QStringList keyBindingsForAction(QString const&) const override { return {}; }

    bool isSelected() const override { return state().selected; }
    QList<QAccessibleInterface*> columnHeaderCells() const override { return {}; }
    QList<QAccessibleInterface*> rowHeaderCells() const override { return {}; }
    int columnIndex() const override { return 0; }
    int rowIndex() const override { return isValid() ? m_tree->RowOf(m_node) : -1; }
    int columnExtent() const override { return 1; }
    int rowExtent() const override { return 1; }
    QAccessibleInterface* table() const override { return parent(); }

private:
    QPointer<CTreeView> const m_tree;
    QPersistentModelIndex const m_node;
};

class CTreeAccess : public QAccessibleWidget, public QAccessibleTableInterface
{
public:
    explicit CTreeAccess(CTreeView& tree)
        : QAccessibleWidget(&tree, QAccessible::Tree)
    {
    }
    ~CTreeAccess() override
    {
        for (auto const id : std::as_const(m_ids)) {
            QAccessible::deleteAccessibleInterface(id);
        }
    }

    int childCount() const override { return Tree().RowCount(); }

    QAccessibleInterface* child(int row) const override { return Access(Tree().NodeAt(row)); }

    int indexOfChild(QAccessibleInterface const* child) const override
    {
        auto const* const node = dynamic_cast<CNodeAccess const*>(child);
        return node != nullptr ? Tree().RowOf(node->Node()) : -1;
    }

    QAccessibleInterface* childAt(int x, int y) const override
    {
        auto const* const viewport = Tree().viewport();
        auto const place = viewport->mapFromGlobal(QPoint(x, y));
        return viewport->rect().contains(place) ? Access(Tree().indexAt(place)) : nullptr;
    }

    QAccessibleInterface* focusChild() const override { return Access(Tree().currentIndex()); }

    void* interface_cast(QAccessible::InterfaceType type) override
    {
        return type == QAccessible::TableInterface ? static_cast<QAccessibleTableInterface*>(this)
                                                   : QAccessibleWidget::interface_cast(type);
    }

    QAccessibleInterface* caption() const override { return nullptr; }
    QAccessibleInterface* summary() const override { return nullptr; }
    QAccessibleInterface* cellAt(int row, int column) const override
    {
        return column == 0 ? child(row) : nullptr;
    }
    int rowCount() const override { return childCount(); }
    int columnCount() const override { return 1; }
    QString rowDescription(int) const override { return {}; }
    QString columnDescription(int column) const override
    {
        return Tree().model()->headerData(column, Qt::Horizontal).toString();
    }

    int selectedCellCount() const override { return int(Selected().size()); }
    int selectedRowCount() const override { return selectedCellCount(); }
    int selectedColumnCount() const override { return 0; }
    QList<QAccessibleInterface*> selectedCells() const override
    {
        QList<QAccessibleInterface*> cells;
        for (auto const& node : Selected()) {
            cells += Access(node);
        }
        return cells;
    }
    QList<int> selectedRows() const override
    {
        QList<int> rows;
        for (auto const& node : Selected()) {
            rows += Tree().RowOf(node);
        }
        return rows;
    }
    QList<int> selectedColumns() const override { return {}; }
    bool isRowSelected(int row) const override { return selectedRows().contains(row); }
    bool isColumnSelected(int) const override { return false; }
    bool selectRow(int row) override
    {
        Tree().setCurrentIndex(Tree().NodeAt(row));
        return isRowSelected(row);
    }
    bool unselectRow(int row) override
    {
        Tree().selectionModel()->select(Tree().NodeAt(row), QItemSelectionModel::Deselect);
        return !isRowSelected(row);
    }
    bool selectColumn(int) override { return false; }
    bool unselectColumn(int) override { return false; }
    void modelChange(QAccessibleTableModelChangeEvent*) override {
    } // nodes are followed as they go

private:
    CTreeView& Tree() const { return *static_cast<CTreeView*>(widget()); }

    QModelIndexList Selected() const { return Tree().selectionModel()->selectedIndexes(); }

    /// What stands for a node; it stays the same while the node does.
    QAccessibleInterface* Access(QModelIndex const& node) const
    {
        if (!node.isValid()) {
            return nullptr;
        }
        QPersistentModelIndex const kept(node);
        if (auto const id = m_ids.value(kept); id != 0) {
            return QAccessible::accessibleInterface(id);
        }
        if (m_ids.size() >= m_nNextCleanUp) {
            m_ids.removeIf([](auto const& entry) {
                bool const isGone = !entry.key().isValid();
                if (isGone) {
                    QAccessible::deleteAccessibleInterface(entry.value());
                }
                return isGone;
            });
            m_nNextCleanUp = std::max(kFirstCleanUp, m_ids.size() * 2);
        }
        auto* const access = new CNodeAccess(Tree(), kept); // owned by the registry
        m_ids.insert(kept, QAccessible::registerAccessibleInterface(access));
        return access;
    }

    static constexpr qsizetype kFirstCleanUp = 256;

    mutable QHash<QPersistentModelIndex, QAccessible::Id> m_ids;
    mutable qsizetype m_nNextCleanUp = kFirstCleanUp;
};

QAccessibleInterface* MakeAccess(QString const& className, QObject* object)
{
    if (className == u"CTreeView"_s) {
        if (auto* const tree = qobject_cast<CTreeView*>(object)) {
            return new CTreeAccess(*tree);
        }
    }
    return nullptr;
}

} // namespace

void InstallTreeAccess()
{
    static bool const installed = (QAccessible::installFactory(MakeAccess), true);
    Q_UNUSED(installed);
}

void TellFocus(CTreeView& tree, QModelIndex const& node)
{
    if (QAccessible::isActive()) {
        QAccessibleEvent event(&tree, QAccessible::Focus);
        event.setChild(tree.RowOf(node));
        QAccessible::updateAccessibility(&event);
    }
}

void TellOpen(CTreeView& tree, QModelIndex const& node, bool open)
{
    int const row = QAccessible::isActive() ? tree.RowOf(node) : -1;
    if (row >= 0) {
        QAccessible::State changed;
        (open ? changed.expanded : changed.collapsed) = 1;
        QAccessibleStateChangeEvent event(&tree, changed);
        event.setChild(row);
        QAccessible::updateAccessibility(&event);
    }
}
