#include "doc/UpdateClassDlg.h"

#include "ui_UpdateClassDlg.h"

#include "doc/ClassLists.h"
#include "doc/CorvanaDoc.h"
#include "ui/ControlID.h"
#include "ui/Convert.h"
#include "ui/FieldExchange.h"

#include <QLineEdit>

namespace
{

constexpr CRange<std::int32_t> kBonuses = {0, 99};

} // namespace

CUpdateClassDlg::CUpdateClassDlg(CCorvanaDoc& doc, QWidget* parent)
    : CDialog(parent)
    , m_doc(doc)
    , m_ui(std::make_unique<Ui::UpdateClassDlg>())
{
    m_ui->setupUi(this);
    SetControlIDs();
    LinkClassLists(m_doc, Lists());
    for (auto* const spin : {m_ui->reEvalSpin, m_ui->otherSpin}) {
        spin->SetRange(kBonuses.least, kBonuses.greatest);
    }
    for (auto const status : {CDAODef::gsNone, CDAODef::gsInProgress, CDAODef::gsSatisfactory,
             CDAODef::gsIncomplete, CDAODef::gsWithdrawn}) {
        m_ui->gradeList->addItem(ToQt(CDAODef::GetGrdStatStr(status)));
    }
    m_class = EmptySlot(m_doc.m_setDef, 0);
}

CUpdateClassDlg::~CUpdateClassDlg() = default;

void CUpdateClassDlg::ShowFields()
{
    m_doc.FillCategoryList(Lists());
    ShowPair(*m_ui->orientYesButton, *m_ui->orientNoButton, m_class.orientBonus);
    m_ui->reEvalSpin->SetValue(m_class.reEvalBonuses);
    m_ui->otherSpin->SetValue(m_class.otherBonuses);
    m_ui->gradeList->setCurrentIndex(m_class.gradeStat);
    ShowPair(*m_ui->transferButton, *m_ui->deleteButton, m_bTransfer);
}

bool CUpdateClassDlg::TakeFields()
{
    std::int32_t reEvalBonuses = 0;
    std::int32_t otherBonuses = 0;
    if (!TakeNumber(*m_ui->reEvalSpin, kBonuses, reEvalBonuses)
        || !TakeNumber(*m_ui->otherSpin, kBonuses, otherBonuses) || !CheckRealClass(Lists())) {
        return false;
    }
    m_class.category = FromQt(m_ui->categoryList->currentText());
    m_class.course = FromQt(m_ui->courseList->currentText());
    m_class.section = FromQt(m_ui->sectionList->currentText());
    m_class.orientBonus = m_ui->orientYesButton->isChecked();
    m_class.reEvalBonuses = reEvalBonuses;
    m_class.otherBonuses = otherBonuses;
    if (auto const grade = m_ui->gradeList->currentIndex(); grade >= 0) {
        m_class.gradeStat = static_cast<std::uint8_t>(grade);
    }
    m_bTransfer = m_ui->transferButton->isChecked();
    return true;
}

CClassLists CUpdateClassDlg::Lists() const
{
    return {m_ui->categoryList, m_ui->courseList, m_ui->sectionList, m_ui->categoryLabel,
        m_ui->courseLabel, m_ui->sectionLabel};
}

void CUpdateClassDlg::SetControlIDs()
{
    SetControlID(this, 215);
    SetControlID(m_ui->categoryList, 1665);
    SetControlID(m_ui->courseList, 1667);
    SetControlID(m_ui->sectionList, 1669);
    SetControlID(m_ui->orientYesButton, 1670);
    SetControlID(m_ui->orientNoButton, 1671);
    SetControlID(m_ui->reEvalSpin->Edit(), 1672);
    SetControlID(m_ui->otherSpin->Edit(), 1673);
    SetControlID(m_ui->reEvalSpin, 1674);
    SetControlID(m_ui->otherSpin, 1675);
    SetControlID(m_ui->gradeList, 1676);
    SetControlID(m_ui->deleteButton, 1677);
    SetControlID(m_ui->transferButton, 1678);
}
