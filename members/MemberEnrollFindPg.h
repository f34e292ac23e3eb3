#pragma once

#include "members/SearchPg.h"
#include "store/EFOleDateTime.h"

#include <memory>
#include <optional>

class CCorvanaDoc;

namespace Ui
{
class MemberEnrollFindPg;
}

/// When the members to look for enrolled and expire, and in which class they are. The dates may lie
/// after today: an expiration does as a rule.
class CMemberEnrollFindPg : public CSearchPg
{
    Q_OBJECT
public:
    /// The document, which has the catalogue of classes, must live longer.
    CMemberEnrollFindPg(CCorvanaDoc& doc, CMemberSearchData& searchData, QWidget* parent = nullptr);
    ~CMemberEnrollFindPg() override;

protected:
    void FillLists() override;
    bool TakeFields() override;

private:
    using CDate = std::optional<CEFOleDateTime>;

    bool CheckRanges() const;
    void AddRange(search criterion, CDate const& from, CDate const& to);
    void AddClass();

    // A range of one date is refused, one without dates is no criterion.
    CDate m_dtEnrollFrom;
    CDate m_dtEnrollTo;
    CDate m_dtExpireFrom;
    CDate m_dtExpireTo;
    int m_nPeriod = -1; ///< a CDAODef::enrollper, or none

    std::unique_ptr<Ui::MemberEnrollFindPg> const m_ui;
};
