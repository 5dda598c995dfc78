#include "Identifiers.h"

#include <algorithm>
#include <cstddef>

namespace Sandbox
{

namespace
{

constexpr int kUtrWeights[] = {6, 7, 8, 9, 10, 5, 4, 3, 2}; // of the second to the tenth digit
constexpr std::string_view kUtrCheckDigits = "21987654321"; // by the remainder of the weighted sum and 11

constexpr std::string_view kNeverFirst = "DFIQUV";
constexpr std::string_view kNeverSecond = "DFIOQUV";
constexpr std::string_view kNeverPrefixes[] = {"BG", "GB", "KN", "NK", "NT", "TN", "ZZ"};

bool AreDigits(std::string_view text)
{
    return std::all_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; });
}

bool Has(std::string_view letters, char c) { return letters.find(c) != std::string_view::npos; }

bool IsCapital(char c) { return c >= 'A' && c <= 'Z'; }

int TwoDigits(std::string_view text) { return (text[0] - '0') * 10 + (text[1] - '0'); }

} // namespace

char UtrCheckDigit(std::string_view rest)
{
    int sum = 0;
    for (std::size_t i = 0; i < rest.size(); ++i)
        sum += kUtrWeights[i] * (rest[i] - '0');
    return kUtrCheckDigits[static_cast<std::size_t>(sum % 11)];
}

bool IsUtr(std::string_view utr)
{
    return utr.size() == 10 && AreDigits(utr) && utr[0] == UtrCheckDigit(utr.substr(1));
}

bool IsNino(std::string_view nino)
{
    if (nino.size() != 8 && nino.size() != 9)
        return false;
    if (!IsCapital(nino[0]) || !IsCapital(nino[1]) || Has(kNeverFirst, nino[0]) || Has(kNeverSecond, nino[1]))
        return false;
    if (std::find(std::begin(kNeverPrefixes), std::end(kNeverPrefixes), nino.substr(0, 2)) != std::end(kNeverPrefixes))
        return false;
    return AreDigits(nino.substr(2, 6)) && (nino.size() == 8 || Has("ABCD", nino[8]));
}

bool IsTaxYear(std::string_view taxYear)
{
    if (taxYear.size() != 7 || taxYear[4] != '-' || !AreDigits(taxYear.substr(0, 4)) || !AreDigits(taxYear.substr(5)))
        return false;
    return (TwoDigits(taxYear.substr(2)) + 1) % 100 == TwoDigits(taxYear.substr(5));
}

} // namespace Sandbox
