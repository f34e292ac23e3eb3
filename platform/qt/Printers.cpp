#include "platform/qt/Printers.h"

#include <QPrinterInfo>

#include <algorithm>
#include <dlfcn.h>
#include <utility>

namespace
{

CPrinterMaker g_maker;

std::unique_ptr<QPrinter> MakeOf(QPrinterInfo const& info)
{
    if (info.isNull()) {
        return nullptr;
    }
    auto printer = std::make_unique<QPrinter>(info, QPrinter::HighResolution);
    // A name that the system does not know is passed over in silence.
    return printer->printerName() == info.printerName() ? std::move(printer) : nullptr;
}

std::unique_ptr<QPrinter> Make()
{
    if (g_maker) {
        return g_maker();
    }
    return MakeOf(QPrinterInfo::defaultPrinter());
}

/// As the printer itself names it, where it does: a size of the same measures by another name may
/// lead to another tray.
QPageSize SizeOf(QPagedPaintDevice const& device, QPageSize::PageSizeId paper)
{
    auto const key = QPageSize::key(paper);
    if (auto const* const printer = dynamic_cast<QPrinter const*>(&device)) {
        auto const sizes = QPrinterInfo(*printer).supportedPageSizes();
        auto const own = std::ranges::find_if(
            sizes, [&key](QPageSize const& size) { return size.key() == key; });
        if (own != sizes.end()) {
            return *own;
        }
    }
    return {paper};
}

} // namespace

void SetPaper(QPagedPaintDevice& device, QPageSize::PageSizeId paper,
    QPageLayout::Orientation orientation, double leastMargin)
{
    device.setPageSize(SizeOf(device, paper));
    device.setPageOrientation(orientation);
    auto layout = device.pageLayout();
    layout.setUnits(QPageLayout::Point);
    auto const least = layout.minimumMargins();
    device.setPageMargins(
        {std::max(least.left(), leastMargin), std::max(least.top(), leastMargin),
            std::max(least.right(), leastMargin), std::max(least.bottom(), leastMargin)},
        QPageLayout::Point);
}

void SetLetterPaper(QPagedPaintDevice& device, QPageLayout::Orientation orientation)
{
    SetPaper(device, QPageSize::Letter, orientation);
}

std::unique_ptr<QPrinter> DefaultPrinter(
    QString const& documentName, QPageLayout::Orientation orientation)
{
    auto printer = Make();
    if (printer != nullptr) {
        printer->setDocName(documentName);
        SetLetterPaper(*printer, orientation);
    }
    return printer;
}

QString DefaultPrinterName()
{
    auto const printer = Make();
    return printer != nullptr ? printer->printerName() : QString();
}

QStringList PrinterNames()
{
    return QPrinterInfo::availablePrinterNames();
}

std::unique_ptr<QPrinter> PrinterOf(QString const& name)
{
    return MakeOf(QPrinterInfo::printerInfo(name));
}

QString RefusalOf(QPrinter const& printer)
{
    // CUPS keeps the status of its last call, which was to take the document. It is asked through
    // the library that Qt's printers have loaded; where they have not, there is no CUPS.
    void* const cups = printer.outputFormat() == QPrinter::NativeFormat
        ? ::dlopen("libcups.so.2", RTLD_LAZY | RTLD_NOLOAD)
        : nullptr;
    if (cups == nullptr) {
        return {};
    }
    constexpr int kFirstError = 0x400; // of IPP (RFC 8011) and of CUPS itself; -1 is one too
    auto* const status = reinterpret_cast<int (*)()>(::dlsym(cups, "cupsLastError"));
    auto* const text = reinterpret_cast<char const* (*)()>(::dlsym(cups, "cupsLastErrorString"));
    QString refusal;
    if (status != nullptr && text != nullptr && (status() < 0 || status() >= kFirstError)) {
        refusal = QString::fromUtf8(text());
    }
    ::dlclose(cups);
    return refusal;
}

CPrinterMaker SetPrinterMaker(CPrinterMaker maker)
{
    return std::exchange(g_maker, std::move(maker));
}
