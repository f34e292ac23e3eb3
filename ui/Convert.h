#pragma once

#include <QString>

#include <string>
#include <string_view>

// The border between the store, which speaks UTF-8, and Qt. Bytes that are no UTF-8 become U+FFFD.

inline QString ToQt(std::string_view text)
{
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

inline std::string FromQt(QString const& text)
{
    return text.toStdString();
}
