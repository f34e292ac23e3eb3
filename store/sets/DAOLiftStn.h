#pragma once

#include "store/sets/DAOEFSet.h"

/// The stations of the progressive lifts, in the order of the circuit; at most 24 are used.
class CDAOLiftStn : public CDAOEFSet
{
public:
    using CDAOEFSet::CDAOEFSet;
    static CRecordClass const* GetThisClass();
    CRecordClass const* GetClass() const override { return GetThisClass(); }

    // The current row.
    std::string m_strStnName;
    double m_dMinLift = 0.0; ///< least acceptable lift, pounds
    double m_dMaxLift = 0.0; ///< greatest acceptable lift, pounds

protected:
    void ExchangeFields(CFieldExchange& fx) override;
};
