#include "tests/TempFolder.h"
#include "tests/platform/db/Families.h"
#include "tests/platform/db/PeerProcess.h"

#include <gtest/gtest.h>
#include <random>
#include <thread>

namespace
{

class CrashTest : public testing::Test
{
protected:
    void SetUp() override { ASSERT_TRUE(CreateDatabase(m_strPath, Families::Schema())); }

    /// Kills a program that saves families from the number on, at a random moment; returns the
    /// number that follows the last one it called stored.
    std::int64_t KillSaving(char const* task, std::int64_t number)
    {
        CPeer saving({task, m_strPath, std::to_string(number)});
        auto const first = saving.Line();
        EXPECT_EQ(first, std::to_string(number));
        std::this_thread::sleep_for(std::chrono::microseconds(m_random() % 40'000));
        saving.Kill();
        auto next = number + 1;
        for (auto line = saving.Line(); !line.empty(); line = saving.Line()) {
            EXPECT_EQ(line, std::to_string(next));
            ++next;
        }
        return next;
    }

    std::unique_ptr<CDatabase> Open() const
    {
        std::unique_ptr<CDatabase> database;
        auto const status = OpenDatabase(m_strPath, Families::Schema(), database);
        EXPECT_TRUE(status) << status.Text();
        return database;
    }

    CTempFolder m_temporary;
    std::string const m_strPath = m_temporary.Path() / "family.mdb";
    std::mt19937 m_random{20261124};
};

} // namespace

TEST_F(CrashTest, WhatWasCalledStoredIsThereAndNothingIsPartial)
{
    std::int64_t number = 1;
    for (int kill = 0; kill < 40; ++kill) {
        SCOPED_TRACE(kill);
        auto const next = KillSaving("save", number);
        auto const database = Open();
        ASSERT_NE(database, nullptr);
        // One more may have been stored without the time to tell.
        auto const last = Families::Number(*database, "SELECT max(number) FROM families");
        EXPECT_TRUE(last == next - 1 || last == next) << last << " " << next;
        EXPECT_EQ(Families::Count(*database), last);
        EXPECT_EQ(Families::Partial(*database), 0);
        std::vector<std::string> findings;
        EXPECT_TRUE(database->Check(findings));
        EXPECT_EQ(findings, std::vector<std::string>());
        number = last + 1;
    }
    EXPECT_GT(number, 400) << "killed before it came to work";
}

// Shows that the kills above hit the right moments.
TEST_F(CrashTest, WithoutATransactionSomeArePartial)
{
    std::int64_t number = 1;
    std::int64_t partial = 0;
    for (int kill = 0; kill < 40 && partial == 0; ++kill) {
        number = KillSaving("save row by row", number) + 1;
        partial = Families::Partial(*Open());
    }
    EXPECT_GT(partial, 0);
}
