#include "reports/content/FatSource.h"

#include "reports/content/FitnessItem.h"
#include "store/fitness/HydroStat.h"
#include "store/fitness/SkinFold.h"
#include "store/fitness/TapeMsr.h"
#include "store/sets/DAOEvalBodyComp.h"
#include "store/sets/SetCloser.h"

#include <cmath>

namespace
{

constexpr char const* kAsRecorded = "as recorded";

/// What an equation needs to know of somebody.
struct CPerson
{
    CBodyComp::sex m_sex;
    int m_nAge;
};

std::optional<CPerson> PersonOn(CFitnessMember const& member, CEFOleDateTime const& day)
{
    auto const age = member.AgeOn(day);
    if (!age || !member.m_isMale) {
        return std::nullopt;
    }
    return CPerson{*member.m_isMale ? CBodyComp::sMale : CBodyComp::sFemale, *age};
}

/// The name of the result if it is the percentage that is stored, to two decimals.
std::string SourceIf(CBodyFat const& fat, double stored)
{
    constexpr double kRounded = 0.0051;
    return fat.m_dPercent != 0.0 && std::abs(fat.m_dPercent - stored) < kRounded ? fat.m_source
                                                                                 : "";
}

template <typename Folds>
std::string SkinfoldSource(Folds const& folds, CPerson const& person, double stored)
{
    CSkinFold const fat(person.m_sex, person.m_nAge, 0.0, 0.0, folds.m_dThigh, folds.m_dChest,
        folds.m_dAbdomen, folds.m_dTriceps, folds.m_dSuprailiac, folds.m_dMidaxillary,
        folds.m_dSubscapular);
    for (int const sites : {3, 4, 7}) {
        if (auto source = SourceIf(fat.PercentFat(sites), stored); !source.empty()) {
            return "skinfolds: " + source;
        }
    }
    return kAsRecorded;
}

std::string TapeSource(CDAOBodyComp const& set, CPerson const& person)
{
    CTapeMsr const fat(person.m_sex, person.m_nAge, set.m_dWeight, set.m_dHeight, set.m_dWaist,
        set.m_dWrist, set.m_dHip);
    auto const source = SourceIf(fat.Fat(), set.m_dPercentFat);
    return source.empty() ? kAsRecorded : "body measurements: " + source;
}

std::string WaterSource(CDAOBodyComp const& set, CPerson const& person)
{
    auto const [temperature, wet, tare] = WaterFiguresOf(set);
    CHydroStat const fat(
        person.m_sex, person.m_nAge, set.m_dWeight, set.m_dHeight, temperature, wet, tare);
    bool const isBrozek = (set.m_dwUnits & kBrozek) != 0;
    auto const source = SourceIf(
        fat.Fat(isBrozek ? CHydroStat::cmBrozek : CHydroStat::cmSiri), set.m_dPercentFat);
    return source.empty() ? kAsRecorded : "hydrostatic weighing: " + source;
}

} // namespace

CDbStatus ReadFatSource(CDAOEval const& eval, CFitnessMember const& member, std::string& source)
{
    source = kAsRecorded;
    CDAOEvalBodyComp folds;
    CSetCloser const close(folds);
    auto const person = PersonOn(member, eval.m_dtEvalDate);
    if (folds.FindEvalBodyComp(eval.m_lEvalID) != 0 && person) {
        source = SkinfoldSource(folds, *person, eval.m_dPercentFat);
    }
    return folds.LastStatus();
}

CDbStatus ReadFatSource(
    CDAOBodyComp const& bodyComp, CFitnessMember const& member, std::string& source)
{
    source = kAsRecorded;
    auto const person = PersonOn(member, bodyComp.m_dtBodyCompDate);
    if (!person) {
        return {};
    }
    switch (bodyComp.m_nMethod) {
    case CDAOBodyComp::mBodyMeasurements:
        source = TapeSource(bodyComp, *person);
        break;
    case CDAOBodyComp::mSkinfolds:
        source = SkinfoldSource(bodyComp, *person, bodyComp.m_dPercentFat);
        break;
    case CDAOBodyComp::mHydrostatic:
        source = WaterSource(bodyComp, *person);
        break;
    default:
        break;
    }
    return {};
}
