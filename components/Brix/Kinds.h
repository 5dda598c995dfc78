#pragma once

// The kinds of column that record classes have: how each is stored, and read from a row.

#include "Quarry/DataList.h"

namespace Brix::Kinds
{

struct Long
{
    using Type = long;
    static constexpr Cellar::ColumnType kStored = Cellar::ColumnType::Int;
    static Type Read(const Quarry::Row& row, int ordinal) noexcept { return row.GetLong(ordinal); }
};
struct Int
{
    using Type = int;
    static constexpr Cellar::ColumnType kStored = Cellar::ColumnType::Int;
    static Type Read(const Quarry::Row& row, int ordinal) noexcept { return row.GetInt(ordinal); }
};
struct Short
{
    using Type = short;
    static constexpr Cellar::ColumnType kStored = Cellar::ColumnType::SmallInt;
    static Type Read(const Quarry::Row& row, int ordinal) noexcept { return row.GetShort(ordinal); }
};
struct Bit
{
    using Type = bool;
    static constexpr Cellar::ColumnType kStored = Cellar::ColumnType::Bit;
    static Type Read(const Quarry::Row& row, int ordinal) noexcept { return row.GetBool(ordinal); }
};
struct Text
{
    using Type = CString;
    static constexpr Cellar::ColumnType kStored = Cellar::ColumnType::Text;
    static Type Read(const Quarry::Row& row, int ordinal) { return row.GetText(ordinal); }
};
struct Binary
{
    using Type = Cellar::Bytes;
    static constexpr Cellar::ColumnType kStored = Cellar::ColumnType::Binary;
    static Type Read(const Quarry::Row& row, int ordinal) { return row.GetBinary(ordinal); }
};
struct Date
{
    using Type = Kiln::CDate;
    static constexpr Cellar::ColumnType kStored = Cellar::ColumnType::Date;
    static Type Read(const Quarry::Row& row, int ordinal) noexcept { return row.GetDate(ordinal); }
};
struct DateTime
{
    using Type = COleDateTime;
    static constexpr Cellar::ColumnType kStored = Cellar::ColumnType::DateTime;
    static Type Read(const Quarry::Row& row, int ordinal) noexcept { return row.GetDateTime(ordinal); }
};
struct Money
{
    using Type = Kiln::CAmt;
    static constexpr Cellar::ColumnType kStored = Cellar::ColumnType::Money;
    static Type Read(const Quarry::Row& row, int ordinal) noexcept { return row.GetAmount(ordinal); }
};
struct Double
{
    using Type = double;
    static constexpr Cellar::ColumnType kStored = Cellar::ColumnType::Double;
    static Type Read(const Quarry::Row& row, int ordinal) noexcept { return row.GetDouble(ordinal); }
};

} // namespace Brix::Kinds
