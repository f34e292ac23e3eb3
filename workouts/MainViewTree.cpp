#include "workouts/MainViewTree.h"

using namespace Qt::StringLiterals;

CMainViewTree::CMainViewTree(QWidget* parent)
    : QTreeView(parent)
{
    setObjectName(u"memberTree"_s);
    setAccessibleName(tr("Members"));
    setHeaderHidden(true);
    setUniformRowHeights(true); // opening hundreds of thousands of members stays fast
}
