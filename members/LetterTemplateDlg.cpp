#include "members/LetterTemplateDlg.h"

#include "ui_LetterTemplateDlg.h"

CLetterTemplateDlg::CLetterTemplateDlg(QStringList const& names, QWidget* parent)
    : CDialog(parent)
    , m_ui(std::make_unique<Ui::LetterTemplateDlg>())
    , m_names(names)
{
    m_ui->setupUi(this);
    m_ui->templateList->setModel(&m_names);
    connect(m_ui->templateList, &QListView::doubleClicked, this, &CLetterTemplateDlg::accept);
}

CLetterTemplateDlg::~CLetterTemplateDlg() = default;

void CLetterTemplateDlg::ShowFields()
{
    m_ui->templateList->setCurrentIndex(m_names.index(m_nTemplate));
    m_ui->templateList->setFocus();
}

bool CLetterTemplateDlg::TakeFields()
{
    m_nTemplate = m_ui->templateList->selectionModel()->selectedRows().value(0).row();
    return true;
}

void CLetterTemplateDlg::accept()
{
    if (m_ui->templateList->selectionModel()->hasSelection()) {
        CDialog::accept();
    } else {
        reject();
    }
}
