#include "doc/FitnessRecord.h"

#include "doc/CorvanaDoc.h"
#include "store/fitness/SkinFold.h"
#include "store/sets/SetCloser.h"

#include <algorithm>

// In the order of the forms.
std::array<CSkinfoldSite, 7> const kSkinfoldSites = {{
    {&CSkinfolds::m_dTriceps, "Triceps:", "tricepsEdit", 51, false, true, true},
    {&CSkinfolds::m_dChest, "Chest:", "chestEdit", 51, true, false, false},
    {&CSkinfolds::m_dSubscapular, "Subscapular:", "subscapularEdit", 51, false, false, false},
    {&CSkinfolds::m_dSuprailiac, "Suprailiac:", "suprailiacEdit", 51, false, true, true},
    {&CSkinfolds::m_dAbdomen, "Abdomen:", "abdomenEdit", 70, true, false, true},
    {&CSkinfolds::m_dThigh, "Thigh:", "thighEdit", 70, true, true, true},
    {&CSkinfolds::m_dMidaxillary, "Midaxillary:", "midaxillaryEdit", 51, false, false, false},
}};

bool ReadMemberFacts(CCorvanaDoc& doc, std::int32_t memberID, CMemberFacts& facts)
{
    facts = {.m_lMemberID = memberID};
    auto& set = doc.m_setMem;
    CSetCloser const close(set);
    if (set.FindMember(CDAOSmMem::idMember, memberID) != 0) {
        facts.m_bKnown = true;
        facts.m_nSex = set.m_Sex;
        facts.m_nAge = set.m_Birthday.ElapsedYrs();
    }
    return set.LastStatus().IsOK();
}

int SitesOf(CSkinfolds const& folds)
{
    auto const count = std::ranges::count_if(
        kSkinfoldSites, [&folds](CSkinfoldSite const& site) { return folds.*site.m_pFold != 0.0; });
    return count == 4 || count == 7 ? static_cast<int>(count) : 3;
}

CBodyFat FatOf(
    CMemberFacts const& member, CFitnessBasics const& basics, CSkinfolds const& folds, int sites)
{
    return CSkinFold(member.Sex(), member.m_nAge, basics.m_dWeight, basics.m_dHeight,
        folds.m_dThigh, folds.m_dChest, folds.m_dAbdomen, folds.m_dTriceps, folds.m_dSuprailiac,
        folds.m_dMidaxillary, folds.m_dSubscapular)
        .PercentFat(sites);
}

QString BasisText(CBodyFat const& fat)
{
    auto const source = QCoreApplication::translate("FitnessRecord", fat.m_source);
    return fat.m_dDensity > 0.0 ? QCoreApplication::translate("FitnessRecord", "%1; %2 g/ml")
                                      .arg(source, QString::number(fat.m_dDensity, 'f', 4))
                                : source;
}
