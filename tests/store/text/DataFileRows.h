#pragma once

#include "store/text/RecordLine.h"
#include "store/text/Text.h"

#include <algorithm>
#include <limits>
#include <map>
#include <numeric>
#include <random>
#include <sstream>

/// Makes records with the most unlikely fields that their columns can hold.
class CRandomRows
{
public:
    using Fixed = std::map<std::string, std::int64_t, std::less<>>; ///< values by column

    /// Bytes that are separators, escapes, controls, broken characters or nothing special.
    std::string Text()
    {
        static std::array<std::string_view, 12> const pieces = {"|", "\\", "\n", "\r", "\\N", "\\p",
            "Wei\xC3\x9F", "\xE2\x82", "\xF0\x9F\x8F\x8B", "\xED\xA0\x80", "\x7F", "plain"};
        std::string text;
        if (Chance(100)) {
            text.assign(65'536, static_cast<char>(Number(0, 255)));
        }
        for (auto count = Number(0, 12); count > 0; --count) {
            if (Chance(2)) {
                text += pieces[static_cast<std::size_t>(Number(0, pieces.size() - 1))];
            } else {
                text += static_cast<char>(Number(0, 255));
            }
        }
        return text;
    }

    /// A row of a line's cells; rows of further tables are missing here and there.
    void Make(CRecordLine const& line, Fixed const& fixed, CRowBlock& block)
    {
        block.Reset(line.Columns(), 0);
        auto* cell = block.AddRow();
        bool present = true;
        for (auto const& part : line.Parts()) {
            present = part.link.empty() || ((present || !part.next) && !Chance(4));
            for (auto const& column : part.columns) {
                if (present) {
                    Fill(column, fixed, *cell, block);
                }
                ++cell;
            }
        }
    }

    /// The line of a row made at random.
    std::string Line(CRecordLine const& line)
    {
        CRowBlock block;
        Make(line, {}, block);
        std::ostringstream stream;
        CText text(&stream, '|');
        return line.Write(text, block.Row(0)) ? stream.str() : "";
    }

    std::int64_t Number(std::int64_t least, std::int64_t most)
    {
        return std::uniform_int_distribution(least, most)(m_random);
    }
    /// The numbers from 0 on in any order.
    std::vector<int> Order(int count)
    {
        std::vector<int> order(static_cast<std::size_t>(count));
        std::iota(order.begin(), order.end(), 0);
        std::shuffle(order.begin(), order.end(), m_random);
        return order;
    }
    bool Chance(std::int64_t oneIn) { return Number(1, oneIn) == 1; }

private:
    void Fill(CColumn const& column, Fixed const& fixed, CCell& cell, CRowBlock& block)
    {
        cell.type = CCell::integer;
        if (auto const found = fixed.find(column.name); found != fixed.end()) {
            cell.integerValue = found->second;
        } else if (column.type == ColumnType::text) {
            cell.type = CCell::text;
            block.SetBytes(cell, Text());
        } else if (column.type == ColumnType::real) {
            cell.type = CCell::real;
            cell.realValue = Real();
        } else if (column.type == ColumnType::memberNumber) {
            cell.integerValue = Number(1, 999'999'999);
        } else {
            cell.integerValue = Whole(column.type);
        }
    }

    double Real()
    {
        if (Chance(20)) {
            return Chance(2) ? std::numeric_limits<double>::infinity()
                             : -std::numeric_limits<double>::infinity();
        }
        auto const tenths = static_cast<double>(Number(-2'000'000, 2'000'000)) / 10.0;
        return Chance(3) ? std::ldexp(tenths, static_cast<int>(Number(-900, 900))) : tenths;
    }

    std::int64_t Whole(ColumnType type)
    {
        using Limits = std::numeric_limits<std::int64_t>;
        if (Chance(20)) {
            return Chance(2) ? Limits::min() : Limits::max();
        }
        if (type == ColumnType::date) {
            return Chance(10) ? 0 : Number(-70'000'000'000, 260'000'000'000);
        }
        static std::array<std::int64_t, 5> const most = {1, 255, 32767, 0x7FFFFFFF, 0xFFFFFFFF};
        return Number(-1, most[static_cast<std::size_t>(Number(0, most.size() - 1))] + 1);
    }

    std::mt19937_64 m_random{20261124};
};
