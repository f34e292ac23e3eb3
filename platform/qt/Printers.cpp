#include "platform/qt/Printers.h"

#include <QPrinterInfo>

#include <algorithm>
#include <utility>

namespace
{

constexpr double kLeastMargin = 18; // points

CPrinterMaker g_maker;

std::unique_ptr<QPrinter> Make()
{
    if (g_maker) {
        return g_maker();
    }
    auto const info = QPrinterInfo::defaultPrinter();
    if (info.isNull()) {
        return nullptr;
    }
    auto printer = std::make_unique<QPrinter>(info, QPrinter::HighResolution);
    // A name that the system does not know is passed over in silence.
    return printer->printerName() == info.printerName() ? std::move(printer) : nullptr;
}

/// As the printer itself names it, where it does: a size of the same measures by another name may
/// lead to another tray.
QPageSize LetterOf(QPagedPaintDevice const& device)
{
    if (auto const* const printer = dynamic_cast<QPrinter const*>(&device)) {
        auto const sizes = QPrinterInfo(*printer).supportedPageSizes();
        auto const letter = std::ranges::find_if(
            sizes, [](QPageSize const& size) { return size.key() == u"Letter"; });
        if (letter != sizes.end()) {
            return *letter;
        }
    }
    return QPageSize(QPageSize::Letter);
}

} // namespace

void SetLetterPaper(QPagedPaintDevice& device, QPageLayout::Orientation orientation)
{
    device.setPageSize(LetterOf(device));
    device.setPageOrientation(orientation);
    auto layout = device.pageLayout();
    layout.setUnits(QPageLayout::Point);
    auto const least = layout.minimumMargins();
    device.setPageMargins(
        {std::max(least.left(), kLeastMargin), std::max(least.top(), kLeastMargin),
            std::max(least.right(), kLeastMargin), std::max(least.bottom(), kLeastMargin)},
        QPageLayout::Point);
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

CPrinterMaker SetPrinterMaker(CPrinterMaker maker)
{
    return std::exchange(g_maker, std::move(maker));
}
