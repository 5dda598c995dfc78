#pragma once

// Questions about dates in terms of tax years. Years are real tax years: 2024 is 6 April 2023 to 5 April 2024, both
// days included. A date that is not valid compares false with every other. Source: ITA 2007 s 4(3).

#include "Kiln/CDate.h"
#include "MorvUt/Export.h"
#include "MorvUt/taxyear/DateStrings.h"
#include "MorvUt/taxyear/TaxYear.h"

/// Where a date lies against a year of assessment.
enum AssessmentCheckType : int
{
    AssessmentCheckBefore = -1,
    AssessmentCheckWithin = 0,
    AssessmentCheckAfter = 1
};

// The tax year and its dates.

/// The tax year of a date: 2024 on 5 April 2024, 2025 on 6 April 2024; -1 when the date is not valid.
MORVUT_API short GetTaxYear(const Kiln::CDate& date) noexcept;
/// 6 April of the year before, and 5 April of the year; not valid for years that dates cannot hold (before 101, after
/// 9999).
MORVUT_API Kiln::CDate GetTaxYearStart(short year) noexcept;
MORVUT_API Kiln::CDate GetTaxYearEnd(short year) noexcept;
MORVUT_API Kiln::DatePeriod GetTaxYearPeriod(short year) noexcept;
/// From midnight of the first day to midnight of the last one: a moment later on 5 April is past the end.
MORVUT_API bool IsDateInTaxYear(const Kiln::CDate& date, short year) noexcept;

// Periods; both ends belong to them.

/// Days of the period that lie in the tax year: 365 or 366 for the whole of it. 0 when the period lies outside, and
/// when one of the dates is not valid.
MORVUT_API long TaxYearDays(short year, const Kiln::CDate& from, const Kiln::CDate& to) noexcept;
/// 1 when the periods share a day. The first may be open at either end, or both (a null date); the second needs real
/// dates.
MORVUT_API int DatesIntersect(Kiln::CDate from1, Kiln::CDate to1, Kiln::CDate from2, Kiln::CDate to2) noexcept;
/// 1 when a 29 February lies in the period. A date that is not valid counts as one of the year -1.
MORVUT_API int PeriodHasLeapDay(Kiln::CDate from, Kiln::CDate to) noexcept;

// Long dates (yyyymmdd).

/// 0 for a date that is not valid.
MORVUT_API long CDateToLong(Kiln::CDate date) noexcept;
/// Null for 0; invalid when there is no such day, as for 99 (Unknown).
MORVUT_API Kiln::CDate LongToCDate(long value) noexcept;

// Before, in or after a year of assessment.

/// A date that is not valid is within.
MORVUT_API AssessmentCheckType AssessmentYearCheck(const Kiln::CDate& date, int year) noexcept;
/// 1 when the record lies before (after) the tax year. The Unknown date lies outside every year: 1 from both. The null
/// date lies before.
MORVUT_API int DateBeforeAssessmentYear(short year, X_DateStr_tag date) noexcept;
MORVUT_API int DateAfterAssessmentYear(short year, X_DateStr_tag date) noexcept;

// Fixed-date rules.

/// When a return is due whose notice was issued on `issued`, in the current tax year Y (GetCurrentRealTaxYear).
/// SA100, SA800 and SA900 (any case): 31 January Y + 1 for a notice up to 31 October Y, else three months after it
/// (TMA 1970 s 8(1G)). Any other type: 5 April Y + 1, or one month after a notice of 7 April Y or later if that is
/// later still. Not valid when `issued` is not.
/// House rule: months are counted in days by a table, so one issued on 1 December 2024 is due on 28 February 2025.
MORVUT_API Kiln::CDate CalculateFilingDate(Kiln::CDate issued, const char* returnType);
/// Whether a business with this accounting period could claim the enhanced first-year allowances of small businesses:
/// the period touches 6 April 2004 to 5 April 2005, or ends on 6 April 2006 or later, and does not start on 6 April
/// 2008 or later. Source: CAA 2001 s 52; FA 2004 s 142, FA 2006 s 30, FA 2007 s 37.
MORVUT_API bool EnableSmallBusinessEntitlement(const Kiln::CDate& start, const Kiln::CDate& end) noexcept;
/// Halvessa holds the years from 2015 to the last supported one. A date that is not valid has the year -1, so it is no
/// start but it is an end: test validity first.
MORVUT_API bool IsValidHalvessaTaxYearStart(const TaxYear& year) noexcept;
MORVUT_API bool IsValidHalvessaTaxYearStart(Kiln::CDate date) noexcept;
MORVUT_API bool IsValidHalvessaTaxYearEnd(const TaxYear& year) noexcept;
MORVUT_API bool IsValidHalvessaTaxYearEnd(Kiln::CDate date) noexcept;
