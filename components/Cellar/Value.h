#pragma once

// A value on its way to, or from, a column.

#include <cstdint>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "Afx/text/CString.h"
#include "Afx/time/DateTime.h"
#include "Cellar/Export.h"
#include "Kiln/CAmt.h"
#include "Kiln/CDate.h"

namespace Cellar
{

using Bytes = std::vector<std::uint8_t>;

/// The SQL type of a column; the dialect says how each database writes it.
enum class ColumnType : std::uint8_t
{
    Int,      // 32 bits
    SmallInt, // 16 bits
    Bit,
    Text,
    Binary,
    Date,
    DateTime, // to the millisecond
    Money,    // ten-thousandths
    Double
};

/// A bound parameter or a column's value. Dates travel as ISO text, money as ten-thousandths of a pound.
struct CELLAR_API Value
{
    enum class Kind : std::uint8_t
    {
        Null,
        Integer,
        Real,
        Text,
        Binary,
        Date,     // text YYYY-MM-DD
        DateTime, // text YYYY-MM-DD HH:MM:SS.mmm
        Money     // integer of ten-thousandths
    };

    Value() = default;
    Value(std::nullptr_t) {}
    Value(bool value) : kind(Kind::Integer), integer(value ? 1 : 0) {}
    Value(short value) : kind(Kind::Integer), integer(value) {}
    Value(int value) : kind(Kind::Integer), integer(value) {}
    Value(long value) : kind(Kind::Integer), integer(value) {}
    Value(long long value) : kind(Kind::Integer), integer(value) {}
    Value(unsigned char value) : kind(Kind::Integer), integer(value) {}
    Value(double value) : kind(Kind::Real), real(value) {}
    Value(const char* value); // null pointer: NULL
    Value(std::string value) : kind(Kind::Text), text(std::move(value)) {}
    Value(std::string_view value) : kind(Kind::Text), text(value) {}
    Value(const CString& value) : kind(Kind::Text), text(value.Str()) {}
    Value(const Bytes& value) : kind(Kind::Binary), text(value.begin(), value.end()) {}
    Value(const Kiln::CDate& value);  // NULL unless valid
    Value(const COleDateTime& value); // NULL unless valid
    Value(const Kiln::CAmt& value);   // NULL unless valid

    bool IsNull() const noexcept { return kind == Kind::Null; }
    friend bool operator==(const Value&, const Value&) = default;

    Kind kind = Kind::Null;
    std::int64_t integer = 0;
    double real = 0.0;
    std::string text; // also the bytes of Binary
};

// Reading, whatever form the driver gave: a NULL or a value that does not fit the type gives the stated default.
// Numbers are also read from text that is one, whole and decimal; a fraction is no integer; dates are no numbers.
CELLAR_API std::int64_t ToInt64(const Value& value, std::int64_t whenNull = 0) noexcept;
CELLAR_API long ToLong(const Value& value, long whenNull = 0) noexcept;    // outside 32 bits: whenNull
CELLAR_API short ToShort(const Value& value, short whenNull = 0) noexcept; // outside 16 bits: whenNull
CELLAR_API double ToDouble(const Value& value, double whenNull = 0.0) noexcept;
/// Numbers in decimal, money in pounds ("12.50"); bytes only when they are UTF-8.
CELLAR_API CString ToText(const Value& value);
/// Of Binary and Text; empty for anything else.
CELLAR_API Bytes ToBytes(const Value& value);
/// Null date for NULL; of a date-time its day; invalid for any other text or kind.
CELLAR_API Kiln::CDate ToDate(const Value& value) noexcept;
/// Status null for NULL, invalid for any other text or kind; a date is its midnight.
CELLAR_API COleDateTime ToDateTime(const Value& value) noexcept;
/// Null amount for NULL. Integers, and reals without a fraction, are ten-thousandths; text is pounds, as servers write
/// money. Anything else is invalid.
CELLAR_API Kiln::CAmt ToAmount(const Value& value) noexcept;

} // namespace Cellar
