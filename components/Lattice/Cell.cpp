#include "Lattice/Cell.h"

#include <charconv>
#include <cmath>

#include "Afx/text/Utf8.h"
#include "Kiln/controls/AmtEdit.h"
#include "Kiln/controls/DateEdit.h"
#include "Kiln/controls/DoubleEdit.h"

namespace Lattice
{
namespace
{

constexpr int kPercentDecimals = 8, kNumberDecimals = 15;
constexpr double kPercentUnits = 1e8, kExactUnits = 1e15; // from there on a double has no eight decimals

CString FixedDecimals(double value, int decimals)
{
    if (!std::isfinite(value))
        return {};
    char buffer[400];
    const auto end = std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::fixed, decimals).ptr;
    const CString text(std::string(buffer, end));
    return text.SpanIncluding("-0.") == text && text[0] == '-' ? text.Mid(1) : text; // no "-0.00000000"
}

CString ShownChoice(int index, const Choices& choices)
{
    return index >= 0 && static_cast<std::size_t>(index) < choices.size() ? choices[static_cast<std::size_t>(index)]
                                                                          : CString();
}

Typed ReadAmount(const CString& text)
{
    const Kiln::CAmt amount = Kiln::ParseAmountShown(text);
    if (amount.GetStatus() == Kiln::CAmt::Status::Invalid)
        return {{}, Kiln::CAmt::WhyNotAmount(text)};
    return {amount, {}};
}

Typed ReadNumber(const CString& text, bool isPercent)
{
    const std::optional<double> number = Kiln::ParseNumber(text);
    if (!number)
        return {{}, isPercent ? "Please enter a percentage, as 33.33." : "Please enter a number, as 12.5."};
    const bool rounds = isPercent && std::abs(*number) < kExactUnits / kPercentUnits;
    return {rounds ? std::round(*number * kPercentUnits) / kPercentUnits : *number, {}};
}

Typed ReadDate(const CString& text)
{
    Kiln::CDate date;
    if (!date.ParseDate(text))
        return {{}, Kiln::CDate::WhyNotDate(text)};
    return {date, {}};
}

Typed ReadCheckBox(const CString& text)
{
    for (const char* const yes : {"1", "x", "yes", "true"})
        if (text.CompareNoCase(yes) == 0)
            return {1, {}};
    for (const char* const no : {"0", "no", "false"})
        if (text.CompareNoCase(no) == 0)
            return {0, {}};
    return {{}, "Please enter yes or no."};
}

Typed ReadChoice(const CString& text, const Choices& choices)
{
    if (choices.empty())
        return {{}, "There is nothing in the list to choose from."};
    CString all;
    for (std::size_t i = 0; i < choices.size(); ++i) {
        if (choices[i].CompareNoCase(text) == 0)
            return {static_cast<int>(i), {}};
        if (i < 10) // a message must stay readable
            all += (all.IsEmpty() ? "" : ", ") + choices[i];
    }
    return {{}, "Please choose one of the list: " + all + (choices.size() > 10 ? " ..." : ".")};
}

} // namespace

CString Shown(const Cell& cell, const Choices& choices)
{
    if (cell.error)
        return "Error";
    struct Visitor
    {
        const Cell& cell;
        const Choices& choices;
        CString operator()(std::monostate) const { return {}; }
        CString operator()(const CString& text) const { return text; }
        CString operator()(const Kiln::CAmt& amount) const
        {
            return cell.isTotal && amount.IsZero() ? CString() : Kiln::FormatAmountShown(amount);
        }
        CString operator()(double number) const
        {
            return cell.format == Format::Percent ? FixedDecimals(number, kPercentDecimals)
                                                  : Kiln::FormatNumber(number, kNumberDecimals);
        }
        CString operator()(const Kiln::CDate& date) const { return Kiln::FormatDateShown(date); }
        CString operator()(int index) const
        {
            return cell.format == Format::CheckBox ? CString(index ? "yes" : "no") : ShownChoice(index, choices);
        }
    };
    return std::visit(Visitor{cell, choices}, cell.value);
}

bool IsEmpty(const Cell& cell)
{
    if (cell.error)
        return false;
    if (const auto* const amount = std::get_if<Kiln::CAmt>(&cell.value))
        return !amount->IsValid() && !amount->IsAuto();
    if (const auto* const text = std::get_if<CString>(&cell.value))
        return text->IsEmpty();
    if (const auto* const date = std::get_if<Kiln::CDate>(&cell.value))
        return !date->IsValid();
    return std::holds_alternative<std::monostate>(cell.value);
}

Typed Read(Format format, const CString& typed, const Choices& choices)
{
    CString text = typed;
    text.Trim();
    if (text.IsEmpty())
        return {};
    switch (format) {
    case Format::Amount:
        return ReadAmount(text);
    case Format::Number:
    case Format::Percent:
        return ReadNumber(text, format == Format::Percent);
    case Format::Date:
        return ReadDate(text);
    case Format::CheckBox:
        return ReadCheckBox(text);
    case Format::Combo:
        return ReadChoice(text, choices);
    default:
        if (Afx::CountCharacters(typed.View()) > CEdit::kLongestLine) // an editor would cut it
            return {{}, "The text is too long: a cell takes 32767 characters."};
        return {typed, {}};
    }
}

} // namespace Lattice
