#include "bodycomp/BodyCompEditor.h"

#include "bodycomp/BodyCompRecord.h"
#include "doc/CorvanaDoc.h"

#include <array>

namespace
{

/// Bits 4 to 7 of CDAOBodyComp::m_dwUnits. Bits 0 to 3 are not used and written as 0; those beyond
/// belong to whoever set them.
struct CUnitBit
{
    std::uint32_t m_bit;
    bool CBodyCompValues::*m_pFlag;
    bool m_bWhenSet; ///< what the flag is when the bit is set
};
constexpr std::array kUnitBits = {
    CUnitBit{0x10, &CBodyCompValues::m_bFahrenheit, false},
    CUnitBit{0x20, &CBodyCompValues::m_bWetPounds, false},
    CUnitBit{0x40, &CBodyCompValues::m_bTarePounds, false},
    CUnitBit{0x80, &CBodyCompValues::m_bBrozek, true},
};
constexpr std::uint32_t kOurBits = 0xff;

CBodyCompValues ValuesOf(CDAOBodyComp const& set)
{
    CBodyCompValues values{
        .m_nMethod = set.m_nMethod,
        .m_basics
        = {set.m_dWeight, set.m_dHeight, set.m_dtBodyCompDate, set.m_nActLevel, set.m_nClassIndex},
        .m_dWaist = set.m_dWaist,
        .m_dHip = set.m_dHip,
        .m_dWrist = set.m_dWrist,
        .m_folds = SkinfoldsOf(set),
        .m_dWaterTemp = set.m_dWaterTemp,
        .m_dWetWeight = set.m_dWetWeight,
        .m_dTareWeight = set.m_dTareWeight,
        .m_dPercentFat = set.m_dPercentFat,
    };
    for (auto const& [bit, flag, whenSet] : kUnitBits) {
        values.*flag = ((set.m_dwUnits & bit) != 0) == whenSet;
    }
    return values;
}

std::uint32_t UnitsOf(CBodyCompValues const& values, std::uint32_t before)
{
    auto units = before & ~kOurBits;
    for (auto const& [bit, flag, whenSet] : kUnitBits) {
        units |= values.*flag == whenSet ? bit : 0;
    }
    return units;
}

/// The other methods of the form, of which nothing is known, give no percentage.
bool GivesPercentFat(std::uint8_t method)
{
    return method <= CDAOBodyComp::mOther;
}

} // namespace

CBodyCompEditor::CBodyCompEditor(CCorvanaDoc& doc, CDAOBodyComp* set, CBodyCompRecord& record)
    : CRowEditor(set != nullptr ? *set : doc.m_setBodyComp)
    , m_doc(doc)
    , m_set(set != nullptr ? *set : doc.m_setBodyComp)
    , m_bNew(set == nullptr)
    , m_record(record)
{
}

bool CBodyCompEditor::Load()
{
    if (!m_bNew) {
        KnowRow();
        m_dwUnits = m_set.m_dwUnits;
        m_record.m_now = ValuesOf(m_set);
    }
    auto& member = m_record.m_member;
    if (!ReadMemberFacts(m_doc, member.m_lMemberID, member)) {
        m_status = m_doc.m_setMem.LastStatus();
        return false;
    }
    return FindLast();
}

/// Goes through the member's body compositions: all of them are its history, of those before this
/// one the latest is the last.
bool CBodyCompEditor::FindLast()
{
    CDAOBodyComp set; // the document's own may stand on the row that is edited
    int const count = set.FindBodyComps(m_record.m_member.m_lMemberID);
    for (int row = 0; row < count && set.LastStatus(); ++row) {
        if (set.m_lMemberID != 0) { // else the row is gone
            m_record.m_history.push_back({set.m_dtBodyCompDate, set.m_dWeight, set.m_dPercentFat});
            if (set.m_dtBodyCompDate < m_record.m_now.m_basics.m_dtDate) {
                m_record.m_last = ValuesOf(set);
            }
        }
        set.Op(CDAOEFSet::opMoveNext);
    }
    m_status = set.LastStatus();
    return m_status.IsOK();
}

void CBodyCompEditor::TakeForm()
{
    auto const& now = m_record.m_now;
    m_set.m_lMemberID = m_record.m_member.m_lMemberID;
    m_set.m_nMethod = now.m_nMethod;
    m_set.m_dwUnits = UnitsOf(now, IsAdding() ? m_dwUnits : m_set.m_dwUnits);
    m_set.m_dtBodyCompDate = now.m_basics.m_dtDate;
    m_set.m_dWeight = now.m_basics.m_dWeight;
    m_set.m_dHeight = now.m_basics.m_dHeight;
    m_set.m_nActLevel = now.m_basics.m_nActLevel;
    m_set.m_nClassIndex = now.m_basics.m_nClassIndex;
    m_set.m_dWaist = now.m_dWaist;
    m_set.m_dHip = now.m_dHip;
    m_set.m_dWrist = now.m_dWrist;
    PutSkinfolds(now.m_folds, m_set);
    m_set.m_dWaterTemp = now.m_dWaterTemp;
    m_set.m_dWetWeight = now.m_dWetWeight;
    m_set.m_dTareWeight = now.m_dTareWeight;
    m_set.m_dPercentFat = GivesPercentFat(now.m_nMethod) ? now.m_dPercentFat : 0.0;
}
