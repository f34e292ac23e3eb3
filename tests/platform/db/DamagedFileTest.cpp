#include "tests/TempFolder.h"
#include "tests/platform/db/Families.h"
#include "tests/platform/db/PeerProcess.h"

#include <fstream>
#include <functional>
#include <gtest/gtest.h>
#include <iterator>
#include <sqlite3.h>
#include <sys/stat.h>

namespace
{

namespace fs = std::filesystem;

std::string Bytes(fs::path const& path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

void Write(fs::path const& path, std::string const& bytes)
{
    std::ofstream(path, std::ios::binary) << bytes;
}

void RunSql(fs::path const& path, char const* sql)
{
    sqlite3* connection = nullptr;
    EXPECT_EQ(sqlite3_open(path.c_str(), &connection), SQLITE_OK);
    EXPECT_EQ(sqlite3_exec(connection, sql, nullptr, nullptr, nullptr), SQLITE_OK) << sql;
    EXPECT_EQ(sqlite3_close(connection), SQLITE_OK);
}

class DamagedFileTest : public testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(CreateDatabase(m_strPath, Families::Schema()));
        auto const database = Open();
        for (int i = 0; i < 20; ++i) {
            ASSERT_TRUE(Families::Save(*database, i, std::string(1000, 'n')));
        }
    }

    std::unique_ptr<CDatabase> Open() const
    {
        std::unique_ptr<CDatabase> database;
        auto const status = OpenDatabase(m_strPath, Families::Schema(), database);
        EXPECT_TRUE(status) << status.Text();
        return database;
    }

    /// Names and bytes of everything in the folder.
    std::map<std::string, std::string> Folder() const
    {
        std::map<std::string, std::string> contents;
        for (auto const& entry : fs::directory_iterator(m_folder)) {
            contents[entry.path().filename()]
                = entry.is_regular_file() ? Bytes(entry.path()) : std::string();
        }
        return contents;
    }

    void ExpectRefused(DbError error, std::string const& word)
    {
        auto const before = Folder();
        std::unique_ptr<CDatabase> database;
        auto const status = OpenDatabase(m_strPath, Families::Schema(), database);
        EXPECT_EQ(status.Error(), error) << status.Text();
        EXPECT_EQ(database, nullptr);
        EXPECT_NE(status.Text().find(m_strPath), std::string::npos) << status.Text();
        EXPECT_NE(status.Text().find(word), std::string::npos) << status.Text();
        auto const after = Folder();
        for (auto const& [name, bytes] : before) {
            EXPECT_TRUE(after.contains(name) && after.at(name) == bytes) << name << " changed";
        }
        for (auto const& [name, bytes] : after) {
            EXPECT_TRUE(before.contains(name)) << name << " is new";
        }
    }

    CTempFolder m_temporary;
    fs::path const& m_folder = m_temporary.Path();
    std::string m_strPath = m_folder / "family.mdb";
};

} // namespace

TEST_F(DamagedFileTest, EachKindIsRefusedInItsOwnWordsAndLeftAlone)
{
    auto const whole = Bytes(m_strPath);
    ASSERT_GT(whole.size(), 6U * 4096);
    auto const with = [&](std::function<void(std::string&)> const& change) {
        auto bytes = whole;
        change(bytes);
        return bytes;
    };
    struct Case
    {
        char const* name;
        std::string bytes;
        DbError error;
        char const* word;
    };
    std::vector<Case> const cases = {
        {"0 bytes", "", DbError::empty, "is empty"},
        {"text", "Dear member,\nyour workouts", DbError::foreign, "not a database"},
        {"long text", std::string(9000, 'x'), DbError::foreign, "not a database"},
        {"first page zeroed", with([](auto& b) { b.replace(0, 4096, 4096, '\0'); }),
            DbError::foreign, "not a database"},
        {"a bit of the header flipped", with([](auto& b) { b[3] ^= 1; }), DbError::foreign,
            "beginning is damaged"},
        {"list of tables destroyed", with([](auto& b) { b.replace(100, 3996, 3996, '\x7F'); }),
            DbError::damaged, "is damaged"},
        {"cut to 100 bytes", whole.substr(0, 100), DbError::cut, "cut short"},
        {"cut in half", whole.substr(0, whole.size() / 8192 * 4096), DbError::cut, "cut short"},
        {"cut within a page", whole.substr(0, whole.size() / 2 + 1), DbError::cut, "cut short"},
        {"last 1000 bytes missing", whole.substr(0, whole.size() - 1000), DbError::cut,
            "cut short"},
        {"last page missing", whole.substr(0, whole.size() - 4096), DbError::cut, "cut short"},
        {"something added", whole + "more", DbError::damaged, "is damaged"},
        {"fewer pages in the header", with([](auto& b) { b[31] = 4; }), DbError::damaged,
            "is damaged"},
        {"no tables", with([](auto& b) { b.replace(60, 4, 4, '\0'); }), DbError::damaged,
            "tables are missing"},
        {"newer version", with([](auto& b) { b[63] = 2; }), DbError::newer, "newer version"},
        {"negative version", with([](auto& b) { b[60] = '\xFF'; }), DbError::damaged,
            "tables are missing"},
    };
    for (auto const& test : cases) {
        SCOPED_TRACE(test.name);
        Write(m_strPath, test.bytes);
        ExpectRefused(test.error, test.word);
    }
}

