#pragma once

#include "store/sets/DAOBodyComp.h"
#include "store/sets/DAOEval.h"
#include "store/sets/DAOMem.h"
#include "store/sets/DAOWk.h"
#include "tests/store/text/DataFileRows.h"
#include "tests/store/StoreFixture.h"

#include <sstream>

/// A centre whose records are copied to data files and back.
class CDataFileTest : public CStoreTest
{
protected:
    using Fixed = CRandomRows::Fixed;
    using Rows = std::vector<std::string>;
    static constexpr std::int64_t kTime = 3'900'000'000; ///< in the year 2023

    /// Adds a record as another program would, with the fields given and all others at random.
    void Add(CDAOFileSet const& set, Fixed const& fixed)
    {
        CRowBlock block;
        m_rows.Make(set.GetLine(), fixed, block);
        AddParts(set.GetLine(), block.Row(0));
    }
    /// Adds the rows of a line one by one.
    static void AddParts(CRecordLine const& line, CRowView const& row)
    {
        auto const link = row.Cell(0).integerValue; // of the first part: the member or evaluation
        for (std::size_t part = 0; part < line.Parts().size(); ++part) {
            if (line.Has(row, part)) {
                std::vector<DbValue> values;
                if (part > 0) {
                    values.emplace_back(link);
                }
                for (auto const& cell : line.Cells(row, part)) {
                    values.push_back(ValueOf(cell, row));
                }
                Run(DataFile::member, line.Parts()[part].insert, values);
            }
        }
    }
    void AddMember(std::int32_t id)
    {
        Add(m_setMem, {{"member_id", id}, {"workout_number", id + 500}});
    }
    void AddWorkout(std::int32_t member, std::int64_t time)
    {
        Add(m_setWk, {{"member_id", member}, {"check_in", time}});
    }

    /// What the program does for a backup.
    static std::string Backup(CDAOFileSet& set)
    {
        std::ostringstream stream;
        CText text(&stream, '|');
        for (int count = set.CountSet(); count > 0; --count) {
            EXPECT_TRUE(set.Save(text)) << set.LastStatus().Text();
            set.Op(CDAOEFSet::opMoveNext);
        }
        set.Op(CDAOEFSet::opClose);
        return stream.str();
    }
    std::string BackupMembers()
    {
        m_setMem.FindAllMembers(true);
        return Backup(m_setMem);
    }
    std::string BackupWorkouts()
    {
        m_setWk.FindWks(0);
        return Backup(m_setWk);
    }
    std::string BackupEvaluations()
    {
        m_setEval.FindEvals(CDAOSmEval::idMember, 0);
        return Backup(m_setEval);
    }
    std::string BackupBodyComps()
    {
        m_setBodyComp.FindBodyComps(0);
        return Backup(m_setBodyComp);
    }

    static int Restore(CDAOFileSet& set, std::string const& file, std::int32_t memberID = 0,
        bool keepExisting = true)
    {
        std::istringstream stream(file);
        return set.Restore(stream, '|', memberID, keepExisting);
    }
    static bool Test(CDAOFileSet const& set, std::string const& file)
    {
        std::istringstream stream(file);
        return set.Test(stream, '|');
    }

    /// A line of a file, from 1 on.
    static std::string Line(std::string const& file, int number)
    {
        std::istringstream stream(file);
        std::string line;
        for (; number > 0; --number) {
            std::getline(stream, line);
        }
        return line + '\n';
    }

    /// All rows of a table without their keys: each with the bytes and types of its cells.
    static Rows Dump(std::string const& table, bool sorted = true)
    {
        CRowBlock block;
        auto const status = Database(DataFile::member)
                                .Query("SELECT * FROM " + table + " ORDER BY id", {}, block);
        EXPECT_TRUE(status) << status.Text();
        Rows rows;
        for (std::size_t i = 0; i < block.Rows(); ++i) {
            std::ostringstream row;
            for (std::size_t column = 1; column < block.Columns(); ++column) {
                auto const& cell = block.Row(i).Cell(column);
                row << int(cell.type) << ' ' << std::hexfloat;
                cell.type == CCell::text       ? row << cell.size << ' ' << block.Row(i).Text(cell)
                    : cell.type == CCell::real ? row << cell.realValue
                                               : row << cell.integerValue;
                row << ' ';
            }
            rows.push_back(row.str());
        }
        if (sorted) {
            std::sort(rows.begin(), rows.end());
        }
        return rows;
    }
    static std::size_t Count(std::string const& table) { return Dump(table).size(); }

    static DbValue ValueOf(CCell const& cell, CRowView const& row)
    {
        return cell.type == CCell::text ? DbValue(std::string(row.Text(cell)))
            : cell.type == CCell::real  ? DbValue(cell.realValue)
                                        : DbValue(cell.integerValue);
    }

    CRandomRows m_rows;
    CDAOMem m_setMem;
    CDAOWk m_setWk;
    CDAOEval m_setEval;
    CDAOBodyComp m_setBodyComp;
};
