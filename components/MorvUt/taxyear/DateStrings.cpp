#include "MorvUt/taxyear/DateStrings.h"

#include <array>
#include <string_view>

#include "Afx/text/BoundedCopy.h"
#include "Afx/time/Calendar.h"
#include "Afx/time/Clock.h"
#include "Kiln/CDate.h"

const char* const arrDateFormatStrings[5] = {"%d/%m/%y", "%m/%d/%y", "%d %b %Y", "%b %d %Y", nullptr};
const char* const arrDateFormatStringsForDialogs[5] = {"DD/MM/YY", "MM/DD/YY", "DD MMM YYYY", "MMM DD YYYY", nullptr};

namespace
{

constexpr std::uint8_t kNoMonth = 13; // of a text that is no date

constexpr X_DateStr_tag RecordOf(const Afx::CivilDate& date) noexcept
{
    return {static_cast<std::uint8_t>(date.day), static_cast<std::uint8_t>(date.month),
            static_cast<std::uint16_t>(date.year)};
}

X_DateStr_tag Today()
{
    const Afx::LocalTime now = Afx::Clock::Local();
    return RecordOf({now.year, now.month, now.day});
}

X_DateStr_tag Parse(const char* text)
{
    if (!text || !*text)
        return {};
    if (*text == 'X' || *text == 'U')
        return {kUnknownDay, 0, 0};
    Kiln::CDate date;
    if (!date.ParseDate(text))
        return {0, kNoMonth, 0};
    return RecordOf(date.GetFields());
}

/// The two lowest digits of `value`.
char* WriteTwo(char* at, unsigned value) noexcept
{
    at[0] = static_cast<char>('0' + value / 10 % 10);
    at[1] = static_cast<char>('0' + value % 10);
    return at + 2;
}

/// Day or month, in two digits or, when somebody filled the field with more, three.
char* WriteField(char* at, unsigned value) noexcept
{
    if (value >= 100)
        *at++ = static_cast<char>('0' + value / 100);
    return WriteTwo(at, value);
}

struct DateText
{
    char buffer[16]; // of "255/255/65535"
    unsigned length;

