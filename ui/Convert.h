#pragma once

#include "store/EFOleDateTime.h"

#include <QDateTime>
#include <QString>

#include <string>
#include <string_view>

// The border between the store and Qt. Text of the store is UTF-8; bytes that are none become
// U+FFFD.

inline QString ToQt(std::string_view text)
{
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

inline std::string FromQt(QString const& text)
{
    return text.toStdString();
}

/// Date and time as they read, whatever the time zone; invalid stays invalid. The zero date, which
/// stands for none, is the date 12/30/1899 here too.
inline QDateTime ToQt(CEFOleDateTime const& value)
{
    if (!value.ChkStatus()) {
        return {};
    }
    return {QDate(value.Year(), value.Month(), value.Day()),
        QTime(value.Hour(), value.Minute(), value.Second()), Qt::UTC};
}

/// To the second, as it reads, without regard to the time zone.
inline CEFOleDateTime FromQt(QDateTime const& value)
{
    if (!value.isValid()) {
        return CEFOleDateTime::Invalid();
    }
    auto const date = value.date();
    auto const time = value.time();
    return {date.year(), date.month(), date.day(), time.hour(), time.minute(), time.second()};
}
