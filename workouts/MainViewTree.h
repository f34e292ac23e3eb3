#pragma once

#include <QTreeView>

/// The tree of members in the left pane of the main window.
class CMainViewTree : public QTreeView
{
    Q_OBJECT
public:
    explicit CMainViewTree(QWidget* parent = nullptr);
};
