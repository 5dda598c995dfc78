#include "Values.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace OdbcFake
{
namespace
{

struct TypeName
{
    SQLSMALLINT type;
    const char* name;
};

constexpr TypeName kCTypes[] = {
    {SQL_C_CHAR, "SQL_C_CHAR"},       {SQL_C_WCHAR, "SQL_C_WCHAR"},
    {SQL_C_BINARY, "SQL_C_BINARY"},   {SQL_C_SLONG, "SQL_C_SLONG"},
    {SQL_C_LONG, "SQL_C_LONG"},       {SQL_C_SSHORT, "SQL_C_SSHORT"},
    {SQL_C_BIT, "SQL_C_BIT"},         {SQL_C_SBIGINT, "SQL_C_SBIGINT"},
    {SQL_C_DOUBLE, "SQL_C_DOUBLE"},   {SQL_C_TYPE_TIMESTAMP, "SQL_C_TYPE_TIMESTAMP"},
    {SQL_C_DEFAULT, "SQL_C_DEFAULT"}, {SQL_C_TYPE_DATE, "SQL_C_TYPE_DATE"},
    {SQL_C_NUMERIC, "SQL_C_NUMERIC"},
};
constexpr TypeName kSqlTypes[] = {
    {SQL_CHAR, "SQL_CHAR"},
    {SQL_VARCHAR, "SQL_VARCHAR"},
    {SQL_LONGVARCHAR, "SQL_LONGVARCHAR"},
    {SQL_WCHAR, "SQL_WCHAR"},
    {SQL_WVARCHAR, "SQL_WVARCHAR"},
    {SQL_WLONGVARCHAR, "SQL_WLONGVARCHAR"},
    {SQL_BINARY, "SQL_BINARY"},
    {SQL_VARBINARY, "SQL_VARBINARY"},
    {SQL_LONGVARBINARY, "SQL_LONGVARBINARY"},
    {SQL_BIT, "SQL_BIT"},
    {SQL_SMALLINT, "SQL_SMALLINT"},
    {SQL_INTEGER, "SQL_INTEGER"},
    {SQL_BIGINT, "SQL_BIGINT"},
    {SQL_DECIMAL, "SQL_DECIMAL"},
    {SQL_NUMERIC, "SQL_NUMERIC"},
    {SQL_FLOAT, "SQL_FLOAT"},
    {SQL_DOUBLE, "SQL_DOUBLE"},
    {SQL_TYPE_DATE, "SQL_TYPE_DATE"},
    {SQL_TYPE_TIMESTAMP, "SQL_TYPE_TIMESTAMP"},
};

template<std::size_t N>
std::string NameOf(const TypeName (&names)[N], SQLSMALLINT type)
{
    for (const TypeName& name : names)
        if (name.type == type)
            return name.name;
    return std::to_string(type);
}

template<class T>
T Read(const void* from) noexcept
{
    T value;
    std::memcpy(&value, from, sizeof(T));
    return value;
}

SQLLEN LengthOf(const Binding& binding)
{
    if (binding.length && *binding.length != SQL_NTS)
        return *binding.length;
    if (binding.cType == SQL_C_CHAR)
        return static_cast<SQLLEN>(std::strlen(static_cast<const char*>(binding.value)));
    return static_cast<SQLLEN>(2 * ToUtf16(ToUtf8(static_cast<const SQLWCHAR*>(binding.value), SQL_NTS)).size());
}

std::string Printed(const SQL_TIMESTAMP_STRUCT& t)
{
    char text[64];
    std::snprintf(text, sizeof text, "%04d-%02u-%02u %02u:%02u:%02u.%09u", t.year, t.month, t.day, t.hour, t.minute,
                  t.second, static_cast<unsigned>(t.fraction));
    return text;
}

std::string Printed(const SQL_DATE_STRUCT& d)
{
    char text[32];
    std::snprintf(text, sizeof text, "%04d-%02u-%02u", d.year, d.month, d.day);
    return text;
}

std::string PrintedText(const Binding& binding)
{
    const SQLLEN length = LengthOf(binding);
    if (binding.cType == SQL_C_WCHAR)
        return std::to_string(length / 2) + " characters: " +
               ToUtf8(static_cast<const SQLWCHAR*>(binding.value), static_cast<SQLINTEGER>(length / 2));
    return std::to_string(length) +
           " bytes: " + std::string(static_cast<const char*>(binding.value), static_cast<std::size_t>(length));
}

std::string Printed(const Binding& binding)
{
    switch (binding.cType) {
    case SQL_C_CHAR:
    case SQL_C_WCHAR:
        return PrintedText(binding);
    case SQL_C_BINARY:
        return std::to_string(LengthOf(binding)) + " bytes";
    case SQL_C_LONG:
    case SQL_C_SLONG:
        return std::to_string(Read<SQLINTEGER>(binding.value));
    case SQL_C_SSHORT:
        return std::to_string(Read<SQLSMALLINT>(binding.value));
    case SQL_C_SBIGINT:
        return std::to_string(Read<SQLBIGINT>(binding.value));
    case SQL_C_DOUBLE: {
        char text[40];
        std::snprintf(text, sizeof text, "%.17g", Read<double>(binding.value));
        return text;
    }
    case SQL_C_TYPE_TIMESTAMP:
        return Printed(Read<SQL_TIMESTAMP_STRUCT>(binding.value));
    case SQL_C_TYPE_DATE:
        return Printed(Read<SQL_DATE_STRUCT>(binding.value));
    default:
        return "?";
    }
}

int FromHex(char c) noexcept { return c <= '9' ? c - '0' : (c | 0x20) - 'a' + 10; }

/// 0xAB as bytes.
std::string Bytes(std::string_view hex)
{
    std::string bytes;
    for (std::size_t i = 2; i + 1 < hex.size(); i += 2)
        bytes += static_cast<char>(FromHex(hex[i]) * 16 + FromHex(hex[i + 1]));
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
std::optional<std::string> Converted(const std::string& text, SQLSMALLINT sqlType, SQLSMALLINT cType)
{
    const bool isBinary = sqlType == SQL_VARBINARY;
    switch (cType) {
    case SQL_C_CHAR:
        return isBinary ? text.substr(2) : text;
    case SQL_C_WCHAR: {
        const std::u16string wide = ToUtf16(isBinary ? text.substr(2) : text);
        return std::string(reinterpret_cast<const char*>(wide.data()), wide.size() * 2);
    }
    case SQL_C_BINARY:
        return isBinary ? Bytes(text) : text;
    case SQL_C_LONG:
    case SQL_C_SLONG:
        return AsBytes(static_cast<SQLINTEGER>(std::atol(text.c_str())));
    case SQL_C_SSHORT:
        return AsBytes(static_cast<SQLSMALLINT>(std::atol(text.c_str())));
    case SQL_C_SBIGINT:
        return AsBytes(static_cast<SQLBIGINT>(std::atoll(text.c_str())));
    case SQL_C_BIT:
        return AsBytes(static_cast<SQLCHAR>(std::atol(text.c_str())));
    case SQL_C_DOUBLE:
        return AsBytes(std::atof(text.c_str()));
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
    {"varbinary", SQL_VARBINARY, 0, 0}, {"int", SQL_INTEGER, 10, 0},    {"smallint", SQL_SMALLINT, 5, 0},
    {"bigint", SQL_BIGINT, 19, 0},      {"bit", SQL_BIT, 1, 0},         {"money", SQL_DECIMAL, 19, 4},
    {"float", SQL_FLOAT, 53, 0},        {"date", SQL_TYPE_DATE, 10, 0}, {"datetime", SQL_TYPE_TIMESTAMP, 23, 3},
};

} // namespace

std::u16string ToUtf16(std::string_view utf8)
{
    std::u16string wide;
    for (std::size_t i = 0; i < utf8.size();) {
        const auto lead = static_cast<unsigned char>(utf8[i++]);
        const int more = lead >= 0xF0 ? 3 : lead >= 0xE0 ? 2 : lead >= 0xC0 ? 1 : 0;
        char32_t code = more == 3 ? lead & 7u : more == 2 ? lead & 15u : more == 1 ? lead & 31u : lead;
        for (int k = 0; k < more && i < utf8.size(); ++k)
            code = code << 6 | (static_cast<unsigned char>(utf8[i++]) & 63u);
        if (code >= 0x10000) {
            wide += static_cast<char16_t>(0xD800 + ((code - 0x10000) >> 10));
            code = 0xDC00 + ((code - 0x10000) & 0x3FF);
        }
        wide += static_cast<char16_t>(code);
    }
    return wide;
}

std::string ToUtf8(std::u16string_view utf16)
{
    std::string text;
    for (std::size_t i = 0; i < utf16.size(); ++i) {
        char32_t code = utf16[i];
        if (code >= 0xD800 && code < 0xDC00 && i + 1 < utf16.size())
            code = 0x10000 + ((code - 0xD800) << 10) + (utf16[++i] - 0xDC00u);
        if (code < 0x80) {
            text += static_cast<char>(code);
            continue;
        }
        const int more = code < 0x800 ? 1 : code < 0x10000 ? 2 : 3;
        constexpr int kLead[] = {0, 0xC0, 0xE0, 0xF0};
        text += static_cast<char>(static_cast<char32_t>(kLead[more]) | code >> (6 * more));
        for (int k = more - 1; k >= 0; --k)
            text += static_cast<char>(0x80 | (code >> (6 * k) & 63));
    }
    return text;
}

std::string ToUtf8(const SQLWCHAR* text, SQLINTEGER length)
{
    std::u16string wide;
    for (SQLINTEGER i = 0; text && (length == SQL_NTS ? text[i] != 0 : i < length); ++i)
        wide += static_cast<char16_t>(text[i]);
    return ToUtf8(wide);
}

std::optional<Message> RefusalOfTypes(const Binding& binding)
{
    if (NameOf(kSqlTypes, binding.sqlType) == std::to_string(binding.sqlType))
        return Message{"HY004", 0, "Invalid SQL data type"};
    const SQLSMALLINT type = binding.sqlType;
    const SQLULEN most = type == SQL_WCHAR || type == SQL_WVARCHAR                                                ? 4000
                         : type == SQL_CHAR || type == SQL_VARCHAR || type == SQL_BINARY || type == SQL_VARBINARY ? 8000
                         : type == SQL_DECIMAL || type == SQL_NUMERIC                                             ? 38
                                                                                                                  : 0;
    const bool isMax = binding.size == 0 && type != SQL_DECIMAL && type != SQL_NUMERIC; // nvarchar(max)
    if (most > 0 && !isMax && (binding.size > most || binding.size == 0))
        return Message{"HY104", 0, "Invalid precision value"};
    return std::nullopt;
}

std::optional<Message> RefusalOfValue(const Binding& binding)
{
    if (binding.IsNull())
        return std::nullopt;
    if (binding.sqlType == SQL_TYPE_TIMESTAMP && binding.cType == SQL_C_TYPE_TIMESTAMP) {
        SQLUINTEGER unit = 1000000000;
        for (SQLSMALLINT i = 0; i < binding.digits; ++i)
            unit /= 10;
        if (Read<SQL_TIMESTAMP_STRUCT>(binding.value).fraction % unit != 0)
            return Message{"22008", 0,
                           "Datetime field overflow. Fractional second precision exceeds the scale specified in the "
                           "parameter binding."};
    }
    const bool isText = binding.cType == SQL_C_CHAR || binding.cType == SQL_C_WCHAR || binding.cType == SQL_C_BINARY;
    const auto units = isText ? static_cast<SQLULEN>(LengthOf(binding)) / (binding.cType == SQL_C_WCHAR ? 2 : 1) : 0;
    const bool hasSize = ShapeOf("nvarchar").sqlType == binding.sqlType || binding.sqlType == SQL_VARCHAR ||
                         binding.sqlType == SQL_VARBINARY;
    if (hasSize && binding.size > 0 && units > binding.size)
        return Message{"22001", 0, "String data, right truncation"};
    return std::nullopt;
}

std::string Describe(const Binding& binding)
{
    return NameOf(kCTypes, binding.cType) + " as " + NameOf(kSqlTypes, binding.sqlType) + "(" +
           std::to_string(binding.size) + "," + std::to_string(binding.digits) + ") " +
           (binding.IsNull() ? "NULL" : Printed(binding));
}

const ColumnShape& ShapeOf(std::string_view type) noexcept
{
    const auto* const found =
        std::find_if(std::begin(kShapes), std::end(kShapes), [&](const ColumnShape& s) { return type == s.type; });
    return found == std::end(kShapes) ? kShapes[0] : *found;
}

SQLRETURN Give(const Cell& cell, const ColumnShape& shape, Reading& reading, SQLSMALLINT cType, SQLPOINTER buffer,
               SQLLEN capacity, SQLLEN* length, bool hidesLength)
{
    if (!cell) {
        if (length)
            *length = SQL_NULL_DATA;
        return length ? SQL_SUCCESS : SQL_ERROR;
    }
    if (!reading.isBegun) {
        const std::optional<std::string> bytes = Converted(*cell, shape.sqlType, cType);
        if (!bytes)
            return SQL_ERROR;
        reading = {*bytes, cType, true};
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
    if (end > 0 && capacity >= end)
        std::memset(static_cast<char*>(buffer) + given, 0, static_cast<std::size_t>(end));
    if (length)
        *length = given < all && hidesLength ? SQL_NO_TOTAL : all;
    reading.bytes.erase(0, static_cast<std::size_t>(given));
    return given < all ? SQL_SUCCESS_WITH_INFO : SQL_SUCCESS;
}

} // namespace OdbcFake
