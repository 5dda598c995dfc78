#include "Values.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <filesystem>

namespace OdbcFake
{
namespace
{

struct Type
{
    SQLSMALLINT type;
    const char* name;
    SQLULEN most = 0; // the largest size, in characters or bytes; 0 is (max) where there is one, and no size elsewhere
};

constexpr Type kCTypes[] = {
    {SQL_C_CHAR, "SQL_C_CHAR"},   {SQL_C_WCHAR, "SQL_C_WCHAR"},     {SQL_C_BINARY, "SQL_C_BINARY"},
    {SQL_C_SLONG, "SQL_C_SLONG"}, {SQL_C_SBIGINT, "SQL_C_SBIGINT"}, {SQL_C_TYPE_TIMESTAMP, "SQL_C_TYPE_TIMESTAMP"},
};
constexpr Type kSqlTypes[] = {
    {SQL_WVARCHAR, "SQL_WVARCHAR", 4000},
    {SQL_VARBINARY, "SQL_VARBINARY", 8000},
    {SQL_NUMERIC, "SQL_NUMERIC", 38},
    {SQL_INTEGER, "SQL_INTEGER"},
    {SQL_BIGINT, "SQL_BIGINT"},
    {SQL_DOUBLE, "SQL_DOUBLE"},
    {SQL_TYPE_TIMESTAMP, "SQL_TYPE_TIMESTAMP"},
};

/// Null when there is none.
template<std::size_t N>
const Type* Find(const Type (&types)[N], SQLSMALLINT wanted)
{
    const Type* const found = std::find_if(types, types + N, [&](const Type& each) { return each.type == wanted; });
    return found == types + N ? nullptr : found;
}

template<class T>
T Read(const void* from) noexcept
{
    T value;
    std::memcpy(&value, from, sizeof(T));
    return value;
}

std::string Printed(const SQL_TIMESTAMP_STRUCT& t)
{
    char text[64];
    std::snprintf(text, sizeof text, "%04d-%02u-%02u %02u:%02u:%02u.%09u", t.year, t.month, t.day, t.hour, t.minute,
                  t.second, static_cast<unsigned>(t.fraction));
    return text;
}

std::string Printed(const Binding& binding)
{
    const SQLLEN length = *binding.length;
    switch (binding.cType) {
    case SQL_C_CHAR:
        return std::to_string(length) +
               " bytes: " + std::string(static_cast<const char*>(binding.value), static_cast<std::size_t>(length));
    case SQL_C_WCHAR:
        return std::to_string(length / 2) + " characters: " +
               ToUtf8(static_cast<const SQLWCHAR*>(binding.value), static_cast<SQLINTEGER>(length / 2));
    case SQL_C_BINARY:
        return std::to_string(length) + " bytes";
    case SQL_C_SLONG:
        return std::to_string(Read<SQLINTEGER>(binding.value));
    case SQL_C_SBIGINT:
        return std::to_string(Read<SQLBIGINT>(binding.value));
    case SQL_C_TYPE_TIMESTAMP:
        return Printed(Read<SQL_TIMESTAMP_STRUCT>(binding.value));
    default:
        return "?";
    }
}

/// 0xAB as bytes.
std::string Bytes(const std::string& hex)
{
    std::string bytes;
    for (std::size_t i = 2; i < hex.size(); i += 2)
        bytes += static_cast<char>(std::stoi(hex.substr(i, 2), nullptr, 16));
    return bytes;
}

template<class T>
std::string AsBytes(const T& value)
{
    return std::string(reinterpret_cast<const char*>(&value), sizeof value);
}

SQL_TIMESTAMP_STRUCT ToTimestamp(const std::string& text)
{
    SQL_TIMESTAMP_STRUCT t{};
    unsigned fraction = 0;
    std::sscanf(text.c_str(), "%hd-%hu-%hu %hu:%hu:%hu.%u", &t.year, &t.month, &t.day, &t.hour, &t.minute, &t.second,
                &fraction);
    t.fraction = fraction * 1000000; // scripts write milliseconds
    return t;
}

/// The value in the C type.
std::optional<std::string> Converted(const std::string& text, SQLSMALLINT cType)
{
    switch (cType) {
    case SQL_C_CHAR:
        return text;
    case SQL_C_WCHAR: {
        const std::u16string wide = ToUtf16(text);
        return std::string(reinterpret_cast<const char*>(wide.data()), wide.size() * 2);
    }
    case SQL_C_BINARY:
        return Bytes(text);
    case SQL_C_SBIGINT:
        return AsBytes(static_cast<SQLBIGINT>(std::stoll(text)));
    case SQL_C_TYPE_TIMESTAMP:
        return AsBytes(ToTimestamp(text));
    case SQL_C_TYPE_DATE: {
        const SQL_TIMESTAMP_STRUCT t = ToTimestamp(text);
        return AsBytes(SQL_DATE_STRUCT{t.year, t.month, t.day});
    }
    default:
        return std::nullopt;
    }
}

constexpr ColumnShape kShapes[] = {
    {"nvarchar", SQL_WVARCHAR, 0, 0}, // (max)
    {"varbinary", SQL_VARBINARY, 0, 0}, {"int", SQL_INTEGER, 10, 0},
    {"bigint", SQL_BIGINT, 19, 0},      {"bit", SQL_BIT, 1, 0},
    {"money", SQL_DECIMAL, 19, 4},      {"float", SQL_FLOAT, 53, 0},
    {"date", SQL_TYPE_DATE, 10, 0},     {"datetime2", SQL_TYPE_TIMESTAMP, 23, 3},
};

} // namespace

// The standard library's path knows both encodings.
std::u16string ToUtf16(std::string_view utf8) { return std::filesystem::path(utf8).u16string(); }

std::string ToUtf8(const SQLWCHAR* text, SQLINTEGER length)
{
    std::u16string wide;
    for (SQLINTEGER i = 0; length == SQL_NTS ? text[i] != 0 : i < length; ++i)
        wide += static_cast<char16_t>(text[i]);
    return std::filesystem::path(wide).string();
}

std::optional<Message> RefusalOfTypes(const Binding& binding)
{
    const Type* const type = Find(kSqlTypes, binding.sqlType);
    if (!type || !Find(kCTypes, binding.cType))
        return Message{"HY004", 0, "Invalid SQL data type"};
    if (type->most > 0 && binding.size > type->most)
        return Message{"HY104", 0, "Invalid precision value"};
    return std::nullopt;
}

std::optional<Message> RefusalOfValue(const Binding& binding)
{
    if (binding.IsNull())
        return std::nullopt;
    if (binding.sqlType == SQL_TYPE_TIMESTAMP) {
        SQLUINTEGER unit = 1000000000;
        for (SQLSMALLINT i = 0; i < binding.digits; ++i)
            unit /= 10;
        if (Read<SQL_TIMESTAMP_STRUCT>(binding.value).fraction % unit != 0)
            return Message{"22008", 0,
                           "Datetime field overflow. Fractional second precision exceeds the scale specified in the "
                           "parameter binding."};
    }
    const bool isLong = binding.sqlType == SQL_WVARCHAR || binding.sqlType == SQL_VARBINARY;
    const SQLLEN units = *binding.length / (binding.sqlType == SQL_WVARCHAR ? 2 : 1);
    if (isLong && binding.size > 0 && static_cast<SQLULEN>(units) > binding.size)
        return Message{"22001", 0, "String data, right truncation"};
    return std::nullopt;
}

std::string Describe(const Binding& binding)
{
    const Type *const c = Find(kCTypes, binding.cType), *const sql = Find(kSqlTypes, binding.sqlType);
    return std::string(c ? c->name : "?") + " as " + (sql ? sql->name : "?") + "(" + std::to_string(binding.size) +
           "," + std::to_string(binding.digits) + ") " + (binding.IsNull() ? "NULL" : Printed(binding));
}

const ColumnShape& ShapeOf(std::string_view type) noexcept
{
    const auto* const found =
        std::find_if(std::begin(kShapes), std::end(kShapes), [&](const ColumnShape& s) { return type == s.type; });
    return found == std::end(kShapes) ? kShapes[0] : *found;
}

SQLRETURN Give(const Cell& cell, Reading& reading, SQLSMALLINT cType, SQLPOINTER buffer, SQLLEN capacity,
               SQLLEN* length, bool hidesLength)
{
    if (!cell) {
        *length = SQL_NULL_DATA;
        return SQL_SUCCESS;
    }
    if (!reading.isBegun) {
        const std::optional<std::string> bytes = Converted(*cell, cType);
        if (!bytes)
            return SQL_ERROR;
        reading = {*bytes, true};
    } else if (reading.bytes.empty()) {
        return SQL_NO_DATA;
    }
    const bool isText = cType == SQL_C_CHAR || cType == SQL_C_WCHAR;
    const bool isWhole = !isText && cType != SQL_C_BINARY; // the caller knows how long it is
    const SQLLEN end = !isText ? 0 : cType == SQL_C_WCHAR ? 2 : 1;
    const auto all = static_cast<SQLLEN>(reading.bytes.size());
    SQLLEN given = isWhole ? all : std::min(all, std::max<SQLLEN>(capacity - end, 0));
    if (cType == SQL_C_WCHAR)
        given -= given % 2; // pairs of surrogates come apart
    std::memcpy(buffer, reading.bytes.data(), static_cast<std::size_t>(given));
    if (capacity >= end)
        std::memset(static_cast<char*>(buffer) + given, 0, static_cast<std::size_t>(end));
    *length = given < all && hidesLength ? SQL_NO_TOTAL : all;
    reading.bytes.erase(0, static_cast<std::size_t>(given));
    return given < all ? SQL_SUCCESS_WITH_INFO : SQL_SUCCESS;
}

} // namespace OdbcFake
