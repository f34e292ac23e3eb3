#pragma once

#include "platform/db/Status.h"

#include <QPageSize>
#include <QString>

/// Where reports go, in the user's settings.
struct CReportPlan
{
    static constexpr int kMostCopies = 99;

    bool isToPrinter = false;
    QString printer; ///< empty: the default one
    QString folder; ///< of PDF files, without a slash at its end
    bool isFolderChosen = false; ///< by the user; else the one in the user's documents
    bool isA4 = false; ///< else Letter
    int copies = 1; ///< on the printer
    bool hasNames = false; ///< members' names in the names of files

    /// What the user chose; until then the default printer, or the folder where there is none.
    static CReportPlan Load();
    /// False when it has not reached the disk.
    bool Store() const;

    QPageSize::PageSizeId Paper() const { return isA4 ? QPageSize::A4 : QPageSize::Letter; }
    /// What keeps the folder from being used, in a sentence for the user. Makes the one in the
    /// user's documents when it is not there, but none that was chosen: its disk may not be
    /// connected.
    CDbStatus PrepareFolder() const;
};
