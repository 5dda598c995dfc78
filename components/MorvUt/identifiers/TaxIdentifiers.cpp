#include "MorvUt/identifiers/TaxIdentifiers.h"

#include <algorithm>
#include <string_view>

#include "Afx/text/Ascii.h"
#include "Afx/text/Utf8.h"

namespace
{

using Afx::IsDigit;
using Afx::IsLetter;

/// A stands for a letter, 9 for a digit.
constexpr std::string_view kUsualShape = "AA999999", kTemporaryShape = "99A99999";
constexpr std::string_view kNINumberShapes[] = {"AA999999A", kUsualShape, kTemporaryShape};

constexpr int kUTRLength = 10;
constexpr int kUTRWeights[kUTRLength] = {0, 6, 7, 8, 9, 10, 5, 4, 3, 2}; // the first digit is the check digit
constexpr std::string_view kUTRCheckDigits = "21987654321";              // by the weighted sum modulo 11
static_assert(kUTRCheckDigits.size() == 11);

constexpr bool Fits(char c, char place) noexcept { return place == '9' ? IsDigit(c) : IsLetter(c); }

/// Whether `text` begins as `shape` says; the end mark fits no place, so a shorter text is not overrun. To be called
/// with a constant, which the compiler makes into one comparison after the other.
inline bool BeginsAs(const char* text, std::string_view shape) noexcept
{
    for (std::size_t i = 0; i < shape.size(); ++i)
        if (!Fits(text[i], shape[i]))
            return false;
    return true;
}

/// Places of `text` that differ from a shape which is not longer.
int CountMisfits(std::string_view text, std::string_view shape) noexcept
{
    int misfits = 0;
    for (std::size_t i = 0; i < shape.size(); ++i)
        misfits += !Fits(text[i], shape[i]);
    return misfits;
}

/// The shape of `length` characters that the text comes nearest to; empty when none is that long.
std::string_view NearestShape(std::string_view text, int length) noexcept
{
    std::string_view nearest;
    for (const std::string_view shape : kNINumberShapes) {
        const bool fitsLength = static_cast<int>(shape.size()) == length;
        if (fitsLength && (nearest.empty() || CountMisfits(text, shape) < CountMisfits(text, nearest)))
            nearest = shape;
    }
    return nearest;
}

CString LengthMustBe(const char* expected, int length)
{
    CString reason;
    reason.Format("%s; this has %d", expected, length);
    return reason;
}

CString PlaceMustBe(std::size_t place, const char* kind)
{
    CString reason;
    reason.Format("Character %d must be a %s", static_cast<int>(place) + 1, kind);
    return reason;
}

/// Ten digits and no more: their weighted sum; -1 for any other text.
int WeightedSum(const char* text) noexcept
{
    int sum = 0;
    for (int i = 0; i < kUTRLength; ++i) {
        if (!IsDigit(text[i]))
            return -1;
        sum += (text[i] - '0') * kUTRWeights[i];
    }
    return text[kUTRLength] == '\0' ? sum : -1;
}

} // namespace

bool IsValidNINumber(const char* text) noexcept
{
    // The three shapes at once: the first character tells which it can be, and the last letter may be absent.
    if (!text)
        return false;
    if (!IsLetter(*text))
        return BeginsAs(text, kTemporaryShape) && text[kTemporaryShape.size()] == '\0';
    if (!BeginsAs(text, kUsualShape))
        return false;
    const char* const rest = text + kUsualShape.size();
    return *rest == '\0' || (IsLetter(*rest) && rest[1] == '\0');
}

bool IsValidUTR(const char* text) noexcept
{
    const int sum = text ? WeightedSum(text) : -1;
    return sum >= 0 && text[0] == kUTRCheckDigits[static_cast<std::size_t>(sum % 11)];
}

CString WhyNotNINumber(const char* text)
{
    if (IsValidNINumber(text))
        return {};
    const std::string_view given = text ? text : "";
    if (given.empty())
        return "A National Insurance number is missing";
    if (given.find(' ') != std::string_view::npos)
        return "A National Insurance number is written without blanks";
    const int length = Afx::CountCharacters(given);
    const std::string_view shape = NearestShape(given, length);
    if (shape.empty())
        return LengthMustBe("A National Insurance number has 8 or 9 characters", length);
    if (BeginsAs(text, kTemporaryShape) && length > static_cast<int>(kTemporaryShape.size()))
        return LengthMustBe("A number of the form 12A34567 has 8 characters", length);
    std::size_t place = 0;
    while (place + 1 < shape.size() && Fits(given[place], shape[place]))
        ++place;
    return PlaceMustBe(place, shape[place] == '9' ? "digit" : "letter");
}

CString WhyNotUTR(const char* text)
{
    if (IsValidUTR(text))
        return {};
    const std::string_view given = text ? text : "";
    if (given.empty())
        return "A UTR is missing";
    if (given.find(' ') != std::string_view::npos)
        return "A UTR is written without blanks";
    if (const int length = Afx::CountCharacters(given); length != kUTRLength)
        return LengthMustBe("A UTR has 10 digits and nothing else", length);
    if (const auto bad = std::find_if_not(given.begin(), given.end(), IsDigit); bad != given.end())
        return PlaceMustBe(static_cast<std::size_t>(bad - given.begin()), "digit");
    return "The first digit does not agree with the other nine: a digit is wrong, or two have changed places";
}
