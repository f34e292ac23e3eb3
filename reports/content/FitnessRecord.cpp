#include "reports/content/FitnessRecord.h"

#include "reports/content/FatSource.h"
#include "reports/content/ReportRows.h"
#include "store/sets/DAOLiftStn.h"
#include "store/sets/SetCloser.h"

#include <algorithm>
#include <cassert>

namespace
{

// What differs between the two kinds of record.

int FindOne(CDAOEval& set, std::int32_t memberID, CEFOleDateTime const& when)
{
    return set.FindEvals(memberID, when);
}

int FindOne(CDAOBodyComp& set, std::int32_t memberID, CEFOleDateTime const& when)
{
    return set.FindBodyComps(memberID, when);
}

int FindAll(CDAOEval& set, std::int32_t memberID)
{
    return set.FindEvals(CDAOSmEval::idMember, memberID);
}

int FindAll(CDAOBodyComp& set, std::int32_t memberID)
{
    return set.FindBodyComps(memberID);
}

char const* KindOf(CDAOEval const& /*set*/)
{
    return "evaluation";
}

char const* KindOf(CDAOBodyComp const& /*set*/)
{
    return "body composition";
}

std::string ActivityOf(std::uint8_t level)
{
    return CDAOBodyComp::GetActLevelStr(static_cast<CDAOBodyComp::actlevel>(level));
}

CFitnessRecord RecordOf(CDAOEval const& set, CCircuit const& circuit)
{
    auto items = ItemsOf(set);
    std::ranges::move(LiftsOf(set, circuit), std::back_inserter(items));
    return {set.m_dtEvalDate, ActivityOf(set.m_nActLevel), {}, std::move(items)};
}

CFitnessRecord RecordOf(CDAOBodyComp const& set, CCircuit const& /*circuit*/)
{
    return {set.m_dtBodyCompDate, ActivityOf(set.m_nActLevel),
        CDAOBodyComp::GetMethodStr(static_cast<CDAOBodyComp::method>(set.m_nMethod)), ItemsOf(set)};
}

template <typename Set>
CDbStatus ReadRecord(CFitnessCase& found, CEFOleDateTime const& when)
{
    Set set;
    CSetCloser const close(set);
    int const count = FindOne(set, found.m_member.m_lMemberID, when);
    if (!set.LastStatus()) {
        return set.LastStatus();
    }
    if (count == 0) {
        return {DbError::gone, std::string("The ") + KindOf(set) + " is not there any more."};
    }
    auto record = RecordOf(set, found.m_circuit);
    record.m_bOneOfMany = count > 1;
    auto const fat = std::ranges::find(record.m_items, Measure::percentFat, &CFitnessItem::m_norm);
    CDbStatus status;
    if (fat->IsMeasured()) {
        status = ReadFatSource(set, found.m_member, fat->m_strNote);
    }
    found.m_records.push_back(std::move(record));
    return status;
}

/// The stations of the progressive lifts. Unlike CCircuit::Load() it tells when it cannot.
CDbStatus ReadStations(CCircuit& circuit)
{
    CDAOLiftStn stations;
    CSetCloser const close(stations);
    int const count = std::min(stations.OpenSet(true), int(CCircuit::kMostStations));
    for (int i = 0; i < count && stations.LastStatus(); ++i) {
        circuit.m_arrStnName.push_back(stations.m_strStnName);
        stations.Op(CDAOEFSet::opMoveNext);
    }
    circuit.m_nNumStations = static_cast<std::int32_t>(circuit.m_arrStnName.size());
    return stations.LastStatus();
}

bool IsDate(CEFOleDateTime const& when)
{
    return when.ChkStatus() && !when.IsZero();
}

} // namespace

std::vector<CNormBlocks::CDay> CFitnessCase::Days() const
{
    std::vector<CNormBlocks::CDay> days;
    for (std::size_t i = 0; i < m_records.size(); ++i) {
        days.push_back({m_records[i].m_items, m_records[i].m_dtWhen,
            m_records.size() == 1 ? std::string() : m_days[i]});
    }
    return days;
}

template <typename Set>
CDbStatus ReadFitnessCase(CReportRequest const& request, std::size_t records, CFitnessCase& found)
{
    std::string const name = KindOf(Set());
    std::vector<CEFOleDateTime> dates = {request.m_job.m_dtFrom, request.m_job.m_dtTo};
    dates.resize(records);
    std::ranges::sort(dates);
    if (request.m_job.m_nParam == 0 || !std::ranges::all_of(dates, IsDate)) {
        return {DbError::failed, "The job does not say which " + name + " it is about."};
    }
    if (auto status = ReadFitnessMember(request.m_job.m_nParam, found.m_member); !status) {
        return status;
    }
    if (std::is_same_v<Set, CDAOEval>) {
        if (auto status = ReadStations(found.m_circuit); !status) {
            return status;
        }
    }
    bool const isOneDay = records == 2 && dates[0].IsSameDay(dates[1]) && dates[0] != dates[1];
    auto& report = request.m_report;
    for (auto const& when : dates) {
        if (!request.GoesOn(0.0)) {
            return StoppedReport();
        }
        if (auto status = ReadRecord<Set>(found, when); !status) {
            return status;
        }
        found.m_days.push_back(isOneDay ? when.DateTimeStrLongYear() : when.DateStrLongYear());
    }
    report.m_lstScope
        = {found.m_member.m_strName + ", member ID " + std::to_string(found.m_member.m_lMemberID),
            (name == "evaluation" ? "Evaluation" : "Body composition")
                + std::string(records == 1 ? " of " : "s of ") + InSentence(found.m_days)};
    return {};
}

template <typename Set>
CDbStatus ReadFitnessHistory(CReportRequest const& request, CFitnessCase const& of,
    CEFOleDateTime const& until, std::function<void(CFitnessRecord const&)> const& show,
    int& withoutDate)
{
    Set set;
    CSetCloser const close(set);
    int const count = FindAll(set, of.m_member.m_lMemberID);
    return ForEachRow(request, set, count, [&] {
        auto const record = RecordOf(set, of.m_circuit);
        if (!IsDate(record.m_dtWhen)) {
            ++withoutDate;
        } else if (record.m_dtWhen <= until) {
            show(record);
        }
    });
}

std::size_t PlaceOf(CFitnessRecord const& record, std::string_view title)
{
    auto const found = std::ranges::find(record.m_items, title, &CFitnessItem::m_strTitle);
    assert(found != record.m_items.end());
    return static_cast<std::size_t>(found - record.m_items.begin());
}

template CDbStatus ReadFitnessCase<CDAOEval>(CReportRequest const&, std::size_t, CFitnessCase&);
template CDbStatus ReadFitnessCase<CDAOBodyComp>(CReportRequest const&, std::size_t, CFitnessCase&);
template CDbStatus ReadFitnessHistory<CDAOEval>(CReportRequest const&, CFitnessCase const&,
    CEFOleDateTime const&, std::function<void(CFitnessRecord const&)> const&, int&);
template CDbStatus ReadFitnessHistory<CDAOBodyComp>(CReportRequest const&, CFitnessCase const&,
    CEFOleDateTime const&, std::function<void(CFitnessRecord const&)> const&, int&);
