#include "tests/platform/db/Families.h"
#include "tests/platform/db/PlainConnection.h"

#include <grp.h>
#include <sys/stat.h>

namespace
{

namespace fs = std::filesystem;
using namespace std::string_literals;
constexpr std::int64_t kCount = 20;

class DamagedFileTest : public CFamiliesTest
{
protected:
    void SetUp() override
    {
        CFamiliesTest::SetUp();
        auto const database = Open();
        for (int i = 0; i < kCount; ++i) {
            ASSERT_TRUE(Save(*database, i, std::string(1000, 'n')));
        }
    }
};

} // namespace

TEST_F(DamagedFileTest, EachKindIsRefusedInItsOwnWordsAndLeftAlone)
{
    auto const whole = ReadFile(m_strPath);
    ASSERT_GT(whole.size(), 6U * 4096);
    auto const with = [&](std::size_t place, std::string const& bytes) {
        return std::string(whole).replace(place, bytes.size(), bytes);
    };
    std::vector<std::tuple<DbError, char const*, std::vector<std::string>>> const cases = {
        {DbError::empty, "is empty", {""}},
        {DbError::foreign, "not a database, or its beginning is damaged",
            {"Dear member,\nyour workouts", std::string(9000, 'x'), with(3, "X"),
                with(0, std::string(4096, '\0'))}},
        {DbError::cut, "cut short",
            {whole.substr(0, 100), whole.substr(0, whole.size() / 8192 * 4096),
                whole.substr(0, whole.size() - 1000), whole.substr(0, whole.size() - 4096)}},
        {DbError::damaged, "is damaged",
            {with(100, std::string(3996, '\x7F')), whole + "more", with(31, "\4")}},
        {DbError::damaged, "tables are missing", {with(63, {'\0'}), with(60, "\xFF")}},
        {DbError::newer, "newer version", {with(63, "\2")}},
    };
    for (auto const& [error, word, files] : cases) {
        for (auto const& bytes : files) {
            SCOPED_TRACE(&bytes - files.data());
            WriteFile(m_strPath, bytes);
            ExpectRefused(error, word);
        }
    }
}

TEST_F(DamagedFileTest, OtherFilesAreRefusedAndLeftAlone)
{
    // A crashed program's log belongs to the file; only who may use the file may move it there.
    StartUser([](auto& database) { EXPECT_TRUE(Save(database, 100)); })->Kill();
    fs::remove(m_folder / "family.ldb");
    auto other = Schema();
    other.applicationID += 1;
    ASSERT_GT(fs::file_size(m_strPath + "-wal"), 0U);
    ExpectRefused(DbError::foreign, "not a Corvana family file", other);
    ExpectSound(*Open(), kCount + 1);
    fs::remove(m_strPath);
    ExpectRefused(DbError::missing, "does not exist");
    for (auto const* const sql : {"CREATE TABLE t (a)", "PRAGMA journal_mode = WAL"}) {
        CPlainConnection(m_strPath).Run(sql);
        ExpectRefused(DbError::foreign, "not a Corvana family file");
    }
    fs::rename(m_strPath, m_folder / "real.mdb");
    fs::create_symlink(m_folder / "real.mdb", m_strPath);
    ExpectRefused(DbError::foreign, "is a link");
    fs::remove(m_strPath);
    ASSERT_EQ(::mkfifo(m_strPath.c_str(), 0600), 0);
    ExpectRefused(DbError::foreign, "not a file");
    m_strPath = m_folder / "no folder/family.mdb";
    ExpectRefused(DbError::missing, "does not exist");
}

TEST_F(DamagedFileTest, WhatCannotBeWrittenIsRefused)
{
    auto const before = Folder();
    for (auto const& [folder, file, error] : {std::tuple(0777, 0666, DbError::none),
             {0777, 0444, DbError::readOnly}, {0555, 0666, DbError::readOnly}}) {
        ::chmod(m_folder.c_str(), static_cast<mode_t>(folder));
        ::chmod(m_strPath.c_str(), static_cast<mode_t>(file));
        // Has nothing to do with the database but that it opens the file under another account.
        CPeer nobody([&, &expected = error](CPeer const& /*self*/) {
            constexpr uid_t kNobody = 65534;
            ASSERT_TRUE(::getuid() != 0
                || (::setgroups(0, nullptr) == 0 && ::setgid(kNobody) == 0
                    && ::setuid(kNobody) == 0));
            std::unique_ptr<CDatabase> database;
            EXPECT_EQ(OpenDatabase(m_strPath, Schema(), database).Error(), expected);
            database.reset();
            EXPECT_TRUE(expected == DbError::none
                || CompactDatabaseFile(m_strPath, Schema()).Error() == expected);
        });
        EXPECT_TRUE(nobody.Finish());
        EXPECT_TRUE(Folder() == before);
    }
    ::chmod(m_folder.c_str(), 0777);
}

// Whatever bit of the header is wrong: the file is refused as it is, or works.
TEST_F(DamagedFileTest, NoBitOfTheHeaderLeadsToWorse)
{
    auto const whole = ReadFile(m_strPath);
    for (std::size_t bit = 0; bit < 800 && !HasFailure(); bit += 3) {
        SCOPED_TRACE(bit);
        auto bytes = whole;
        bytes[bit / 8] = static_cast<char>(bytes[bit / 8] ^ (1 << bit % 8));
        WriteFile(m_strPath, bytes);
        std::unique_ptr<CDatabase> database;
        auto const status = OpenDatabase(m_strPath, Schema(), database);
        if (status) {
            EXPECT_EQ(Count(*database), kCount);
            EXPECT_TRUE(Save(*database, 100));
        } else {
            ExpectStatus(status, status.Error());
            EXPECT_TRUE(Folder() == (std::map{std::pair("family.mdb"s, bytes)})) << status.Text();
        }
    }
}
