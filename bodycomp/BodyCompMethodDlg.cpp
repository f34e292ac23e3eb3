#include "bodycomp/BodyCompMethodDlg.h"

#include "ui_BodyCompMethodDlg.h"

#include "ui/Convert.h"
#include "ui/Messages.h"

CBodyCompMethodDlg::CBodyCompMethodDlg(QWidget* parent)
    : CDialog(parent)
    , m_ui(std::make_unique<Ui::BodyCompMethodDlg>())
{
    m_ui->setupUi(this);
    connect(m_ui->methodList, &QListWidget::itemDoubleClicked, this, &CBodyCompMethodDlg::accept);
}

CBodyCompMethodDlg::~CBodyCompMethodDlg() = default;

void CBodyCompMethodDlg::FillLists()
{
    m_ui->methodList->clear();
    for (auto const method : {CDAOBodyComp::mBodyMeasurements, CDAOBodyComp::mSkinfolds,
             CDAOBodyComp::mHydrostatic, CDAOBodyComp::mOther}) {
        m_ui->methodList->addItem(ToQt(CDAOBodyComp::GetMethodStr(method)));
    }
    m_ui->methodList->setCurrentRow(m_nMethod);
}

bool CBodyCompMethodDlg::TakeFields()
{
    auto const selected = m_ui->methodList->selectedItems();
    if (selected.isEmpty()) {
        return Refuse(m_ui->methodList, tr("Error: select a measurement method"));
    }
    m_nMethod = m_ui->methodList->row(selected.first());
    return true;
}
