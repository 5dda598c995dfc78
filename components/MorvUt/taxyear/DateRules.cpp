#include "MorvUt/taxyear/DateRules.h"

#include <algorithm>
#include <array>
#include <limits>
#include <string_view>

#include "Afx/text/Numbers.h"
#include "Afx/text/TextFold.h"
#include "Afx/time/Calendar.h"
#include "MorvUt/taxyear/CurrentTaxYear.h"

namespace
{

using Kiln::CDate;

constexpr int kNoYear = -1; // the year of a date that is not valid

int CalendarYear(const CDate& date) noexcept { return date.IsValid() ? date.GetYear() : kNoYear; }

/// The rule as it reads.
short TaxYearByDate(const CDate& date) noexcept
{
    const int year = CalendarYear(date);
    return static_cast<short>(date >= CDate(year, 4, 6) ? year + 1 : year);
}

/// The same for an OLE day. 6 April lies 36 days behind 1 March in every year, so the tax year is the year, counted
/// from March, that the day 36 days before lies in, plus one. The leap day is the last of a year that begins in March,
/// so centuries and years are two divisions: in quarter days, a century has 146097 and a year 1461.
constexpr short TaxYearOfOleDay(int day) noexcept
{
    const auto sinceMarch = static_cast<unsigned>(day + 693'899 - 36); // from 1 March of the year 0
    const unsigned quarterDays = 4 * sinceMarch + 3;
    const unsigned century = quarterDays / 146'097;
    const unsigned yearOfCentury = ((quarterDays % 146'097) | 3) / 1461;
    return static_cast<short>(100 * century + yearOfCentury + 1);
}
static_assert(TaxYearOfOleDay(Afx::OleDayOf(2024, 4, 5)) == 2024);
static_assert(TaxYearOfOleDay(Afx::OleDayOf(2024, 4, 6)) == 2025);
static_assert(TaxYearOfOleDay(Afx::kFirstOleDay) == 100 && TaxYearOfOleDay(Afx::kLastOleDay) == 10'000);

bool IsLeapDayIn(int year, const CDate& from, const CDate& to) noexcept
{
    const CDate leapDay(year, 2, 29);
    return CDate::IsLeapYear(year) && from <= leapDay && to >= leapDay;
}

/// Days to add to a notice's date, by its month, January first; 0: see below.
constexpr std::array<short, 12> kThreeMonthDays{89, 88, 91, 90, 91, 91, 91, 91, 90, 91, 0, 0};
constexpr std::array<short, 12> kOneMonthDays{30, 0, 30, 29, 30, 29, 30, 30, 29, 30, 29, 30};

/// House rule, not statute. January and February have one day more in a leap year. November and December run into the
/// next year's February, which is looked up 365 days on; November has one day more but on its 30th.
int ThreeMonthDays(const CDate& date) noexcept
{
    if (!date.IsValid())
        return 0;
    const int month = date.GetMonth();
    if (month <= 10)
        return kThreeMonthDays[static_cast<std::size_t>(month - 1)] + (month <= 2 && CDate::IsLeapYear(date.GetYear()));
    const bool runsIntoLeapYear = CDate::IsLeapYear((date + 365).GetYear());
    if (month == 12)
        return 89 + runsIntoLeapYear;
    return (date.GetDay() == 30 ? 90 : 91) + runsIntoLeapYear;
}

/// House rule, not statute. February runs to the end of its month; the others are fixed.
int OneMonthDays(const CDate& date) noexcept
{
    if (!date.IsValid())
        return 0;
    if (const int month = date.GetMonth(); month != 2)
        return kOneMonthDays[static_cast<std::size_t>(month - 1)];
    return Afx::DaysInMonth(date.GetYear(), 2) - date.GetDay();
}

/// Returns that HMRC issues with a notice to file, due on 31 January.
bool IsNoticeReturn(std::string_view type) noexcept
{
    constexpr std::string_view kTypes[] = {"SA100", "SA800", "SA900"};
    return std::any_of(std::begin(kTypes), std::end(kTypes),
                       [type](std::string_view notice) { return Afx::EqualNoCase(type, notice); });
}

/// The record as a number in which the month weighs 1000, so that only comparisons with days in April hold: October to
/// December reach into the next year's place, but stay between its 5 April and its 6 April a year before.
constexpr int kYearWeight = 10'000, kMonthWeight = 1'000;
constexpr int kFirstDay = 4 * kMonthWeight + 6 - kYearWeight; // 6 April of the year before
constexpr int kLastDay = 4 * kMonthWeight + 5;
static_assert(kFirstDay == -5994 && kLastDay == 4005);

constexpr int Weigh(const X_DateStr_tag& date) noexcept
{
    return date.year * kYearWeight + date.month * kMonthWeight + date.day;
}

constexpr short kFirstHalvessaYear = 2015;

} // namespace

short GetTaxYear(const CDate& date) noexcept
{
    if (!date.IsValid())
        return kNoYear;
    const double oleDate = date.GetOleDate();
    const auto day = static_cast<int>(Afx::ToInt64(oleDate).value_or(0));
    return day == oleDate ? TaxYearOfOleDay(day) : TaxYearByDate(date); // a time of day takes the long way
}

CDate GetTaxYearStart(short year) noexcept { return CDate(year - 1, 4, 6); }

CDate GetTaxYearEnd(short year) noexcept { return CDate(year, 4, 5); }

Kiln::DatePeriod GetTaxYearPeriod(short year) noexcept { return {GetTaxYearStart(year), GetTaxYearEnd(year)}; }

bool IsDateInTaxYear(const CDate& date, short year) noexcept { return GetTaxYearPeriod(year).IsDateInPeriod(date); }

long TaxYearDays(short year, const CDate& from, const CDate& to) noexcept
{
    const CDate start = GetTaxYearStart(year), end = GetTaxYearEnd(year);
    if (!start.IsValid() || !end.IsValid() || !from.IsValid() || !to.IsValid())
        return 0;
    if (from > end || to < start)
        return 0;
    return Kiln::DaysBetween(from < start ? start : from, to > end ? end : to) + 1;
}

int DatesIntersect(CDate from1, CDate to1, CDate from2, CDate to2) noexcept
{
    return (from1.IsNull() && to1.IsNull()) || ((from1.IsNull() || from1 <= to2) && (to1.IsNull() || to1 >= from2));
}

int PeriodHasLeapDay(CDate from, CDate to) noexcept
{
    const int first = CalendarYear(from), last = CalendarYear(to);
    if (first == last)
        return IsLeapDayIn(first, from, to);
    if (IsLeapDayIn(first, from, CDate(first, 2, 29)) || IsLeapDayIn(last, CDate(last, 2, 29), to))
        return 1;
    for (int year = first + 1; year < last; ++year)
        if (CDate::IsLeapYear(year))
            return 1; // found within eight years
    return 0;
}

long CDateToLong(CDate date) noexcept
{
    if (!date.IsValid())
        return 0;
    const Afx::CivilDate fields = date.GetFields();
    return (fields.year * 100L + fields.month) * 100L + fields.day;
}

CDate LongToCDate(long value) noexcept
{
    constexpr long kLargest = 9999'12'31; // a long of 64 bits may hold years that an int cannot
    if (value < 0 || value > kLargest)
        return CDate::Invalid();
    return CDate(static_cast<int>(value / 10'000), static_cast<int>(value / 100 % 100), static_cast<int>(value % 100));
}

AssessmentCheckType AssessmentYearCheck(const CDate& date, int year) noexcept
{
    const int yearBefore = year == std::numeric_limits<int>::min() ? year : year - 1; // no date lies there anyway
    if (date < CDate(yearBefore, 4, 6))
        return AssessmentCheckBefore;
    return date > CDate(year, 4, 5) ? AssessmentCheckAfter : AssessmentCheckWithin;
}

int DateBeforeAssessmentYear(short year, X_DateStr_tag date) noexcept
{
    return date.day == kUnknownDay || Weigh(date) < year * kYearWeight + kFirstDay;
}

int DateAfterAssessmentYear(short year, X_DateStr_tag date) noexcept
{
    return date.day == kUnknownDay || Weigh(date) > year * kYearWeight + kLastDay;
}

CDate CalculateFilingDate(CDate issued, const char* returnType)
{
    const int year = GetCurrentRealTaxYear();
    if (IsNoticeReturn(returnType ? returnType : "")) {
        if (issued <= CDate(year, 10, 31))
            return CDate(year + 1, 1, 31);
        return issued + ThreeMonthDays(issued);
    }
    const CDate earliest(year + 1, 4, 5);
    if (issued <= CDate(year, 4, 6))
        return earliest;
    const CDate due = issued + OneMonthDays(issued);
    return due < earliest ? earliest : due;
}

bool EnableSmallBusinessEntitlement(const CDate& start, const CDate& end) noexcept
{
    if (start >= CDate(2008, 4, 6))
        return false;
    if (start <= CDate(2005, 4, 5) && end >= CDate(2004, 4, 6))
        return true;
    return end >= CDate(2006, 4, 6);
}

bool IsValidHalvessaTaxYearStart(const TaxYear& year) noexcept { return year >= TaxYear(kFirstHalvessaYear); }

bool IsValidHalvessaTaxYearStart(CDate date) noexcept { return IsValidHalvessaTaxYearStart(TaxYear(GetTaxYear(date))); }

bool IsValidHalvessaTaxYearEnd(const TaxYear& year) noexcept { return year <= TaxYear::GetLastTaxYear(); }

bool IsValidHalvessaTaxYearEnd(CDate date) noexcept { return IsValidHalvessaTaxYearEnd(TaxYear(GetTaxYear(date))); }
