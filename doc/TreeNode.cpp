#include "doc/TreeNode.h"

#include "store/sets/DAOBodyComp.h"
#include "store/sets/DAOEval.h"
#include "store/sets/DAOMem.h"
#include "store/sets/DAOSmEval.h"
#include "store/sets/DAOWk.h"

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
