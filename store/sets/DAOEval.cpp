#include "store/sets/DAOEval.h"

#include "store/sets/DAOEvalBodyComp.h"

#include <algorithm>
#include <limits>

CRecordClass const* CDAOEval::GetThisClass()
{
    static CRecordClass const record
        = {"CDAOEval", nullptr, DataFile::member, "evaluation_view", true};
    return &record;
}

CRecordLine const& CDAOEval::GetLine() const
{
    static CRecordLine const line("EV1", "eval_date",
        {CRecordLine::PartOf(CDAOSmEval()), CRecordLine::PartOf(CDAOEvalBodyComp(), "eval_id"),
            CRecordLine::PartOf(CDAOCirc(), "eval_id")});
    return line;
}

int CDAOEval::FindEvals(CDAOSmEval::id kind, std::int32_t number)
{
    if (kind == CDAOSmEval::idEval) {
        return FindFew("WHERE eval_id = ?", number);
    }
    return number == 0 ? Find("ORDER BY eval_date, id")
                       : Find("WHERE member_id = ? ORDER BY eval_date, id", number);
}

int CDAOEval::FindEvals(std::int32_t memberID, std::uint8_t classIndex)
{
    return Find(
        "WHERE member_id = ? AND class_index = ? ORDER BY eval_date, id", memberID, classIndex);
}

int CDAOEval::FindEvals(std::int32_t memberID, CEFOleDateTime const& when)
{
    return FindFew("WHERE member_id = ? AND eval_date = ? ORDER BY id", memberID, when);
}

double CDAOEval::GetStnVal(int station) const
{
    return station >= 0 && station < CDAOCirc::kStations
        ? m_lifts[static_cast<std::size_t>(station)]
        : 0.0;
}

CSortKey CDAOEval::ByStnVal(int station)
{
    return station >= 0 && station < CDAOCirc::kStations
        ? CSortKey{{CDAOCirc::ColumnName(static_cast<std::size_t>(station))}}
        : CSortKey{};
}

void CDAOEval::ExchangeFields(CFieldExchange& fx)
{
    fx.Field("eval_id", m_lEvalID);
    fx.Field("percent_fat", m_dPercentFat);
    fx.Field("member_id", m_lMemberID);
    fx.Field("eval_date", m_dtEvalDate);
    fx.Field("height", m_dHeight);
    fx.Field("weight", m_dWeight);
    fx.Field("activity_level", m_nActLevel);
    fx.Field("resting_heart_rate", m_nRestingHR);
    fx.Field("systolic", m_nSystolic);
    fx.Field("diastolic", m_nDiastolic);
    fx.Field("trunk_flexion", m_dTrunkFlexion);
    fx.Field("sit_ups", m_nSitUps);
    fx.Field("ab_crunches", m_nAbCrunches);
    fx.Field("step_test", m_nStepTest);
    fx.Field("run_seconds", m_nRunSeconds);
    fx.Field("ergometer", m_nErgometer);
    for (std::size_t i = 0; i < m_lifts.size(); ++i) {
        fx.Field(CDAOCirc::ColumnName(i), m_lifts[i]);
    }
}

std::optional<CRowView> CDAOEval::LineCells(CRowBlock& block)
{
    static CTableInfo const joined
        = GetLine().Joined("evaluations AS p0 LEFT JOIN skinfolds AS p1 ON p1.eval_id = p0.eval_id "
                           "LEFT JOIN lifts AS p2 ON p2.eval_id = p0.eval_id",
            "p0.id", "1");
    return JoinedCells(joined, block);
}

void CDAOEval::SeeRecord(CRowView const& row)
{
    m_lLargest = std::max(m_lLargest, row.Cell(0).integerValue);
}

bool CDAOEval::AddRecord(CRowView const& row)
{
    auto const cells = GetLine().Cells(row, 0);
    auto number = cells.front().integerValue;
    if (HasNumber(number)) {
        number = m_renumbered.empty() ? std::numeric_limits<std::int64_t>::min()
                                      : m_renumbered.back() + 1;
        while (HasNumber(number)) {
            ++number;
        }
        m_renumbered.push_back(number);
    }
    DbValue const link = number;
    return LastStatus()
        && Run(GetLine().Parts().front().insert, std::span(&link, 1), row, cells.subspan(1))
        && AddPart(row, 1, link) && AddPart(row, 2, link);
}

bool CDAOEval::HasNumber(std::int64_t number)
{
    return Ask("SELECT count(*) FROM evaluations WHERE eval_id = ?", {number}) != 0;
}

/// Gives the new numbers; the rows of the further tables follow.
bool CDAOEval::RestoreRest()
{
    CDAOSmEval numbers(Database());
    for (auto const number : m_renumbered) {
        std::int64_t const fresh = numbers.GenerateIDNum(m_lLargest);
        if (fresh == 0) {
            return Do(numbers.LastStatus());
        }
        std::vector<DbValue> const values = {fresh, number};
        if (!Run("UPDATE evaluations SET eval_id = ? WHERE eval_id = ?", values)) {
            return false;
        }
    }
    return true;
}

void CDAOEval::EndRestore()
{
    CDAOFileSet::EndRestore();
    m_lLargest = 0;
    m_renumbered = {};
}
