#pragma once

#include <QApplication>
#include <QFont>

/// Makes the application's font 125 % of its size while it lives, for forms made meanwhile.
class CLargeFont
{
public:
    CLargeFont()
    {
        auto font = m_before;
        font.setPointSizeF(m_before.pointSizeF() * 1.25);
        QApplication::setFont(font);
    }
    ~CLargeFont() { QApplication::setFont(m_before); }
    CLargeFont(CLargeFont const&) = delete;
    CLargeFont& operator=(CLargeFont const&) = delete;

private:
    QFont const m_before = QApplication::font();
};
