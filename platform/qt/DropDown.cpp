#include "platform/qt/DropDown.h"

#include <QAbstractItemView>
#include <QMetaObject>
#include <QWheelEvent>

CDropDown::CDropDown(QWidget* parent)
    : QComboBox(parent)
{
    setFocusPolicy(Qt::StrongFocus); // the wheel scrolls the page unless the user chose the list
    connect(this, &QComboBox::activated, this, [this] {
        if (!m_bTelling && !view()->isVisible()) {
            Q_EMIT Closed();
        }
    });
}

void CDropDown::showPopup()
{
    view()->setMinimumWidth(view()->sizeHintForColumn(0));
    QComboBox::showPopup();
}

void CDropDown::hidePopup()
{
    bool const wasOpen = view()->isVisible();
    QComboBox::hidePopup();
    if (wasOpen && !m_bTelling) {
        m_bTelling = true;
        // The list is hidden before its choice is taken over.
        QMetaObject::invokeMethod(
            this,
            [this] {
                m_bTelling = false;
                Q_EMIT Closed();
            },
            Qt::QueuedConnection);
    }
}

void CDropDown::wheelEvent(QWheelEvent* event)
{
    if (hasFocus()) {
        QComboBox::wheelEvent(event);
    } else {
        event->ignore();
    }
}
