#pragma once

#include "store/sets/DAOEFSet.h"

#include <array>

/// The progressive lifts of an evaluation, in pounds; 0 = no value.
class CDAOCirc : public CDAOEFSet
{
public:
    using CDAOEFSet::CDAOEFSet;
    static CRecordClass const* GetThisClass();
    CRecordClass const* GetClass() const override { return GetThisClass(); }

    static constexpr int kStations = 24;

    /// Selects the row of an evaluation by its number. One index look-up.
    int FindCircuit(std::int32_t evalID);
    /// Stations count from 0 to 23; any other reads as 0 and is not written.
    double GetStnVal(int station) const;
    void SetStnVal(int station, double value);

    /// The column of a station from 0 to 23.
    static std::string_view ColumnName(std::size_t station);

    // The current row.
    std::int32_t m_lEvalID = 0;

protected:
    void ExchangeFields(CFieldExchange& fx) override;

private:
    std::array<double, kStations> m_values = {};
};
