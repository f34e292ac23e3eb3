#include "reports/content/QueryCells.h"

#include "store/sets/DatabaseSession.h"

CDbStatus QueryMembers(std::string const& sql, std::vector<DbValue> const& values, CRowBlock& rows)
{
    CDbStatus status;
    auto* const database = CDatabaseSession::Get().Open(DataFile::member, status);
    return database != nullptr ? database->Query(sql, values, rows) : status;
}

std::int64_t NumberIn(CRowView const& row, std::size_t column)
{
    auto const& cell = row.Cell(column);
    return cell.type == CCell::integer ? cell.integerValue : 0;
}

std::string TextIn(CRowView const& row, std::size_t column)
{
    auto const& cell = row.Cell(column);
    return cell.type == CCell::text ? std::string(row.Text(cell)) : std::string();
}
