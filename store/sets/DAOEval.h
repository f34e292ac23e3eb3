#pragma once

#include "store/sets/DAOCirc.h"
#include "store/sets/DAOFileSet.h"
#include "store/sets/DAOSmEval.h"

#include <array>

/// The whole evaluation, joined from its tables; only read. An evaluation restored from a data
/// file keeps its number, unless another one had it before: then it gets a new one behind all
/// numbers of the centre and the file.
class CDAOEval : public CDAOFileSet
{
public:
    using CDAOFileSet::CDAOFileSet;
    static CRecordClass const* GetThisClass();
    CRecordClass const* GetClass() const override { return GetThisClass(); }
    CRecordLine const& GetLine() const override;

    /// Selects by member ID (all members when it is 0) or by evaluation number, oldest first.
    int FindEvals(CDAOSmEval::id kind, std::int32_t number);
    /// Selects the evaluations of a member for one of the member's classes.
    int FindEvals(std::int32_t memberID, std::uint8_t classIndex);
    /// Selects the evaluations of a member made at that second.
    int FindEvals(std::int32_t memberID, CEFOleDateTime const& when);
    /// The progressive lift of a station from 0 to 23, in pounds; 0 for any other.
    double GetStnVal(int station) const;

    static constexpr CSortKey byEvalDate = {{"eval_date"}};
    static constexpr CSortKey byHeight = {{"height"}};
    static constexpr CSortKey byWeight = {{"weight"}};
    static constexpr CSortKey byActLevel = {{"activity_level"}};
    static constexpr CSortKey byRestingHR = {{"resting_heart_rate"}};
    static constexpr CSortKey byPressure = {{"systolic", "diastolic"}};
    static constexpr CSortKey byTrunkFlexion = {{"trunk_flexion"}};
    static constexpr CSortKey bySitUps = {{"sit_ups"}};
    static constexpr CSortKey byAbCrunches = {{"ab_crunches"}};
    static constexpr CSortKey byStepTest = {{"step_test"}};
    static constexpr CSortKey byRunSeconds = {{"run_seconds"}};
    static constexpr CSortKey byErgometer = {{"ergometer"}};
    static constexpr CSortKey byPercentFat = {{"percent_fat"}};
    /// By a progressive lift, of a station from 0 to 23; empty for any other.
    static CSortKey ByStnVal(int station);

    // The current row.
    std::int32_t m_lEvalID = 0;
    double m_dPercentFat = 0.0;
    std::int32_t m_lMemberID = 0;
    CEFOleDateTime m_dtEvalDate; ///< never after today
    double m_dHeight = 0.0; ///< inches
    double m_dWeight = 0.0; ///< pounds
    std::uint8_t m_nActLevel = 0; ///< a CDAOBodyComp::actlevel
    std::int32_t m_nRestingHR = 0; ///< beats per minute
    std::int32_t m_nSystolic = 0;
    std::int32_t m_nDiastolic = 0;
    double m_dTrunkFlexion = 0.0;
    std::int32_t m_nSitUps = 0; ///< in a minute
    std::int32_t m_nAbCrunches = 0; ///< in a minute
    std::int32_t m_nStepTest = 0; ///< of three minutes
    std::int32_t m_nRunSeconds = 0; ///< for 1.5 miles
    std::int32_t m_nErgometer = 0; ///< pulse recovery

protected:
    void ExchangeFields(CFieldExchange& fx) override;
    std::optional<CRowView> LineCells(CRowBlock& block) override;
    void SeeRecord(CRowView const& row) override;
    bool AddRecord(CRowView const& row) override;
    bool RestoreRest() override;
    void EndRestore() override;

private:
    bool HasNumber(std::int64_t number);

    std::array<double, CDAOCirc::kStations> m_lifts = {};
    // During a restore: the largest number of the file, and the numbers, below all that are used,
    // of evaluations that get a new one when that is known.
    std::int64_t m_lLargest = 0;
    std::vector<std::int64_t> m_renumbered;
};
