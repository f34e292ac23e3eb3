#include "platform/qt/TypedDate.h"

#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace
{

constexpr int kFirstYear = 100;

/// The year that ends in the two digits, of the hundred years from the first one on.
int YearFrom(int first, int digits)
{
    return first + ((digits - first) % 100 + 100) % 100;
}

QDate ShortYearDate(int digits, int month, int day, QDate const& today, CShortYear shortYear)
{
    if (shortYear == CShortYear::nearest) {
        return {YearFrom(today.year() - 50, digits), month, day};
    }
    QDate const date(YearFrom(today.year() - 99, digits), month, day);
    return date > today ? QDate(date.year() - 100, month, day) : date;
}

std::optional<QTime> ValidTime(int hour, int minute, int second, QChar half)
{
    if (!half.isNull()) {
        if (hour < 1 || hour > 12) {
            return std::nullopt;
        }
        hour = hour % 12 + (half.toLower() == u'p' ? 12 : 0);
    }
    QTime const time(hour, minute, second);
    return time.isValid() ? std::optional(time) : std::nullopt;
}

} // namespace

std::optional<QDate> ParseDate(QString const& text, QDate const& today, CShortYear shortYear)
{
    static auto const gap = u" ?[-/. ] ?"_s;
    static auto const time = u"(?:[T ] ?[0-9]{1,2}:[0-9]{2}[-+0-9:.,ZzAPMapm ]*)?$"_s;
    static QRegularExpression const monthFirst(
        u"^([0-9]{1,2})%1([0-9]{1,2})%1([0-9]{4}|[0-9]{2})%2"_s.arg(gap, time));
    static QRegularExpression const digits(u"^([0-9]{2})([0-9]{2})([0-9]{4}|[0-9]{2})$"_s);
    static QRegularExpression const yearFirst(
        u"^(?<year>[0-9]{4})%1([0-9]{1,2})%1([0-9]{1,2})%2"_s.arg(gap, time));
    auto const line = text.simplified();
    int first = 1;
    auto match = monthFirst.match(line);
    if (!match.hasMatch()) {
        match = digits.match(line);
    }
    if (!match.hasMatch()) {
        match = yearFirst.match(line);
        first = 2;
    }
    auto const month = match.captured(first).toInt();
    auto const day = match.captured(first + 1).toInt();
    auto const yearText = match.captured(first == 1 ? 3 : 1);
    auto const year = yearText.toInt();
    auto const date = yearText.size() == 2 ? ShortYearDate(year, month, day, today, shortYear)
                                           : QDate(year, month, day);
    return date.isValid() && date.year() >= kFirstYear ? std::optional(date) : std::nullopt;
}

std::optional<QTime> ParseTime(QString const& text)
{
    static auto const half = u" ?(?:([AaPp])\\.?(?:[Mm]\\.?)?)?$"_s;
    static QRegularExpression const parted(
        u"^([0-9]{1,2})(?: ?[:. ] ?([0-9]{2}))?(?: ?[:. ] ?([0-9]{2}))?"_s + half);
    static QRegularExpression const digits(u"^([0-9]{1,2})([0-9]{2})([0-9]{2})?"_s + half);
    auto const line = text.simplified();
    auto match = parted.match(line);
    if (!match.hasMatch()) {
        match = digits.match(line);
    }
    if (!match.hasMatch()) {
        return std::nullopt;
    }
    auto const letter = match.captured(4);
    return ValidTime(match.captured(1).toInt(), match.captured(2).toInt(),
        match.captured(3).toInt(), letter.isEmpty() ? QChar() : letter.front());
}
