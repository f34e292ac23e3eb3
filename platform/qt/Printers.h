#pragma once

#include <QPageLayout>
#include <QPageSize>
#include <QPrinter>
#include <QStringList>

#include <functional>
#include <memory>

constexpr double kLeastMargin = 18; ///< points: a quarter of an inch

/// Paper with no wider margins than the device needs, and some points at least: what stands at the
/// very edge of a sheet is not printed by most printers, whatever they say.
void SetPaper(QPagedPaintDevice& device, QPageSize::PageSizeId paper,
    QPageLayout::Orientation orientation, double leastMargin = kLeastMargin);
void SetLetterPaper(QPagedPaintDevice& device, QPageLayout::Orientation orientation);

/// The user's default printer, as it is set but for paper and orientation, with the document's
/// name. Null when there is none, or it cannot be used.
std::unique_ptr<QPrinter> DefaultPrinter(
    QString const& documentName, QPageLayout::Orientation orientation);

/// What the user calls it; empty when there is none.
QString DefaultPrinterName();

/// The names of all printers.
QStringList PrinterNames();
/// The printer of that name, as it is set. Null when there is none, or it cannot be used.
std::unique_ptr<QPrinter> PrinterOf(QString const& name);

/// Why the print system has not taken the document that was ended on this printer just now; empty
/// when it has. Qt does not tell: a printer that refuses documents looks like one that prints.
QString RefusalOf(QPrinter const& printer);

/// Puts something else in the place of the default printer, and gives back what was there; empty
/// for the default printer itself.
using CPrinterMaker = std::function<std::unique_ptr<QPrinter>()>;
CPrinterMaker SetPrinterMaker(CPrinterMaker maker);
