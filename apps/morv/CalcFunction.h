#pragma once

// A function of the library as a rule at the prompt: its types say what it takes and how its result is printed.

#include <array>
#include <tuple>
#include <type_traits>

#include "CalcArguments.h"
#include "MorvUt/taxyear/TaxYear.h"
#include "Output.h"

namespace Morv
{

/// A function, ready to be called with texts.
struct CalcFunction
{
    std::array<Kind, 4> kinds; // of its arguments; behind them without a name
    Json (*apply)(const std::vector<std::string>&);
};

/// What is read for a parameter.
template<class Parameter>
using ReadFor = std::conditional_t<
    std::is_same_v<Parameter, const char*>, CString,
    std::conditional_t<std::is_same_v<Parameter, const X_DateStr_tag*>, LongDate, std::remove_cvref_t<Parameter>>>;

/// What a function returns, or writes where its last parameters say.
template<class Result, class Function, class... Values>
Result Returned(Function function, const Values&... values)
{
    Result result{};
    if constexpr (std::is_invocable_v<Function, const Values&..., Result&>) {
        function(values..., result);
    } else if constexpr (std::is_invocable_v<Function, const Values&..., Result*>) {
        function(values..., &result);
    } else if constexpr (std::is_invocable_v<Function, const Values&..., char*, unsigned>) {
        char buffer[64];
        function(values..., buffer, sizeof buffer);
        result = buffer;
    } else {
        result = static_cast<Result>(function(values...));
    }
    return result;
}

// How a result is printed.

inline Json ResultOf(const Kiln::CAmt& amount) { return PenceOf(amount); }
inline Json ResultOf(const Kiln::CDate& date) { return DateOf(date); }
inline Json ResultOf(const CString& text) { return TextOf(text); }
inline Json ResultOf(TaxYear year) { return Json(year.GetRealTaxYear()); }
inline Json ResultOf(const X_DateStr_tag& record)
{
    return {{"day", record.day}, {"month", record.month}, {"year", record.year}};
}
inline Json ResultOf(const Kiln::DatePeriod& period)
{
    return {{"from", DateOf(period.GetFrom())}, {"to", DateOf(period.GetTo())}};
}
template<class Other>
Json ResultOf(const Other& result)
{
    return Json(result);
}

/// Calls a function with the values of `texts`. Throws WrongArgument.
template<auto Function, class Result, class... Parameters>
Json Apply(const std::vector<std::string>& texts)
{
    std::tuple<ReadFor<Parameters>...> values;
    const auto call = [&texts](auto&... value) {
        [[maybe_unused]] std::size_t place = 0;
        (ReadNext(texts, place, value), ...);
        return ResultOf(Returned<Result>(Function, value...));
    };
    return std::apply(call, values);
}

template<auto Function, class Result, class... Parameters>
constexpr CalcFunction CallAs(Result (*)(Parameters...))
{
    return {{KindOf(Of<ReadFor<Parameters>>())...}, Apply<Function, Result, Parameters...>};
}

/// Calls a function by its own type, or where that has another meaning, by one that says it, as in
/// Call<IsValidUTR, bool(Identifier)>.
template<auto Function, class Type = std::remove_pointer_t<decltype(+Function)>>
inline constexpr CalcFunction Call = CallAs<Function>(static_cast<Type*>(nullptr));

} // namespace Morv
