#include "store/EFOleDateTime.h"

#include <array>
#include <charconv>
#include <chrono>
#include <cmath>
#include <ctime>
#include <limits>

namespace
{

namespace chr = std::chrono;

constexpr auto kEpoch = chr::sys_days(chr::year(1899) / 12 / 30);
constexpr auto kFirst
    = (chr::sys_days(chr::year(100) / 1 / 1) - kEpoch).count() * CEFOleDateTime::kDay;
constexpr auto kEnd
    = (chr::sys_days(chr::year(10000) / 1 / 1) - kEpoch).count() * CEFOleDateTime::kDay;
constexpr auto kInvalid = std::numeric_limits<std::int64_t>::min();
constexpr std::string_view kInvalidText = "Invalid DateTime";

constexpr std::array<std::string_view, 7> kWeekdays
    = {"Sunday", "Monday", "Tuesday", "Wednesday", "Thursday", "Friday", "Saturday"};
constexpr std::array<std::string_view, 12> kMonths = {"January", "February", "March", "April",
    "May", "June", "July", "August", "September", "October", "November", "December"};

std::optional<CEFOleDateTime>& Clock()
{
    static std::optional<CEFOleDateTime> clock;
    return clock;
}

chr::sys_days DaysOf(std::int64_t dayNumber)
{
    return kEpoch + chr::days(dayNumber);
}

chr::year_month_day DateOf(std::int64_t dayNumber)
{
    return {DaysOf(dayNumber)};
}

/// A number that has at most so many digits, with zeros in front.
void AddPadded(std::string& text, int value, std::size_t width)
{
    text.append(width, '0');
    for (auto digit = text.rbegin(); value > 0; ++digit, value /= 10) {
        *digit = static_cast<char>('0' + value % 10);
    }
}

/// Takes digits from the front of the text; -1 when there are fewer than least or more than most.
int TakeNumber(std::string_view& text, std::size_t least, std::size_t most)
{
    std::size_t length = 0;
    while (length < text.size() && text[length] >= '0' && text[length] <= '9') {
        ++length;
    }
    if (length < least || length > most) {
        return -1;
    }
    int value = 0;
    std::from_chars(text.data(), text.data() + length, value);
    text.remove_prefix(length);
    return value;
}

bool Take(std::string_view& text, char expected)
{
    if (text.empty() || text.front() != expected) {
        return false;
    }
    text.remove_prefix(1);
    return true;
}

} // namespace

CEFOleDateTime::CEFOleDateTime(int year, int month, int day, int hour, int minute, int second)
    : m_nSeconds(kInvalid)
{
    bool const inRange = year >= 100 && year <= 9999 && month >= 1 && month <= 12 && day >= 1
        && day <= 31 && hour >= 0 && hour <= 23 && minute >= 0 && minute <= 59 && second >= 0
        && second <= 59;
    if (!inRange) {
        return;
    }
    auto const date = chr::year(year) / month / day;
    if (date.ok()) {
        m_nSeconds = (chr::sys_days(date) - kEpoch).count() * CEFOleDateTime::kDay
            + std::int64_t(hour) * 3600 + std::int64_t(minute) * 60 + second;
    }
}

CEFOleDateTime CEFOleDateTime::FromSeconds(std::int64_t seconds)
{
    CEFOleDateTime result;
    result.m_nSeconds = seconds;
    return result;
}

CEFOleDateTime CEFOleDateTime::FromDayCount(double days)
{
    if (!std::isfinite(days) || std::abs(days) > 1e8) {
        return Invalid();
    }
    return FromSeconds(std::llround(days * static_cast<double>(CEFOleDateTime::kDay)));
}

double CEFOleDateTime::DayCount() const
{
    return static_cast<double>(m_nSeconds) / static_cast<double>(CEFOleDateTime::kDay);
}

CEFOleDateTime CEFOleDateTime::Invalid()
{
    return FromSeconds(kInvalid);
}

CEFOleDateTime CEFOleDateTime::GetCurrentTime()
{
    if (Clock()) {
        return *Clock();
    }
    std::time_t const now = std::time(nullptr);
    std::tm local = {};
    ::localtime_r(&now, &local);
    // A leap second is told as the 60th: the last one we know stands for it.
    return {local.tm_year + 1900, local.tm_mon + 1, local.tm_mday, local.tm_hour, local.tm_min,
        std::min(local.tm_sec, 59)};
}

void CEFOleDateTime::SetClock(std::optional<CEFOleDateTime> const& time)
{
    Clock() = time;
}

CEFOleDateTime CEFOleDateTime::Parse(std::string_view text)
{
    int const month = TakeNumber(text, 1, 2);
    bool ok = Take(text, '/');
    int const day = TakeNumber(text, 1, 2);
    ok = ok && Take(text, '/');
    int const year = TakeNumber(text, 4, 4);
    int hour = 0;
    int minute = 0;
    int second = 0;
    if (ok && !text.empty()) {
        ok = Take(text, ' ');
        hour = TakeNumber(text, 1, 2);
        ok = ok && Take(text, ':');
        minute = TakeNumber(text, 2, 2);
        if (ok && !text.empty()) {
            ok = Take(text, ':');
            second = TakeNumber(text, 2, 2);
        }
    }
    if (!ok || !text.empty()) {
        return Invalid();
    }
    return {year, month, day, hour, minute, second};
}

std::string CEFOleDateTime::DateStrLongYear() const
{
    return Format("%m/%d/%Y");
}

std::string CEFOleDateTime::DateStrShortYear() const
{
    return Format("%m/%d/%y");
}

std::string CEFOleDateTime::DateTimeStrLongYear() const
{
    return Format("%m/%d/%Y %H:%M:%S");
}

