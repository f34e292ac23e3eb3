#pragma once

#include <QAbstractItemModel>

#include <memory>

/// Which nodes of a tree are open, and which row each visible node stands in. Only the nodes that
/// are open are kept: everything costs one step for each of them at most, and does not grow with
/// the number of rows. A node that is closed remembers which nodes under it are open.
class CTreeRows
{
public:
    CTreeRows();
    ~CTreeRows();

    /// Forgets everything. The model must outlive this or be set to null first.
    void SetModel(QAbstractItemModel const* model);

    bool IsOpen(QModelIndex const& node) const;
    /// False when the node is so already.
    bool SetOpen(QModelIndex const& node, bool open);

    /// The number of rows.
    int Count() const;
    /// From 0; -1 for a node in a closed one, and for no node.
    int RowOf(QModelIndex const& node) const;
    /// The node in a row; none when there is no such row.
    QModelIndex At(int row) const;
    /// The next visible node; none after the last. Does not look at other open nodes.
    QModelIndex After(QModelIndex const& node) const;

    // To be told, since only the open nodes themselves follow the model.
    /// Children first to last of the parent are about to be removed.
    void Forget(QModelIndex const& parent, int first, int last);
    /// Nodes have changed their order or their parent.
    void Reorder();

private:
    struct CNode;

    CNode* Find(QModelIndex const& node) const;
    CNode& FindOrMake(QModelIndex const& node);
    void Drop(QModelIndex const& node);
    int RowsUnder(CNode const& node) const;

    QAbstractItemModel const* m_pModel = nullptr;
    std::unique_ptr<CNode> m_top; ///< what the top level stands under; always open
};
