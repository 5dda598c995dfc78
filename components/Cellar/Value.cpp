#include "Cellar/Value.h"

#include <cmath>
#include <limits>
#include <optional>
#include <utility>

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
    switch (value.GetKind()) {
    case Value::Kind::Integer:
    case Value::Kind::Money:
        return value.GetInteger();
    case Value::Kind::Real:
        return WholeNumber(value.GetReal());
    case Value::Kind::Text:
        return Afx::ParseWhole<std::int64_t>(value.View());
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
    if (value)
        SetText(Kind::Text, value);
}

Value::Value(const Bytes& value)
    : Value(Kind::Binary, std::string_view(reinterpret_cast<const char*>(value.data()), value.size()))
{}

Value::Value(const Kiln::CDate& value)
{
    if (value.IsValid())
        SetText(Kind::Date, value.FormatIso().View());
}

Value::Value(const COleDateTime& value)
{
    if (value.GetStatus() == COleDateTime::valid)
        SetText(Kind::DateTime, value.FormatIso().View());
}

Value::Value(const Kiln::CAmt& value)
{
    if (value.IsValid())
        SetInteger(Kind::Money, value.GetValue());
}

Value& Value::operator=(const Value& other)
{
    Value copy(other);
    return *this = std::move(copy);
}

void Value::Hold(std::string_view text)
{
    m_size = 0; // nothing is held while the memory may be refused
    char* const bytes = new char[text.size()];
    std::memcpy(bytes, text.data(), text.size());
    m_content.held = {bytes, text.size()};
    m_size = kHeld;
}

void Value::Drop() noexcept
{
    delete[] m_content.held.bytes;
    Forget();
}

bool operator==(const Value& a, const Value& b) noexcept
{
    if (a.m_kind != b.m_kind)
        return false;
    switch (a.m_kind) {
    case Value::Kind::Null:
        return true;
    case Value::Kind::Integer:
    case Value::Kind::Money:
        return a.m_content.integer == b.m_content.integer;
    case Value::Kind::Real:
        return a.m_content.real == b.m_content.real;
    default:
        return a.View() == b.View();
    }
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
    switch (value.GetKind()) {
    case Value::Kind::Integer:
        return static_cast<double>(value.GetInteger());
    case Value::Kind::Money:
        return static_cast<double>(value.GetInteger()) / kTenThousand;
    case Value::Kind::Real:
        return value.GetReal();
    case Value::Kind::Text: {
        const auto number = Afx::ParseWhole<double>(value.View());
        return number && std::isfinite(*number) ? *number : whenNull;
    }
    default:
        return whenNull;
    }
}

CString ToText(const Value& value)
{
    switch (value.GetKind()) {
    case Value::Kind::Integer:
        return CString(std::to_string(value.GetInteger()));
    case Value::Kind::Real:
        return CString(Decimal(value.GetReal()));
    case Value::Kind::Money:
        return Kiln::CAmt(value.GetInteger()).Format();
    case Value::Kind::Binary:
        return Afx::IsUtf8(value.View()) ? CString(value.View()) : CString();
    default:
        return CString(value.View());
    }
}

Bytes ToBytes(const Value& value)
{
    if (value.GetKind() != Value::Kind::Binary && value.GetKind() != Value::Kind::Text)
        return {};
    return Bytes(value.View().begin(), value.View().end());
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
    return COleDateTime::ParseIso(IsTextual(value.GetKind()) ? value.View() : std::string_view());
}

Kiln::CAmt ToAmount(const Value& value) noexcept
{
    switch (value.GetKind()) {
    case Value::Kind::Null:
        return {};
    case Value::Kind::Text: {
        Kiln::CAmt amount;
        return amount.Parse(CString(value.View())) ? amount : Kiln::CAmt::Invalid();
    }
    default: {
        const auto tenThousandths = Integer(value);
        return tenThousandths ? Kiln::CAmt(*tenThousandths) : Kiln::CAmt::Invalid();
    }
    }
}

} // namespace Cellar
