#include "doc/UpdateClassDlg.h"

#include "ui_UpdateClassDlg.h"

#include "doc/CorvanaDoc.h"
#include "platform/qt/DropDown.h"
#include "ui/ControlID.h"

#include <QLineEdit>

CUpdateClassDlg::CUpdateClassDlg(CCorvanaDoc& doc, QWidget* parent)
    : CDialog(parent)
    , m_class(EmptySlot(doc.m_setDef, 0))
    , m_ui(std::make_unique<Ui::UpdateClassDlg>())
{
    m_ui->setupUi(this);
    m_ui->classPicker->SetUp(doc, Qt::Vertical);
    m_ui->classPicker->AlignWith(*m_ui->reEvalLabel);
    SetControlIDs();
    m_fields.Pair(*m_ui->orientYesButton, *m_ui->orientNoButton, m_class.orientBonus);
    m_fields.Number(*m_ui->reEvalSpin, m_class.reEvalBonuses, kClassBonuses);
    m_fields.Number(*m_ui->otherSpin, m_class.otherBonuses, kClassBonuses);
    m_fields.List(
        *m_ui->gradeList, m_class.gradeStat, CDAODef::gsWithdrawn, CDAODef::GetGrdStatStr);
    m_fields.Pair(*m_ui->transferButton, *m_ui->deleteButton, m_bTransfer);
}

CUpdateClassDlg::~CUpdateClassDlg() = default;

void CUpdateClassDlg::FillLists()
{
    m_ui->classPicker->ShowFresh();
}

void CUpdateClassDlg::ShowFields()
{
    m_fields.Show();
}

bool CUpdateClassDlg::TakeFields()
{
    auto& picker = *m_ui->classPicker;
    if (!m_fields.Take() || !picker.CheckRealClass()) {
        return false;
    }
    m_fields.Commit();
    m_class.category = picker.Category();
    m_class.course = picker.Course();
    m_class.section = picker.Section();
    return true;
}

void CUpdateClassDlg::SetControlIDs()
{
    SetControlID(this, 215);
    auto const& lists = m_ui->classPicker->Lists();
    SetControlID(lists.m_pCategory, 1665);
    SetControlID(lists.m_pCourse, 1667);
    SetControlID(lists.m_pSection, 1669);
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
