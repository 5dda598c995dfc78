#include <cstring>
#include <regex>

#include "MorvUt/identifiers/TaxIdentifiers.h"
#include "Subject.h"
#include "Values.h"

namespace Rules
{
namespace
{

constexpr bool IsDigit(char c) { return c >= '0' && c <= '9'; }
constexpr bool IsLetter(char c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z'); }

bool AreDigits(const char* text, int count)
{
    for (int i = 0; i < count; ++i)
        if (!IsDigit(text[i]))
            return false;
    return true;
}

/// AB123456C, AB123456 or 12A34567.
bool LoopNINumber(const std::string& number)
{
    const char* const text = number.c_str();
    const std::size_t length = std::strlen(text);
    if (length != 8 && length != 9)
        return false;
    if (IsLetter(text[0]))
        return IsLetter(text[1]) && AreDigits(text + 2, 6) && (length == 8 || IsLetter(text[8]));
    return length == 8 && AreDigits(text, 2) && IsLetter(text[2]) && AreDigits(text + 3, 5);
}

bool RegexNINumber(const std::string& number)
{
    static const std::regex shape("[A-Za-z]{2}[0-9]{6}[A-Za-z]?|[0-9]{2}[A-Za-z][0-9]{5}", std::regex::optimize);
    return std::regex_match(number, shape);
}

/// The first of ten digits agrees with the others.
bool AgreesWithCheckDigit(const char* digits)
{
    constexpr int kWeights[] = {6, 7, 8, 9, 10, 5, 4, 3, 2};
    int sum = 0;
    for (int i = 0; i < 9; ++i)
        sum += (digits[i + 1] - '0') * kWeights[i];
    const int check = 11 - sum % 11;
    return digits[0] - '0' == (check > 9 ? check - 9 : check);
}

bool LoopUTR(const std::string& number)
{
    const char* const text = number.c_str();
    return std::strlen(text) == 10 && AreDigits(text, 10) && AgreesWithCheckDigit(text);
}

bool RegexUTR(const std::string& number)
{
    static const std::regex shape("[0-9]{10}", std::regex::optimize);
    return std::regex_match(number, shape) && AgreesWithCheckDigit(number.c_str());
}

} // namespace

void RegisterIdentifiers()
{
    Subject("National Insurance number", NINumbers(),
            [](const std::string& number) { return IsValidNINumber(number.c_str()); })
        .Against("plain loop", LoopNINumber)
        .Against("std::regex", RegexNINumber);
    Subject("UTR", UTRs(), [](const std::string& number) { return IsValidUTR(number.c_str()); })
        .Against("plain loop", LoopUTR)
        .Against("std::regex, loop", RegexUTR);
}

} // namespace Rules
