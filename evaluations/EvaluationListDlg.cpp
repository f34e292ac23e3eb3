#include "evaluations/EvaluationListDlg.h"

#include "doc/CorvanaDoc.h"
#include "store/services/ReportJob.h"
#include "ui/CellText.h"
#include "ui/Convert.h"

namespace
{

using Set = CDAOEval;

constexpr int kPrintedLastName = 12; // letters
constexpr int kPrintedStation = 3;

CListTexts Texts()
{
    auto const tr = [](char const* text) { return CEvaluationListDlg::tr(text); };
    using List = CEvaluationListDlg;
    return {"evaluations_list", tr("Evaluations"), tr("Loading evaluations, please wait..."),
        tr("Total Evaluations Listed:"), tr("No further evaluation records are available."),
        tr("Error: the evaluations could not be read."),
        tr("Select items to include in the printed\nlist of evaluations."),
        {{List::colName, tr("&Name")}, {List::colMemberID, tr("Member &ID #")},
            {List::colDate, tr("Evaluation &Date")}, {List::colHeight, tr("&Height")},
            {List::colWeight, tr("&Weight")}, {List::colActLevel, tr("&Activity Level")},
            {List::colRestingHR, tr("Resting Heart &Rate")},
            {List::colPressure, tr("Blood &Pressure")}, {List::colFitTests, tr("Fitness &Tests")},
            {List::colFat, tr("Body &Fat Percentage")},
            {List::colStations, tr("Progressive &Lift Stations")}}};
}

/// "Featherston, CM"
std::string ShortName(std::string const& last, std::string const& first, std::string const& middle)
{
    return FromQt(ToQt(last).left(kPrintedLastName) + QStringLiteral(", ") + ToQt(first).left(1)
        + ToQt(middle).left(1));
}

std::string RunTime(std::int32_t seconds)
{
    constexpr std::int32_t kMinute = 60;
    auto const rest = std::to_string(seconds % kMinute);
    return std::to_string(seconds / kMinute) + (rest.size() < 2 ? ":0" : ":") + rest;
}

} // namespace

CEvaluationListDlg::CEvaluationListDlg(CCorvanaDoc& doc, CDAOEval& found)
    : CRecordListDlg(doc, found, std::make_unique<Set>(), Texts())
{
    AddMeasurements();
    AddFitTests();
    auto const& row = static_cast<Set const&>(Row());
    AddColumn({colFat, tr("Fat %"), 50, [&row] { return FixedText(row.m_dPercentFat, 5, 2); },
        Set::byPercentFat, tr("Fat%"), 6});
    AddStations();

    auto const record = tr("evaluation");
    UseOnDoubleClick(AddRowButton(tr("&Edit"), "editButton", tr("edit an evaluation"), record,
        [this, &found] { return m_doc.AddEditEvaluation(&found); }));
    UseOnDeleteKey(AddRowButton(tr("&Delete"), "deleteButton", tr("delete an evaluation"), record,
        [this, &found] { return m_doc.DeleteEvaluation(found); }));
    AddDeleteAllButton();
    AddRowButton(tr("Anal&yze"), "analyzeButton", tr("print a test results analysis"), record,
        [this, &found] {
            auto const date = found.m_dtEvalDate;
            m_doc.AddReport({CDAOReport::rtEvalInterpretation, found.m_lMemberID, date, date});
            return false;
        });
    AddLastButtons();
}

void CEvaluationListDlg::AddMeasurements()
{
    auto const& row = static_cast<Set const&>(Row());
    auto const level = [&row] { return CDAOBodyComp::actlevel(row.m_nActLevel); };
    AddMemberColumns(row.m_lMemberID, 17, 10, [](CName const& name) {
        return ShortName(name.m_strLast, name.m_strFirst, name.m_strMiddle);
    });
    AddColumn({colDate, tr("Date"), 65, [&row] { return row.m_dtEvalDate.DateStrShortYear(); },
        Set::byEvalDate, tr("Date"), 9});
    AddColumn({colHeight, tr("Ht"), 40, [&row] { return FixedText(row.m_dHeight, 5, 2); },
        Set::byHeight, tr("Ht"), 3, [&row] { return std::to_string(Truncated(row.m_dHeight)); }});
    AddColumn({colWeight, tr("Wt"), 50, [&row] { return FixedText(row.m_dWeight, 6, 2); },
        Set::byWeight, tr("Wt"), 4, [&row] { return std::to_string(Truncated(row.m_dWeight)); }});
    AddColumn({colActLevel, tr("Activity Level"), 85,
        [level] { return CDAOBodyComp::GetActLevelStr(level()); }, Set::byActLevel, tr("ActLvl"), 9,
        [level] { return CDAOBodyComp::GetActLevelStrAbbr(level()); }});
    AddColumn({colRestingHR, tr("HR"), 30, [&row] { return std::to_string(row.m_nRestingHR); },
        Set::byRestingHR, tr("HR"), 4});
    AddColumn({colPressure, tr("BP"), 50,
        [&row] { return std::to_string(row.m_nSystolic) + '/' + std::to_string(row.m_nDiastolic); },
        Set::byPressure, tr("BP"), 8});
}

void CEvaluationListDlg::AddFitTests()
{
    auto const& row = static_cast<Set const&>(Row());
    auto const count = [this](QString const& heading, std::int32_t const& value,
                           CSortKey const& sort, QString const& printed) {
        AddColumn({colFitTests, heading, 50, [&value] { return std::to_string(value); }, sort,
            printed, 4});
    };
    AddColumn({colFitTests, tr("Trunk Flexion"), 50,
        [&row] { return FixedText(row.m_dTrunkFlexion, 5, 2); }, Set::byTrunkFlexion, tr("Flx"), 5,
        [&row] { return FixedText(row.m_dTrunkFlexion, 4, 1); }});
    count(tr("Sit-Ups"), row.m_nSitUps, Set::bySitUps, tr("Sit"));
    count(tr("Ab Crunches"), row.m_nAbCrunches, Set::byAbCrunches, tr("Ab"));
    count(tr("Step"), row.m_nStepTest, Set::byStepTest, tr("Stp"));
    AddColumn({colFitTests, tr("Run"), 50, [&row] { return RunTime(row.m_nRunSeconds); },
        Set::byRunSeconds, tr("Run"), 5});
    count(tr("Ergometer"), row.m_nErgometer, Set::byErgometer, tr("Erg"));
}

void CEvaluationListDlg::AddStations()
{
    auto const& row = static_cast<Set const&>(Row());
    int station = 0;
    for (auto const& name : m_doc.m_circuit.m_arrStnName) {
        auto const heading = ToQt(name);
        AddColumn({colStations, heading, 50,
            [&row, station] { return FixedText(row.GetStnVal(station), 6, 2); },
            Set::ByStnVal(station), heading.left(kPrintedStation), kPrintedStation + 1,
            [&row, station] { return FixedText(row.GetStnVal(station), 0, 0); }});
        ++station;
    }
}