TEST_F(DamagedFileTest, OtherFilesAreRefusedAndLeftAlone)
{
    auto other = Families::Schema();
    other.applicationID += 1;
    fs::remove(m_strPath);
    ExpectRefused(DbError::missing, "does not exist");

    ASSERT_TRUE(CreateDatabase(m_strPath, other));
    ExpectRefused(DbError::foreign, "not a Corvana family file");
    fs::remove(m_strPath);

    RunSql(m_strPath, "CREATE TABLE t (a); INSERT INTO t VALUES (1);");
    ExpectRefused(DbError::foreign, "not a Corvana family file");
    RunSql(m_strPath, "PRAGMA journal_mode = WAL; INSERT INTO t VALUES (2);");
    ExpectRefused(DbError::foreign, "not a Corvana family file");

    fs::rename(m_strPath, m_folder / "real.mdb");
    fs::create_symlink(m_folder / "real.mdb", m_strPath);
    ExpectRefused(DbError::foreign, "is a link");
    fs::remove(m_strPath);
    fs::create_directory(m_strPath);
    ExpectRefused(DbError::foreign, "a folder");
    ASSERT_EQ(::mkfifo((m_folder / "pipe.mdb").c_str(), 0600), 0);
    m_strPath = m_folder / "pipe.mdb";
    ExpectRefused(DbError::foreign, "not a file");
    m_strPath = m_folder / "no folder/family.mdb";
    ExpectRefused(DbError::missing, "does not exist");
}

// A crashed program's log belongs to the file; only who may use the file may move it there.
TEST_F(DamagedFileTest, ANewerFilesLogIsLeftAlone)
{
    CPeer saving({"save", m_strPath, "100"});
    for (int i = 0; i < 10; ++i) {
        saving.Line();
    }
    saving.Kill();
    ASSERT_GT(fs::file_size(m_strPath + "-wal"), 0U);
    auto other = Families::Schema();
    other.applicationID += 1;
    auto const file = Bytes(m_strPath);
    auto const log = Bytes(m_strPath + "-wal");
    std::unique_ptr<CDatabase> database;
    EXPECT_EQ(OpenDatabase(m_strPath, other, database).Error(), DbError::foreign);
    EXPECT_TRUE(Bytes(m_strPath) == file);
    EXPECT_TRUE(Bytes(m_strPath + "-wal") == log);
    EXPECT_GE(Families::Count(*Open()), 30);
}

TEST_F(DamagedFileTest, WhatCannotBeWrittenIsRefused)
{
    auto const refused = [&] { return CPeer({"nobody", m_strPath}).Line(); };
    auto const start = "refused " + std::to_string(static_cast<int>(DbError::readOnly)) + " ";
    ::chmod(m_folder.c_str(), 0777);
    ::chmod(m_strPath.c_str(), 0666);
    auto const before = Folder();
    {
        CPeer allowed({"nobody", m_strPath});
        ASSERT_EQ(allowed.Line(), "ready");
        ASSERT_EQ(allowed.Finish(), 0);
    }
    ::chmod(m_strPath.c_str(), 0444);
    EXPECT_EQ(refused().substr(0, start.size()), start);
    EXPECT_NE(refused().find(m_strPath), std::string::npos);
    ::chmod(m_strPath.c_str(), 0666);
    ::chmod(m_folder.c_str(), 0555);
    EXPECT_EQ(refused().substr(0, start.size()), start);
    EXPECT_NE(refused().find(m_strPath), std::string::npos);
    ::chmod(m_folder.c_str(), 0777);
    EXPECT_TRUE(Folder() == before);
}

// Whatever bit of the header is wrong: the file is refused as it is, or works.
TEST_F(DamagedFileTest, NoBitOfTheHeaderLeadsToWorse)
{
    auto const whole = Bytes(m_strPath);
    std::vector<std::string> problems;
    for (std::size_t bit = 0; bit < 800; ++bit) {
        auto bytes = whole;
        bytes[bit / 8] = static_cast<char>(bytes[bit / 8] ^ (1 << bit % 8));
        Write(m_strPath, bytes);
        auto const note = [&](bool good, std::string const& problem) {
            if (!good) {
                problems.push_back("bit " + std::to_string(bit) + ": " + problem);
            }
        };
        std::unique_ptr<CDatabase> database;
        auto const status = OpenDatabase(m_strPath, Families::Schema(), database);
        if (status) {
            std::vector<std::string> findings;
            note(database->Check(findings).IsOK(), "cannot be checked");
            note(Families::Count(*database) == 20, "rows lost");
            note(Families::Save(*database, 100).IsOK(), "cannot be written");
        } else {
            note(status.Text().find(m_strPath) != std::string::npos, status.Text());
            note(Bytes(m_strPath) == bytes, "refused but changed: " + status.Text());
            note(Folder().size() == 1, "leaves files: " + status.Text());
        }
    }
    EXPECT_EQ(problems, std::vector<std::string>());
}

TEST_F(DamagedFileTest, ANameThatMeansSomethingToSqliteIsJustAName)
{
    auto const before = fs::current_path();
    fs::current_path(m_folder);
    for (std::string const path : {"file:odd.mdb?mode=memory", ":memory:", "a 'quoted' name.mdb"}) {
        SCOPED_TRACE(path);
        ASSERT_TRUE(CreateDatabase(path, Families::Schema()));
        std::unique_ptr<CDatabase> database;
        ASSERT_TRUE(OpenDatabase(path, Families::Schema(), database));
        EXPECT_TRUE(Families::Save(*database, 1));
        ASSERT_TRUE(database->CopyTo(path + "2"));
        database.reset();
        ASSERT_TRUE(OpenDatabase(path + "2", Families::Schema(), database));
        EXPECT_EQ(Families::Count(*database), 1);
    }
    fs::current_path(before);
}
