#include "store/text/Crc32C.h"
#include "store/text/EFFile.h"
#include "store/text/StateAbbrev.h"
#include "tests/TempFolder.h"

#include <fstream>
#include <gtest/gtest.h>

TEST(TextAndFileTest, ChecksumIsTheStandardOne)
{
    EXPECT_EQ(Crc32C("123456789"), 0xE3069283U); // the check value of CRC-32C
    std::string bytes;
    for (int size = 0; size < 300; ++size) {
        EXPECT_EQ(Crc32C(bytes), Crc32CByTable(bytes)) << size;
        bytes += static_cast<char>(size * 37);
    }
}

TEST(TextAndFileTest, NormalisesPaths)
{
    for (auto const& [path, folder, file] : {std::tuple("/a//b/./c", "/a/b/c/", "/a/b/c"),
             {"/a/x/../b/", "/a/b/", "/a/b/"}, {"", "", ""}, {"letters", "letters/", "letters"}}) {
        std::string asFolder = path;
        std::string asFile = path;
        CEFFile::ParsePath(asFolder);
        CEFFile::ParsePathFileName(asFile);
        EXPECT_EQ(asFolder, folder) << path;
        EXPECT_EQ(asFile, file) << path;
    }
}

TEST(TextAndFileTest, NeverReplacesAFile)
{
    CTempFolder const folder;
    auto const from = (folder.Path() / "from").string();
    auto const to = (folder.Path() / "to").string();
    std::ofstream(from) << "text";
    std::ofstream{to};
    EXPECT_FALSE(CEFFile::Rename(from, to));
    CEFFile::Delete(to);
    EXPECT_TRUE(CEFFile::Rename(from, to));
    EXPECT_EQ(std::filesystem::file_size(to), 4U);
}

TEST(TextAndFileTest, KeepsTheOrderThatRecordsRelyOn)
{
    CStateAbbrev const states;
    ASSERT_EQ(states.Count(), 56);
    for (int i = 1; i < 51; ++i) {
        EXPECT_LT(std::string(states.GetStAbbrev(i - 1)), states.GetStAbbrev(i));
    }
    EXPECT_EQ(states.FindStAbbrev("wy"), 50);
    EXPECT_EQ(states.FindStAbbrev("W"), -1);
}
