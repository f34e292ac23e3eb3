#include "bodycomp/BodyCompListDlg.h"

#include "doc/CorvanaDoc.h"
#include "store/services/ReportJob.h"
#include "ui/CellText.h"

namespace
{

CListTexts Texts()
{
    auto const tr = [](char const* text) { return CBodyCompListDlg::tr(text); };
    using List = CBodyCompListDlg;
    return {"body_compositions_list", tr("Body Compositions"),
        tr("Loading body compositions, please wait..."), tr("Total Body Compositions Listed:"),
        tr("No further body composition records are available."),
        tr("Error: the body compositions could not be read."),
        tr("Select items to include in the printed\nlist of body compositions."),
        {{List::colName, tr("&Name")}, {List::colMemberID, tr("Member &ID #")},
            {List::colDate, tr("Body Composition &Date")},
            {List::colFat, tr("Body &Fat Percentage")},
            {List::colMethod, tr("Calculation &Method")},
            {List::colActLevel, tr("&Activity Level")}, {List::colHeight, tr("&Height")},
            {List::colWeight, tr("&Weight")}, {List::colWaist, tr("Wai&st")},
            {List::colHip, tr("Hi&p")}}};
}

} // namespace

CBodyCompListDlg::CBodyCompListDlg(CCorvanaDoc& doc, CDAOBodyComp& found)
    : CRecordListDlg(doc, found, std::make_unique<CDAOBodyComp>(), Texts())
{
    using Set = CDAOBodyComp;
    auto const& row = static_cast<Set const&>(Row());
    auto const level = [&row] { return Set::actlevel(row.m_nActLevel); };
    auto const number = [this](std::uint32_t bit, QString const& heading, double const& value,
                            int digits, CSortKey const& sort, int printed) {
        AddColumn({bit, heading, 50, [&value, digits] { return FixedText(value, digits, 2); }, sort,
            heading, printed});
    };
    AddMemberColumns(row.m_lMemberID, 35, 11);
    AddColumn({colDate, tr("Date"), 65, [&row] { return row.m_dtBodyCompDate.DateStrShortYear(); },
        Set::byBodyCompDate, tr("Date"), 10});
    AddColumn({colFat, tr("Fat %"), 50, [&row] { return FixedText(row.m_dPercentFat, 5, 2); },
        Set::byPercentFat, tr("Fat%"), 7});
    AddColumn({colMethod, tr("Method"), 75,
        [&row] { return Set::GetMethodStr(Set::method(row.m_nMethod)); }, Set::byMethod,
        tr("Method"), 23});
    AddColumn({colActLevel, tr("Activity Level"), 85,
        [level] { return Set::GetActLevelStr(level()); }, Set::byActLevel, tr("ActLvl"), 10,
        [level] { return Set::GetActLevelStrAbbr(level()); }});
    number(colHeight, tr("Ht"), row.m_dHeight, 5, Set::byHeight, 7);
    number(colWeight, tr("Wt"), row.m_dWeight, 6, Set::byWeight, 8);
    number(colWaist, tr("Ws"), row.m_dWaist, 5, Set::byWaist, 7);
    number(colHip, tr("Hip"), row.m_dHip, 5, Set::byHip, 0);

    auto const record = tr("body composition");
    UseOnDoubleClick(AddRowButton(tr("&Edit"), "editButton", tr("edit a body composition"), record,
        [this, &found] { return m_doc.AddEditBodyComp(&found); }));
    UseOnDeleteKey(AddRowButton(tr("&Delete"), "deleteButton", tr("delete a body composition"),
        record, [this, &found] { return m_doc.DeleteBodyComp(found); }));
    AddDeleteAllButton();
    AddRowButton(tr("Anal&yze"), "analyzeButton", tr("print a body composition analysis"), record,
        [this, &found] {
            auto const date = found.m_dtBodyCompDate;
            m_doc.AddReport({CDAOReport::rtBodyCompInterpretation, found.m_lMemberID, date, date});
            return false;
        });
    AddLastButtons();
}
