#include "members/ClassSlotBox.h"

#include "ui_ClassSlotBox.h"

#include "doc/CorvanaDoc.h"
#include "ui/Convert.h"
#include "ui/FieldExchange.h"

using namespace Qt::StringLiterals;

namespace
{

constexpr CRange<std::int32_t> kBonuses = {0, 99};

} // namespace

CClassSlotBox::CClassSlotBox(CCorvanaDoc& doc, int number, QWidget* parent)
    : QGroupBox(parent)
    , m_doc(doc)
    , m_ui(std::make_unique<Ui::ClassSlotBox>())
{
    m_ui->setupUi(this);
    m_lists = {m_ui->categoryList, m_ui->courseList, m_ui->sectionList, m_ui->categoryLabel,
        m_ui->courseLabel, m_ui->sectionLabel};
    setObjectName(u"class%1Box"_s.arg(number));
    setTitle(tr("Class &%1").arg(number));
    m_ui->deleteButton->setText(tr("Delete\nClass %1").arg(number));
    for (int i = CDAODef::gsNone; i <= CDAODef::gsWithdrawn; ++i) {
        m_ui->gradeList->addItem(ToQt(CDAODef::GetGrdStatStr(static_cast<CDAODef::gradestat>(i))));
    }
    m_ui->reEvalSpin->SetRange(kBonuses.least, kBonuses.greatest);
    m_ui->otherSpin->SetRange(kBonuses.least, kBonuses.greatest);
    auto policy = m_ui->deleteButton->sizePolicy();
    policy.setRetainSizeWhenHidden(true); // slots look alike
    m_ui->deleteButton->setSizePolicy(policy);
    LinkClassLists(doc, m_lists);
    for (auto* const list : {m_lists.m_pCategory, m_lists.m_pCourse, m_lists.m_pSection}) {
        auto const note = [this] { m_bClassChosen = true; };
        connect(list, &QComboBox::activated, this, note);
        connect(list, &QComboBox::currentIndexChanged, this, note);
    }
    connect(m_lists.m_pCategory, &CDropDown::Closed, this, &CClassSlotBox::UpdateDelete);
    connect(m_ui->deleteButton, &QPushButton::clicked, this, &CClassSlotBox::DeleteAsked);
}

CClassSlotBox::~CClassSlotBox() = default;

void CClassSlotBox::ShowSlot(CClassSlot const& slot)
{
    if (slot.category.empty()) {
        m_doc.FillCategoryList(m_lists);
    } else {
        m_doc.FillClassLists(m_lists, slot.category, slot.course, slot.section);
    }
    ShowDelete(!slot.category.empty());
    ShowPair(*m_ui->orientYesRadio, *m_ui->orientNoRadio, slot.orientBonus);
    m_ui->reEvalSpin->SetValue(slot.reEvalBonuses);
    m_ui->otherSpin->SetValue(slot.otherBonuses);
    m_ui->gradeList->setCurrentIndex(slot.gradeStat);
    m_bClassChosen = false;
}

void CClassSlotBox::TakeClass(CClassSlot& slot) const
{
    if (m_bClassChosen) {
        slot.category = FromQt(m_lists.m_pCategory->currentText());
        slot.course = FromQt(m_lists.m_pCourse->currentText());
        slot.section = FromQt(m_lists.m_pSection->currentText());
    }
}

bool CClassSlotBox::TakeSlot(CClassSlot& slot) const
{
    std::int32_t reEvalBonuses = 0;
    std::int32_t otherBonuses = 0;
    if (!TakeNumber(*m_ui->reEvalSpin, kBonuses, reEvalBonuses)
        || !TakeNumber(*m_ui->otherSpin, kBonuses, otherBonuses)) {
        return false;
    }
    TakeClass(slot);
    slot.orientBonus = m_ui->orientYesRadio->isChecked();
    slot.reEvalBonuses = reEvalBonuses;
    slot.otherBonuses = otherBonuses;
    if (auto const status = m_ui->gradeList->currentIndex(); status >= 0) {
        slot.gradeStat = static_cast<std::uint8_t>(status);
    }
    return true;
}

bool CClassSlotBox::HasClass() const
{
    return HasRealClass(m_lists);
}

QWidget* CClassSlotBox::CategoryList() const
{
    return m_lists.m_pCategory;
}

void CClassSlotBox::ShowDelete(bool shown)
{
    m_ui->deleteButton->setVisible(shown);
    m_ui->deleteButton->setEnabled(shown);
}

void CClassSlotBox::UpdateDelete()
{
    if (m_lists.m_pCategory->currentIndex() >= 0) {
        ShowDelete(m_lists.m_pCategory->currentData().toInt() != 0);
    }
}
