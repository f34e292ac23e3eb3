#include "tests/platform/db/Families.h"
#include "tests/platform/db/Faults.h"
#include "tests/platform/db/PlainConnection.h"

#include <functional>

using TransactionTest = CFamiliesTest;

TEST_F(TransactionTest, WhatGoesWrongTakesAllAlongButARefusedRow)
{
    using enum DbError;
    auto const database = Open();
    std::int64_t number = 0;
    std::int64_t key = 1;
    std::vector<DbValue> const twin{std::int64_t(1), std::int64_t(0), "note"};
    std::vector<DbValue> const tooLong{
        std::int64_t(0), std::int64_t(0), std::string(65U << 20, 'x')};
    auto const save = [&](bool commit) {
        CTransaction inner(*database);
        auto status = Save(*database, ++number);
        return status && commit ? inner.Commit() : status;
    };
    auto const insert = [&](auto const& row) { return database->Insert(kFamilies, row, key); };
    auto const update = [&](auto const& row) {
        return database->Update(kFamilies, 1, row, {false, false, true});
    };
    auto const execute = [&](auto const* sql) { return database->Execute(sql, {}, key); };
    auto const fillDisk = [&] {
        // SQLite rolls back by itself when a page that it has to put aside finds no room.
        Faults::Begin(1, ENOSPC, true);
        auto status = Save(*database, ++number);
        while (status && number < 1000) {
            status = Save(*database, ++number, std::string(100'000, 'n'));
        }
        Faults::End();
        return status;
    };
    // What goes wrong, how, and why nothing can be stored then.
    using Step = std::function<CDbStatus()>;
    std::vector<std::tuple<char const*, Step, DbError, DbError>> const cases = {
        {"nothing", [] { return CDbStatus(); }, none, none},
        {"a row that breaks a rule", [&] { return insert(twin); }, constraint, none},
        {"a text too long to be added", [&] { return insert(tooLong); }, failed, failed},
        {"a text too long for a change", [&] { return update(tooLong); }, failed, failed},
        {"no such table", [&] { return execute("DELETE FROM nowhere"); }, failed, failed},
        {"an inner transaction that is given up", [&] { return save(false); }, none, failed},
        {"a full disk", fillDisk, full, full},
    };
    std::int64_t stored = 0;
    for (auto const& [what, step, error, reason] : cases) {
        SCOPED_TRACE(what);
        bool const isStored = reason == none;
        CTransaction outer(*database);
        EXPECT_TRUE(save(true));
        EXPECT_EQ(step().Error(), error);
        EXPECT_EQ(Save(*database, ++number).IsOK(), isStored);
        EXPECT_EQ(save(true).IsOK(), isStored);
        EXPECT_EQ(outer.Commit().Error(), reason);
        stored += isStored ? 3 : 0;
        EXPECT_EQ(Count(*database), stored);
    }
    EXPECT_TRUE(Save(*database, ++number));
    ExpectSound(*database, stored + 1);
}

TEST_F(TransactionTest, ATableIsEmptiedWithWhatGoesWithItAndNothingElse)
{
    struct Case
    {
        char const* what;
        std::string rule; ///< of a table below the children
        std::string child; ///< to which its rows refer
        DbError error;
        int families; ///< that are left
        int others; ///< rows that are left in that table
    };
    using enum DbError;
    std::int64_t key = 0;
    for (auto const& [what, rule, child, error, families, others] : std::vector<Case>{
             {"those below and below these", "NOT NULL {} ON DELETE CASCADE", "id", none, 0, 0},
             {"those that need no child", "{} ON DELETE CASCADE", "NULL", none, 0, 4},
             {"those that stay alone", "{} ON DELETE SET NULL", "id", none, 0, 4},
             {"those that lost theirs", "NOT NULL {} ON DELETE CASCADE", "-id", none, 0, 4},
             {"those that forbid it", "NOT NULL {}", "id", constraint, 2, 4},
         }) {
        SCOPED_TRACE(what);
        std::filesystem::remove(m_strPath);
        SetUp();
        auto database = Open();
        for (int number = 1; number <= 2; ++number) {
            EXPECT_TRUE(Save(*database, number, "a secret"));
        }
        auto sql = "CREATE TABLE others (child INTEGER " + rule + "); INSERT INTO others SELECT ";
        sql.replace(sql.find("{}"), 2, "REFERENCES Children (id)");
        CPlainConnection const plain(m_strPath);
        plain.Run("INSERT INTO children SELECT NULL, id, 'a secret' FROM families, "
                  "(VALUES (1), (2))");
        plain.Run(sql.append(child).append(" FROM children"));
        bool done = true;
        EXPECT_TRUE(database->RemoveAll(kFamilies, 3, done));
        EXPECT_FALSE(done);
        EXPECT_EQ(Count(*database), 2);
        EXPECT_EQ(database->RemoveAll(kFamilies, 2, done).Error(), error);
        EXPECT_EQ(done, error == none);
        EXPECT_EQ(Count(*database), families);
        EXPECT_EQ(Number(*database, "SELECT count(*) FROM children"), 2 * families);
        EXPECT_EQ(Number(*database, "SELECT count(*) FROM others"), others);
        // What is gone is in no file any more, and its key does not come again.
        EXPECT_TRUE(database->Checkpoint());
        EXPECT_EQ(ReadFile(m_strPath).find("a secret") != std::string::npos, families > 0);
        EXPECT_EQ(std::filesystem::file_size(m_strPath + "-wal"), 0U);
        EXPECT_EQ(database->Execute("INSERT INTO children VALUES (NULL, 9, '')", {}, key).Error(),
            constraint);
        EXPECT_TRUE(Save(*database, 3));
        EXPECT_EQ(Number(*database, "SELECT max(id) FROM families"), 3);
    }
}
