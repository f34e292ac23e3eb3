#pragma once

#include "store/sets/DAOFileSet.h"

/// Body compositions, one a row.
class CDAOBodyComp : public CDAOFileSet
{
public:
    using CDAOFileSet::CDAOFileSet;
    static CRecordClass const* GetThisClass();
    CRecordClass const* GetClass() const override { return GetThisClass(); }
    CRecordLine const& GetLine() const override;

    enum actlevel : std::uint8_t
    {
        alSedentary,
        alLight,
        alModerate,
        alActive,
        alVeryActive
    };
    enum method : std::uint8_t
    {
        mBodyMeasurements,
        mSkinfolds,
        mHydrostatic,
        mOther
    };

    /// Selects the body compositions of a member, or of all members when memberID is 0, oldest
    /// first.
    int FindBodyComps(std::int32_t memberID);
    /// Those for one of the member's classes.
    int FindBodyComps(std::int32_t memberID, std::uint8_t classIndex);
    /// Those made at that second.
    int FindBodyComps(std::int32_t memberID, CEFOleDateTime const& when);

    /// Display texts; empty for a number that is none of the enumeration.
    static char const* GetActLevelStr(actlevel level);
    static char const* GetActLevelStrAbbr(actlevel level);
    static char const* GetMethodStr(method measured);

    static constexpr CSortKey byBodyCompDate = {{"body_comp_date"}};
    static constexpr CSortKey byPercentFat = {{"percent_fat"}};
    static constexpr CSortKey byMethod = {{"method"}};
    static constexpr CSortKey byActLevel = {{"activity_level"}};
    static constexpr CSortKey byHeight = {{"height"}};
    static constexpr CSortKey byWeight = {{"weight"}};
    static constexpr CSortKey byWaist = {{"waist"}};
    static constexpr CSortKey byHip = {{"hip"}};

    // The current row.
    std::int32_t m_lMemberID = 0;
    CEFOleDateTime m_dtBodyCompDate; ///< never after today
    std::uint8_t m_nClassIndex = 0;
    double m_dHeight = 0.0; ///< inches
    double m_dWeight = 0.0; ///< pounds
    std::uint8_t m_nActLevel = 0; ///< an actlevel
    std::uint8_t m_nMethod = 0; ///< a method
    double m_dPercentFat = 0.0;
    double m_dWaist = 0.0; ///< inches
    double m_dWrist = 0.0; ///< inches
    double m_dHip = 0.0; ///< inches
    double m_dThigh = 0.0;
    double m_dChest = 0.0;
    double m_dAbdomen = 0.0;
    double m_dTriceps = 0.0;
    double m_dSuprailiac = 0.0;
    double m_dMidaxillary = 0.0;
    double m_dSubscapular = 0.0;
    double m_dWaterTemp = 0.0; ///< as entered
    double m_dWetWeight = 0.0; ///< as entered
    double m_dTareWeight = 0.0; ///< as entered
    std::uint32_t m_dwUnits = 0; ///< what was entered in which unit, bits 4 to 7

protected:
    void ExchangeFields(CFieldExchange& fx) override;
};
