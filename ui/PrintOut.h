#pragma once

#include "platform/qt/Pages.h"
#include "ui/WaitDlg.h"

#include <QPageLayout>
#include <QString>

#include <functional>
#include <memory>

class QPagedPaintDevice;
class QWidget;

/// What came of printing a document.
struct CPrinted
{
    CPages::Outcome m_outcome = CPages::Outcome::printed;
    int m_nPage = 0; ///< pages done, or the page at which printing stopped
    bool m_bCut = false; ///< there was more than fitted on the most pages
    bool m_bRead = true; ///< all that it is about could be read
};

/// A document on letter paper, to be printed in any of the ways below. Each tells the user when not
/// all of it was printed.
struct CPrintOut
{
    QString m_strName;
    QPageLayout::Orientation m_orientation = QPageLayout::Portrait;
    std::function<CPrinted(QPagedPaintDevice& device, int mostPages)> m_fnPrint;
    std::function<void()> m_fnTellNotRead;
};

/// On the default printer; without one nothing is printed. The wait window is shown until that is
/// done, a plain one unless the caller has one.
void Print(QWidget* parent, CPrintOut const& document, std::unique_ptr<CWaitDlg> wait = nullptr);
/// Shows the first pages on the screen; all can be printed from there.
void Preview(QWidget* parent, CPrintOut const& document);
/// Into a file that the user is asked for.
void SaveAsPdf(QWidget* parent, CPrintOut const& document);

/// Names the default printer, or says that nothing will be printed without one.
QString PrinterNote();
