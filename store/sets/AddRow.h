#pragma once

#include "store/sets/DAOEFSet.h"

/// Adds a row whose fields the function sets, and tells what came of it.
template <typename Set, typename Fill>
CDbStatus AddRow(Fill const& fill)
{
    Set set;
    set.OpenSet(false);
    if (set.Op(CDAOEFSet::opAddNew)) {
        fill(set);
        set.Op(CDAOEFSet::opUpdate);
    }
    return set.LastStatus();
}