std::string CEFOleDateTime::DateTimeStrShortYear() const
{
    return Format("%m/%d/%y %H:%M");
}

std::string CEFOleDateTime::TimeStrHourMinute() const
{
    return Format("%H:%M");
}

std::string CEFOleDateTime::Format(std::string_view format) const
{
    if (!ChkStatus()) {
        return std::string(kInvalidText);
    }
    std::string text;
    auto const date = DateOf(DayNumber());
    auto const year = static_cast<int>(date.year());
    auto const month = static_cast<unsigned>(date.month());
    for (std::size_t i = 0; i < format.size(); ++i) {
        if (format[i] != '%' || i + 1 == format.size()) {
            text += format[i];
            continue;
        }
        switch (format[++i]) {
        case 'A':
            text += kWeekdays[chr::weekday(DaysOf(DayNumber())).c_encoding()];
            break;
        case 'B':
            text += kMonths[month - 1];
            break;
        case 'd':
            AddPadded(text, static_cast<int>(static_cast<unsigned>(date.day())), 2);
            break;
        case 'm':
            AddPadded(text, static_cast<int>(month), 2);
            break;
        case 'y':
            AddPadded(text, year % 100, 2);
            break;
        case 'Y':
            AddPadded(text, year, 4);
            break;
        case 'H':
            AddPadded(text, Hour(), 2);
            break;
        case 'M':
            AddPadded(text, Minute(), 2);
            break;
        case 'S':
            AddPadded(text, Second(), 2);
            break;
        default:
            text += format[i];
            break;
        }
    }
    return text;
}

bool CEFOleDateTime::ChkStatus() const
{
    return m_nSeconds >= kFirst && m_nSeconds < kEnd;
}

bool CEFOleDateTime::IsAfterToday() const
{
    return ChkStatus() && DayNumber() > GetCurrentTime().DayNumber();
}

bool CEFOleDateTime::IsPast() const
{
    return ChkStatus() && *this < GetCurrentTime();
}

bool CEFOleDateTime::IsSameDay(CEFOleDateTime const& other) const
{
    return ChkStatus() && other.ChkStatus() && DayNumber() == other.DayNumber();
}

void CEFOleDateTime::Midnight()
{
    if (ChkStatus()) {
        m_nSeconds = DayNumber() * CEFOleDateTime::kDay;
    }
}

void CEFOleDateTime::PreMidnight()
{
    if (ChkStatus()) {
        m_nSeconds = DayNumber() * CEFOleDateTime::kDay + CEFOleDateTime::kDay - 1;
    }
}

void CEFOleDateTime::AddMonths(int months)
{
    if (!ChkStatus()) {
        return;
    }
    auto const date = DateOf(DayNumber());
    auto const month = chr::year_month(date.year(), date.month()) + chr::months(months);
    chr::year_month_day const last(month / chr::last);
    auto const target = month / std::min(date.day(), last.day());
    auto const days = (chr::sys_days(target) - kEpoch).count();
    m_nSeconds += (days - DayNumber()) * CEFOleDateTime::kDay;
}

CEFOleDateTime CEFOleDateTime::DayAfter(int year, int month, int day)
{
    // Days past the end of a month count on into the next one.
    auto const first = chr::sys_days(chr::year(year) / month / 1);
    chr::year_month_day const last(chr::year(year) / month / chr::last);
    auto const offset = std::min(day, static_cast<int>(static_cast<unsigned>(last.day())));
    return FromSeconds((first + chr::days(offset) - kEpoch).count() * CEFOleDateTime::kDay);
}

int CEFOleDateTime::ElapsedYrs() const
{
    if (!ChkStatus()) {
        return 0;
    }
    auto const today = GetCurrentTime();
    int const years = today.Year() - Year();
    bool const before
        = today.Month() < Month() || (today.Month() == Month() && today.Day() < Day());
    return before ? years - 1 : years;
}

int CEFOleDateTime::ElapsedMin() const
{
    return MinutesBetween(*this, GetCurrentTime());
}

/// Days from the zero value to its date, rounded down.
std::int64_t CEFOleDateTime::DayNumber() const
{
    return (m_nSeconds >= 0 ? m_nSeconds : m_nSeconds - CEFOleDateTime::kDay + 1)
        / CEFOleDateTime::kDay;
}

int CEFOleDateTime::Year() const
{
    return ChkStatus() ? static_cast<int>(DateOf(DayNumber()).year()) : 0;
}

int CEFOleDateTime::Month() const
{
    return ChkStatus() ? static_cast<int>(static_cast<unsigned>(DateOf(DayNumber()).month())) : 0;
}

int CEFOleDateTime::Day() const
{
    return ChkStatus() ? static_cast<int>(static_cast<unsigned>(DateOf(DayNumber()).day())) : 0;
}

int CEFOleDateTime::Hour() const
{
    return static_cast<int>(SecondOfDay() / 3600);
}

int CEFOleDateTime::Minute() const
{
    return static_cast<int>(SecondOfDay() / 60 % 60);
}

int CEFOleDateTime::Second() const
{
    return static_cast<int>(SecondOfDay() % 60);
}

std::int64_t CEFOleDateTime::SecondOfDay() const
{
    return ChkStatus() ? m_nSeconds - DayNumber() * CEFOleDateTime::kDay : 0;
}

int MinutesBetween(CEFOleDateTime const& from, CEFOleDateTime const& to)
{
    if (!from.ChkStatus() || !to.ChkStatus() || to <= from) {
        return 0;
    }
    auto const minutes = (to.Seconds() - from.Seconds()) / 60;
    return static_cast<int>(
        std::min<std::int64_t>(minutes, std::numeric_limits<std::int32_t>::max()));
}
