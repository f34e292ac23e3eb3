#pragma once

#include <QDate>
#include <QString>
#include <QTime>

#include <optional>

/// What two digits of a year stand for.
enum class CShortYear
{
    nearest, ///< the year nearest to this one, of two as near the earlier
    neverInFuture ///< the latest year in which the day is not after today
};

/// The day that a text names, of the years 100 to 9999; nothing when it names none. Read are month,
/// day and year in this order, with "/", "-", "." or blanks between them or, in six or eight
/// digits, nothing; and year, month and day when the year with its four digits stands first. A time
/// behind the day and blanks and line ends around it do not matter.
std::optional<QDate> ParseDate(QString const& text, QDate const& today, CShortYear shortYear);

/// The time of day that a text names; nothing when it names none. Read are hours, minutes and
/// seconds, the later ones of which may be missing, with ":", "." or blanks between them or
/// nothing, up to 23:59:59 or with "a", "p", "am" or "pm" behind them.
std::optional<QTime> ParseTime(QString const& text);
