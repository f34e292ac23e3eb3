#include "ui/PrintOptionsDlg.h"

#include "ui_PrintOptionsDlg.h"

#include "ui/Messages.h"

#include <QCheckBox>
#include <QDialogButtonBox>

CPrintOptionsDlg::CPrintOptionsDlg(
    QString const& note, CItems const& items, QString const& remark, QWidget* parent)
    : CDialog(parent)
    , m_ui(std::make_unique<Ui::PrintOptionsDlg>())
{
    m_ui->setupUi(this);
    m_ui->noteLabel->setText(note);
    m_ui->printerLabel->setText(remark);
    m_ui->printerLabel->setVisible(!remark.isEmpty());
    for (auto const& [bit, text] : items) {
        auto* const box = new QCheckBox(text, this);
        box->setObjectName(QStringLiteral("item%1Check").arg(bit));
        m_ui->itemsLayout->addWidget(box);
        m_boxes.emplace_back(bit, box);
    }
    // Last, as the keyboard comes to them.
    m_ui->dialogLayout->addWidget(
        new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this));
}

CPrintOptionsDlg::~CPrintOptionsDlg() = default;

void CPrintOptionsDlg::ShowFields()
{
    for (auto const& [bit, box] : m_boxes) {
        box->setChecked((m_nItems & bit) != 0);
    }
    m_boxes.front().second->setFocus();
}

bool CPrintOptionsDlg::TakeFields()
{
    std::uint32_t items = 0;
    for (auto const& [bit, box] : m_boxes) {
        items |= box->isChecked() ? bit : 0;
    }
    if (items == 0) {
        return Refuse(m_boxes.front().second, tr("Error: select at least one item"));
    }
    m_nItems = items;
    return true;
}
