#include "store/text/TextReader.h"

#include "store/sets/DAOBodyComp.h"
#include "store/sets/DAOEval.h"
#include "store/sets/DAOMem.h"
#include "store/sets/DAOWk.h"
#include "tests/fuzz/WriteBack.h"
#include "tests/store/text/DataFileRows.h"

#include <charconv>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>

namespace
{

/// One line of each kind, with all sorts of fields.
std::string FourKinds()
{
    CRandomRows rows;
    std::string file;
    while (file.empty() || file.size() > 4000) { // a text of 64 KB would make the tests slow
        file = rows.Line(CDAOMem().GetLine()) + rows.Line(CDAOWk().GetLine())
            + rows.Line(CDAOEval().GetLine()) + rows.Line(CDAOBodyComp().GetLine());
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

enum class Field
{
    integer, // from 0 to 255
    number, // from 1 to 999
    mask,
    real,
    date,
    text
};

/// Takes a line of one field; empty when it was accepted, with what it holds in "was".
std::string Refusal(Field field, std::string const& spelling, std::string* was = nullptr)
{
    std::istringstream stream(WithCheckSums("TT1|" + spelling + "\n"));
    CTextReader reader(stream, '|');
    std::int64_t number = 0;
    double real = 0.0;
    std::string_view text;
    if (reader.Next()) {
        switch (field) {
        case Field::integer:
            reader.Integer(0, 255, number);
            break;
        case Field::number:
            reader.Number(1, 999, number);
            break;
        case Field::mask:
            reader.Mask(number);
            break;
        case Field::real:
            reader.Real(real);
            break;
        case Field::date:
            reader.Date(number);
            break;
        case Field::text:
            reader.Text(text);
            break;
        }
        if (was != nullptr) {
            *was = text;
        }
        static_cast<void>(reader.IsAtEnd() && reader.Next());
    }
    return reader.Status().Text();
}

} // namespace

TEST(TextReaderTest, TakesTheOneSpellingOfEachField)
{
    struct Case
    {
        Field field;
        std::string right;
        std::vector<std::string> wrong;
    };
    std::string const nine(19, '9');
    std::vector<Case> const cases = {
        {Field::integer, "0", {"", "00", "+0", "-0", " 0", "0 ", "0x0", "0.0", "\\N", "\\#0"}},
        {Field::integer, "255", {"256", "-1", "0255", "\\#255", nine, nine + "9", "2\t55"}},
        {Field::integer, "\\#256", {"\\#0256", "\\#+256", "\\#", "#256", "\\#" + nine}},
        {Field::integer, "\\#-9223372036854775808", {"\\#-9223372036854775809"}},
        {Field::number, "1", {"0", "1000", "\\#1000", "\\#1"}},
        {Field::mask, "0x0", {"", "0", "0x", "0x00", "0X0", "x0", "\\#0"}},
        {Field::mask, "0xFFFFFFFF", {"0xffffffff", "0x0FFFFFFF", "0x1FFFFFFFF", "0xG"}},
        {Field::mask, "\\#4294967296", {"\\#4294967295", "\\#0x1FFFFFFFF"}},
        {Field::real, "0", {"", "-0", "0.0", ".0", "0.", "+0", "00", "nan", "inf", "0x0", "1e5"}},
        {Field::real, "-12.5", {"-12.50", "-012.5", "-12,5", "-12.5 ", "--12.5", "-1.25e+01"}},
        {Field::real, "1e+05", {"100000", "1e5", "1E+05", "1e+5", "10e+04"}},
        {Field::real, "0.1", {".1", "0.10", "1e-01", "0.1000000000000000055"}},
        {Field::real, "1.7976931348623157e+308", {"1e+309", "1.7976931348623158e+308"}},
        {Field::real, "\\#-inf", {"-inf", "\\#nan", "\\#-infinity", "\\#1"}},
        {Field::date, "", {"1899-12-30T00:00:00", " ", "\\#0", "\\N"}},
        {Field::date, "2028-02-29T23:59:59",
            {"2027-02-29T23:59:59", "2028-02-29T24:00:00", "2028-02-29T23:60:00",
                "2028-02-29T23:59:60", "2028-2-29T23:59:59", "2028-02-29 23:59:59", "2028-02-29",
                "2028/02/29T23:59:59", "2028-02-29T23:59:59Z", "2028-00-29T23:59:59",
                "2028-02-29T23-59-59", "+028-02-29T23:59:59", "2028-02-29T23:59:5",
                std::string(10, '\0') + "T23:59:59"}},
        {Field::date, "0100-01-01T00:00:00", {"0099-12-31T23:59:59", "10000-01-01T00:00:00"}},
        {Field::date, "\\#-99999999999", {"\\#1", "\\#-0"}},
        {Field::text, "", {"\\", "\\N", "\\#", "\\t", "\\x", "\\x4", "\\x4g", "\\0"}},
        {Field::text, "a\tb Wei\xC3\x9F",
            {"a\x01", "a\x7F", "\xC3", "\xC3\x9F\x80", "\xED\xA0\x80"}},
        {Field::text, R"(\p\\\n\r\x00\x7F\xC3(\xED\xA0\x80)",
            {"\\x7C", "\\x5C", "\\x0A", "\\x0D", "\\x41", "\\x7f", "\\xC3\\x9F", "\\x09"}},
    };
    for (auto const& [field, right, wrong] : cases) {
        EXPECT_EQ(Refusal(field, right), "") << right;
        for (auto const& spelling : wrong) {
            EXPECT_EQ(Refusal(field, spelling).substr(0, 17), "line 1, field 2: ") << spelling;
        }
    }
    EXPECT_EQ(Refusal(Field::integer, "1|1"), "line 1, field 3: is one too many.");
    EXPECT_EQ(Refusal(Field::integer, "\r1"), "line 1, field 2: is not spelled as it must be.");
}

TEST(TextReaderTest, ReadsBackEveryText)
{
    CRandomRows rows;
    std::string allBytes;
    for (int byte = 0; byte < 256; ++byte) {
        allBytes += static_cast<char>(byte);
    }
    for (int i = 0; i < 5000; ++i) {
        auto const text = i == 0 ? allBytes : rows.Text();
        std::string was;
        ASSERT_EQ(Refusal(Field::text, CText::Spelling(text, '|'), &was), "");
        ASSERT_EQ(was, text);
    }
}

TEST(TextReaderTest, TakesANumberExactlyWhenItIsTheShortestSpelling)
{
    CRandomRows rows;
    for (int i = 0; i < 20'000; ++i) {
        std::string spelling = rows.Chance(2) ? "-" : "";
        for (auto digits = rows.Number(0, 9); digits >= 0; --digits) {
            spelling += rows.Chance(5) ? '.' : static_cast<char>('0' + rows.Number(0, 9) % 6);
        }
        spelling += rows.Chance(4) ? "000" : "";
        double value = 0.0;
        std::from_chars(spelling.data(), spelling.data() + spelling.size(), value);
        std::array<char, 40> shortest = {};
        std::to_chars(shortest.data(), shortest.data() + shortest.size(), value);
        bool const right = spelling == shortest.data() && !(value == 0.0 && std::signbit(value));
        ASSERT_EQ(Refusal(Field::real, spelling).empty(), right) << spelling;
    }
}

TEST(TextReaderTest, NoticesEveryChangedBit)
{
    auto file = FourKinds();
    ASSERT_EQ(WriteBack(file).reason, "");
    for (std::size_t bit = 0; bit < file.size() * 8; ++bit) {
        auto const mask = static_cast<char>(1U << bit % 8);
        file[bit / 8] = static_cast<char>(file[bit / 8] ^ mask);
        ASSERT_FALSE(WriteBack(file).accepted) << "byte " << bit / 8 << " bit " << bit % 8;
        file[bit / 8] = static_cast<char>(file[bit / 8] ^ mask);
    }
}

TEST(TextReaderTest, NoticesACutAnywhereButBetweenLines)
{
    auto const file = FourKinds();
    for (std::size_t size = 0; size < file.size(); ++size) {
        bool const between = size == 0 || file[size - 1] == '\n';
        ASSERT_EQ(WriteBack(std::string_view(file).substr(0, size)).accepted, between) << size;
    }
}

TEST(TextReaderTest, TakesOneKindOfLineEndThroughout)
{
    auto const lines = FourKinds();
    auto const dos = Replace(lines, "\n", "\r\n");
    EXPECT_TRUE(WriteBack(lines + lines).accepted);
    EXPECT_TRUE(WriteBack(dos).accepted);
    EXPECT_EQ(WriteBack(lines + dos).reason, "line 5: ends otherwise than those before it.");
    EXPECT_EQ(WriteBack(dos + lines).reason, "line 5: ends otherwise than those before it.");
    EXPECT_EQ(WriteBack("\xEF\xBB\xBF" + lines).reason, "line 1: begins with a byte-order mark.");
    EXPECT_EQ(WriteBack(lines + "\n").reason, "line 5, field 1: is no kind of record.");
    EXPECT_EQ(WriteBack(lines.substr(0, lines.size() - 1)).reason,
        "line 4: has no end: the file is cut.");
    EXPECT_FALSE(WriteBack(Replace(lines, "\n", "\r\r\n")).accepted);
    EXPECT_FALSE(WriteBack(Replace(lines, "\n", "\r")).accepted);
}

TEST(TextReaderTest, TakesLinesUpToTheLongest)
{
    auto const read = [](std::size_t size) {
        std::string const fields = "TT1|" + std::string(size - 13, 'a');
        std::istringstream stream(WithCheckSums(fields + "\nTT1|short\n"));
        CTextReader reader(stream, '|');
        std::string_view text;
        bool const taken = reader.Next() && reader.Text(text) && reader.IsAtEnd();
        EXPECT_EQ(taken && reader.Next() && reader.Text(text), taken) << size;
        return reader.Status().Text();
    };
    EXPECT_EQ(read(CText::kLongestLine), "");
    EXPECT_EQ(read(CText::kLongestLine + 1), "line 1: is longer than a line can be.");
    EXPECT_EQ(read(CText::kLongestLine * 3), "line 1: is longer than a line can be.");
    std::ostringstream stream;
    CText writer(&stream, '|');
    for (auto const size : {CText::kLongestLine - 13, CText::kLongestLine - 12}) {
        writer.Begin("TT1");
        writer.Text(std::string(size, 'a'));
        EXPECT_EQ(writer.End(), size == CText::kLongestLine - 13);
    }
    EXPECT_EQ(stream.str().size(), CText::kLongestLine + 1);
}

TEST(TextReaderTest, RefusesLinesThatAreWrongInOtherWays)
{
    CRandomRows rows;
    auto const workout = rows.Line(CDAOWk().GetLine());
    auto const fields = workout.substr(0, workout.size() - 10);
    auto const withFields
        = [&](std::string const& line) { return WriteBack(WithCheckSums(line)).reason; };
    EXPECT_EQ(withFields(fields), "");
    EXPECT_EQ(withFields(fields + "|0"), "line 1, field 20: is one too many.");
    EXPECT_EQ(withFields(fields.substr(0, fields.rfind('|'))), "line 1, field 19: is missing.");
    EXPECT_EQ(withFields("WK2" + fields.substr(3)), "line 1, field 1: is no known kind.");
    EXPECT_EQ(withFields("wk1" + fields.substr(3)), "line 1, field 1: is no kind of record.");
    EXPECT_EQ(WriteBack("first name,last name\n").reason, "line 1, field 1: is no kind of record.");
    EXPECT_EQ(WriteBack("WK1\n").reason, "line 1: does not end with a check sum.");
    EXPECT_EQ(WriteBack(Replace(workout, "WK1", "BC1")).reason,
        "line 1: is damaged: its check sum does not fit.");
    for (char const separator : {'a', '0', '\\', '-', '\n', '\x80', '\0', ' '}) {
        std::istringstream stream(workout);
        EXPECT_FALSE(CTextReader(stream, separator).Next()) << separator;
    }
}

TEST(TextReaderTest, WritesBackWhatItAcceptsOfLinesWithChangedFields)
{
    CRandomRows rows;
    auto const file = FourKinds();
    std::string_view const bytes = "|\\NnprxABC09#-.:T\n\r\t\x7F\xC3\x9F";
    for (int i = 0; i < 5000; ++i) {
        auto changed = file;
        for (auto changes = rows.Number(1, 3); changes > 0; --changes) {
            auto const place = static_cast<std::size_t>(rows.Number(0, std::ssize(file) - 1));
            auto const byte = static_cast<std::size_t>(rows.Number(0, std::ssize(bytes) - 1));
            changed[place] = bytes[byte];
        }
        EXPECT_TRUE(WriteBack(WithCheckSums(changed)).same) << changed;
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
    std::set<std::string> refused;
    int accepted = 0;
    for (auto const& entry :
        fs::directory_iterator(fs::path(CORVANA_SOURCE_DIR) / "tests/fuzz/corpus")) {
        std::ifstream stream(entry.path(), std::ios::binary);
        std::string const bytes(std::istreambuf_iterator<char>(stream), {});
        auto const asItIs = WriteBack(bytes);
        auto const withSums = WriteBack(WithCheckSums(bytes));
        EXPECT_TRUE(asItIs.same && withSums.same) << entry.path();
        std::string const prefix = "refused-";
        auto const name = entry.path().filename().string();
        if (!name.starts_with(prefix)) {
            EXPECT_TRUE(asItIs.accepted || withSums.accepted) << name;
            ++accepted;
            continue;
        }
        refused.insert(name.substr(prefix.size()));
        auto const reason = reasons.find(name.substr(prefix.size()));
        ASSERT_NE(reason, reasons.end()) << name;
        EXPECT_FALSE(asItIs.accepted || withSums.accepted) << name;
        EXPECT_TRUE(asItIs.reason == reason->second || withSums.reason == reason->second)
            << name << ": " << asItIs.reason << ' ' << withSums.reason;
    }
    EXPECT_GT(accepted, 4);
    EXPECT_EQ(refused.size(), reasons.size());
}

TEST(TextReaderTest, TakesTheExamplesOfTheDescription)
{
    std::ifstream page(std::string(CORVANA_SOURCE_DIR) + "/docs/data-files.md");
    std::set<std::string> kinds;
    for (std::string line; std::getline(page, line);) {
        constexpr std::size_t kIndent = 4;
        if (line.size() > 50 && line.find('|') == kIndent + 3) {
            line.erase(0, kIndent);
            EXPECT_EQ(WriteBack(line + "\n").reason, "") << line;
            kinds.insert(line.substr(0, 3));
        }
    }
    EXPECT_EQ(kinds, (std::set<std::string>{"BC1", "EV1", "MB1", "WK1"}));
}
