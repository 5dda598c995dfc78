#include "Kiln/detail/DateText.h"

#include "Afx/text/Ascii.h"
#include "Afx/time/Calendar.h"
#include "Afx/time/FormatTime.h"

namespace Kiln::Detail
{
namespace
{

constexpr int kFirstYear = 100, kLastYear = 9999;
constexpr int kPivot = 50;       // years of two digits from 50 on belong to the last century
constexpr int kMostDigits = 8;   // ddmmyyyy
constexpr int kLongestMonth = 9; // September
constexpr int kMonthsInYear = 12;
constexpr int kLongestMonthDays = 31;
constexpr int kLeapYear = 2000; // stands for a year that is not known yet

using Afx::IsBlank;
using Afx::IsDigit;
using Afx::IsLetter;

/// A run of digits or of letters.
struct Part
{
    int digits = 0; // 0: a month's name
    int value = 0;  // the number, or the month
};

constexpr DateText Refuse(DateFault fault) noexcept
{
    DateText refused;
    refused.fault = fault;
    return refused;
}

/// Whether the month has the day, in the year if that is known (not 0).
DateFault CheckDay(int day, int month, int year) noexcept
{
    if (month < 1 || month > kMonthsInYear)
        return DateFault::Month;
    if (day < 1 || day > kLongestMonthDays)
        return DateFault::Day;
    return day > Afx::DaysInMonth(year ? year : kLeapYear, month) ? DateFault::NoSuchDay : DateFault::None;
}

/// A date typed without its year.
DateText WithoutYear(int day, int month, CDate::YearHandler handler)
{
    DateText date{CheckDay(day, month, 0), 0, month, day};
    if (date.fault != DateFault::None)
        return date;
    date.year = handler(day, month);
    if (date.year < kFirstYear || date.year > kLastYear)
        date.fault = DateFault::NoYear;
    else
        date.fault = CheckDay(day, month, date.year);
    return date;
}

DateText WithYear(const Part& day, const Part& month, const Part& year) noexcept
{
    if (day.digits > 2 || month.digits > 2)
        return Refuse(DateFault::Form);
    if (year.digits != 2 && year.digits != 4)
        return Refuse(DateFault::YearDigits);
    int full = year.value;
    if (year.digits == 2)
        full += year.value < kPivot ? 2000 : 1900;
    DateText date{CheckDay(day.value, month.value, full), full, month.value, day.value};
    if (full < kFirstYear && (date.fault == DateFault::None || date.fault == DateFault::NoSuchDay))
        date.fault = DateFault::YearRange;
    return date;
}

DateText Three(const Part& first, const Part& second, const Part& third, char separator, bool monthFirst) noexcept
{
    const int names = (first.digits == 0) + (second.digits == 0) + (third.digits == 0);
    if (names > 1 || third.digits == 0)
        return Refuse(DateFault::Form);
    if (first.digits == 4 && names == 0 && separator == '-' && third.digits <= 2) {
        DateText date = WithYear(third, second, first);
        date.yearFirst = true;
        return date;
    }
    const bool monthLeads = first.digits == 0 || (second.digits != 0 && monthFirst);
    return monthLeads ? WithYear(second, first, third) : WithYear(first, second, third);
}

/// Reads one text, from left to right.
class DateReader
{
public:
    DateReader(const char* text, bool monthFirst, CDate::YearHandler handler) noexcept
        : m_at(text), m_monthFirst(monthFirst), m_handler(handler)
    {}

    DateText Read();

private:
    void SkipBlanks() noexcept
    {
        while (IsBlank(*m_at))
            ++m_at;
    }
    DateFault ReadParts() noexcept;
    DateFault ReadPart(Part& part) noexcept;
    DateFault ReadSeparator() noexcept;
    DateText One();
    DateText Two();

    const char* m_at;
    bool m_monthFirst;
    CDate::YearHandler m_handler;
    Part m_parts[3];
    int m_count = 0;
    char m_separator = '?'; // of the first two parts; 0: digits and letters follow each other
    std::string_view m_word;
};

DateFault DateReader::ReadPart(Part& part) noexcept
{
    const char* const start = m_at;
    if (IsDigit(*m_at)) {
        for (; IsDigit(*m_at); ++m_at) {
            if (++part.digits > kMostDigits)
                return DateFault::Form;
            part.value = part.value * 10 + (*m_at - '0');
        }
        return DateFault::None;
    }
    while (IsLetter(*m_at) && m_at - start <= kLongestMonth)
        ++m_at;
    if (m_at == start)
        return DateFault::Form;
    m_word = std::string_view(start, static_cast<std::size_t>(m_at - start));
    part.value = Afx::MonthOf(m_word);
    return part.value ? DateFault::None : DateFault::MonthName;
}

/// What stands before the second and the third part; the two must be alike.
DateFault DateReader::ReadSeparator() noexcept
{
    char separator = IsBlank(*m_at) ? ' ' : '\0';
    SkipBlanks();
    if (*m_at == '/' || *m_at == '-' || *m_at == '.') {
        separator = *m_at++;
        SkipBlanks();
    }
    if (m_count == 1)
        m_separator = separator;
    return separator == m_separator ? DateFault::None : DateFault::Separators;
}

DateFault DateReader::ReadParts() noexcept
{
    while (*m_at != '\0') {
        if (m_count == 3)
            return DateFault::Form;
        if (m_count > 0)
            if (const DateFault fault = ReadSeparator(); fault != DateFault::None)
                return fault;
        if (const DateFault fault = ReadPart(m_parts[m_count]); fault != DateFault::None)
            return fault;
        ++m_count;
        const char* const behind = m_at;
        SkipBlanks();
        if (*m_at != '\0')
            m_at = behind; // the blanks separate
    }
    return DateFault::None;
}

DateText DateReader::Read()
{
    SkipBlanks();
    if (*m_at == '\0')
        return Refuse(DateFault::Blank);
    if (const DateFault fault = ReadParts(); fault != DateFault::None) {
        DateText refused = Refuse(fault);
        refused.word = m_word;
        return refused;
    }
    return m_count == 1   ? One()
           : m_count == 2 ? Two()
                          : Three(m_parts[0], m_parts[1], m_parts[2], m_separator, m_monthFirst);
}

/// `ddmmyy` or `ddmmyyyy`.
DateText DateReader::One()
{
    const auto [digits, value] = m_parts[0];
    if (digits != 6 && digits != 8)
        return Refuse(DateFault::Form);
    const int yearDigits = digits - 4, scale = digits == 6 ? 100 : 10'000;
    const Part first{2, value / scale / 100}, second{2, value / scale % 100}, year{yearDigits, value % scale};
    return m_monthFirst ? WithYear(second, first, year) : WithYear(first, second, year);
}

DateText DateReader::Two()
{
    const Part &first = m_parts[0], &second = m_parts[1];
    if (first.digits > 2 || second.digits > 2 || first.digits + second.digits == 0)
        return Refuse(DateFault::Form);
    if (first.digits == 0 && !m_monthFirst)
        return Refuse(DateFault::NoYear); // Apr 24 may mean a month of 2024
    const bool monthLeads = first.digits == 0 || (second.digits != 0 && m_monthFirst);
    return monthLeads ? WithoutYear(second.value, first.value, m_handler)
                      : WithoutYear(first.value, second.value, m_handler);
}

} // namespace

DateText ReadDate(const char* text, CDate::ParseOrder order, CDate::YearHandler handler)
{
    return DateReader(text, order == CDate::ParseOrder::MonthFirst, handler).Read();
}

} // namespace Kiln::Detail
