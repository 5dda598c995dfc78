#pragma once

// The arguments of a rule at the prompt: the type of a function's parameter says what is taken.

#include <cstdint>
#include <limits>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

#include "Afx/Platform.h"
#include "Afx/text/CString.h"
#include "Afx/text/Numbers.h"
#include "Kiln/CAmt.h"
#include "Kiln/CDate.h"
#include "MorvUt/taxyear/DateStrings.h"

namespace Morv
{

/// A tax year less kFirstRealTaxYear.
enum RelativeYear : short;

/// One of four.
enum Choice : int;

/// A text that tells who somebody is: it is never printed.
class Identifier : public CString
{};

/// A long date, for functions that take the number and those that take its record.
struct LongDate : X_DateStr_tag
{
    long number = 0;
    operator long() const { return number; }
    operator const X_DateStr_tag*() const { return this; }
};

/// What is taken for a value of a type.
struct Kind
{
    std::string_view name;
    std::string_view expected; // for people
    std::int64_t lowest = std::numeric_limits<std::int64_t>::min();
    std::int64_t highest = std::numeric_limits<std::int64_t>::max();
};

inline constexpr std::string_view kIdentifier = "identifier";

template<class>
struct Of
{};
constexpr Kind KindOf(Of<Kiln::CDate>) { return {"date", "a date as 2024-04-05, or null"}; }
constexpr Kind KindOf(Of<LongDate>) { return {"longdate", "a long date as 20240405 (or 2024-04-05), null or unknown"}; }
constexpr Kind KindOf(Of<__int64>) { return {"pence", "a whole number of pence"}; }
constexpr Kind KindOf(Of<Kiln::CAmt>) { return {"amount", "a whole number of pence, or null"}; }
constexpr Kind KindOf(Of<DECIMAL>) { return {"decimal", "a decimal number of at most 28 decimals, as 12.3456"}; }
constexpr Kind KindOf(Of<double>) { return {"percent", "a number in per cent, as 22.5"}; }
constexpr Kind KindOf(Of<short>)
{
    return {"year", "a tax year as the calendar year in which it ends, as 2024", -32768, 32767};
}
constexpr Kind KindOf(Of<RelativeYear>) { return {"relative", "a tax year less 1991, as 33 for 2024", -32768, 32767}; }
constexpr Kind KindOf(Of<int>) { return {"int", "a whole number of 32 bits", -2147483648LL, 2147483647}; }
constexpr Kind KindOf(Of<Choice>) { return {"index", "0, 1, 2 or 3", 0, 3}; }
constexpr Kind KindOf(Of<bool>) { return {"flag", "0 or 1", 0, 1}; }
constexpr Kind KindOf(Of<std::uint8_t>) { return {"byte", "a whole number from 0 to 255", 0, 255}; }
constexpr Kind KindOf(Of<std::uint16_t>) { return {"word", "a whole number from 0 to 65535", 0, 65535}; }
constexpr Kind KindOf(Of<std::string>) { return {"bytes", "any text"}; }
constexpr Kind KindOf(Of<CString>) { return {"text", "any text without a zero byte"}; }
constexpr Kind KindOf(Of<Identifier>) { return {kIdentifier, "any text without a zero byte; it is not printed again"}; }

// Each reads the whole of `text`; false: it is none such.

bool ReadValue(std::string_view text, Kiln::CDate& value);
bool ReadValue(std::string_view text, LongDate& value);
bool ReadValue(std::string_view text, Kiln::CAmt& value);
bool ReadValue(std::string_view text, DECIMAL& value);
bool ReadValue(std::string_view text, double& value);
bool ReadValue(std::string_view text, std::string& value);
bool ReadValue(std::string_view text, CString& value);
template<class Number>
requires std::is_integral_v<Number> || std::is_enum_v<Number>
bool ReadValue(std::string_view text, Number& value)
{
    constexpr Kind kKind = KindOf(Of<Number>());
    const auto number = Afx::ParseWhole<std::int64_t>(text);
    value = static_cast<Number>(number.value_or(0));
    return number && *number >= kKind.lowest && *number <= kKind.highest;
}

/// One argument of a rule.
struct Argument
{
    std::string_view name;
    Kind kind;
    bool isOptional = false; // left out, it is 0
};

/// An argument that its kind does not take.
struct WrongArgument
{
    std::size_t place; // from 0
};

/// Reads the next of `texts`, at `place`; one that is left out keeps its value. Throws WrongArgument.
template<class Value>
void ReadNext(const std::vector<std::string>& texts, std::size_t& place, Value& value)
{
    if (place < texts.size() && !ReadValue(texts[place], value))
        throw WrongArgument{place};
    ++place;
}

} // namespace Morv
