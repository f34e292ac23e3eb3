#pragma once

#include "store/sets/DAOEFSet.h"

/// The skinfolds, in millimetres, and body-fat percentage of an evaluation; 0 = not measured.
class CDAOEvalBodyComp : public CDAOEFSet
{
public:
    using CDAOEFSet::CDAOEFSet;
    static CRecordClass const* GetThisClass();
    CRecordClass const* GetClass() const override { return GetThisClass(); }

    /// Selects the row of an evaluation by its number. One index look-up.
    int FindEvalBodyComp(std::int32_t evalID);

    // The current row.
    std::int32_t m_lEvalID = 0; ///< the evaluation this row belongs to
    double m_dPercentFat = 0.0;
    double m_dThigh = 0.0;
    double m_dChest = 0.0;
    double m_dAbdomen = 0.0;
    double m_dTriceps = 0.0;
    double m_dSuprailiac = 0.0;
    double m_dMidaxillary = 0.0;
    double m_dSubscapular = 0.0;

protected:
    void ExchangeFields(CFieldExchange& fx) override;
};
