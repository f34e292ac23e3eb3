#pragma once

#include <QPainter>

class QPagedPaintDevice;

/// The pages of one document on a device, begun one after the other, and the painter on them.
class CPages
{
public:
    enum class Outcome
    {
        printed,
        notStarted, ///< the device takes no document
        stopped ///< no page could be started any more; pages before it are out
    };

    /// At most so many pages are begun.
    CPages(QPagedPaintDevice& device, int mostPages);

    /// Begins the document; false when the device takes none.
    bool Begin();
    /// Begins a page, after Begin() the first one. False when so many are done, or the device
    /// begins no more. A page that it does not begin costs its number and nothing else.
    bool Next();
    /// Ends the document, and tells what came of it.
    Outcome End();

    QPainter& Painter() { return m_painter; }
    int Number() const { return m_nPage; } ///< of the page, or of the one at which printing stopped

private:
    QPagedPaintDevice& m_device;
    QPainter m_painter;
    int const m_nMost;
    int m_nDone = 0;
    int m_nPage = 0;
    Outcome m_outcome = Outcome::notStarted;
};
