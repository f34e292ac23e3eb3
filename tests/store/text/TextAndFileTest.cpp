#include "store/text/Crc32C.h"
#include "store/text/EFFile.h"
#include "store/text/StateAbbrev.h"
#include "store/text/Text.h"
#include "tests/TempFolder.h"

#include <array>
#include <cstdio>
#include <fstream>
#include <gtest/gtest.h>
#include <sstream>

namespace
{

/// The line that one text field makes, without kind, check sum and line end.
std::string Written(std::string_view text)
{
    std::ostringstream stream;
    CText writer(&stream, '|');
    writer.Begin("TT1");
    writer.Text(text);
    EXPECT_TRUE(writer.End());
    auto const line = stream.str();
    return line.substr(4, line.size() - 4 - 10);
}

} // namespace

TEST(TextAndFileTest, WritesEachFieldInItsOneSpelling)
{
    std::ostringstream stream;
    CText writer(&stream, '|');
    writer.Begin("MB1");
    writer.Integer(-1204);
    writer.Text("Wei\xC3\x9F");
    writer.Null();
    writer.Text("");
    writer.Real(49.9);
    writer.Real(1e22);
    writer.Real(-0.0);
    writer.Mask(0x1F);
    writer.Mask(0);
    writer.Mask(0xFFFFFFFF);
    writer.Date({2026, 11, 16, 18, 5, 9});
    writer.Date({});
    ASSERT_TRUE(writer.End());
    std::string const fields = "MB1|-1204|Wei\xC3\x9F|\\N||49.9|1e+22|0|0x1F|0x0|0xFFFFFFFF|"
                               "2026-11-16T18:05:09||";
    auto const line = stream.str();
    EXPECT_EQ(line.substr(0, fields.size()), fields);
    std::array<char, 10> crc = {};
    std::snprintf(crc.data(), crc.size(), "%08X\n", Crc32C(fields));
    EXPECT_EQ(line.substr(fields.size()), crc.data());
}

TEST(TextAndFileTest, KeepsSeparatorsAndControlBytesOutOfALine)
{
    EXPECT_EQ(Written("a|b\\c\nd\re\tf"), "a\\pb\\\\c\\nd\\re\tf");
    EXPECT_EQ(Written(std::string_view("\0\x1B\x7F", 3)), "\\x00\\x1B\\x7F");
    EXPECT_EQ(Written("\xC3(\xED\xA0\x80\xFF"), "\\xC3(\\xED\\xA0\\x80\\xFF");
    EXPECT_EQ(Written("\xF0\x9F\x8F\x8B\xC2\x85"), "\xF0\x9F\x8F\x8B\xC2\x85");
}

TEST(TextAndFileTest, ChecksumIsTheStandardOne)
{
    EXPECT_EQ(Crc32C("123456789"), 0xE3069283U); // the check value of CRC-32C
    EXPECT_EQ(Crc32C(""), 0U);
    std::string bytes;
    for (int size = 0; size < 300; ++size) {
        EXPECT_EQ(Crc32C(bytes), Crc32CByTable(bytes)) << size;
        bytes += static_cast<char>(size * 37);
    }
}

TEST(TextAndFileTest, TellsAStreamThatTakesNothing)
{
    std::ofstream full("/dev/full");
    CText writer(&full, '|');
    bool taken = true;
    for (int i = 0; i < 100000 && taken; ++i) {
        writer.Begin("TT1");
        writer.Text("a line of a file on a disk without room");
        taken = writer.End();
    }
    EXPECT_FALSE(taken);
}

TEST(TextAndFileTest, NormalisesPaths)
{
    struct Case
    {
        char const* path;
        char const* folder;
        char const* file;
    };
    for (auto const& [path, folder, file] :
        {Case{"/a//b/./c", "/a/b/c/", "/a/b/c"}, Case{"/a/b/", "/a/b/", "/a/b/"},
            Case{"/a/x/../b", "/a/b/", "/a/b"}, Case{"", "", ""}, Case{"/", "/", "/"},
            Case{"///a", "/a/", "/a"}, Case{"letters", "letters/", "letters"}}) {
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
    auto const name = [&](char const* file) { return (folder.Path() / file).string(); };
    std::ofstream(name("a")) << "first";
    std::ofstream(name("b")) << "second";
    EXPECT_FALSE(CEFFile::Rename(name("a"), name("b")));
    EXPECT_FALSE(CEFFile::Rename(name("none"), name("c")));
    EXPECT_TRUE(CEFFile::Rename(name("a"), name("c")));
    CEFFile::Delete(name("b"));
    CEFFile::Delete(name("b"));
    EXPECT_TRUE(CEFFile::Rename(name("c"), name("b")));
    std::string content;
    std::getline(std::ifstream(name("b")), content);
    EXPECT_EQ(content, "first");
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
    EXPECT_STREQ(states.GetStAbbrev(56), "");
    EXPECT_STREQ(states.GetStAbbrev(-1), "");
}
