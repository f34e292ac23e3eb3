#pragma once

#include "store/sets/DAOEFSet.h"

/// The touch-screen settings, one row, shared with the check-in stations. Colours are 0xBBGGRR.
class CDAOTouch : public CDAOEFSet
{
public:
    using CDAOEFSet::CDAOEFSet;
    static CRecordClass const* GetThisClass();
    CRecordClass const* GetClass() const override { return GetThisClass(); }

    // The current row. Keeps its values after opClose.
    std::uint32_t m_clrPanel = 0; ///< inner banner panel
    std::uint32_t m_clrFrame = 0; ///< outer banner panel

protected:
    void ExchangeFields(CFieldExchange& fx) override;
};
