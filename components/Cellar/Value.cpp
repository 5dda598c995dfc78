#include "Cellar/Value.h"

#include <cmath>
#include <limits>
#include <optional>

#include "Afx/text/Numbers.h"
#include "Afx/text/TextFold.h"
#include "Afx/text/Utf8.h"

namespace Cellar
{
namespace
{

constexpr double kTenThousand = 10'000.0;

std::optional<std::int64_t> WholeNumber(double value) noexcept
{
    const auto whole = Afx::ToInt64(value);
    return whole && static_cast<double>(*whole) == value ? whole : std::nullopt;
}

std::optional<std::int64_t> Integer(const Value& value) noexcept
{
    switch (value.kind) {
    case Value::Kind::Integer:
    case Value::Kind::Money:
        return value.integer;
    case Value::Kind::Real:
        return WholeNumber(value.real);
    case Value::Kind::Text:
        return Afx::ParseWhole<std::int64_t>(value.text);
    default:
        return std::nullopt;
    }
}

std::string Decimal(double value)
{
    char buffer[32]; // the shortest form needs at most 24
    return {buffer, std::to_chars(buffer, buffer + sizeof buffer, value).ptr};
}

bool IsTextual(Value::Kind kind) noexcept
{
    return kind == Value::Kind::Text || kind == Value::Kind::Date || kind == Value::Kind::DateTime;
}

} // namespace

Value::Value(const char* value)
{
    if (!value)
        return;
    kind = Kind::Text;
    text = value;
}

Value::Value(const Kiln::CDate& value)
{
    if (!value.IsValid())
        return;
    kind = Kind::Date;
    text = value.FormatIso().Str();
}

Value::Value(const COleDateTime& value)
{
    if (value.GetStatus() != COleDateTime::valid)
        return;
    kind = Kind::DateTime;
    text = value.FormatIso().Str();
}

Value::Value(const Kiln::CAmt& value)
{
    if (!value.IsValid())
        return;
    kind = Kind::Money;
    integer = value.GetValue();
}

std::int64_t ToInt64(const Value& value, std::int64_t whenNull) noexcept { return Integer(value).value_or(whenNull); }

long ToLong(const Value& value, long whenNull) noexcept
{
    using Limits = std::numeric_limits<std::int32_t>;
    const auto integer = Integer(value);
    if (!integer || *integer < Limits::min() || *integer > Limits::max())
        return whenNull;
    return static_cast<long>(*integer);
}

short ToShort(const Value& value, short whenNull) noexcept
{
    const long number = ToLong(value, whenNull);
    return number == static_cast<short>(number) ? static_cast<short>(number) : whenNull;
}

double ToDouble(const Value& value, double whenNull) noexcept
{
    switch (value.kind) {
    case Value::Kind::Integer:
        return static_cast<double>(value.integer);
    case Value::Kind::Money:
        return static_cast<double>(value.integer) / kTenThousand;
    case Value::Kind::Real:
        return value.real;
    case Value::Kind::Text: {
        const auto number = Afx::ParseWhole<double>(value.text);
        return number && std::isfinite(*number) ? *number : whenNull;
    }
    default:
        return whenNull;
    }
}

CString ToText(const Value& value)
{
    switch (value.kind) {
    case Value::Kind::Integer:
        return CString(std::to_string(value.integer));
    case Value::Kind::Real:
        return CString(Decimal(value.real));
    case Value::Kind::Money:
        return Kiln::CAmt(value.integer).Format();
    case Value::Kind::Binary:
        return Afx::IsUtf8(value.text) ? CString(value.text) : CString();
    default:
        return CString(value.text);
    }
}

Bytes ToBytes(const Value& value)
{
    if (value.kind != Value::Kind::Binary && value.kind != Value::Kind::Text)
        return {};
    return Bytes(value.text.begin(), value.text.end());
}

Kiln::CDate ToDate(const Value& value) noexcept
{
    if (value.IsNull())
        return {};
    const COleDateTime time = ToDateTime(value);
    if (time.GetStatus() != COleDateTime::valid)
        return Kiln::CDate::Invalid();
    return Kiln::CDate::FromOleDate(std::trunc(time.GetOleDate()));
}

COleDateTime ToDateTime(const Value& value) noexcept
{
    if (value.IsNull())
        return COleDateTime::Null();
    return COleDateTime::ParseIso(IsTextual(value.kind) ? std::string_view(value.text) : std::string_view());
}

Kiln::CAmt ToAmount(const Value& value) noexcept
{
    switch (value.kind) {
    case Value::Kind::Null:
        return {};
    case Value::Kind::Text: {
        Kiln::CAmt amount;
        return amount.Parse(CString(value.text)) ? amount : Kiln::CAmt::Invalid();
    }
    default: {
        const auto tenThousandths = Integer(value);
        return tenThousandths ? Kiln::CAmt(*tenThousandths) : Kiln::CAmt::Invalid();
    }
    }
}

} // namespace Cellar