    std::string_view View() const noexcept { return {buffer, length}; }
};

DateText TextOf(const X_DateStr_tag& date) noexcept
{
    DateText text;
    char* at = WriteField(text.buffer, date.day);
    *at++ = '/';
    at = WriteField(at, date.month);
    *at++ = '/';
    if (date.year >= 10'000)
        *at++ = static_cast<char>('0' + date.year / 10'000);
    at = WriteTwo(at, date.year / 100u);
    at = WriteTwo(at, date.year);
    text.length = static_cast<unsigned>(at - text.buffer);
    return text;
}

constexpr std::string_view kUnknown = "Unknown";

/// Whether the record is a day of the Gregorian calendar that `Kiln::CDate` can hold.
constexpr bool IsCivil(const X_DateStr_tag& date) noexcept
{
    return date.year >= 100 && date.year <= 9999 && date.day >= 1 &&
           date.day <= Afx::DaysInMonth(date.year, date.month);
}

constexpr int OleDayOf(const X_DateStr_tag& date) noexcept { return Afx::OleDayOf(date.year, date.month, date.day); }

/// By any month number: the days that it has in every year, 0 for what is no month.
constexpr auto kPlainDays = [] {
    std::array<std::uint8_t, 256> days{};
    for (int month = 1; month <= 12; ++month)
        days[static_cast<std::size_t>(month)] = static_cast<std::uint8_t>(Afx::DaysInMonth(2023, month));
    return days;
}();

/// A day of the years 1901 to 2099, but 29 February.
constexpr bool IsPlain(const X_DateStr_tag& date) noexcept
{
    return date.year - 1901u < 199u && date.day - 1u < kPlainDays[date.month];
}
static_assert(IsPlain({31, 12, 2099}) && !IsPlain({29, 2, 2024}) && !IsPlain({1, 0, 2024}) && !IsPlain({0, 1, 2024}));

/// A plain day's number, counted from a fixed one. In those years every fourth has a leap day, so no century counts;
/// the year begins in March, so that the leap day is its last.
constexpr int PlainDay(const X_DateStr_tag& date) noexcept
{
    constexpr short kDaysBefore[] = {0, 306, 337, 0, 31, 61, 92, 122, 153, 184, 214, 245, 275};
    const unsigned year = date.year - (date.month <= 2 ? 1u : 0u);
    return static_cast<int>(year * 1461 / 4) + kDaysBefore[date.month] + date.day;
}
static_assert(PlainDay({1, 1, 1901}) - PlainDay({28, 12, 2099}) == OleDayOf({1, 1, 1901}) - OleDayOf({28, 12, 2099}));
static_assert(PlainDay({1, 3, 2000}) - PlainDay({28, 2, 2000}) == 2);

} // namespace

void ParseDateStr(const char* text, X_DateStr_tag* out) { *out = Parse(text); }

X_DateStr_tag ConvertStrToDate(const char* text) { return Parse(text); }

void ConvertDateToStr(const X_DateStr_tag* date, CString& out)
{
    out.Empty(); // and then straight into the memory that `out` has
    if (date->day == kUnknownDay)
        out += kUnknown;
    else if (date->day != 0)
        out += TextOf(*date).View();
}

void convert_date_to_str(const X_DateStr_tag* date, char* buffer, unsigned size)
{
    if (date->day == 0)
        Afx::BoundedCopy(buffer, size, {});
    else if (date->day == kUnknownDay)
        Afx::BoundedCopy(buffer, size, kUnknown);
    else
        Afx::BoundedCopy(buffer, size, TextOf(*date).View());
}

void GetTodaysDate(CString& out)
{
    const X_DateStr_tag today = Today();
    ConvertDateToStr(&today, out);
}

void X_GetDate(X_DateStr_tag* out) { *out = Today(); }

void CopyDate(X_DateStr_tag* dest, const X_DateStr_tag* src) noexcept { *dest = *src; }

int DateIsNull(const X_DateStr_tag* date) noexcept { return date->day == 0 && date->month == 0 && date->year == 0; }

int DatesIdentical(const X_DateStr_tag* a, const X_DateStr_tag* b) noexcept { return DtoxL(a) == DtoxL(b); }

int CompareDates(const X_DateStr_tag* a, const X_DateStr_tag* b) noexcept
{
    const long first = DtoxL(a), second = DtoxL(b);
    if (first == 0 || second == 0)
        return 0;
    return (first < second) - (first > second);
}

long DtoxL(const X_DateStr_tag* date) noexcept { return (date->year * 100L + date->month) * 100L + date->day; }

void LtoxD(long value, X_DateStr_tag* out) noexcept
{
    out->day = static_cast<std::uint8_t>(value % 100);
    out->month = static_cast<std::uint8_t>(value / 100 % 100);
    out->year = static_cast<std::uint16_t>(value / 10'000);
}

// Two-digit years count from 1900 and the rule counts from 1800; four divides both, so the remainder alone decides.
int isleapyear(int year) noexcept { return year % 4 == 0; }

int validXDate(const X_DateStr_tag* date) noexcept
{
    constexpr std::uint8_t kDays[] = {0, 31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    if (date->month < 1 || date->month > 12 || date->day < 1)
        return 0;
    return date->day <= kDays[date->month] + (date->month == 2 && isleapyear(date->year));
}

int IsValidDate(const X_DateStr_tag* date) noexcept
{
    const bool isSpecial = (date->day == 0 || date->day == kUnknownDay) && date->month == 0 && date->year == 0;
    return isSpecial || validXDate(date);
}

int GetDayOfWeek(int day, int month, int year) noexcept
{
    // January and February belong to the year before. In 64 bits, so that no number overflows.
    const bool isEarly = month == 1 || month == 2;
    const std::int64_t shifted = std::int64_t{year} - isEarly;
    const std::int64_t century = shifted / 100, rest = shifted % 100;
    const std::int64_t term = ((month < 3 ? 259 : -53) + std::int64_t{26} * month) / 10;
    const auto sum =
        static_cast<int>((std::int64_t{day} + 49 + term + rest / 4 + century / 4 - 2 * century + rest) % 7);
    return sum <= 0 ? 6 : sum - 1;
}

// Both dates are at midnight, so the count is whole and needs no rounding.
long DayBetween(const X_DateStr_tag* from, const X_DateStr_tag* to) noexcept
{
    if (IsPlain(*from) && IsPlain(*to)) // nearly always; a third of the time
        return PlainDay(*to) - PlainDay(*from);
    return IsCivil(*from) && IsCivil(*to) ? OleDayOf(*to) - OleDayOf(*from) : 0;
}
