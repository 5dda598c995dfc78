#pragma once

// The shapes of identifiers and tax years in HMRC's paths.

#include <string_view>

namespace Sandbox
{

/// The digit that a UTR begins with, by the nine digits that follow.
char UtrCheckDigit(std::string_view rest);

/// Whether `utr` is a Self Assessment UTR: ten digits, the first of which is the check digit of the rest.
bool IsUtr(std::string_view utr);

/// Whether `nino` is a National Insurance number as HMRC's interfaces take it: upper case, no blanks,
/// the suffix A to D optional.
bool IsNino(std::string_view nino);

/// Whether `taxYear` is "YYYY-YY" with the second year following the first: 2017-18, 1999-00.
bool IsTaxYear(std::string_view taxYear);

} // namespace Sandbox
