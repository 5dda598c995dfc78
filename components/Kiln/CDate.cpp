#include "Kiln/CDate.h"

#include <atomic>
#include <cmath>

#include "Afx/text/Numbers.h"
#include "Afx/time/Calendar.h"
#include "Afx/time/Clock.h"
#include "Afx/time/FormatTime.h"
#include "Kiln/detail/DateText.h"

namespace Kiln
{
namespace
{

using Detail::DateFault;

constexpr int kSecondsPerDay = 86'400;
constexpr double kHalfSecond = 0.5 / kSecondsPerDay; // in days

std::atomic<CDate::ParseOrder> g_parseOrder{CDate::ParseOrder::DayFirst};
std::atomic<CDate::YearHandler> g_yearHandler{nullptr};

/// Digit `c` into `value`; false when it is none.
bool AddDigit(int& value, char c) noexcept
{
    const unsigned digit = static_cast<unsigned char>(c) - unsigned{'0'};
    value = value * 10 + static_cast<int>(digit & 0xF);
    return digit < 10;
}

/// The form that programs write, `nn/nn/nnnn` with a year from 100 on, in as few steps as it takes. False, and nothing
/// decided, for any other.
bool ReadFixed(const char* text, int& first, int& second, int& year) noexcept
{
    const auto separates = [](char c) { return c == '/' || c == '-' || c == '.'; };
    return AddDigit(first, text[0]) && AddDigit(first, text[1]) && separates(text[2]) && AddDigit(second, text[3]) &&
           AddDigit(second, text[4]) && text[5] == text[2] && AddDigit(year, text[6]) && AddDigit(year, text[7]) &&
           AddDigit(year, text[8]) && AddDigit(year, text[9]) && text[10] == '\0' && year >= 100;
}

int CurrentYear(int, int) { return Afx::Clock::Local().year; }

Detail::DateText ReadNow(const char* text)
{
    const CDate::YearHandler handler = g_yearHandler.load(std::memory_order_relaxed);
    return Detail::ReadDate(text ? text : "", g_parseOrder.load(std::memory_order_relaxed),
                            handler ? handler : CurrentYear);
}

/// The whole days of an OLE number, toward zero. In range: every way to make a date sees to it.
int WholeDays(double oleDate) noexcept { return static_cast<int>(Afx::ToInt64(oleDate).value_or(0)); }

/// The OLE number as a count of days that grows with time: before 1900 the fraction of an OLE number runs against it.
double Linear(double oleDate) noexcept { return oleDate < 0 ? 2.0 * WholeDays(oleDate) - oleDate : oleDate; }

double FromLinear(double days) noexcept
{
    const double whole = std::floor(days);
    return whole < 0 ? whole - (days - whole) : days;
}

struct Moment
{
    int day; // OLE day number
    int second;
};

/// Rounded to the second, as Windows does, so that 23:59:59.9 is the next day.
Moment ToMoment(double oleDate) noexcept
{
    const int day = WholeDays(oleDate);
    const double fraction = std::fabs(oleDate - day);
    const int second = static_cast<int>(Afx::ToInt64(fraction * kSecondsPerDay + 0.5).value_or(0));
    if (second < kSecondsPerDay)
        return {day, second};
    if (day == Afx::kLastOleDay)
        return {day, kSecondsPerDay - 1};
    return {day + 1, 0};
}

Afx::CivilDate ToCivil(double oleDate) noexcept { return Afx::CivilOfOleDay(ToMoment(oleDate).day); }

bool IsSameMoment(double a, double b) noexcept { return std::fabs(Linear(a) - Linear(b)) < kHalfSecond; }

/// Why a day is not in its month; names the year where the year decides.
CString NoSuchDay(const Detail::DateText& read)
{
    const std::string_view month = Afx::kMonthNames[read.month - 1];
    CString reason;
    if (read.month == 2 && read.day > 29)
        reason.Format("%d February does not exist; February has at most 29 days", read.day);
    else if (read.month == 2)
        reason.Format("29 February %d does not exist; February %d has 28 days", read.year, read.year);
    else
        reason.Format("%d %s does not exist; %s has 30 days", read.day, month, month);
    return reason;
}

CString Reason(const Detail::DateText& read)
{
    const bool monthFirst = CDate::GetParseOrder() == CDate::ParseOrder::MonthFirst;
    const char* const example = read.yearFirst ? "2024-04-30" : monthFirst ? "4/30/2024" : "30/4/2024";
    CString reason;
    switch (read.fault) {
    case DateFault::None:
        break;
    case DateFault::Blank:
        return "No date was given";
    case DateFault::Form:
        reason.Format("This is no date; write it as in %s, 30 Apr 2024 or 2024-04-30", example);
        break;
    case DateFault::Separators:
        reason.Format("Write the same sign between day, month and year, as in %s", example);
        break;
    case DateFault::MonthName:
        reason.Format("\"%s\" is no month; write three letters or the whole name, as in 30 Apr 2024", read.word);
        break;
    case DateFault::Month:
        if (read.yearFirst) {
            reason.Format("%d is no month; write the month between year and day, as in 2024-04-30", read.month);
            break;
        }
        reason.Format("%d is no month; write the %s first, as in %s", read.month, monthFirst ? "month" : "day",
                      example);
        break;
    case DateFault::Day:
        reason.Format("%d is no day of a month; write the date as in %s", read.day, example);
        break;
    case DateFault::NoSuchDay:
        return NoSuchDay(read);
    case DateFault::YearDigits:
        reason.Format("A year has two or four digits, as in %s", example);
        break;
    case DateFault::YearRange:
        return "The year must be 100 to 9999";
    case DateFault::NoYear:
        reason.Format("The year is missing; write it as in %s", example);
    }
    return reason;
}

} // namespace

CDate::CDate(int year, int month, int day) noexcept
{
    if (year == 0 && month == 0 && day == 0)
        return;
    m_status = Status::Invalid;
    if (year < 100 || year > 9999 || day < 1 || day > Afx::DaysInMonth(year, month))
        return;
    m_date = Afx::OleDayOf(year, month, day);
    m_status = Status::Valid;
}

CDate CDate::FromOleDate(double oleDate) noexcept
{
    const auto day = Afx::ToInt64(oleDate);
    if (!day || *day < Afx::kFirstOleDay || *day > Afx::kLastOleDay)
        return Invalid();
    CDate date;
    date.m_date = oleDate;
    date.m_status = Status::Valid;
    return date;
}

CDate CDate::Invalid() noexcept
{
    CDate date;
    date.m_status = Status::Invalid;
    return date;
}

CDate CDate::Today()
{
    const Afx::LocalTime now = Afx::Clock::Local();
    return CDate(now.year, now.month, now.day);
}

bool CDate::ParseDate(const char* text)
{
    int first = 0, second = 0, year = 0;
    if (text && ReadFixed(text, first, second, year)) {
        *this = GetParseOrder() == ParseOrder::MonthFirst ? CDate(year, first, second) : CDate(year, second, first);
        return IsValid();
    }
    const Detail::DateText read = ReadNow(text);
    m_date = 0.0;
    if (read.fault == DateFault::None) {
        m_date = Afx::OleDayOf(read.year, read.month, read.day);
        m_status = Status::Valid;
        return true;
    }
    m_status = read.fault == DateFault::Blank ? Status::Null : Status::Invalid;
    return false;
}

CString CDate::WhyNotDate(const char* text) { return Reason(ReadNow(text)); }

void CDate::SetParseOrder(ParseOrder order) noexcept { g_parseOrder.store(order, std::memory_order_relaxed); }
CDate::ParseOrder CDate::GetParseOrder() noexcept { return g_parseOrder.load(std::memory_order_relaxed); }
CDate::YearHandler CDate::SetYearHandler(YearHandler handler) noexcept { return g_yearHandler.exchange(handler); }

int CDate::GetYear() const noexcept { return GetFields().year; }
int CDate::GetMonth() const noexcept { return GetFields().month; }
int CDate::GetDay() const noexcept { return GetFields().day; }

Afx::CivilDate CDate::GetFields() const noexcept
{
    if (!IsValid())
        return {0, 0, 0};
    const auto day = static_cast<int>(m_date);
    return day == m_date ? Afx::CivilOfOleDay(day) : ToCivil(m_date); // nearly every date has no time of day
}
bool CDate::IsLeapYear(int year) noexcept { return Afx::IsLeapYear(year); }

CString CDate::Format(const char* pattern) const
{
    if (!IsValid() || !pattern)
        return {};
    const Moment moment = ToMoment(m_date);
    const Afx::CivilDate date = Afx::CivilOfOleDay(moment.day);
    return Afx::FormatTime(
        {date.year, date.month, date.day, moment.second / 3600, moment.second / 60 % 60, moment.second % 60, 0},
        pattern);
}

CString CDate::FormatIso() const
{
    CString text;
    if (!IsValid())
        return text;
    const Afx::CivilDate date = ToCivil(m_date);
    text.Format("%04d-%02d-%02d", date.year, date.month, date.day);
    return text;
}

bool CDate::IsSameDay(const CDate& other) const noexcept
{
    return IsValid() && other.IsValid() && ToMoment(m_date).day == ToMoment(other.m_date).day;
}

bool CDate::IsEarlierDay(const CDate& other) const noexcept
{
    return IsValid() && other.IsValid() && ToMoment(m_date).day < ToMoment(other.m_date).day;
}

bool CDate::IsNotLaterDay(const CDate& other) const noexcept { return IsEarlierDay(other) || IsSameDay(other); }

CDate CDate::operator+(int days) const noexcept
{
    if (!IsValid())
        return *this;
    return FromOleDate(FromLinear(Linear(m_date) + days));
}

CDate CDate::operator-(int days) const noexcept
{
    if (!IsValid())
        return *this;
    return FromOleDate(FromLinear(Linear(m_date) - days));
}

double CDate::operator-(const CDate& other) const noexcept
{
    return IsValid() && other.IsValid() ? Linear(m_date) - Linear(other.m_date) : 0.0;
}

bool operator==(const CDate& a, const CDate& b) noexcept
{
    if (a.m_status != b.m_status)
        return false;
    return !a.IsValid() || IsSameMoment(a.m_date, b.m_date);
}

bool operator<(const CDate& a, const CDate& b) noexcept
{
    return a.IsValid() && b.IsValid() && Linear(a.m_date) < Linear(b.m_date);
}

bool operator<=(const CDate& a, const CDate& b) noexcept
{
    return a < b || (a.IsValid() && b.IsValid() && IsSameMoment(a.m_date, b.m_date));
}

long Detail::RoundedDaysBetween(const CDate& from, const CDate& to) noexcept
{
    const double days = to - from;
    return std::lround(days + std::copysign(kHalfSecond, days));
}

} // namespace Kiln
