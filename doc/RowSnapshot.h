#pragma once

#include "platform/db/Value.h"
#include "store/sets/DAOEFSet.h"

#include <vector>

/// A row as a form was filled from it, to see on OK whether it still stands so. Two snapshots are
/// equal when all columns are, or when there was no row either time.
class CRowSnapshot
{
public:
    CRowSnapshot() = default;
    /// The row that a find has left in the set. Without one the set's fields are cleared: it keeps
    /// those of the row before, which is another record's.
    CRowSnapshot(CDAOEFSet& set, bool found)
    {
        if (found) {
            m_lstValues = set.FieldValues();
        } else {
            set.ClearFields();
        }
    }

    bool IsThere() const { return !m_lstValues.empty(); }
    bool operator==(CRowSnapshot const&) const = default;

private:
    std::vector<DbValue> m_lstValues; ///< empty when there is no row
};
