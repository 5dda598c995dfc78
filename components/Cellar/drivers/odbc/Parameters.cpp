#include "Cellar/drivers/odbc/Parameters.h"

#include <algorithm>
#include <charconv>

#include "Cellar/DatabaseError.h"
#include "Cellar/drivers/odbc/WideText.h"

namespace Cellar::Odbc
{
namespace
{

// Up to these sizes SQL Server's types have one, the same for every value: another would be another plan. Beyond them 0
// means (max); the types for long values are older ones, which cannot be compared.
constexpr std::size_t kLongBytes = 8000, kLongCharacters = 4000;
constexpr std::size_t kKeptBytes = 4096;

/// Two or four digits of the ISO text of a date or moment; 0 where it is shorter.
template<class Field>
Field Digits(std::string_view text, std::size_t at, std::size_t count) noexcept
{
    unsigned number = 0;
    if (at + count <= text.size())
        std::from_chars(text.data() + at, text.data() + at + count, number);
    return static_cast<Field>(number);
}

SQL_TIMESTAMP_STRUCT ToMoment(std::string_view iso) noexcept
{
    constexpr SQLUINTEGER kNanoseconds = 1'000'000; // of a millisecond
    return {Digits<SQLSMALLINT>(iso, 0, 4),
            Digits<SQLUSMALLINT>(iso, 5, 2),
            Digits<SQLUSMALLINT>(iso, 8, 2),
            Digits<SQLUSMALLINT>(iso, 11, 2),
            Digits<SQLUSMALLINT>(iso, 14, 2),
            Digits<SQLUSMALLINT>(iso, 17, 2),
            Digits<SQLUINTEGER>(iso, 20, 3) * kNanoseconds};
}

/// Ten-thousandths as a decimal number.
std::string ToDecimal(std::int64_t tenThousandths)
{
    const bool isNegative = tenThousandths < 0;
    const std::uint64_t size =
        isNegative ? 0 - static_cast<std::uint64_t>(tenThousandths) : static_cast<std::uint64_t>(tenThousandths);
    const std::string part = std::to_string(size % 10'000);
    return (isNegative ? "-" : "") + std::to_string(size / 10'000) + "." + std::string(4 - part.size(), '0') + part;
}

std::string ToShortest(double value)
{
    char buffer[32];
    return {buffer, std::to_chars(buffer, buffer + sizeof buffer, value).ptr};
}

void RefuseNul(std::string_view text)
{
    if (text.find('\0') != text.npos)
        throw DatabaseError(DatabaseError::Category::Constraint, "22021",
                            "a text holds the character NUL, which a server's database does not keep", "");
}

} // namespace

bool Parameters::Bind(SQLHSTMT statement, std::span<const Value> values)
{
    SQLUSMALLINT place = 0;
    for (const Value& value : values) {
        Bound& bound = m_bound[place];
        if (!IsDone(BindOne(statement, ++place, bound, value)))
            return false;
    }
    return true;
}

SQLRETURN Parameters::BindOne(SQLHSTMT statement, SQLUSMALLINT place, Bound& bound, const Value& value)
{
    const auto bind = [&](SQLSMALLINT cType, SQLSMALLINT sqlType, std::size_t columnSize, SQLSMALLINT digits,
                          void* data, std::size_t size) {
        bound.length = value.IsNull() ? SQL_NULL_DATA : static_cast<SQLLEN>(size);
        return SQLBindParameter(statement, place, SQL_PARAM_INPUT, cType, sqlType, columnSize, digits, data,
                                static_cast<SQLLEN>(size), &bound.length);
    };
    switch (bound.type) {
    case Placeholder::Type::Int:
    case Placeholder::Type::Long:
        bound.integer = static_cast<SQLINTEGER>(value.GetInteger());
        return bind(SQL_C_SLONG, SQL_INTEGER, 10, 0, &bound.integer, sizeof bound.integer);
    case Placeholder::Type::Int64:
        bound.large = value.GetInteger();
        return bind(SQL_C_SBIGINT, SQL_BIGINT, 19, 0, &bound.large, sizeof bound.large);
    case Placeholder::Type::DateTime:
        bound.moment = ToMoment(value.View());
        return bind(SQL_C_TYPE_TIMESTAMP, SQL_TYPE_TIMESTAMP, 23, 3, &bound.moment, sizeof bound.moment);
    case Placeholder::Type::Money:
        bound.narrow = ToDecimal(value.GetInteger());
        return bind(SQL_C_CHAR, SQL_NUMERIC, 19, 4, bound.narrow.data(), bound.narrow.size());
    case Placeholder::Type::Real:
        bound.narrow = ToShortest(value.GetReal());
        return bind(SQL_C_CHAR, SQL_DOUBLE, 53, 0, bound.narrow.data(), bound.narrow.size());
    case Placeholder::Type::Binary:
        bound.narrow = value.View();
        return bind(SQL_C_BINARY, SQL_VARBINARY, bound.narrow.size() > kLongBytes ? 0 : kLongBytes, 0,
                    bound.narrow.data(), bound.narrow.size());
    default:
        RefuseNul(value.View());
        bound.wide = ToWide(value.View());
        return bind(SQL_C_WCHAR, SQL_WVARCHAR, bound.wide.size() > kLongCharacters ? 0 : kLongCharacters, 0,
                    bound.wide.data(), bound.wide.size() * sizeof(char16_t));
    }
}

void Parameters::Forget() noexcept
{
    for (Bound& bound : m_bound) {
        if (bound.wide.capacity() > kKeptBytes)
            bound.wide = {};
        if (bound.narrow.capacity() > kKeptBytes)
            bound.narrow = {};
    }
}

} // namespace Cellar::Odbc
