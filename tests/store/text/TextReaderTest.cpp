#include "store/text/TextReader.h"

#include "store/text/Text.h"
#include "tests/TempFolder.h"
#include "tests/fuzz/WriteBack.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <map>
#include <sstream>

using namespace std::string_view_literals;

namespace
{

/// The examples of the description: one line of each kind.
std::string FourKinds()
{
    std::ifstream page(std::string(CORVANA_SOURCE_DIR) + "/docs/data-files.md");
    std::string file;
    for (std::string line; std::getline(page, line);) {
        constexpr std::size_t kIndent = 4;
        if (line.size() > 50 && line.find('|') == kIndent + 3) {
            file += line.substr(kIndent) + "\n";
        }
    }
    return file;
}

std::string Replace(std::string text, std::string_view from, std::string_view to)
{
    for (auto at = text.find(from); at != std::string::npos; at = text.find(from, at + to.size())) {
        text.replace(at, from.size(), to);
    }
    return text;
}

// Lines with a place for a field of some type, without check sums.
std::string const kByte = "WK1|1|1|?|||0|0|0|0|0|0|0|0|0|0|0|0|0";
std::string const kNumber = Replace(kByte, "WK1|1|1|?", "WK1|?|1|1");
std::string const kDate = Replace(kByte, "?|", "1|?");
std::string const kMask = "BC1|1||1|0|0|1|1|0|0|0|0|0|0|0|0|0|0|0|0|0|0|?";
std::string const kReal = Replace(Replace(kMask, "?", "0x0"), "BC1|1||1|0", "BC1|1||1|?");
std::string const kText = "MB1|1|1|?|||1" + Replace(std::string(44, '!'), "!", "|\\N");

CWriteBack WithField(std::string const& line, std::string_view spelling)
{
    return WriteBack(WithCheckSums(Replace(line, "?", spelling) + "\n"));
}

} // namespace

TEST(TextReaderTest, TakesTheOneSpellingOfEachField)
{
    std::vector<std::string> reals = {"0", "-12.5", "10000", "123456", "1e+05", "0.1", "0.001",
        "9007199254740992", "1.7976931348623157e+308", "\\#-inf"};
    for (std::size_t length = 3; length <= 17; ++length) {
        reals.push_back(std::string("3.141592653589793").substr(0, length));
    }
    std::vector<std::pair<std::string, std::vector<std::string>>> const cases = {
        {kByte, {"0", "255", "\\#256", "\\#-9223372036854775808"}},
        {kNumber, {"1", "999999999"}},
        {kMask, {"0x0", "0xFFFFFFFF", "\\#4294967296"}},
        {kReal, reals},
        {kDate,
            {"", "0100-01-01T00:00:00", "2028-02-29T23:59:59", "9999-12-31T23:59:59",
                "\\#-99999999999"}},
        {kText,
            {"", "a\tb Wei\xC3\x9F \xF0\x9F\x8F\x8B\xC2\x85",
                R"(\p\\\n\r\x00\x7F\xC3(\xED\xA0\x80)"}},
    };
    for (auto const& [line, spellings] : cases) {
        for (auto const& right : spellings) {
            EXPECT_EQ(WithField(line, right).reason, "") << right;
            // What differs in one byte is refused, or is right as well.
            for (std::size_t at = 0; at <= right.size(); ++at) {
                EXPECT_TRUE(WithField(line, std::string(right).erase(at, 1)).same) << right << at;
                for (char const byte : "0123456789 +-.,:/|\\#NTZEFXefgnx\t\x01\x7F\x80\xC3"sv) {
                    for (std::size_t const replaced : {0U, 1U}) {
                        auto const other = std::string(right).replace(at, replaced, 1, byte);
                        EXPECT_TRUE(WithField(line, other).same) << other;
                    }
                }
            }
        }
    }
    for (auto const& [line, wrong] : {std::pair(kByte, "\\N"), {kByte, "2\r55"}, {kText, "\\N"},
             {kDate, "\\N"}, {kDate, "\\#0"}, {kDate, "1899-12-30T00:00:00"}, {kReal, "inf"},
             {kReal, "\\#nan"}, {kReal, "\\#-infinity"}}) {
        EXPECT_FALSE(WithField(line, wrong).accepted) << wrong;
    }
}

