#include "ui/PrintOut.h"

#include "platform/qt/Printers.h"
#include "ui/Messages.h"
#include "ui/SaveFile.h"
#include "ui/WaitCursor.h"

#include <QCoreApplication>
#include <QPaintEngine>
#include <QPdfWriter>
#include <QPrintPreviewDialog>

#include <limits>
#include <optional>

using namespace Qt::StringLiterals;

namespace
{

struct CTexts
{
    Q_DECLARE_TR_FUNCTIONS(CPrintOut)
};

constexpr int kMostPages = std::numeric_limits<int>::max();
constexpr int kMostPreviewPages = 100; // each is kept in memory

void TellPrinted(
    QWidget* parent, CPrintOut const& document, CPrinted const& printed, QString const& refusal)
{
    if (!refusal.isEmpty()) {
        Tell(parent, CTexts::tr("Error: the printer did not take \"%1\".").arg(document.m_strName),
            CMessageIcon::none, refusal);
    } else if (printed.m_outcome == CPages::Outcome::stopped) {
        Tell(parent, CTexts::tr("Error: printing stopped at page %1.").arg(printed.m_nPage));
    } else if (!printed.m_bRead) {
        document.m_fnTellNotRead();
    }
}

std::unique_ptr<CWaitDlg> MakeWait(QWidget* parent)
{
    return std::make_unique<CWaitDlg>(CTexts::tr("Printing, please wait..."), parent);
}

} // namespace

void Print(QWidget* parent, CPrintOut const& document, std::unique_ptr<CWaitDlg> wait)
{
    std::optional<CWaitCursor> cursor(std::in_place);
    if (wait == nullptr) {
        wait = MakeWait(parent);
    }
    auto const device = DefaultPrinter(document.m_strName, document.m_orientation);
    auto const printed = device != nullptr ? document.m_fnPrint(*device, kMostPages) : CPrinted();
    auto const refusal = device != nullptr ? RefusalOf(*device) : QString();
    wait.reset();
    cursor.reset();
    TellPrinted(parent, document, printed, refusal);
}

void Preview(QWidget* parent, CPrintOut const& document)
{
    auto device = DefaultPrinter(document.m_strName, document.m_orientation);
    if (device == nullptr) {
        device = std::make_unique<QPrinter>(QPrinter::HighResolution);
        SetLetterPaper(*device, document.m_orientation);
    }
    QPrintPreviewDialog dialog(device.get(), parent);
    dialog.setObjectName(u"previewDialog"_s);
    dialog.setWindowTitle(CTexts::tr("Preview of %1").arg(document.m_strName));
    QObject::connect(&dialog, &QPrintPreviewDialog::paintRequested, &dialog, [&](QPrinter* to) {
        CWaitCursor const wait;
        // The same is asked for when the user prints from there: then of all pages.
        bool const isPreview = to->paintEngine()->type() == QPaintEngine::Picture;
        auto const printed = document.m_fnPrint(*to, isPreview ? kMostPreviewPages : kMostPages);
        if (!isPreview) {
            TellPrinted(parent, document, printed, RefusalOf(*to));
        } else if (printed.m_bCut) {
            dialog.setWindowTitle(CTexts::tr("Preview of %1, first %2 pages")
                                      .arg(document.m_strName, QString::number(printed.m_nPage)));
        }
    });
    dialog.exec();
}

void SaveAsPdf(QWidget* parent, CPrintOut const& document)
{
    CFileQuestion const question = {CTexts::tr("Save as PDF"),
        FileNameOf(document.m_strName) + u".pdf"_s, CTexts::tr("PDF Files (*.pdf)"), true};
    SaveFile(parent, question, u".pdf"_s, [&](QIODevice& file) {
        auto const wait = MakeWait(parent);
        QPdfWriter device(&file);
        device.setTitle(document.m_strName);
        SetLetterPaper(device, document.m_orientation);
        auto const printed = document.m_fnPrint(device, kMostPages);
        return printed.m_outcome == CPages::Outcome::printed && printed.m_bRead;
    });
}

QString PrinterNote()
{
    auto const printer = DefaultPrinterName();
    return printer.isEmpty() ? CTexts::tr("There is no default printer: nothing will be printed.")
                             : CTexts::tr("Printer: %1").arg(printer);
}
