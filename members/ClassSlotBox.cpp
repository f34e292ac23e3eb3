#include "members/ClassSlotBox.h"

#include "ui_ClassSlotBox.h"

#include "platform/qt/DropDown.h"
#include "ui/Convert.h"

using namespace Qt::StringLiterals;

namespace
{

/// A stored name with bytes that cannot be shown stays as it is while it is the one on show.
std::string Shown(std::string const& shown, std::string const& stored)
{
    return shown == FromQt(ToQt(stored)) ? stored : shown;
}

} // namespace

CClassSlotBox::CClassSlotBox(CCorvanaDoc& doc, int number, CClassSlot& slot, QWidget* parent)
    : QGroupBox(parent)
    , m_slot(slot)
    , m_ui(std::make_unique<Ui::ClassSlotBox>())
{
    m_ui->setupUi(this);
    setObjectName(u"class%1Box"_s.arg(number));
    setTitle(tr("Class &%1").arg(number));
    m_ui->deleteButton->setText(tr("Delete\nClass %1").arg(number));
    auto policy = m_ui->deleteButton->sizePolicy();
    policy.setRetainSizeWhenHidden(true); // slots look alike
    m_ui->deleteButton->setSizePolicy(policy);
    m_ui->classPicker->SetUp(doc, Qt::Horizontal);
    m_fields.Pair(*m_ui->orientYesRadio, *m_ui->orientNoRadio, slot.orientBonus);
    m_fields.Number(*m_ui->reEvalSpin, slot.reEvalBonuses, kClassBonuses);
    m_fields.Number(*m_ui->otherSpin, slot.otherBonuses, kClassBonuses);
    m_fields.List(*m_ui->gradeList, slot.gradeStat, CDAODef::gsWithdrawn, CDAODef::GetGrdStatStr);
    connect(m_ui->classPicker, &CClassPicker::CategoryChosen, this, &CClassSlotBox::UpdateDelete);
    connect(m_ui->deleteButton, &QPushButton::clicked, this, &CClassSlotBox::DeleteAsked);
}

CClassSlotBox::~CClassSlotBox() = default;

void CClassSlotBox::Show()
{
    m_shown = m_slot;
    bool const isFilled = !m_slot.category.empty();
    if (isFilled) {
        m_ui->classPicker->ShowStored(m_slot.category, m_slot.course, m_slot.section);
    } else {
        m_ui->classPicker->ShowFresh();
    }
    ShowDelete(isFilled);
    m_fields.Show();
}

void CClassSlotBox::Commit()
{
    m_slot = ShownClass();
    m_fields.Commit();
}

CClassSlot CClassSlotBox::ShownClass() const
{
    auto slot = m_slot;
    auto const& picker = *m_ui->classPicker;
    slot.category = Shown(picker.Category(), m_shown.category);
    slot.course = Shown(picker.Course(), m_shown.course);
    slot.section = Shown(picker.Section(), m_shown.section);
    return slot;
}

CClassSlot CClassSlotBox::ClassToDelete() const
{
    return m_ui->classPicker->IsAsFilled() ? m_shown : ShownClass();
}

bool CClassSlotBox::HasClass() const
{
    return m_ui->classPicker->HasRealClass();
}

QWidget* CClassSlotBox::CategoryList() const
{
    return m_ui->classPicker->Lists().m_pCategory;
}

void CClassSlotBox::ShowDelete(bool shown)
{
    m_ui->deleteButton->setVisible(shown);
    m_ui->deleteButton->setEnabled(shown);
}

void CClassSlotBox::UpdateDelete()
{
    ShowDelete(HasClass());
}