TEST(TextReaderTest, NoticesEveryChangedBitAndACutAnywhereButBetweenLines)
{
    auto file = FourKinds();
    EXPECT_EQ(WriteBack(file + file).reason, "");
    EXPECT_EQ(WriteBack(file + "\n").reason, "line 5, field 1: is no kind of record.");
    EXPECT_EQ(WriteBack("WK1\n").reason, "line 1: does not end with a check sum.");
    for (std::size_t byte = 0; byte < file.size(); ++byte) {
        bool const between = byte == 0 || file[byte - 1] == '\n';
        ASSERT_EQ(WriteBack(std::string_view(file).substr(0, byte)).accepted, between) << byte;
        for (unsigned bit = 0; bit < 8; ++bit) {
            auto const mask = static_cast<char>(1U << bit);
            file[byte] = static_cast<char>(file[byte] ^ mask);
            ASSERT_FALSE(WriteBack(file).accepted) << "byte " << byte << " bit " << bit;
            file[byte] = static_cast<char>(file[byte] ^ mask);
        }
    }
}

TEST(TextReaderTest, TakesAndWritesLinesUpToTheLongest)
{
    std::ofstream null("/dev/null");
    CText writer(&null, '|');
    for (std::size_t const more : {1U, 0U}) {
        std::string const text(CText::kLongestLine - 13 + more, 'a');
        std::istringstream stream(WithCheckSums("TT1|" + text + "\n"));
        CTextReader reader(stream, '|');
        EXPECT_EQ(reader.Next(), more == 0);
        EXPECT_EQ(reader.Status().Text(), more == 0 ? "" : "line 1: is longer than a line can be.");
        writer.Begin("TT1");
        writer.Text(text);
        EXPECT_EQ(writer.End(), more == 0);
    }
}

TEST(TextReaderTest, WritesBackWhatItAcceptsOfTheKeptFiles)
{
    namespace fs = std::filesystem;
    // Why the others are refused, as they are or with check sums.
    std::map<std::string, std::string> const reasons = {
        {"byte-not-escaped", "line 1, field 6: has a byte that must be written otherwise."},
        {"byte-order-mark", "line 1: begins with a byte-order mark."},
        {"class-behind-none", "line 1, field 42: belongs to a row whose row before it is missing."},
        {"cut", "line 4: has no end: the file is cut."},
        {"date-impossible", "line 1, field 4: is no date and time of the calendar."},
        {"day-of-nuls", "line 1, field 4: is no date and time of the calendar."},
        {"escape-needless", "line 1, field 4: has an escape where none belongs."},
        {"escape-unknown", "line 1, field 4: has an escape that does not exist."},
        {"field-missing", "line 1, field 2: is missing."},
        {"field-too-many", "line 1, field 52: is one too many."},
        {"kind-misspelled", "line 1, field 1: is no kind of record."},
        {"kind-unknown", "line 1, field 1: is no known kind."},
        {"misspelled", "line 1, field 2: is not spelled as it must be."},
        {"mixed-line-ends", "line 2: ends otherwise than those before it."},
        {"null-in-part", "line 1, field 19: is no null, as those before it."},
        {"out-of-range", "line 1, field 2: is out of range."},
    };
    std::size_t refused = 0;
    for (auto const& entry :
        fs::directory_iterator(fs::path(CORVANA_SOURCE_DIR) / "tests/fuzz/corpus")) {
        auto const bytes = ReadFile(entry.path());
        auto const asItIs = WriteBack(bytes);
        auto const withSums = WriteBack(WithCheckSums(bytes));
        EXPECT_TRUE(asItIs.same && withSums.same) << entry.path();
        auto const name = entry.path().filename().string();
        bool const accepted = asItIs.accepted || withSums.accepted;
        EXPECT_EQ(accepted, !name.starts_with("refused-")) << name;
        auto const reason = accepted ? "" : reasons.at(name.substr(8));
        EXPECT_TRUE(accepted || asItIs.reason == reason || withSums.reason == reason)
            << name << ": " << asItIs.reason << ' ' << withSums.reason;
        refused += accepted ? 0 : 1;
    }
    EXPECT_EQ(refused, reasons.size());
}
