#include "tests/platform/db/Families.h"
#include "tests/platform/db/Faults.h"

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
