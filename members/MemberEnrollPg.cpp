#include "members/MemberEnrollPg.h"

#include "ui_MemberEnrollPg.h"

#include "doc/CorvanaDoc.h"
#include "members/ClassSlotBox.h"
#include "ui/Convert.h"
#include "ui/DateExchange.h"
#include "ui/FieldExchange.h"
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
    RefuseWhenLeft(*m_ui->enrollEdit);
    RefuseWhenLeft(*m_ui->expireEdit);
    for (int i = CDAODef::epMonth; i <= CDAODef::epYear; ++i) {
        m_ui->periodList->addItem(ToQt(CDAODef::GetEnrPerStr(static_cast<CDAODef::enrollper>(i))));
    }
    for (std::size_t i = 0; i < m_lstBoxes.size(); ++i) {
        auto* const box = new CClassSlotBox(doc, static_cast<int>(i) + 1, this);
        m_ui->slotsLayout->addWidget(box);
        connect(box, &CClassSlotBox::DeleteAsked, this, [this, i] { DeleteClass(i); });
        m_lstBoxes[i] = box;
    }
}

CMemberEnrollPg::~CMemberEnrollPg() = default;

void CMemberEnrollPg::ShowFields()
{
    ShowDate(*m_ui->enrollEdit, m_dtEnroll);
    ShowDate(*m_ui->expireEdit, m_dtExpire);
    m_ui->periodList->setCurrentIndex(m_nEnrollPer);
    ShowPair(*m_ui->incentiveYesRadio, *m_ui->incentiveNoRadio, m_bIncentive);
    for (std::size_t i = 0; i < m_lstBoxes.size(); ++i) {
        m_lstBoxes[i]->ShowSlot(m_lstSlots[i]);
    }
    m_lstEntry = m_lstSlots;
}

bool CMemberEnrollPg::TakeFields()
{
    auto enroll = m_dtEnroll;
    auto expire = m_dtExpire;
    auto slots = m_lstSlots;
    if (!TakeDate(*m_ui->enrollEdit, enroll) || !TakeDate(*m_ui->expireEdit, expire)
        || !TakeSlots(slots)) {
        return false;
    }
    if (IsLaterDay(enroll, expire)) {
        return Refuse(
            m_ui->expireEdit, tr("Error: expiration date cannot precede enrollment date"));
    }
    if (!CheckClasses(slots)) {
        return false;
    }
    m_dtEnroll = enroll;
    m_dtExpire = expire;
    if (auto const period = m_ui->periodList->currentIndex(); period >= 0) {
        m_nEnrollPer = period;
    }
    m_bIncentive = m_ui->incentiveYesRadio->isChecked();
    m_lstSlots = slots;
    return true;
}

bool CMemberEnrollPg::TakeSlots(CSlots& slots) const
{
    for (std::size_t i = 0; i < m_lstBoxes.size(); ++i) {
        if (!m_lstBoxes[i]->TakeSlot(slots[i])) {
            return false;
        }
    }
    return true;
}

bool CMemberEnrollPg::CheckClasses(CSlots const& slots) const
{
    auto* const field = m_lstBoxes[0]->CategoryList();
    if (!std::ranges::any_of(m_lstBoxes, &CClassSlotBox::HasClass)) {
        return Refuse(field, tr("Error: select at least one category, course, and/or section"));
    }
    if (IsSameClass(slots[0], slots[1]) || IsSameClass(slots[0], slots[2])
        || IsSameClass(slots[1], slots[2])) {
        return Refuse(field, tr("Error: duplicate category, course, and section"));
    }
    return true;
}

void CMemberEnrollPg::DeleteClass(std::size_t slot)
{
    auto deleted = m_lstSlots[slot];
    m_lstBoxes[slot]->TakeClass(deleted);
    if (!m_doc.DeleteMemberClass(
            m_lMemberID, deleted.classIndex, deleted.category, deleted.course, deleted.section)) {
        return;
    }
    NoteDeleted(deleted);
    m_lstSlots[slot]
        = EmptySlot(m_doc.m_setDef, CDAOCls().GenerateIndex(m_lMemberID, deleted.classIndex));
    m_lstBoxes[slot]->ShowSlot(m_lstSlots[slot]);
    m_lstBoxes[slot]->CategoryList()->setFocus(); // the button is gone
}

/// The user may have moved the class to another slot, or edited it, before deleting it.
void CMemberEnrollPg::NoteDeleted(CClassSlot const& deleted)
{
    auto const stored = std::ranges::find_if(
        m_lstEntry, [&](CClassSlot const& entry) { return IsSameClass(entry, deleted); });
    m_lstDeleted.push_back(stored != m_lstEntry.end() ? *stored : deleted);
}
