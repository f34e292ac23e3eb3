#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

/// The date-time of every record: local time to the second, from the year 100 to 9999. The zero
/// value, midnight of 12/30/1899, stands for no date. A value outside the range, or made from a
/// text or number that is none, is invalid: it shows as "Invalid DateTime" and ChkStatus() is
/// false.
///
/// Kept as whole seconds from the zero value on, which is what the database stores: times compare
/// and subtract exactly, and a time found again by its text is the same time.
class CEFOleDateTime
{
public:
    static constexpr std::int64_t kDay = 86400; ///< in seconds

    CEFOleDateTime() = default;
    virtual ~CEFOleDateTime() = default;
    CEFOleDateTime(CEFOleDateTime const&) = default;
    CEFOleDateTime& operator=(CEFOleDateTime const&) = default;

    /// Invalid when the calendar has no such date or the day no such time.
    CEFOleDateTime(int year, int month, int day, int hour = 0, int minute = 0, int second = 0);

    /// As stored in a record.
    static CEFOleDateTime FromSeconds(std::int64_t seconds);
    std::int64_t Seconds() const { return m_nSeconds; }

    /// Days and their fractions from the zero value on, rounded to the second.
    static CEFOleDateTime FromDayCount(double days);
    double DayCount() const;

    static CEFOleDateTime Invalid();
    /// The clock's local time, or the time that a test has set.
    static CEFOleDateTime GetCurrentTime();
    /// For tests: what GetCurrentTime() answers from now on; empty for the clock again.
    static void SetClock(std::optional<CEFOleDateTime> const& time);

    /// Reads "11/16/2026", "11/16/2026 18:05" and "11/16/2026 18:05:09", single digits allowed in
    /// month, day and hour; anything else is invalid.
    static CEFOleDateTime Parse(std::string_view text);

    std::string DateStrLongYear() const; ///< "11/16/2026"
    std::string DateStrShortYear() const; ///< "11/16/26"
    std::string DateTimeStrLongYear() const; ///< "11/16/2026 18:05:09"
    std::string DateTimeStrShortYear() const; ///< "11/16/26 18:05"
    std::string TimeStrHourMinute() const; ///< "18:05"
    /// Replaces %A %B (English weekday and month) %d %m %y %Y %H %M %S %% in the format.
    std::string Format(std::string_view format) const;

    bool ChkStatus() const; ///< is it a valid date-time?
    bool IsZero() const { return m_nSeconds == 0; }
    bool IsAfterToday() const; ///< by the date alone
    bool IsPast() const; ///< before now
    bool IsSameDay(CEFOleDateTime const& other) const;
    void Midnight(); ///< to 00:00:00 of its date
    void PreMidnight(); ///< to 23:59:59 of its date
    /// The same day of a later month, or that month's last day when it has none such.
    void AddMonths(int months);
    /// The next day by the calendar of a year, month and day that may not exist (2/29).
    static CEFOleDateTime DayAfter(int year, int month, int day);
    int ElapsedYrs() const; ///< whole years until today; negative for a date to come
    int ElapsedMin() const; ///< whole minutes until now, never negative

    // Its parts; 0 when it is invalid.
    int Year() const;
    int Month() const;
    int Day() const;
    int Hour() const;
    int Minute() const;
    int Second() const;

    friend auto operator<=>(CEFOleDateTime const& a, CEFOleDateTime const& b)
    {
        return a.m_nSeconds <=> b.m_nSeconds;
    }
    friend bool operator==(CEFOleDateTime const& a, CEFOleDateTime const& b)
    {
        return a.m_nSeconds == b.m_nSeconds;
    }

private:
    std::int64_t DayNumber() const;
    std::int64_t SecondOfDay() const;

    std::int64_t m_nSeconds = 0;
};

/// Whole minutes between two times, truncated; 0 when the second is not after the first or one of
/// them is invalid.
int MinutesBetween(CEFOleDateTime const& from, CEFOleDateTime const& to);
