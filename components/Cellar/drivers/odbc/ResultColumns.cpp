#include "Cellar/drivers/odbc/ResultColumns.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <optional>
#include <string_view>

#include "Afx/text/Numbers.h"
#include "Cellar/drivers/odbc/WideText.h"

namespace Cellar::Odbc
{
namespace
{

constexpr std::size_t kPiece = 2048;   // characters of a long value that are read at once
constexpr std::size_t kShortValue = 8; // bytes that any value counts as

/// "-12.3400" as ten-thousandths; nothing when it is no number of at most four decimals.
std::optional<std::int64_t> ToTenThousandths(std::string_view decimal)
{
    std::string digits(decimal.substr(0, decimal.find('.')));
    std::string part(digits.size() < decimal.size() ? decimal.substr(digits.size() + 1) : std::string_view());
    if (part.size() > 4 || digits.empty())
        return std::nullopt;
    part.resize(4, '0');
    if (digits == "-") // ".5" is how some servers write a half
        digits = "-0";
    return Afx::ParseWhole<std::int64_t>(digits + part);
}

void SetDate(Value& value, const SQL_DATE_STRUCT& date)
{
    std::array<char, 40> text;
    const int size =
        std::snprintf(text.data(), text.size(), "%04d-%02u-%02u", date.year, unsigned{date.month}, unsigned{date.day});
    value.SetText(Value::Kind::Date, {text.data(), static_cast<std::size_t>(size)});
}

void SetMoment(Value& value, const SQL_TIMESTAMP_STRUCT& moment)
{
    std::array<char, 80> text;
    const int size =
        std::snprintf(text.data(), text.size(), "%04d-%02u-%02u %02u:%02u:%02u.%03u", moment.year,
                      unsigned{moment.month}, unsigned{moment.day}, unsigned{moment.hour}, unsigned{moment.minute},
                      unsigned{moment.second}, static_cast<unsigned>(moment.fraction / 1'000'000));
    value.SetText(Value::Kind::DateTime, {text.data(), static_cast<std::size_t>(size)});
}

} // namespace

ResultColumns::Form ResultColumns::FormOf(SQLSMALLINT type, SQLULEN size, SQLSMALLINT digits) noexcept
{
    switch (type) {
    case SQL_BIT:
    case SQL_TINYINT:
    case SQL_SMALLINT:
    case SQL_INTEGER:
    case SQL_BIGINT:
        return Form::Integer;
    case SQL_REAL:
    case SQL_FLOAT:
    case SQL_DOUBLE:
        return Form::Real;
    case SQL_NUMERIC:
    case SQL_DECIMAL:
        return size == 19 && digits == 4 ? Form::Money : Form::Decimal;
    case SQL_TYPE_DATE:
        return Form::Date;
    case SQL_TYPE_TIMESTAMP:
        return Form::DateTime;
    case SQL_BINARY:
    case SQL_VARBINARY:
    case SQL_LONGVARBINARY:
        return Form::Binary;
    default:
        return Form::Text;
    }
}

bool ResultColumns::Describe(SQLHSTMT statement)
{
    SQLSMALLINT count = 0;
    if (!IsDone(SQLNumResultCols(statement, &count)))
        return false;
    m_columns.clear();
    for (SQLSMALLINT place = 1; place <= count; ++place) {
        std::array<SQLWCHAR, 256> name{};
        SQLSMALLINT length = 0, type = 0, digits = 0, mayBeNull = 0;
        SQLULEN size = 0;
        if (!IsDone(SQLDescribeColW(statement, static_cast<SQLUSMALLINT>(place), name.data(),
                                    static_cast<SQLSMALLINT>(name.size()), &length, &type, &size, &digits, &mayBeNull)))
            return false;
        Column& column = m_columns.emplace_back();
        const auto used = std::min<std::size_t>(static_cast<std::size_t>(length), name.size() - 1);
        AppendUtf8(column.name, {reinterpret_cast<const char16_t*>(name.data()), used});
        column.form = FormOf(type, size, digits);
    }
    return m_areKnown = true;
}

bool ResultColumns::Read(SQLHSTMT statement, int column, Value& value)
{
    const Form form = m_columns.at(static_cast<std::size_t>(column)).form;
    const auto place = static_cast<SQLUSMALLINT>(column + 1);
    m_bytes += kShortValue;
    return form == Form::Text || form == Form::Binary ? ReadLong(statement, place, form, value)
                                                      : ReadFixed(statement, place, form, value);
}

bool ResultColumns::ReadFixed(SQLHSTMT statement, SQLUSMALLINT place, Form form, Value& value)
{
    union {
        SQLBIGINT integer;
        SQL_DATE_STRUCT date;
        SQL_TIMESTAMP_STRUCT moment;
        char number[80]; // numbers as text: neither rounded nor in another locale's way
    } data;
    SQLLEN length = 0;
    const SQLSMALLINT type = form == Form::Integer    ? SQL_C_SBIGINT
                             : form == Form::Date     ? SQL_C_TYPE_DATE
                             : form == Form::DateTime ? SQL_C_TYPE_TIMESTAMP
                                                      : SQL_C_CHAR;
    if (!IsDone(SQLGetData(statement, place, type, &data, sizeof data, &length)))
        return false;
    if (length == SQL_NULL_DATA) {
        value = Value();
    } else if (form == Form::Integer) {
        value.SetInteger(Value::Kind::Integer, data.integer);
    } else if (form == Form::Date) {
        SetDate(value, data.date);
    } else if (form == Form::DateTime) {
        SetMoment(value, data.moment);
    } else {
        const std::string_view number = data.number;
        const auto money = form == Form::Money ? ToTenThousandths(number) : std::nullopt;
        const auto real = form == Form::Real ? Afx::ParseWhole<double>(number) : std::nullopt;
        if (money)
            value.SetInteger(Value::Kind::Money, *money);
        else if (real)
            value = Value(*real);
        else
            value.SetText(Value::Kind::Text, number);
    }
    return true;
}

/// In pieces of which the driver gives all but the last one in full.
bool ResultColumns::ReadLong(SQLHSTMT statement, SQLUSMALLINT place, Form form, Value& value)
{
    const bool isText = form == Form::Text;
    const std::size_t room = kPiece * sizeof(char16_t), end = isText ? sizeof(char16_t) : 0;
    m_wide.resize(kPiece);
    m_text.clear();
    for (;;) {
        SQLLEN length = 0;
        const SQLRETURN result = SQLGetData(statement, place, isText ? SQL_C_WCHAR : SQL_C_BINARY, m_wide.data(),
                                            static_cast<SQLLEN>(room), &length);
        if (result == SQL_NO_DATA)
            break;
        if (!IsDone(result))
            return false;
        if (length == SQL_NULL_DATA) {
            value = Value();
            return true;
        }
        const bool isLast = length != SQL_NO_TOTAL && static_cast<std::size_t>(length) <= room - end;
        const std::size_t bytes = isLast ? static_cast<std::size_t>(length) : room - end;
        if (!isText)
            m_text.append(reinterpret_cast<const char*>(m_wide.data()), bytes);
        else
            m_pending.append(m_wide.data(), bytes / sizeof(char16_t));
        if (isLast)
            break;
    }
    if (isText) {
        AppendUtf8(m_text, m_pending);
        m_pending.clear();
    }
    m_bytes += m_text.size();
    value.SetText(isText ? Value::Kind::Text : Value::Kind::Binary, m_text);
    return true;
}

} // namespace Cellar::Odbc
