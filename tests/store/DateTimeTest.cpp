#include "store/EFOleDateTime.h"

#include <gtest/gtest.h>
#include <limits>

namespace
{

CEFOleDateTime const kEvening(2026, 11, 16, 18, 5, 9);

} // namespace

TEST(DateTimeTest, ShowsItsTexts)
{
    EXPECT_EQ(kEvening.DateStrShortYear(), "11/16/26");
    EXPECT_EQ(kEvening.DateTimeStrShortYear(), "11/16/26 18:05");
    EXPECT_EQ(kEvening.Format("%A - %B  %d, %Y%A%%%"), "Monday - November  16, 2026Monday%%");
    EXPECT_EQ(CEFOleDateTime().DateStrLongYear(), "12/30/1899");
    EXPECT_EQ(CEFOleDateTime::Invalid().DateTimeStrLongYear(), "Invalid DateTime");
}

TEST(DateTimeTest, KeepsEveryDayOfItsRangeAndNothingBeyond)
{
    // A day in each month of every 50th year there and back through its text.
    for (int year = 100; year <= 9950; year += 50) {
        for (int month = 1; month <= 12; ++month) {
            CEFOleDateTime const date(year, month, 28, 23, 59, 58);
            ASSERT_EQ(CEFOleDateTime::Parse(date.DateTimeStrLongYear()), date);
            ASSERT_EQ(CEFOleDateTime::FromDayCount(date.DayCount()), date);
            ASSERT_EQ(date.Day() + date.Month() * 100, month * 100 + 28);
        }
    }
    EXPECT_EQ(CEFOleDateTime(1900, 1, 1).DayCount(), 2.0);
    using Limits = std::numeric_limits<std::int64_t>;
    CEFOleDateTime const first(100, 1, 1);
    CEFOleDateTime const last(9999, 12, 31, 23, 59, 59);
    EXPECT_TRUE(first.ChkStatus() && last.ChkStatus());
    for (auto const& date : {CEFOleDateTime(99, 12, 31), CEFOleDateTime(2025, 2, 29),
             CEFOleDateTime::FromDayCount(1e300), CEFOleDateTime::FromDayCount(0.0 / 0.0),
             CEFOleDateTime::FromSeconds(first.Seconds() - 1),
             CEFOleDateTime::FromSeconds(last.Seconds() + 1),
             CEFOleDateTime::FromSeconds(Limits::min()),
             CEFOleDateTime::FromSeconds(Limits::max())}) {
        EXPECT_FALSE(date.ChkStatus());
        EXPECT_EQ(date.Year() + date.Month() + date.Day(), 0);
        EXPECT_EQ(date.Hour() + date.Minute() + date.Second(), 0);
    }
}

TEST(DateTimeTest, RefusesTextsThatAreNoDate)
{
    for (auto const* text : {"", "11/16", "11/16/26", "13/01/2026", "02/30/2026", "11/16/2026 ",
             "11/16/2026 24:00", "11/16/2026 18:60", "11/16/2026 18:05:60", "11/16/2026x",
             "-1/16/2026", "11/16/20266", "011/16/2026", "11/16/2026T18:05", "Invalid DateTime"}) {
        EXPECT_FALSE(CEFOleDateTime::Parse(text).ChkStatus()) << text;
    }
    EXPECT_EQ(CEFOleDateTime::Parse("1/2/2026 7:05"), CEFOleDateTime(2026, 1, 2, 7, 5));
}

TEST(DateTimeTest, ComparesWithNow)
{
    CEFOleDateTime::SetClock(kEvening);
    EXPECT_FALSE(CEFOleDateTime(2026, 11, 16, 23, 59, 59).IsAfterToday());
    EXPECT_TRUE(CEFOleDateTime(2026, 11, 17).IsAfterToday());
    EXPECT_TRUE(CEFOleDateTime(2026, 11, 16, 18, 5, 8).IsPast());
    EXPECT_FALSE(kEvening.IsPast() || CEFOleDateTime::Invalid().IsPast());
    EXPECT_EQ(CEFOleDateTime(2026, 11, 16, 17, 0, 10).ElapsedMin(), 64);
    EXPECT_EQ(CEFOleDateTime(2026, 11, 16, 17, 0, 9).ElapsedMin(), 65);
    EXPECT_EQ(CEFOleDateTime(2026, 11, 16, 19, 0).ElapsedMin(), 0);
    EXPECT_EQ(CEFOleDateTime::Invalid().ElapsedMin(), 0);
    EXPECT_EQ(CEFOleDateTime(1996, 11, 16).ElapsedYrs(), 30);
    EXPECT_EQ(CEFOleDateTime(1996, 11, 17).ElapsedYrs(), 29);
    CEFOleDateTime::SetClock(CEFOleDateTime(2025, 2, 28));
    EXPECT_EQ(CEFOleDateTime(2004, 2, 29).ElapsedYrs(), 20);
    CEFOleDateTime::SetClock(std::nullopt);
}
