#pragma once

#include "store/sets/DAOBodyComp.h"
#include "store/sets/DAOEval.h"
#include "store/sets/DAOMem.h"
#include "store/sets/DAOWk.h"
#include "store/text/Text.h"
#include "tests/store/StoreFixture.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <map>
#include <random>
#include <sstream>

/// A centre whose records, with the most unlikely fields, are copied to data files and back.
class CDataFileTest : public CStoreTest
{
protected:
    using Fixed = std::map<std::string, std::int64_t, std::less<>>; ///< values by column
    using Limits = std::numeric_limits<std::int64_t>;
    static constexpr std::int64_t kTime = 3'900'000'000; ///< in the year 2023
    /// What other programs can store, by the alternatives of a value.
    static inline std::array<std::vector<DbValue>, 4> const kValues = {{
        {DbValue()},
        {std::int64_t(0), std::int64_t(1), std::int64_t(7), std::int64_t(100), std::int64_t(255),
            std::int64_t(256), std::int64_t(1000), std::int64_t(32'767), std::int64_t(32'768),
            std::int64_t(2'147'483'647), std::int64_t(4'294'967'295), std::int64_t(4'294'967'296),
            kTime, -kTime, std::int64_t(-1), Limits::min(), Limits::max()},
        {-0.0, 7.5, 0.1, 5e-324, 1e15, 1.7976931348623157e308, HUGE_VAL, -HUGE_VAL},
        {"", "text", "12", "\\N", std::string("|\\\n\r\t\0\x7F\xFF", 8), "2026-11-16T18:05:09",
            "Wei\xC3\x9F \xE2\x82 \xF0\x9F\x8F\x8B"},
    }};
    static std::size_t KindOf(ColumnType type)
    {
        return type == ColumnType::text ? 3 : type == ColumnType::real ? 2 : 1;
    }

    std::int64_t Random(std::int64_t least, std::int64_t most)
    {
        return std::uniform_int_distribution(least, most)(m_random);
    }
    /// The cells of a line, those not given at random. Rows of further tables are missing here and
    /// there: all null.
    std::vector<DbValue> MakeCells(CRecordLine const& line, Fixed const& fixed)
    {
        std::vector<DbValue> cells;
        bool present = true;
        for (auto const& part : line.Parts()) {
            present = part.link.empty() || ((present || !part.next) && Random(1, 4) > 1);
            for (auto const& column : part.columns) {
                auto const found = fixed.find(column.name);
                cells.push_back(!present       ? DbValue()
                        : found == fixed.end() ? RandomValue(column.type)
                                               : found->second);
            }
        }
        return cells;
    }
    /// Adds the rows of a line's cells that begin with a value, or all; false when a table refuses.
    static bool AddCells(
        CRecordLine const& line, std::vector<DbValue> const& cells, bool all = false)
    {
        bool taken = true;
        auto first = cells.begin();
        for (auto const& part : line.Parts()) {
            std::vector<DbValue> row(part.link.empty() ? 0 : 1, cells.front()); // the link
            row.insert(row.end(), first, first + std::ssize(part.columns));
            std::int64_t changed = 0;
            if (all || *first != DbValue()) {
                taken
                    = taken && Database(DataFile::member).Execute(part.insert, row, changed).IsOK();
            }
            first += std::ssize(part.columns);
        }
        return taken;
    }
    /// Adds a record as another program would.
    void Add(CDAOFileSet const& set, Fixed const& fixed)
    {
        EXPECT_TRUE(AddCells(set.GetLine(), MakeCells(set.GetLine(), fixed)));
    }
    void AddMember(std::int32_t id)
    {
        Add(m_setMem, {{"member_id", id}, {"workout_number", id + 500}});
    }
    void AddWorkout(std::int32_t member, std::int64_t time)
    {
        Add(m_setWk, {{"member_id", member}, {"check_in", time}});
    }

    /// Members with as many workouts and evaluations each.
    void AddMembers(std::int32_t count, int records)
    {
        for (std::int32_t id = 1; id <= count; ++id) {
            AddMember(id);
            for (int i = 0; i < records; ++i) {
                AddWorkout(id, kTime + i * std::int64_t(60));
                auto const number = std::int64_t(id) * records + i;
                Add(m_setEval, {{"member_id", id}, {"eval_date", i}, {"eval_id", number}});
            }
        }
    }

    /// The file of the members as it is now is the one that each trial starts with.
    void KeepAsModel() const
    {
        CDatabaseSession::Get().ShutDown();
        std::filesystem::rename(m_strPath, m_folder / "model.mdb");
    }
    void StartAnew() const
    {
        CDatabaseSession::Get().ShutDown();
        for (auto const* const extension : {"", "-wal", "-shm"}) {
            std::filesystem::remove(m_strPath + extension);
        }
        std::filesystem::copy_file(m_folder / "model.mdb", m_strPath);
    }

    /// The line of the current row; empty when it is refused.
    static std::string Line(CDAOFileSet& set)
    {
        std::ostringstream stream;
        CText text(&stream, '|');
        bool const saved = set.Save(text);
        EXPECT_NE(saved, stream.str().empty());
        return stream.str();
    }
    /// The file of all records of a set.
    static std::string Backup(CDAOFileSet& set)
    {
        std::string file;
        for (int count = set.OpenSet(true); count > 0; --count) {
            file += Line(set);
            EXPECT_TRUE(set.LastStatus()) << set.LastStatus().Text();
            set.Op(CDAOEFSet::opMoveNext);
        }
        set.Op(CDAOEFSet::opClose);
        return file;
    }
    static int Restore(CDAOFileSet& set, std::string const& file, std::int32_t memberID = 0,
        bool keepExisting = true)
    {
        std::istringstream stream(file);
        return set.Restore(stream, '|', memberID, keepExisting);
    }

    /// All that a restore could change.
    static std::map<std::string, Rows> DumpAll()
    {
        std::map<std::string, Rows> tables;
        for (auto const* const table : {"members", "profiles", "enrollments", "classes", "messages",
                 "workouts", "evaluations", "skinfolds", "lifts", "body_compositions"}) {
            tables[table] = Dump(table);
        }
        return tables;
    }

    /// The same, in whatever order the rows are stored.
    static std::map<std::string, Rows> SortedRows()
    {
        auto tables = DumpAll();
        for (auto& table : tables) {
            std::ranges::sort(table.second);
        }
        return tables;
    }

    std::string const m_strPath = m_folder / DataFileName(DataFile::member);
    std::mt19937_64 m_random{20261124};
    CDAOMem m_setMem;
    CDAOWk m_setWk;
    CDAOEval m_setEval;
    CDAOBodyComp m_setBodyComp;
    std::array<CDAOFileSet*, 4> const m_sets = {&m_setMem, &m_setWk, &m_setEval, &m_setBodyComp};

private:
    DbValue RandomValue(ColumnType type)
    {
        if (type == ColumnType::memberNumber) {
            return Random(1, 999'999'999);
        }
        auto const& values = kValues[KindOf(type)];
        return values[static_cast<std::size_t>(Random(0, std::ssize(values) - 1))];
    }
};
