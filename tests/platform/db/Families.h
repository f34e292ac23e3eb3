#pragma once

#include "platform/db/Database.h"
#include "tests/TempFolder.h"
#include "tests/platform/db/PeerProcess.h"

#include <gtest/gtest.h>
#include <map>
#include <string>
#include <vector>

/// A file of families in a folder of its own.
class CFamiliesTest : public testing::Test
{
protected:
    static CSchema Schema()
    {
        return {"family", 0x46414D31,
            {"CREATE TABLE families (id INTEGER PRIMARY KEY AUTOINCREMENT, number INTEGER NOT NULL "
             "UNIQUE, children INTEGER NOT NULL, note TEXT NOT NULL);"
             "CREATE TABLE children (id INTEGER PRIMARY KEY AUTOINCREMENT, family_id INTEGER NOT "
             "NULL REFERENCES families (id) ON DELETE CASCADE, name TEXT NOT NULL);"
             "CREATE INDEX children_family ON children (family_id);"}};
    }
    static inline CTableInfo const kFamilies{"families", {"number", "children", "note"}};

    void SetUp() override { ASSERT_TRUE(CreateDatabase(m_strPath, Schema())); }

    std::unique_ptr<CDatabase> Open() const { return Open(m_strPath); }
    static std::unique_ptr<CDatabase> Open(
        std::string const& path, CSchema const& schema = Schema())
    {
        std::unique_ptr<CDatabase> database;
        auto const status = OpenDatabase(path, schema, database);
        EXPECT_TRUE(status) << status.Text();
        return database;
    }

    static CDbStatus Save(
        CDatabase& database, std::int64_t number, std::string const& note = "note")
    {
        std::int64_t key = 0;
        return database.Insert(kFamilies, std::vector<DbValue>{number, std::int64_t(0), note}, key);
    }
    /// The first cell of a SELECT, or -1 when it cannot be read.
    static std::int64_t Number(CDatabase& database, std::string_view sql)
    {
        CRowBlock rows;
        auto const status = database.Query(sql, {}, rows);
        return status && rows.Rows() > 0 ? rows.Row(0).Cell(0).integerValue : -1;
    }
    static std::int64_t Count(CDatabase& database)
    {
        return Number(database, "SELECT count(*) FROM families");
    }
    static void ExpectSound(CDatabase& database, std::int64_t families)
    {
        EXPECT_EQ(Count(database), families);
        std::vector<std::string> findings;
        EXPECT_TRUE(database.Check(findings));
        EXPECT_EQ(findings, std::vector<std::string>());
    }

    /// The text names the file and has these words.
    void ExpectStatus(CDbStatus const& status, DbError error, std::string const& words = "") const
    {
        EXPECT_EQ(status.Error(), error) << status.Text();
        EXPECT_NE(status.Text().find(m_strPath), std::string::npos) << status.Text();
        EXPECT_NE(status.Text().find(words), std::string::npos) << status.Text();
    }
    /// The file is not opened, and all files stay as they are.
    void ExpectRefused(
        DbError error, std::string const& words = "", CSchema const& schema = Schema()) const
    {
        auto const before = Folder();
        std::unique_ptr<CDatabase> database;
        ExpectStatus(OpenDatabase(m_strPath, schema, database), error, words);
        EXPECT_EQ(database, nullptr);
        EXPECT_TRUE(Folder() == before) << "files were changed or made";
    }

    /// Another program that has the file open, and has done this with it.
    template <typename Act>
    std::unique_ptr<CPeer> StartUser(Act const& act) const
    {
        auto user = std::make_unique<CPeer>([&](CPeer const& /*self*/) {
            auto const database = Open();
            act(*database);
            CPeer::Hold();
        });
        user->WaitUntilItHolds();
        return user;
    }

    /// Names and bytes of all files, but for what programs share in memory.
    std::map<std::string, std::string> Folder() const
    {
        std::map<std::string, std::string> files;
        for (auto const& entry : std::filesystem::directory_iterator(m_folder)) {
            auto const name = entry.path().filename().string();
            files[name] = name.ends_with("-shm") || !entry.is_regular_file() ? "" : ReadFile(entry);
        }
        return files;
    }

    CTempFolder m_temporary;
    std::filesystem::path const& m_folder = m_temporary.Path();
    std::string m_strPath = m_folder / "family.mdb";
};
