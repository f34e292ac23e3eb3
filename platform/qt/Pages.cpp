#include "platform/qt/Pages.h"

#include <QPagedPaintDevice>

namespace
{

constexpr int kPageAttempts = 3;

} // namespace

CPages::CPages(QPagedPaintDevice& device, int mostPages)
    : m_device(device)
    , m_nMost(mostPages)
{
}

bool CPages::Begin()
{
    if (!m_painter.begin(&m_device)) {
        return false;
    }
    m_outcome = Outcome::printed;
    return true;
}

bool CPages::Next()
{
    if (m_nDone == m_nMost) {
        return false;
    }
    for (int attempt = 0; attempt < kPageAttempts; ++attempt) {
        ++m_nPage;
        // The device has begun the first one by itself.
        if (m_nPage == 1 || m_device.newPage()) {
            ++m_nDone;
            return true;
        }
    }
    m_outcome = Outcome::stopped;
    return false;
}

CPages::Outcome CPages::End()
{
    if (m_outcome == Outcome::printed && !m_painter.end()) {
        m_outcome = Outcome::stopped;
    }
    return m_outcome;
}
