#include "reports/norms/Norms.h"

#include <cassert>

// Made from the files in data/norms.
std::string_view NormRestingHeartRate();
std::string_view NormSystolic();
std::string_view NormDiastolic();
std::string_view NormTrunkFlexion();
std::string_view NormSitUps();
std::string_view NormAbCrunches();
std::string_view NormStepTest();
std::string_view NormAerobicCapacity();
std::string_view NormErgometer();
std::string_view NormBodyMassIndex();
std::string_view NormWaistHipRatio();
std::string_view NormPercentFat();

std::array<std::string_view, kMeasures> NormTexts()
{
    return {NormRestingHeartRate(), NormSystolic(), NormDiastolic(), NormTrunkFlexion(),
        NormSitUps(), NormAbCrunches(), NormStepTest(), NormAerobicCapacity(), NormErgometer(),
        NormBodyMassIndex(), NormWaistHipRatio(), NormPercentFat()};
}

CNorm const& NormOf(Measure measure)
{
    static auto const norms = [] {
        std::array<CNorm, kMeasures> parsed;
        auto const texts = NormTexts();
        for (std::size_t i = 0; i < texts.size(); ++i) {
            if (auto const status = ParseNorm(texts[i], parsed[i]); !status) {
                assert(false && "a norm file is damaged");
                parsed[i].m_lstRows.clear();
                parsed[i].m_strNone = "The norm could not be read.";
            }
        }
        return parsed;
    }();
    return norms[static_cast<std::size_t>(measure)];
}
