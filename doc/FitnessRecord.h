#pragma once

#include "store/EFOleDateTime.h"
#include "store/fitness/BodyComp.h"
#include "store/sets/DAOCls.h"

#include <QString>

#include <array>
#include <cstdint>

class CCorvanaDoc;

/// What evaluations and body compositions need to know of a member.
struct CMemberFacts
{
    std::int32_t m_lMemberID = 0;
    bool m_bKnown = false; ///< else the rest means nothing
    std::uint8_t m_nSex = 0; ///< not 0 is male
    int m_nAge = 0; ///< whole years

    bool IsMale() const { return m_nSex != 0; }
    CBodyComp::sex Sex() const { return IsMale() ? CBodyComp::sMale : CBodyComp::sFemale; }
};

/// Reads a member's facts, with the document's set of whole members. A member that is not there is
/// no failure; false, with the set's status, when the file cannot be read.
bool ReadMemberFacts(CCorvanaDoc& doc, std::int32_t memberID, CMemberFacts& facts);

/// What an evaluation and a body composition both hold.
struct CFitnessBasics
{
    double m_dWeight = 0.0; ///< pounds, 1 to 500 when taken
    double m_dHeight = 0.0; ///< inches, 1 to 90 when taken
    CEFOleDateTime m_dtDate = CEFOleDateTime::GetCurrentTime(); ///< not after today when taken
    std::uint8_t m_nActLevel = 0; ///< a CDAOBodyComp::actlevel
    std::uint8_t m_nClassIndex = CDAOCls::kNotChosen;
};

/// Skinfolds in millimetres; 0 = not measured.
struct CSkinfolds
{
    double m_dThigh = 0.0;
    double m_dChest = 0.0;
    double m_dAbdomen = 0.0;
    double m_dTriceps = 0.0;
    double m_dSuprailiac = 0.0;
    double m_dMidaxillary = 0.0;
    double m_dSubscapular = 0.0;
};

/// A site of a skinfold, for whatever goes through all of them.
struct CSkinfoldSite
{
    double CSkinfolds::*m_pFold;
    char const* m_name; ///< of the site as the forms show it: "Triceps:"
    char const* m_widget; ///< of its field: "tricepsEdit"
    double m_dMost; ///< millimetres that a form takes
    bool m_bMen3; ///< one of the three sites of men, of women, and of the four
    bool m_bWomen3;
    bool m_bFour;

    bool IsUsed(int sites, bool isMale) const
    {
        return sites == 7 || (sites == 4 ? m_bFour : isMale ? m_bMen3 : m_bWomen3);
    }
};
extern std::array<CSkinfoldSite, 7> const kSkinfoldSites;

/// How many sites stored skinfolds were measured at: 3, 4 or 7 when that many are not 0, else 3.
int SitesOf(CSkinfolds const& folds);

/// Copies the skinfolds of a record set, whose fields have the same names, and back.
template <typename Set>
CSkinfolds SkinfoldsOf(Set const& set)
{
    return {set.m_dThigh, set.m_dChest, set.m_dAbdomen, set.m_dTriceps, set.m_dSuprailiac,
        set.m_dMidaxillary, set.m_dSubscapular};
}
template <typename Set>
void PutSkinfolds(CSkinfolds const& folds, Set& set)
{
    set.m_dThigh = folds.m_dThigh;
    set.m_dChest = folds.m_dChest;
    set.m_dAbdomen = folds.m_dAbdomen;
    set.m_dTriceps = folds.m_dTriceps;
    set.m_dSuprailiac = folds.m_dSuprailiac;
    set.m_dMidaxillary = folds.m_dMidaxillary;
    set.m_dSubscapular = folds.m_dSubscapular;
}

/// Body fat from skinfolds at 3, 4 or 7 sites.
CBodyFat FatOf(
    CMemberFacts const& member, CFitnessBasics const& basics, CSkinfolds const& folds, int sites);

/// What a result rests on, in a line that a trainer can read: "Jackson and Pollock, three sites;
/// 1.0637 g/ml". Empty without a result.
QString BasisText(CBodyFat const& fat);
