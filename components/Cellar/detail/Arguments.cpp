#include "Cellar/detail/Arguments.h"

#include <cmath>
#include <cstdint>

#include "Cellar/DatabaseError.h"

namespace Cellar::Detail
{
namespace
{

using Kind = Value::Kind;

bool IsInt32(const Value& value) noexcept
{
    return value.kind == Kind::Integer && value.integer >= INT32_MIN && value.integer <= INT32_MAX;
}

struct Rule
{
    const char* placeholder;
    const char* wanted;
    bool (*fits)(const Value& value) noexcept;
};

/// In the order of Placeholder::Type.
constexpr Rule kRules[] = {
    {"%s", "text", [](const Value& v) noexcept { return v.kind == Kind::Text; }},
    {"%d", "an integer of 32 bits", IsInt32},
    {"%ld", "an integer of 32 bits", IsInt32},
    {"%I64d", "an integer", [](const Value& v) noexcept { return v.kind == Kind::Integer; }},
    {"%b", "bytes", [](const Value& v) noexcept { return v.kind == Kind::Binary; }},
    {"%t", "a date or date-time",
     [](const Value& v) noexcept { return v.kind == Kind::Date || v.kind == Kind::DateTime; }},
    {"%m", "an amount", [](const Value& v) noexcept { return v.kind == Kind::Money; }},
    {"%f", "a finite number", [](const Value& v) noexcept { return v.kind == Kind::Real && std::isfinite(v.real); }},
};

[[noreturn]] void Refuse(const std::string& why) { throw DatabaseError(DatabaseError::Category::Syntax, "", why, ""); }

} // namespace

void CheckArguments(const PreparedText& prepared, const std::vector<Value>& values)
{
    if (values.size() != prepared.placeholders.size())
        Refuse("the statement has " + std::to_string(prepared.placeholders.size()) + " placeholders and " +
               std::to_string(values.size()) + " values");
    for (std::size_t i = 0; i < values.size(); ++i) {
        const Rule& rule = kRules[static_cast<std::size_t>(prepared.placeholders[i].type)];
        if (!values[i].IsNull() && !rule.fits(values[i]))
            Refuse("value " + std::to_string(i + 1) + " must be " + rule.wanted + " for its " + rule.placeholder);
    }
}

} // namespace Cellar::Detail
