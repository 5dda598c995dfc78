#include "Kiln/controls/DoubleEdit.h"

#include <algorithm>
#include <charconv>
#include <cmath>

#include "Afx/text/Numbers.h"

namespace Kiln
{
namespace
{

constexpr int kMostDecimals = 15, kDigitsOfAGroup = 3;

/// Commas stand before each group of three of the whole part, or nowhere.
bool CommasFit(const CString& text) noexcept
{
    const int point = text.Find('.') < 0 ? text.GetLength() : text.Find('.');
    if (text.Find(',') < 0)
        return true;
    for (int i = 0; i < text.GetLength(); ++i)
        if ((text[i] == ',') != (i < point && i > 0 && text[i - 1] != '-' && (point - i) % (kDigitsOfAGroup + 1) == 0))
            return false;
    return true;
}

} // namespace

CString FormatNumber(double value, int decimals)
{
    if (!std::isfinite(value))
        return {};
    char buffer[400]; // the longest double has 309 digits before the point
    const auto end = std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::fixed,
                                   std::clamp(decimals, 0, kMostDecimals))
                         .ptr;
    std::string text(buffer, end);
    if (text.find('.') != text.npos) {
        text.erase(text.find_last_not_of('0') + 1);
        if (text.back() == '.')
            text.pop_back();
    }
    return CString(text == "-0" ? "0" : std::move(text));
}

std::optional<double> ParseNumber(const CString& text)
{
    CString number = text;
    number.Trim();
    if (number.GetLength() > 1 && number[number.GetLength() - 1] == '%')
        number = number.Left(number.GetLength() - 1).TrimRight();
    if (number.SpanIncluding("-0123456789.,") != number || !CommasFit(number))
        return std::nullopt;
    number.Remove(',');
    const std::optional<double> value = Afx::ParseWhole<double>(number.View());
    return value && std::isfinite(*value) ? value : std::nullopt;
}

IMPLEMENT_DYNCREATE(CDoubleEdit, CEdit)

void CDoubleEdit::OnSetFocus(CWnd* oldFocus)
{
    SetSel(0, -1);
    CEdit::OnSetFocus(oldFocus);
}

void CDoubleEdit::OnKillFocus(CWnd* newFocus)
{
    if (const std::optional<double> value = GetDouble(); value && !IsReadOnly())
        SetDouble(*value);
    CEdit::OnKillFocus(newFocus);
}

} // namespace Kiln
