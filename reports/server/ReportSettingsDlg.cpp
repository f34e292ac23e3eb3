#include "reports/server/ReportSettingsDlg.h"

#include "ui_ReportSettingsDlg.h"

#include "platform/qt/Printers.h"
#include "reports/server/Questions.h"

#include <QDir>
#include <QFileDialog>

#include <initializer_list>

CReportSettingsDlg::CReportSettingsDlg(QWidget* parent)
    : CDialog(parent)
    , m_ui(std::make_unique<Ui::ReportSettingsDlg>())
{
    m_ui->setupUi(this);
    m_ui->copiesSpin->SetRange(1, CReportPlan::kMostCopies);
    connect(m_ui->folderButton, &QRadioButton::toggled, this, &CReportSettingsDlg::EnableFields);
    connect(m_ui->browseButton, &QPushButton::clicked, this, &CReportSettingsDlg::Browse);
}

CReportSettingsDlg::~CReportSettingsDlg() = default;

void CReportSettingsDlg::FillLists()
{
    m_ui->printerList->clear();
    auto const standard = DefaultPrinterName();
    m_ui->printerList->addItem(standard.isEmpty() ? tr("The default printer (there is none)")
                                                  : tr("The default printer (%1)").arg(standard),
        QString());
    auto names = PrinterNames();
    if (!m_plan.printer.isEmpty() && !names.contains(m_plan.printer)) {
        names += m_plan.printer; // it may only be switched off
    }
    for (auto const& name : names) {
        m_ui->printerList->addItem(name, name);
    }
}

void CReportSettingsDlg::ShowFields()
{
    (m_plan.isToPrinter ? m_ui->printerButton : m_ui->folderButton)->setChecked(true);
    m_ui->folderEdit->setText(m_plan.folder);
    m_bFolderChosen = m_plan.isFolderChosen;
    m_ui->namesCheck->setChecked(m_plan.hasNames);
    m_ui->printerList->setCurrentIndex(m_ui->printerList->findData(m_plan.printer));
    m_ui->copiesSpin->SetValue(m_plan.copies);
    m_ui->paperList->setCurrentIndex(m_plan.isA4 ? 1 : 0);
    EnableFields();
}

bool CReportSettingsDlg::TakeFields()
{
    bool const isToPrinter = m_ui->printerButton->isChecked();
    bool isNumber = false;
    int const copies = m_ui->copiesSpin->text().toInt(&isNumber);
    if (isToPrinter && (!isNumber || copies < 1 || copies > CReportPlan::kMostCopies)) {
        TellUser(this, tr("Enter an integer between 1 and %1.").arg(CReportPlan::kMostCopies));
        m_ui->copiesSpin->setFocus();
        m_ui->copiesSpin->selectAll();
        return false;
    }
    m_plan.isToPrinter = isToPrinter;
    m_plan.folder = m_ui->folderEdit->text();
    m_plan.isFolderChosen = m_bFolderChosen;
    m_plan.hasNames = m_ui->namesCheck->isChecked();
    m_plan.printer = m_ui->printerList->currentData().toString();
    m_plan.copies = isToPrinter ? copies : m_plan.copies;
    m_plan.isA4 = m_ui->paperList->currentIndex() == 1;
    return true;
}

void CReportSettingsDlg::EnableFields()
{
    bool const isFolder = m_ui->folderButton->isChecked();
    for (auto* const widget :
        std::initializer_list<QWidget*>{m_ui->folderEdit, m_ui->browseButton, m_ui->namesCheck}) {
        widget->setEnabled(isFolder);
    }
    for (auto* const widget : std::initializer_list<QWidget*>{
             m_ui->printerLabel, m_ui->printerList, m_ui->copiesLabel, m_ui->copiesSpin}) {
        widget->setEnabled(!isFolder);
    }
}

void CReportSettingsDlg::Browse()
{
    auto const folder = QFileDialog::getExistingDirectory(
        this, tr("Folder for Reports"), m_ui->folderEdit->text());
    if (!folder.isEmpty()) {
        m_ui->folderEdit->setText(QDir::cleanPath(folder));
        m_bFolderChosen = true;
    }
}
