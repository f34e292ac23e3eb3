#pragma once

#include "store/EFOleDateTime.h"
#include "store/sets/AddRow.h"
#include "store/sets/DatabaseSession.h"
#include "tests/TempFolder.h"
#include "tests/platform/db/PeerProcess.h"

#include <gtest/gtest.h>
#include <sstream>
#include <string>
#include <vector>

/// A fresh, empty centre in a folder of its own for each case.
class CStoreTest : public testing::Test
{
protected:
    using Rows = std::vector<std::string>;

    void SetUp() override
    {
        for (auto const file : kDataFiles) {
            auto const status = CreateDatabase(m_folder / DataFileName(file), DataFileSchema(file));
            ASSERT_TRUE(status) << status.Text();
        }
        CDatabaseSession::Get().SetDataFolder(m_folder);
    }

    void TearDown() override
    {
        CDatabaseSession::Get().ShutDown();
        CEFOleDateTime::SetClock(std::nullopt);
    }

    static CDatabase& Database(DataFile file)
    {
        CDbStatus status;
        auto* const database = CDatabaseSession::Get().Open(file, status);
        EXPECT_NE(database, nullptr) << status.Text();
        return *database;
    }

    /// The SQL that adds a row to the table of a set, with what the function gives for each column.
    template <typename ValueOf>
    static std::string InsertInto(CDAOEFSet& set, ValueOf const& valueOf)
    {
        std::string columns;
        std::string values;
        for (auto const& column : set.Columns()) {
            columns += (columns.empty() ? "" : ", ") + column.name;
            values += (values.empty() ? "" : ", ") + std::string(valueOf(column));
        }
        return "INSERT INTO " + std::string(set.GetClass()->table) + " (" + columns + ") VALUES ("
            + values + ")";
    }

    /// Runs SQL as another record set or program would.
    static std::int64_t Run(
        DataFile file, std::string_view sql, std::vector<DbValue> const& values = {})
    {
        std::int64_t changed = 0;
        auto const status = Database(file).Execute(sql, values, changed);
        EXPECT_TRUE(status) << status.Text();
        return changed;
    }

    /// The first cell of a SELECT's first row; -1 when it cannot be read.
    static std::int64_t Number(DataFile file, std::string_view sql)
    {
        CRowBlock rows;
        auto const status = Database(file).Query(sql, {}, rows);
        EXPECT_TRUE(status) << status.Text();
        return status && rows.Rows() > 0 ? rows.Row(0).Cell(0).integerValue : -1;
    }

    static std::int64_t Count(std::string const& rows, DataFile file = DataFile::member)
    {
        return Number(file, "SELECT count(*) FROM " + rows);
    }

    /// All rows of a table without their keys: each with the bytes and types of its cells.
    static Rows Dump(std::string const& table, DataFile file = DataFile::member)
    {
        CRowBlock block;
        auto const status
            = Database(file).Query("SELECT * FROM " + table + " ORDER BY id", {}, block);
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
        return rows;
    }
    /// Another program at work on the centre. No connection may live in two processes.
    static CPeer StartPeer(CPeer::Task const& task)
    {
        CDatabaseSession::Get().ShutDown();
        return CPeer(task);
    }

    CTempFolder m_temporary;
    std::filesystem::path const& m_folder = m_temporary.Path();
};
