#pragma once

#include "platform/db/RowBlock.h"
#include "platform/db/Value.h"
#include "store/EFOleDateTime.h"

#include <concepts>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

/// What a column holds, as its field says.
enum class ColumnType : std::uint8_t
{
    flag, ///< 0 or 1
    byte,
    int16,
    int32,
    memberNumber, ///< a member's, from 1 to 999999999: data files alone tell it from other numbers
    mask, ///< 32 bits
    real,
    text,
    date ///< seconds, as CEFOleDateTime keeps them
};

struct CColumn
{
    std::string name;
    ColumnType type;
};

/// Carries the fields of a record between the members of a record set and something else. A record
/// set lists its columns once, in ExchangeFields, and this decides what happens to each: read from
/// a row, put into values to be written, named, or cleared.
///
/// A cell whose type or range does not fit its field reads as no value (0, "" or the zero date);
/// since only what changed is written, the row keeps what another program put there.
class CFieldExchange
{
public:
    static CFieldExchange Load(CRowView const& row) { return {Mode::load, row}; }
    static CFieldExchange Clear() { return {Mode::clear, {nullptr, nullptr}}; }
    static CFieldExchange Store(std::vector<DbValue>& values)
    {
        CFieldExchange fx(Mode::store, {nullptr, nullptr});
        fx.m_pValues = &values;
        return fx;
    }
    static CFieldExchange Describe(std::vector<CColumn>& columns)
    {
        CFieldExchange fx(Mode::describe, {nullptr, nullptr});
        fx.m_pColumns = &columns;
        return fx;
    }

    template <typename T>
    void Field(std::string_view column, T& value)
    {
        if (m_mode == Mode::load) [[likely]] {
            Read(*m_pCell++, value);
        } else {
            Other(column, value);
        }
    }

private:
    enum class Mode
    {
        load,
        store,
        describe,
        clear
    };

    CFieldExchange(Mode mode, CRowView const& row)
        : m_pCell(row.Cells())
        , m_pBytes(row.Bytes())
        , m_mode(mode)
    {
    }

    template <std::integral T>
    void Read(CCell const& cell, T& value)
    {
        bool const fits = cell.type == CCell::integer && std::in_range<T>(cell.integerValue);
        value = fits ? static_cast<T>(cell.integerValue) : T();
    }
    void Read(CCell const& cell, bool& value)
    {
        value = cell.type == CCell::integer && cell.integerValue != 0;
    }
    void Read(CCell const& cell, double& value)
    {
        value = cell.type == CCell::real  ? cell.realValue
            : cell.type == CCell::integer ? static_cast<double>(cell.integerValue)
                                          : 0.0;
    }
    void Read(CCell const& cell, std::string& value)
    {
        if (cell.type == CCell::text) {
            value.assign(m_pBytes + cell.offset, cell.size);
        } else {
            value.clear();
        }
    }
    void Read(CCell const& cell, CEFOleDateTime& value)
    {
        value = CEFOleDateTime::FromSeconds(cell.type == CCell::integer ? cell.integerValue : 0);
    }

    template <typename T>
    void Other(std::string_view column, T& value)
    {
        switch (m_mode) {
        case Mode::store:
            m_pValues->push_back(Value(value));
            break;
        case Mode::describe:
            m_pColumns->push_back({std::string(column), TypeOf(value)});
            break;
        default:
            value = T();
            break;
        }
    }

    template <std::integral T>
    static DbValue Value(T value)
    {
        return static_cast<std::int64_t>(value);
    }
    static DbValue Value(double value) { return value; }
    static DbValue Value(std::string const& value) { return value; }
    static DbValue Value(CEFOleDateTime const& value) { return value.Seconds(); }

    static ColumnType TypeOf(bool) { return ColumnType::flag; }
    static ColumnType TypeOf(std::uint8_t) { return ColumnType::byte; }
    static ColumnType TypeOf(std::int16_t) { return ColumnType::int16; }
    static ColumnType TypeOf(std::int32_t) { return ColumnType::int32; }
    static ColumnType TypeOf(std::uint32_t) { return ColumnType::mask; }
    static ColumnType TypeOf(double) { return ColumnType::real; }
    static ColumnType TypeOf(std::string const&) { return ColumnType::text; }
    static ColumnType TypeOf(CEFOleDateTime const&) { return ColumnType::date; }

    CCell const* m_pCell; ///< the next one to read
    char const* m_pBytes;
    Mode m_mode;
    std::vector<DbValue>* m_pValues = nullptr;
    std::vector<CColumn>* m_pColumns = nullptr;
};
