#pragma once

#include <QModelIndex>

class CTreeView;

// What assistive programs read of a CTreeView: a tree with one item for each row, with the text,
// the place and the state of its node. An item can be made the current one and be opened and
// closed.

/// Makes trees known to assistive programs; the first call does it.
void InstallTreeAccess();
/// Tells assistive programs that a node is the current one.
void TellFocus(CTreeView& tree, QModelIndex const& node);
/// Tells them that a node was opened or closed.
void TellOpen(CTreeView& tree, QModelIndex const& node, bool open);
