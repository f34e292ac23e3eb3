#include "members/MergeLetterDlg.h"

#include "ui_MergeLetterDlg.h"

#include "doc/CorvanaDoc.h"
#include "members/LetterTemplateDlg.h"
#include "members/TemplateNameDlg.h"
#include "ui/Convert.h"
#include "ui/Messages.h"
#include "ui/ProgressDlg.h"
#include "ui/WaitCursor.h"

#include <QScreen>
#include <QTextBlock>

#include <optional>
#include <utility>

using namespace Qt::StringLiterals;

namespace
{

constexpr int kMostBlankLines = 40;
constexpr QSize kShownLetters(
    75, 20); // of the body at first: lines of a page, and a good part of it

} // namespace

CMergeLetterDlg::CMergeLetterDlg(CCorvanaDoc& doc, CDAOMem& found, CLetterTemplates templates)
    : CDialog(doc.Window())
    , m_doc(doc)
    , m_found(found)
    , m_templates(std::move(templates))
    , m_ui(std::make_unique<Ui::MergeLetterDlg>())
{
    m_ui->setupUi(this);
    m_fields.Number(*m_ui->blankLinesSpin, m_nBlankLines, {0, kMostBlankLines});
    m_ui->printerLabel->setText(PrinterNote());
    auto const letter = m_ui->bodyEdit->fontMetrics();
    QSize const shown(kShownLetters.width() * letter.averageCharWidth(),
        kShownLetters.height() * letter.lineSpacing());
    resize((sizeHint() + shown - m_ui->bodyEdit->sizeHint())
               .boundedTo(screen()->availableSize() * 9 / 10));
    connect(m_ui->okButton, &QPushButton::clicked, this, &CMergeLetterDlg::accept);
    connect(m_ui->testPrintButton, &QPushButton::clicked, this,
        [this] { PrintLetters(CLetterExtent::first); });
    connect(m_ui->printAllButton, &QPushButton::clicked, this,
        [this] { PrintLetters(CLetterExtent::all); });
    connect(
        m_ui->selectTemplateButton, &QPushButton::clicked, this, &CMergeLetterDlg::SelectTemplate);
    connect(m_ui->saveTemplateButton, &QPushButton::clicked, this, &CMergeLetterDlg::SaveTemplate);
    connect(m_ui->previewButton, &QPushButton::clicked, this, [this] {
        if (TakeFields()) {
            Preview(this, Letters(CLetterExtent::all));
        }
    });
    connect(m_ui->pdfButton, &QPushButton::clicked, this, [this] {
        if (TakeFields()) {
            SaveAsPdf(this, Letters(CLetterExtent::all));
        }
    });
    connect(m_ui->bodyEdit, &QPlainTextEdit::textChanged, this, &CMergeLetterDlg::ShowLastLine);
}

CMergeLetterDlg::~CMergeLetterDlg() = default;

void CMergeLetterDlg::ShowFields()
{
    m_fields.Show();
}

bool CMergeLetterDlg::TakeFields()
{
    if (!m_fields.Take()) {
        return false;
    }
    m_fields.Commit();
    return true;
}

void CMergeLetterDlg::showEvent(QShowEvent* event)
{
    CDialog::showEvent(event);
    if (!std::exchange(m_bWasShown, true)) {
        QMetaObject::invokeMethod(this, &CMergeLetterDlg::SelectTemplate, Qt::QueuedConnection);
    }
}

void CMergeLetterDlg::reject()
{
    if (!m_ui->bodyEdit->document()->isModified()
        || Ask(this,
            tr("The letter has been changed and not saved as a template.\nDo you want to close it "
               "without saving?"),
            CQuestion::destroying)) {
        CDialog::reject();
    }
}

// ---- templates

void CMergeLetterDlg::SelectTemplate()
{
    std::optional<CWaitCursor> wait(std::in_place);
    auto const names = m_templates.ReadNames(CLetterTemplates::kListedLetters);
    wait.reset();
    if (!names) {
        TellFailed();
    }
    CLetterTemplateDlg list(names.value_or(QStringList()), this);
    list.m_nTemplate = m_nTemplate;
    if (list.exec() != QDialog::Accepted) {
        return;
    }
    m_nTemplate = list.m_nTemplate;
    if (auto const body = m_templates.ReadBody(m_nTemplate)) {
        ShowBody(*body);
    } else {
        TellFailed();
    }
}

void CMergeLetterDlg::ShowBody(QString const& body)
{
    auto& edit = *m_ui->bodyEdit;
    edit.setPlainText(body); // what could be undone before goes with it
    edit.document()->setModified(false);
    edit.setEnabled(true);
    edit.setFocus();
}

