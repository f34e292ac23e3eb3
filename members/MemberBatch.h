#pragma once

#include <QString>

#include <cstdint>
#include <functional>

class CCorvanaDoc;
class CDAOMem;

/// One change that is made to every member of a list, and what the user reads of it.
struct CMemberBatch
{
    QString m_strProgress; ///< "Updating classes, please wait..."
    QString m_strFailed; ///< "Failed to update class for %1": a member, or how many more
    QString m_strResult; ///< "Classes updated for %1 of %2 members"
    /// Changes the member on whose row the set stands; whether that was done. What it writes is a
    /// part of that member's transaction.
    std::function<bool(std::int32_t memberID)> m_fnChange;
    bool m_bShownInTree = false; ///< the member tree shows what is changed
};

/// Makes the change to each member of the set, in its order, after asking when they are many. Each
/// is one transaction, in which his row is read anew: a member is changed whole or not at all, and
/// one whom another program has deleted fails like one that cannot be stored. The user is told of
/// the first failures one by one and of all others together, and can stop after any member; the
/// document's closing line tells how many were changed. False when the user said no.
bool ChangeMembers(CCorvanaDoc& doc, CDAOMem& members, CMemberBatch const& batch);
