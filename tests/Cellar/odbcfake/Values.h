#pragma once

// Bound values and results in the C types of ODBC: those that the library uses. What it begins to use wants a look here
// first, and is told as "?" or refused until then.

#include <sql.h>
#include <sqlext.h>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

#include "Script.h"

namespace OdbcFake
{

// The standard library's path knows both encodings.
inline std::u16string ToUtf16(std::string_view utf8) { return std::filesystem::path(utf8).u16string(); }
/// Of an argument of the interface: `length` in characters, SQL_NTS to its end.
inline std::string ToUtf8(const SQLWCHAR* text, SQLINTEGER length)
{
    std::u16string wide;
    for (SQLINTEGER i = 0; length == SQL_NTS ? text[i] != 0 : i < length; ++i)
        wide += static_cast<char16_t>(text[i]);
    return std::filesystem::path(wide).string();
}

/// Of a C type or an SQL type.
inline const char* NameOf(SQLSMALLINT type)
{
    static constexpr std::pair<SQLSMALLINT, const char*> kNames[] = {
        {SQL_C_CHAR, "SQL_C_CHAR"},       {SQL_C_WCHAR, "SQL_C_WCHAR"},     {SQL_C_BINARY, "SQL_C_BINARY"},
        {SQL_C_SLONG, "SQL_C_SLONG"},     {SQL_C_SBIGINT, "SQL_C_SBIGINT"}, {SQL_TYPE_TIMESTAMP, "SQL_TYPE_TIMESTAMP"},
        {SQL_WVARCHAR, "SQL_WVARCHAR"},   {SQL_NUMERIC, "SQL_NUMERIC"},     {SQL_DOUBLE, "SQL_DOUBLE"},
        {SQL_VARBINARY, "SQL_VARBINARY"}, {SQL_INTEGER, "SQL_INTEGER"},     {SQL_BIGINT, "SQL_BIGINT"},
    };
    const auto* const found =
        std::find_if(std::begin(kNames), std::end(kNames), [&](const auto& each) { return each.first == type; });
    return found == std::end(kNames) ? "?" : found->second;
}

template<class T>
T Read(const void* from) noexcept
{
    T value;
    std::memcpy(&value, from, sizeof(T));
    return value;
}

/// What SQLBindParameter was given.
struct Binding
{
    SQLSMALLINT cType = 0, sqlType = 0, digits = 0;
    SQLULEN size = 0;
    SQLPOINTER value = nullptr;
    const SQLLEN* length = nullptr; // bytes
};
/// Bytes are secret.
inline std::string Printed(const Binding& binding)
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
    case SQL_C_TYPE_TIMESTAMP: {
        const auto t = Read<SQL_TIMESTAMP_STRUCT>(binding.value);
        char text[64];
        std::snprintf(text, sizeof text, "%04d-%02u-%02u %02u:%02u:%02u.%09u", t.year, t.month, t.day, t.hour, t.minute,
                      t.second, static_cast<unsigned>(t.fraction));
        return text;
    }
    default:
        return "?";
    }
}
/// Types, length and value for the record: "SQL_C_WCHAR as SQL_WVARCHAR(4000,0) 5 characters: Smith".
inline std::string Describe(const Binding& binding)
{
    return std::string(NameOf(binding.cType)) + " as " + NameOf(binding.sqlType) + "(" + std::to_string(binding.size) +
           "," + std::to_string(binding.digits) + ") " + (*binding.length == SQL_NULL_DATA ? "NULL" : Printed(binding));
}

/// The SQL type, size and decimal digits by which SQL Server describes a column of the T-SQL type.
struct ColumnShape
{
    const char* type;
    SQLSMALLINT sqlType;
    SQLULEN size;
    SQLSMALLINT digits;
};
inline constexpr ColumnShape kShapes[] = {
    {"nvarchar", SQL_WVARCHAR, 0, 0}, // (max)
    {"varbinary", SQL_VARBINARY, 0, 0}, {"int", SQL_INTEGER, 10, 0},
    {"bigint", SQL_BIGINT, 19, 0},      {"bit", SQL_BIT, 1, 0},
    {"money", SQL_DECIMAL, 19, 4},      {"float", SQL_FLOAT, 53, 0},
    {"date", SQL_TYPE_DATE, 10, 0},     {"datetime2", SQL_TYPE_TIMESTAMP, 23, 3},
};
inline const ColumnShape& ShapeOf(std::string_view type) noexcept
{
    const auto* const found =
        std::find_if(std::begin(kShapes), std::end(kShapes), [&](const ColumnShape& s) { return type == s.type; });
    return found == std::end(kShapes) ? kShapes[0] : *found;
}

template<class T>
std::string AsBytes(const T& value)
{
    return std::string(reinterpret_cast<const char*>(&value), sizeof value);
}
inline SQL_TIMESTAMP_STRUCT ToTimestamp(const std::string& text)
{
    SQL_TIMESTAMP_STRUCT t{};
    unsigned fraction = 0;
    std::sscanf(text.c_str(), "%hd-%hu-%hu %hu:%hu:%hu.%u", &t.year, &t.month, &t.day, &t.hour, &t.minute, &t.second,
                &fraction);
    t.fraction = fraction * 1000000; // scripts write milliseconds
    return t;
}
/// The value in the C type.
inline std::optional<std::string> Converted(const std::string& text, SQLSMALLINT cType)
{
    switch (cType) {
    case SQL_C_CHAR:
        return text;
    case SQL_C_WCHAR: {
        const std::u16string wide = ToUtf16(text);
        return std::string(reinterpret_cast<const char*>(wide.data()), wide.size() * 2);
    }
    case SQL_C_BINARY: { // 0xAB
        std::string bytes;
        for (std::size_t i = 2; i < text.size(); i += 2)
            bytes += static_cast<char>(std::stoi(text.substr(i, 2), nullptr, 16));
        return bytes;
    }
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

/// One column of the current row on its way to the caller, who may ask for a long value in pieces.
struct Reading
{
    std::string bytes; // as the C type has them, what is left
    bool isBegun = false;
};
/// SQL_SUCCESS, SQL_SUCCESS_WITH_INFO (more to come), SQL_NO_DATA (all given), SQL_ERROR (not as that type).
inline SQLRETURN Give(const Cell& cell, Reading& reading, SQLSMALLINT cType, SQLPOINTER buffer, SQLLEN capacity,
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
