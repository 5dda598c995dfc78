#include "MorvUt/identifiers/SortCode.h"

#include <string_view>

#include "Afx/text/Ascii.h"

namespace
{

constexpr int kDigits = 6;
constexpr char kEmptyMask[] = "  -  -  ";

/// Two dashes, and otherwise only blanks.
bool IsEmptyMask(std::string_view code) noexcept
{
    int dashes = 0;
    for (const char c : code) {
        if (c == '-')
            ++dashes;
        else if (c != ' ')
            return false;
    }
    return dashes == 2;
}

/// A pair of digits is complete and another must follow: here a dash or a blank may stand.
constexpr bool IsBetweenPairs(int digits) noexcept { return digits == 2 || digits == 4; }

} // namespace

CString FormatSortCode(const CString& code)
{
    const std::string_view given = code.View();
    if (given.empty() || IsEmptyMask(given))
        return kEmptyMask;
    if (given.find('-') != std::string_view::npos)
        return code;
    char shown[kDigits + 2];
    std::size_t length = 0;
    for (std::size_t i = 0; i < kDigits; ++i) {
        if (i == 2 || i == 4)
            shown[length++] = '-';
        if (i < given.size())
            shown[length++] = given[i];
    }
    return std::string_view(shown, length);
}

CString TidySortCodeString(const CString& code)
{
    if (IsEmptyMask(code.View()))
        return {};
    return code;
}

CString WhyNotSortCode(const CString& code)
{
    const std::string_view given = code.View();
    if (given.find_first_not_of(' ') == std::string_view::npos || IsEmptyMask(given))
        return "A sort code is missing";
    CString reason;
    int digits = 0;
    bool mustBeDigit = false; // behind a dash or blank
    for (std::size_t i = 0; i < given.size(); ++i) {
        const bool separates = (given[i] == '-' || given[i] == ' ') && IsBetweenPairs(digits) && !mustBeDigit;
        if (!separates && !Afx::IsDigit(given[i])) {
            reason.Format("Character %d must be a digit; a sort code is three pairs of digits",
                          static_cast<int>(i) + 1);
            return reason;
        }
        digits += !separates;
        mustBeDigit = separates;
    }
    if (digits != kDigits)
        reason.Format("A sort code has 6 digits; this has %d", digits);
    return reason;
}
