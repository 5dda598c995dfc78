#pragma once

// Amounts in pence and their text. 123456 is £1,234.56. Nothing here fails: a text that is no amount is 0.

#include "Afx/Platform.h"
#include "Afx/text/CString.h"
#include "Kiln/CAmt.h"
#include "MorvUt/Export.h"

// To text.

/// "1234.56", "-0.05"; empty for 0, since zero amounts are shown blank. With the separators on: "1,234.56".
MORVUT_API void CurrencyToCStr(__int64 pence, CString& out);
/// The same into `buffer` of `size` bytes. Too small a buffer is refused: its first byte becomes 0 and
/// CInvalidArgException is thrown; null or size 0 throws at once.
MORVUT_API void ConvertLongPenceToStr(__int64 pence, char* buffer, unsigned size);
/// Switches thousands separators on (any number but 0) or off, for the whole process. Off at first.
MORVUT_API void SetShowCommaSeparators(int show) noexcept;

// From text.

/// What `Kiln::CAmt::Parse` reads ("£1,234.56", "(5)", "12.5-"), parts of a penny dropped; 0 for anything else. Null
/// reads as empty.
MORVUT_API __int64 CStrToCurrency(const CString& text);
MORVUT_API __int64 StrToCurrency(const char* text);
/// Reads the number at the start of a text, as scanf's %lf does, commas anywhere left out: "1,234.567 net" is 123457.
/// Rounded to the penny as the text of that double with two decimals, so a tie goes to the even penny ("0.125" is 12)
/// and "1.005", whose double lies below it, is 100. 0 when the text begins with no decimal number (infinity, NaN
/// and hexadecimal are none); saturates. House rule: from £1,000,000,000,000 on the pence are not read right, see
/// docs/dates-and-money.md.
MORVUT_API __int64 PoundsToPence(const char* text);
MORVUT_API double PenceToPounds(__int64 pence) noexcept;
/// 64-bit `atoi`, clamped to 32 bits: blanks, a sign, digits. Null reads as empty.
MORVUT_API int StringToInt(const char* text) noexcept;

// From OLE's decimal numbers.

/// Rounded to the ten-thousandth (halves to the even neighbour), then cut to the penny: 12.3456 is 1234. 0 when 64 bits
/// cannot hold it.
MORVUT_API __int64 DecimalToCurrency(DECIMAL value) noexcept;
/// Rounded to the ten-thousandth; invalid when 64 bits cannot hold it.
MORVUT_API Kiln::CAmt DecimalToCAmt(DECIMAL value) noexcept;

// Auto amounts: a field that holds what the user typed (positive), what the program calculated (its magnitude negated,
// shown with an A in front), the marker AUTO (let the program calculate), or nothing (0).

/// The marker AUTO. A calculated amount of exactly £21,474,836.47 is the same number, and so is calculated anew.
inline constexpr __int64 kAutoMarker = -2147483647;

/// "1234.56" typed, "A1234.56" calculated, empty for 0; the marker is "AUTO", or empty when `blankAuto` is not 0.
MORVUT_API CString ConvertAutoToStr(__int64 value, int blankAuto);
/// Blanks and case do not count. "AUTO" and "A" are the marker; A and an amount is a calculated one; anything else is
/// read as an amount, where a minus typed gives the same as an A.
MORVUT_API __int64 ConvertStrToAuto(const CString& text);
