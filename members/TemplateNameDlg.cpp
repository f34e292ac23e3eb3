#include "members/TemplateNameDlg.h"

#include "ui_TemplateNameDlg.h"

#include "members/LetterTemplates.h"
#include "ui/Convert.h"
#include "ui/Messages.h"

CTemplateNameDlg::CTemplateNameDlg(QWidget* parent)
    : CDialog(parent)
    , m_ui(std::make_unique<Ui::TemplateNameDlg>())
{
    m_ui->setupUi(this);
    m_fields.Text(*m_ui->nameEdit, m_strName, CLetterTemplates::kMostLetters);
}

CTemplateNameDlg::~CTemplateNameDlg() = default;

void CTemplateNameDlg::ShowFields()
{
    m_fields.Show();
    m_ui->nameEdit->setFocus();
    m_ui->nameEdit->selectAll();
}

bool CTemplateNameDlg::TakeFields()
{
    if (!m_fields.Take()) {
        return false;
    }
    auto const name = ToQt(m_fields.Taken(m_strName)).trimmed();
    if (name.isEmpty()) {
        return Refuse(m_ui->nameEdit, tr("Error: enter template name"));
    }
    if (name.startsWith(CLetterTemplates::kEndMark)) {
        return Refuse(m_ui->nameEdit, tr("Error: the name of a template cannot begin with \"@\""));
    }
    m_strName = FromQt(name);
    return true;
}
