#pragma once

#include "store/sets/DAOEFSet.h"

/// Closes a record set when it goes, on whichever path. Closing one that was never opened is fine.
class CSetCloser
{
public:
    explicit CSetCloser(CDAOEFSet& set)
        : m_set(set)
    {
    }
    ~CSetCloser() { m_set.Op(CDAOEFSet::opClose); }
    CSetCloser(CSetCloser const&) = delete;
    CSetCloser& operator=(CSetCloser const&) = delete;

private:
    CDAOEFSet& m_set;
};
