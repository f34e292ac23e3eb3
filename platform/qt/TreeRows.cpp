#include "platform/qt/TreeRows.h"

#include <QPersistentModelIndex>

#include <algorithm>
#include <utility>
#include <vector>

/// An open node, or one on the way to an open node. The model keeps its index up to date, so that
/// neither those that come nor those that go before it have to be counted here.
struct CTreeRows::CNode
{
    using CNodes = std::vector<std::unique_ptr<CNode>>;

    /// Where the child in a row of the model is or would be.
    CNodes::iterator Place(int row)
    {
        return std::ranges::lower_bound(
            m_children, row, {}, [](auto const& child) { return child->m_index.row(); });
    }

    QPersistentModelIndex m_index;
    bool m_bOpen = false;
    CNodes m_children; ///< in the order of the model
};

CTreeRows::CTreeRows()
{
    SetModel(nullptr);
}

CTreeRows::~CTreeRows() = default;

void CTreeRows::SetModel(QAbstractItemModel const* model)
{
    m_pModel = model;
    m_top = std::make_unique<CNode>();
    m_top->m_bOpen = true;
}

CTreeRows::CNode* CTreeRows::Find(QModelIndex const& node) const
{
    if (!node.isValid()) {
        return m_top.get();
    }
    auto* const parent = Find(node.parent());
    if (parent == nullptr) {
        return nullptr;
    }
    auto const place = parent->Place(node.row());
    bool const isThere = place != parent->m_children.end() && (*place)->m_index.row() == node.row();
    return isThere ? place->get() : nullptr;
}

CTreeRows::CNode& CTreeRows::FindOrMake(QModelIndex const& node)
{
    if (!node.isValid()) {
        return *m_top;
    }
    auto& parent = FindOrMake(node.parent());
    auto const place = parent.Place(node.row());
    if (place != parent.m_children.end() && (*place)->m_index.row() == node.row()) {
        return **place;
    }
    auto made = std::make_unique<CNode>();
    made->m_index = node;
    return **parent.m_children.insert(place, std::move(made));
}

/// Takes a node away that nothing is open in any more, and those on the way that it was kept for.
void CTreeRows::Drop(QModelIndex const& node)
{
    for (auto gone = node; gone.isValid(); gone = gone.parent()) {
        auto const* const kept = Find(gone);
        if (kept->m_bOpen || !kept->m_children.empty()) {
            return;
        }
        auto* const parent = Find(gone.parent());
        parent->m_children.erase(parent->Place(gone.row()));
    }
}

bool CTreeRows::IsOpen(QModelIndex const& node) const
{
    auto const* const found = Find(node);
    return found != nullptr && found->m_bOpen;
}

bool CTreeRows::SetOpen(QModelIndex const& node, bool open)
{
    if (IsOpen(node) == open) {
        return false;
    }
    FindOrMake(node).m_bOpen = open;
    if (!open) {
        Drop(node);
    }
    return true;
}

int CTreeRows::RowsUnder(CNode const& node) const
{
    if (!node.m_bOpen) {
        return 0;
    }
    int rows = m_pModel->rowCount(node.m_index);
    for (auto const& child : node.m_children) {
        rows += RowsUnder(*child);
    }
    return rows;
}

int CTreeRows::Count() const
{
    return m_pModel != nullptr ? RowsUnder(*m_top) : 0;
}

int CTreeRows::RowOf(QModelIndex const& node) const
{
    if (!node.isValid()) {
        return -1;
    }
    auto const above = node.parent();
    auto const* const parent = Find(above);
    int const parentRow = above.isValid() ? RowOf(above) : -1;
    if (parent == nullptr || !parent->m_bOpen || (above.isValid() && parentRow < 0)) {
        return -1;
    }
    int row = parentRow + 1 + node.row();
    for (auto const& child : parent->m_children) {
        if (child->m_index.row() >= node.row()) {
            break;
        }
        row += RowsUnder(*child);
    }
    return row;
}

QModelIndex CTreeRows::At(int row) const
{
    if (row < 0 || row >= Count()) {
        return {};
    }
    auto const* parent = m_top.get();
    for (int rest = row;;) { // rows from the first child of the parent
        CNode const* inside = nullptr;
        for (auto const& child : parent->m_children) {
            int const childRow = child->m_index.row();
            if (rest <= childRow) {
                break;
            }
            int const rows = RowsUnder(*child);
            if (rest <= childRow + rows) {
                inside = child.get();
                rest -= childRow + 1;
                break;
            }
            rest -= rows;
        }
        if (inside == nullptr) {
            return m_pModel->index(rest, 0, parent->m_index);
        }
        parent = inside;
    }
}

QModelIndex CTreeRows::After(QModelIndex const& node) const
{
    if (IsOpen(node) && m_pModel->rowCount(node) > 0) {
        return m_pModel->index(0, 0, node);
    }
    for (auto last = node; last.isValid(); last = last.parent()) {
        if (last.row() + 1 < m_pModel->rowCount(last.parent())) {
            return m_pModel->index(last.row() + 1, 0, last.parent());
        }
    }
    return {};
}

void CTreeRows::Forget(QModelIndex const& parent, int first, int last)
{
    if (auto* const found = Find(parent)) {
        found->m_children.erase(found->Place(first), found->Place(last + 1));
        Drop(parent);
    }
}

void CTreeRows::Reorder()
{
    std::vector<QPersistentModelIndex> open;
    auto const collect = [&open](auto const& self, CNode const& node) -> void {
        if (node.m_bOpen && node.m_index.isValid()) {
            open.push_back(node.m_index);
        }
        for (auto const& child : node.m_children) {
            self(self, *child);
        }
    };
    collect(collect, *m_top);
    SetModel(m_pModel);
    for (auto const& node : open) {
        SetOpen(node, true);
    }
}
