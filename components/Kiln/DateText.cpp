#include "Kiln/detail/DateText.h"

#include "Afx/Calendar.h"

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

constexpr bool IsDigit(char c) noexcept { return c >= '0' && c <= '9'; }
constexpr char Lower(char c) noexcept { return static_cast<char>(c | 0x20); }
constexpr bool IsLetter(char c) noexcept { return Lower(c) >= 'a' && Lower(c) <= 'z'; }
constexpr bool IsBlank(char c) noexcept { return c == ' ' || (c >= '\t' && c <= '\r'); }

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

bool NamesMonth(std::string_view word, std::string_view name) noexcept
{
    if (word.size() != 3 && word.size() != name.size())
        return false;
    for (std::size_t i = 0; i < word.size(); ++i)
        if (Lower(word[i]) != name[i])
            return false;
    return true;
}

/// 1 to 12; 0 when the word names no month.
int MonthOf(std::string_view word) noexcept
{
    for (int month = 1; month <= kMonthsInYear; ++month)
        if (NamesMonth(word, kMonthNames[month - 1]))
            return month;
    return 0;
}

/// The checks of all forms. A year of 0 is asked for.
DateText Check(int day, int month, int year, CDate::YearHandler handler)
{
    DateText date{DateFault::None, year, month, day, {}};
    const bool asks = year == 0;
    if (month < 1 || month > kMonthsInYear)
        date.fault = DateFault::Month;
    else if (day < 1 || day > kLongestMonthDays)
        date.fault = DateFault::Day;
    else if (day > Afx::DaysInMonth(kLeapYear, month))
        date.fault = DateFault::NoSuchDay;
    if (date.fault != DateFault::None)
        return date;
    if (asks)
        date.year = handler(day, month);
    if (date.year < kFirstYear || date.year > kLastYear)
        date.fault = asks ? DateFault::NoYear : DateFault::YearRange;
    else if (day > Afx::DaysInMonth(date.year, month))
        date.fault = DateFault::NoSuchDay;
    return date;
}

/// Digit `c` into `value`; false when it is none.
bool AddDigit(int& value, char c) noexcept
{
    const unsigned digit = static_cast<unsigned char>(c) - unsigned{'0'};
    value = value * 10 + static_cast<int>(digit & 0xF);
    return digit < 10;
}

/// The form that programs write, `nn/nn/nnnn`, without the detour over parts.
bool ReadUsual(const char* text, int& first, int& second, int& year) noexcept
{
    const auto separates = [](char c) { return c == '/' || c == '-' || c == '.'; };
    return AddDigit(first, text[0]) && AddDigit(first, text[1]) && separates(text[2]) && AddDigit(second, text[3]) &&
           AddDigit(second, text[4]) && text[5] == text[2] && AddDigit(year, text[6]) && AddDigit(year, text[7]) &&
           AddDigit(year, text[8]) && AddDigit(year, text[9]) && text[10] == '\0' && year != 0;
}

/// Reads any form, from left to right.
class Reader
{
public:
    Reader(const char* text, bool monthFirst, CDate::YearHandler handler) noexcept
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
    DateText Three();
    DateText WithYear(const Part& day, const Part& month, const Part& year);

    const char* m_at;
    bool m_monthFirst;
    CDate::YearHandler m_handler;
    Part m_parts[3];
    int m_count = 0;
    char m_separator = '?'; // of the first two parts; 0: digits and letters follow each other
    std::string_view m_word;
};

DateFault Reader::ReadPart(Part& part) noexcept
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
    part.value = MonthOf(m_word);
    return part.value ? DateFault::None : DateFault::MonthName;
}

/// What stands before the second and the third part; the two must be alike.
DateFault Reader::ReadSeparator() noexcept
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

DateFault Reader::ReadParts() noexcept
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

DateText Reader::Read()
{
    SkipBlanks();
    if (*m_at == '\0')
        return Refuse(DateFault::Blank);
    if (const DateFault fault = ReadParts(); fault != DateFault::None) {
        DateText refused = Refuse(fault);
        refused.word = m_word;
        return refused;
    }
    return m_count == 1 ? One() : m_count == 2 ? Two() : Three();
}

/// `ddmmyy` or `ddmmyyyy`.
DateText Reader::One()
{
    const auto [digits, value] = m_parts[0];
    if (digits != 6 && digits != 8)
        return Refuse(DateFault::Form);
    const int yearDigits = digits - 4, scale = digits == 6 ? 100 : 10'000;
    const Part first{2, value / scale / 100}, second{2, value / scale % 100}, year{yearDigits, value % scale};
    return m_monthFirst ? WithYear(second, first, year) : WithYear(first, second, year);
}

DateText Reader::Two()
{
    const Part &first = m_parts[0], &second = m_parts[1];
    if (first.digits > 2 || second.digits > 2 || first.digits + second.digits == 0)
        return Refuse(DateFault::Form);
    const bool monthLeads = first.digits == 0 || (second.digits != 0 && m_monthFirst);
    return monthLeads ? Check(second.value, first.value, 0, m_handler) : Check(first.value, second.value, 0, m_handler);
}

DateText Reader::Three()
{
    const Part &first = m_parts[0], &second = m_parts[1], &third = m_parts[2];
    const int names = (first.digits == 0) + (second.digits == 0) + (third.digits == 0);
    if (names > 1 || third.digits == 0)
        return Refuse(DateFault::Form);
    if (first.digits == 4 && names == 0 && m_separator == '-' && third.digits <= 2)
        return WithYear(third, second, first);
    if (first.digits > 2 || second.digits > 2)
        return Refuse(DateFault::Form);
    const bool monthLeads = first.digits == 0 || (second.digits != 0 && m_monthFirst);
    return monthLeads ? WithYear(second, first, third) : WithYear(first, second, third);
}

DateText Reader::WithYear(const Part& day, const Part& month, const Part& year)
{
    if (day.digits > 2 || month.digits > 2)
        return Refuse(DateFault::Form);
    if (year.digits != 2 && year.digits != 4)
        return Refuse(DateFault::YearDigits);
    int full = year.value;
    if (year.digits == 2)
        full += year.value < kPivot ? 2000 : 1900;
    if (full == 0)
        return Refuse(DateFault::YearRange);
    return Check(day.value, month.value, full, m_handler);
}

} // namespace

DateText ReadDate(const char* text, CDate::ParseOrder order, CDate::YearHandler handler)
{
    const bool monthFirst = order == CDate::ParseOrder::MonthFirst;
    int first = 0, second = 0, year = 0;
    if (ReadUsual(text, first, second, year))
        return monthFirst ? Check(second, first, year, handler) : Check(first, second, year, handler);
    return Reader(text, monthFirst, handler).Read();
}

} // namespace Kiln::Detail
