#include "Cellar/detail/ValueTypes.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

#include "Afx/text/Ascii.h"

namespace Cellar
{
namespace Detail
{
namespace
{

using Kind = Value::Kind;
using Type = Placeholder::Type;

bool IsInteger(const Value& value) noexcept { return value.GetKind() == Kind::Integer; }
bool IsInt32(const Value& value) noexcept
{
    return IsInteger(value) && value.GetInteger() >= INT32_MIN && value.GetInteger() <= INT32_MAX;
}
bool IsText(const Value& value) noexcept { return value.GetKind() == Kind::Text; }
bool IsBinary(const Value& value) noexcept { return value.GetKind() == Kind::Binary; }
bool IsMoment(const Value& value) noexcept
{
    return value.GetKind() == Kind::Date || value.GetKind() == Kind::DateTime;
}
bool IsMoney(const Value& value) noexcept { return value.GetKind() == Kind::Money; }
bool IsFinite(const Value& value) noexcept { return value.GetKind() == Kind::Real && std::isfinite(value.GetReal()); }

/// In the order of Placeholder::Type.
constexpr PlaceholderRule kPlaceholders[] = {
    {"%s", Type::Text, "text", IsText},
    {"%d", Type::Int, "an integer of 32 bits", IsInt32},
    {"%ld", Type::Long, "an integer of 32 bits", IsInt32},
    {"%I64d", Type::Int64, "an integer", IsInteger},
    {"%b", Type::Binary, "bytes", IsBinary},
    {"%t", Type::DateTime, "a date or date-time", IsMoment},
    {"%m", Type::Money, "an amount", IsMoney},
    {"%f", Type::Real, "a finite number", IsFinite},
};

bool HasShape(std::string_view text, std::string_view shape) noexcept
{
    return text.size() == shape.size() && std::equal(text.begin(), text.end(), shape.begin(), [](char c, char s) {
               return s == '0' ? Afx::IsDigit(c) : c == s;
           });
}

void ToInteger(Value& value)
{
    const std::int64_t integer = ToInt64(value, -1);
    if (integer == ToInt64(value, 0))
        value.SetInteger(Kind::Integer, integer);
}

void ToPlainText(Value& value) { value = ToText(value); }
void ToBinary(Value& value) { value = ToBytes(value); }

void ToDay(Value& value)
{
    if (IsText(value) && HasShape(value.View(), "0000-00-00"))
        value.SetKind(Kind::Date);
    else if (const Kiln::CDate date = ToDate(value); date.IsValid())
        value = date;
}

void ToMoment(Value& value)
{
    if (IsText(value) && HasShape(value.View(), "0000-00-00 00:00:00.000"))
        value.SetKind(Kind::DateTime);
    else if (const COleDateTime time = ToDateTime(value); time.GetStatus() == COleDateTime::valid)
        value = time;
}

void ToMoney(Value& value)
{
    if (IsInteger(value))
        value.SetKind(Kind::Money);
    else if (const Kiln::CAmt amount = ToAmount(value); amount.IsValid())
        value = amount;
}

void ToReal(Value& value)
{
    const double real = ToDouble(value, -1.0);
    if (!(real < ToDouble(value, 0.0)) && !(real > ToDouble(value, 0.0)))
        value = real;
}

/// In the order of ColumnType.
constexpr ColumnRule kColumns[] = {
    {ColumnType::Int, "%ld", ToInteger, "INTEGER", "integer", "int"},
    {ColumnType::SmallInt, "%d", ToInteger, "INTEGER", "smallint", "smallint"},
    {ColumnType::Bit, "%d", ToInteger, "INTEGER", "smallint", "bit"},
    {ColumnType::Text, "%s", ToPlainText, "TEXT COLLATE NOCASE", "text COLLATE morvut_nocase", "nvarchar(max)"},
    {ColumnType::Binary, "%b", ToBinary, "BLOB", "bytea", "varbinary(max)"},
    {ColumnType::Date, "%t", ToDay, "TEXT", "date", "date"},
    {ColumnType::DateTime, "%t", ToMoment, "TEXT", "timestamp(3)", "datetime2(3)"},
    {ColumnType::Money, "%m", ToMoney, "INTEGER", "numeric(19,4)", "money"}, // SQLite: ten-thousandths
    {ColumnType::Double, "%f", ToReal, "REAL", "double precision", "float"},
};

template<class Rule, std::size_t N>
constexpr bool AreInOrder(const Rule (&rules)[N]) noexcept
{
    for (std::size_t i = 0; i < N; ++i)
        if (static_cast<std::size_t>(rules[i].type) != i)
            return false;
    return true;
}
static_assert(AreInOrder(kPlaceholders) && AreInOrder(kColumns));

} // namespace

const PlaceholderRule& RuleOf(Placeholder::Type type) noexcept { return kPlaceholders[static_cast<std::size_t>(type)]; }
const ColumnRule& RuleOf(ColumnType type) noexcept { return kColumns[static_cast<std::size_t>(type)]; }

std::span<const PlaceholderRule> PlaceholderRules() noexcept { return kPlaceholders; }

void Convert(ColumnType type, Value& value) { RuleOf(type).convert(value); }

} // namespace Detail

const SqlText& PlaceholderOf(ColumnType type) noexcept { return Detail::RuleOf(type).placeholder; }

} // namespace Cellar
