#pragma once

// The arguments of a rule at the prompt: their kinds, and their values once read.

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "Afx/Platform.h"
#include "Kiln/CAmt.h"
#include "Kiln/CDate.h"
#include "MorvUt/taxyear/DateStrings.h"

namespace Morv
{

/// One argument of a rule, as the table of rules writes it: "name:kind", with a ? behind the name when it may be left
/// out (then it is 0).
struct Argument
{
    std::string_view name;
    std::string_view kind;
    bool isOptional = false;
};

/// The arguments that a row of the table declares: "date:date year:year".
std::vector<Argument> DeclaredArguments(std::string_view declaration);

/// What a kind takes, for people; empty for a kind that there is not.
std::string_view ExpectedOf(std::string_view kind);

/// Arguments that were read by their kinds.
class Values
{
public:
    /// Reads `texts`. Throws CommandError (BadInput) that says which argument is wrong and what was expected.
    Values(std::string_view rule, const std::vector<Argument>& declared, const std::vector<std::string>& texts);

    const Kiln::CDate& Date(std::size_t i) const { return m_values[i].date; }
    const Kiln::CAmt& Amount(std::size_t i) const { return m_values[i].amount; }
    const char* Text(std::size_t i) const { return m_values[i].text.c_str(); }
    const std::string& Bytes(std::size_t i) const { return m_values[i].text; }
    double Real(std::size_t i) const { return m_values[i].real; }
    __int64 Pence(std::size_t i) const { return m_values[i].number; }
    int Int(std::size_t i) const { return static_cast<int>(m_values[i].number); }
    short Year(std::size_t i) const { return static_cast<short>(m_values[i].number); }
    long LongDate(std::size_t i) const { return static_cast<long>(m_values[i].number); }
    X_DateStr_tag Record(std::size_t i) const; // of a long date
    DECIMAL Decimal(std::size_t i) const { return m_values[i].decimal; }

private:
    struct Value
    {
        std::int64_t number = 0;
        double real = 0;
        Kiln::CDate date;
        Kiln::CAmt amount;
        DECIMAL decimal{};
        std::string text;
    };
    struct Kind;
    friend std::string_view ExpectedOf(std::string_view kind);
    static const Kind* FindKind(std::string_view name);

    template<std::int64_t Lowest, std::int64_t Highest>
    static bool ReadNumber(std::string_view text, Value& value);
    static bool ReadReal(std::string_view text, Value& value);
    static bool ReadDate(std::string_view text, Value& value);
    static bool ReadLongDate(std::string_view text, Value& value);
    static bool ReadAmount(std::string_view text, Value& value);
    static bool ReadDecimal(std::string_view text, Value& value);
    static bool ReadText(std::string_view text, Value& value);
    static bool ReadBytes(std::string_view text, Value& value);

    std::vector<Value> m_values;
};

/// What an argument looks like when it is printed again: an identifier of a person is masked.
std::string EchoOf(const Argument& argument, const std::string& text);

} // namespace Morv
