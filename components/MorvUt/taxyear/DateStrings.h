#pragma once

// Dates as older modules keep them: a record of four bytes, and the long date yyyymmdd.

#include <cstdint>

#include "Afx/text/CString.h"
#include "MorvUt/Export.h"

/// A calendar date. All zero: null. Day 99 with month and year 0: Unknown (the user says that there is a date, but not
/// which). Month 13: a text that was no date. As a long date null is 0 and Unknown is 99.
struct X_DateStr_tag
{
    std::uint8_t day;   // 1 to 31
    std::uint8_t month; // 1 to 12
    std::uint16_t year; // all four digits
};
static_assert(sizeof(X_DateStr_tag) == 4);

/// The day of the Unknown date, and so its long date.
inline constexpr std::uint8_t kUnknownDay = 99;

/// Patterns of the user's choice of date format (0 to 3), as strftime takes them and as the user sees them; a null ends
/// each table.
extern MORVUT_API const char* const arrDateFormatStrings[5];
extern MORVUT_API const char* const arrDateFormatStringsForDialogs[5];

// Records are never null; a null text reads as empty.

// Text.

/// Reads a date as `Kiln::CDate::ParseDate` does. An empty text is the null date; a text that begins with a capital X
/// or U is the Unknown date; a text that is no date gives month 13 with day and year 0.
MORVUT_API void ParseDateStr(const char* text, X_DateStr_tag* out);
MORVUT_API X_DateStr_tag ConvertStrToDate(const char* text);
/// "05/04/2024"; empty for day 0, "Unknown" for day 99.
MORVUT_API void ConvertDateToStr(const X_DateStr_tag* date, CString& out);
/// The same into `buffer` of `size` bytes. Too small a buffer is refused: its first byte becomes 0 and
/// CInvalidArgException is thrown; null or size 0 throws at once.
MORVUT_API void convert_date_to_str(const X_DateStr_tag* date, char* buffer, unsigned size);

/// Today by the machine's zone (Afx::Clock).
MORVUT_API void GetTodaysDate(CString& out);
MORVUT_API void X_GetDate(X_DateStr_tag* out);

// Comparison. The sort key is the long date.

MORVUT_API void CopyDate(X_DateStr_tag* dest, const X_DateStr_tag* src) noexcept;
MORVUT_API int DateIsNull(const X_DateStr_tag* date) noexcept;
MORVUT_API int DatesIdentical(const X_DateStr_tag* a, const X_DateStr_tag* b) noexcept;
/// 1 when `a` is earlier than `b` ("in order"), -1 when it is later, 0 when they are the same day or either is null.
/// The sign is the reverse of the usual one; callers rely on it.
MORVUT_API int CompareDates(const X_DateStr_tag* a, const X_DateStr_tag* b) noexcept;

// Long dates.

/// yyyymmdd: 20240405 for 5 April 2024.
MORVUT_API long DtoxL(const X_DateStr_tag* date) noexcept;
/// The fields of a long date, whether or not there is such a day. Negative values and years above 65535 are cut to the
/// width of the fields.
MORVUT_API void LtoxD(long value, X_DateStr_tag* out) noexcept;

// The calendar of these records: every fourth year is a leap year, 1900 and 2100 too.

/// 1 for a year that four divides; a year up to 99 counts from 1900. No century rule, by design.
MORVUT_API int isleapyear(int year) noexcept;
/// 1 when the record is a day of that calendar.
MORVUT_API int validXDate(const X_DateStr_tag* date) noexcept;
/// The same, and 1 for the null date and the Unknown date.
MORVUT_API int IsValidDate(const X_DateStr_tag* date) noexcept;
/// 0 for Monday to 6 for Sunday, by Zeller's congruence in the Gregorian calendar. Any numbers are taken; what is no
/// date gives some day of the week. From 1 March 3000 on the congruence turns negative for some days, which then give
/// Sunday; callers rely on the formula, so it stays.
MORVUT_API int GetDayOfWeek(int day, int month, int year) noexcept;
/// Days from `from` to `to`, negative when `to` is earlier: 365 from 6 April 2023 to 5 April 2024. 0 unless both are
/// days of the real (Gregorian) calendar from the year 100 on, so 29 February 1900 counts nothing.
MORVUT_API long DayBetween(const X_DateStr_tag* from, const X_DateStr_tag* to) noexcept;
