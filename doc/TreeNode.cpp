#include "doc/TreeNode.h"

#include "store/DAOBodyComp.h"
#include "store/DAOEval.h"
#include "store/DAOMem.h"
#include "store/DAOSmEval.h"
#include "store/DAOWk.h"

CTreeNode TreeNodeOf(CDAOEFSet const& set)
{
    if (set.IsKindOf(CDAOMem::GetThisClass())) {
        return kMembersNode;
    }
    if (set.IsKindOf(CDAOWk::GetThisClass())) {
        return kWorkoutsNode;
    }
    if (set.IsKindOf(CDAOSmEval::GetThisClass()) || set.IsKindOf(CDAOEval::GetThisClass())) {
        return kEvaluationsNode;
    }
    return set.IsKindOf(CDAOBodyComp::GetThisClass()) ? kBodyCompsNode : kNoneFoundNode;
}
