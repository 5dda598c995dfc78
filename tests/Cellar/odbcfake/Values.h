#pragma once

// Bound values and results in the C types of ODBC: those that the library uses. What it begins to use wants a look here
// first, and is refused until then.

#include <sql.h>
#include <sqlext.h>

#include <optional>
#include <string>
#include <string_view>

#include "Script.h"

namespace OdbcFake
{

std::u16string ToUtf16(std::string_view utf8);
/// Of an argument of the interface: `length` in characters, SQL_NTS to its end.
std::string ToUtf8(const SQLWCHAR* text, SQLINTEGER length);

/// What SQLBindParameter was given.
struct Binding
{
    SQLSMALLINT cType = 0, sqlType = 0, digits = 0;
    SQLULEN size = 0;
    SQLPOINTER value = nullptr;
    const SQLLEN* length = nullptr; // bytes

    bool IsNull() const noexcept { return *length == SQL_NULL_DATA; }
};
/// How SQL Server's driver refuses the types or the value; nothing when it takes them.
std::optional<Message> RefusalOfTypes(const Binding& binding);
std::optional<Message> RefusalOfValue(const Binding& binding);
/// Types, length and value for the record: "SQL_C_WCHAR as SQL_WVARCHAR(4000,0) 5 characters: Smith". Bytes are secret.
std::string Describe(const Binding& binding);

/// The SQL type, size and decimal digits by which SQL Server describes a column of the T-SQL type.
struct ColumnShape
{
    const char* type;
    SQLSMALLINT sqlType;
    SQLULEN size;
    SQLSMALLINT digits;
};
const ColumnShape& ShapeOf(std::string_view type) noexcept;

/// One column of the current row on its way to the caller, who may ask for a long value in pieces.
struct Reading
{
    std::string bytes; // as the C type has them, what is left
    bool isBegun = false;
};
/// SQL_SUCCESS, SQL_SUCCESS_WITH_INFO (more to come), SQL_NO_DATA (all given), SQL_ERROR (not as that type).
SQLRETURN Give(const Cell& cell, Reading& reading, SQLSMALLINT cType, SQLPOINTER buffer, SQLLEN capacity,
               SQLLEN* length, bool hidesLength);

} // namespace OdbcFake
