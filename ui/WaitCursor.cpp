#include "ui/WaitCursor.h"

#include <QCursor>
#include <QGuiApplication>

#include <utility>

namespace
{

int g_waiting = 0; // guards alive and not paused; the windows have one thread

} // namespace

CWaitCursor::CWaitCursor()
{
    if (g_waiting++ == 0) {
        QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    }
}

CWaitCursor::~CWaitCursor()
{
    if (--g_waiting == 0) {
        QGuiApplication::restoreOverrideCursor();
    }
}

CWaitCursorPause::CWaitCursorPause()
    : m_nWaiting(std::exchange(g_waiting, 0))
{
    if (m_nWaiting > 0) {
        QGuiApplication::restoreOverrideCursor();
    }
}

CWaitCursorPause::~CWaitCursorPause()
{
    g_waiting = m_nWaiting;
    if (m_nWaiting > 0) {
        QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    }
}
