#include "members/MemberEnrollPg.h"

#include "ui_MemberEnrollPg.h"

#include "doc/CorvanaDoc.h"
#include "members/ClassSlotBox.h"
#include "ui/Messages.h"

#include <algorithm>

namespace
{

bool IsSameClass(CClassSlot const& a, CClassSlot const& b)
{
    return !a.category.empty() && a.category == b.category && a.course == b.course
        && a.section == b.section;
}

/// Of the day alone: times that are stored with the dates mean nothing to the user.
bool IsLaterDay(CEFOleDateTime const& a, CEFOleDateTime const& b)
{
    return a.ChkStatus() && b.ChkStatus() && a > b && !a.IsSameDay(b);
}

} // namespace

CMemberEnrollPg::CMemberEnrollPg(CCorvanaDoc& doc, QWidget* parent)
    : CPropertyPage(parent)
    , m_doc(doc)
    , m_ui(std::make_unique<Ui::MemberEnrollPg>())
{
    m_ui->setupUi(this);
    m_fields.Date(*m_ui->enrollEdit, m_dtEnroll);
    m_fields.Date(*m_ui->expireEdit, m_dtExpire);
    m_fields.List(*m_ui->periodList, m_nEnrollPer, CDAODef::epYear, CDAODef::GetEnrPerStr);
    m_fields.Pair(*m_ui->incentiveYesRadio, *m_ui->incentiveNoRadio, m_bIncentive);
    for (std::size_t i = 0; i < m_lstBoxes.size(); ++i) {
        auto* const box = new CClassSlotBox(doc, static_cast<int>(i) + 1, m_lstSlots[i], this);
        m_ui->slotsLayout->addWidget(box);
        connect(box, &CClassSlotBox::DeleteAsked, this, [this, i] { DeleteClass(i); });
        m_lstBoxes[i] = box;
    }
}

CMemberEnrollPg::~CMemberEnrollPg() = default;

void CMemberEnrollPg::ShowFields()
{
    m_fields.Show();
    std::ranges::for_each(m_lstBoxes, &CClassSlotBox::Show);
    m_lstEntry = m_lstSlots;
}

bool CMemberEnrollPg::TakeFields()
{
    if (!std::ranges::all_of(m_lstBoxes, &CClassSlotBox::Take) || !m_fields.Take()) {
        return false;
    }
    if (IsLaterDay(m_fields.Taken(m_dtEnroll), m_fields.Taken(m_dtExpire))) {
        return Refuse(
            m_ui->expireEdit, tr("Error: expiration date cannot precede enrollment date"));
    }
    if (!CheckClasses()) {
        return false;
    }
    m_fields.Commit();
    std::ranges::for_each(m_lstBoxes, &CClassSlotBox::Commit);
    return true;
}

bool CMemberEnrollPg::CheckClasses() const
{
    auto* const field = m_lstBoxes[0]->CategoryList();
    if (!std::ranges::any_of(m_lstBoxes, &CClassSlotBox::HasClass)) {
        return Refuse(field, tr("Error: select at least one category, course, and/or section"));
    }
    CSlots slots;
    std::ranges::transform(m_lstBoxes, slots.begin(), &CClassSlotBox::ShownClass);
    if (IsSameClass(slots[0], slots[1]) || IsSameClass(slots[0], slots[2])
        || IsSameClass(slots[1], slots[2])) {
        return Refuse(field, tr("Error: duplicate category, course, and section"));
    }
    return true;
}

void CMemberEnrollPg::DeleteClass(std::size_t slot)
{
    auto const deleted = m_lstBoxes[slot]->ClassToDelete();
    if (!m_doc.DeleteMemberClass(
            m_lMemberID, deleted.classIndex, deleted.category, deleted.course, deleted.section)) {
        return;
    }
    NoteDeleted(deleted);
    m_lstSlots[slot]
        = EmptySlot(m_doc.m_setDef, CDAOCls().GenerateIndex(m_lMemberID, deleted.classIndex));
    m_lstBoxes[slot]->Show();
    m_lstBoxes[slot]->CategoryList()->setFocus(); // the button is gone
}

/// The user may have moved the class to another slot, or edited it, before deleting it.
void CMemberEnrollPg::NoteDeleted(CClassSlot const& deleted)
{
    auto const stored = std::ranges::find_if(
        m_lstEntry, [&](CClassSlot const& entry) { return IsSameClass(entry, deleted); });
    m_lstDeleted.push_back(stored != m_lstEntry.end() ? *stored : deleted);
}