/// The lines that Enter has ended: all but the last one.
QStringList CMergeLetterDlg::BodyLines() const
{
    auto lines = m_ui->bodyEdit->toPlainText().split(u'\n');
    lines.removeLast();
    return lines;
}

void CMergeLetterDlg::ShowLastLine()
{
    bool const isEnded = m_ui->bodyEdit->document()->lastBlock().length() == 1;
    m_ui->lastLineLabel->setText(isEnded
            ? QString()
            : tr("The last line is neither printed nor saved until Enter ends it."));
}

/// Whether the template can be replaced without losing others, and the user wants that.
bool CMergeLetterDlg::MayReplace(QStringList const& names)
{
    if (m_nTemplate >= names.size()) {
        Tell(this, tr("Error: there is no template to replace"));
        return false;
    }
    if (m_nTemplate >= CLetterTemplates::kMostNames) {
        Tell(this,
            tr("Error: only the first %1 templates can be replaced")
                .arg(CLetterTemplates::kMostNames));
        return false;
    }
    return Ask(this,
               tr("Are you sure you want to replace the template\n\"%1\" with the "
                  "current\ncustomization?")
                   .arg(names[m_nTemplate]),
               CQuestion::okCancel)
        && (names.size() <= CLetterTemplates::kMostNames
            || Ask(this,
                tr("There are %1 templates, and the list of names that is saved\nholds the first "
                   "%2. The names of the others will be lost.\nDo you want to save all the same?")
                    .arg(QString::number(names.size()),
                        QString::number(CLetterTemplates::kMostNames)),
                CQuestion::destroying));
}

void CMergeLetterDlg::SaveTemplate()
{
    CWaitCursor const wait;
    auto names = m_templates.ReadNames(CLetterTemplates::kStoredLetters);
    if (!names) {
        TellFailed();
        return;
    }
    if (!MayReplace(*names)) {
        return;
    }
    CTemplateNameDlg name(this);
    name.m_strName = FromQt((*names)[m_nTemplate]);
    {
        CWaitCursorPause const pause;
        if (name.exec() != QDialog::Accepted) {
            return;
        }
    }
    // Somebody else may have changed the list while the questions were open.
    if (m_templates.ReadNames(CLetterTemplates::kStoredLetters) != names) {
        Tell(this,
            tr("Error: the names of the templates have been changed at another place\nmeanwhile. "
               "Nothing was saved."));
        return;
    }
    (*names)[m_nTemplate] = ToQt(name.m_strName);
    std::optional<QStringList> body;
    if (auto lines = BodyLines(); !lines.isEmpty()) {
        body = lines += QString();
    }
    if (!m_templates.Write(*names, m_nTemplate, body)) {
        TellFailed();
        return;
    }
    m_ui->bodyEdit->document()->setModified(false);
    Tell(this, tr("You have successfully updated the current template."), CMessageIcon::none,
        body ? QString() : tr("Its letter stays as it was, since this one has no ended line."));
}

void CMergeLetterDlg::TellFailed()
{
    Tell(this, tr("Error: cannot open file:\n%1").arg(m_templates.FailedFile()),
        CMessageIcon::exclamation, m_templates.Reason());
}

// ---- printing

CPrintOut CMergeLetterDlg::Letters(CLetterExtent extent, std::function<void()> const& step)
{
    CMergeLetter const letter = {m_nBlankLines, BodyLines()};
    return {extent == CLetterExtent::first ? tr("Merge Letter Test") : tr("Merge Letter(s)"),
        QPageLayout::Portrait,
        [this, letter, extent, step](QPagedPaintDevice& device, int mostPages) {
            return PrintMergeLetters(device, m_found, letter, extent, mostPages, step);
        },
        [this] { m_doc.Fail(tr("Error: the members could not be read."), m_found); }};
}

void CMergeLetterDlg::PrintLetters(CLetterExtent extent)
{
    if (!TakeFields()) {
        return;
    }
    CWaitCursor const wait;
    int const count = extent == CLetterExtent::first ? 1 : m_found.CountSet();
    auto progress = std::make_unique<CProgressDlg>(this, tr("Printing, please wait..."), count);
    auto* const bar = progress.get();
    Print(this, Letters(extent, [bar] { bar->Step(); }), std::move(progress));
}

void CCorvanaDoc::PrintLetters(CDAOMem& members)
{
    auto const folder = qgetenv("CORV_TXT");
    if (folder.isEmpty()) {
        Tell(Window(), tr("Error: system environment variable \"CORV_TXT\" is not set"),
            CMessageIcon::exclamation);
    }
    CMergeLetterDlg(*this, members, CLetterTemplates(folder.toStdString())).exec();
}
