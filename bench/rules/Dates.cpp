#include <charconv>
#include <chrono>
#include <cstdio>
#include <ctime>

#include "MorvUt/taxyear/DateRules.h"
#include "MorvUt/taxyear/DateStrings.h"
#include "Subject.h"
#include "Values.h"

// Records of dates are compared by their long dates.
static bool operator==(const X_DateStr_tag& a, const X_DateStr_tag& b) { return DtoxL(&a) == DtoxL(&b); }

namespace Rules
{
namespace
{

constexpr X_DateStr_tag kNoDate{0, 13, 0};

X_DateStr_tag RecordOf(int day, int month, int year)
{
    return {static_cast<std::uint8_t>(day), static_cast<std::uint8_t>(month), static_cast<std::uint16_t>(year)};
}

/// Reads three numbers with a slash between; whether there is such a day, nobody asks.
X_DateStr_tag ThreeFromChars(const std::string& text)
{
    const char *at = text.data(), *const end = at + text.size();
    int day = 0, month = 0, year = 0;
    const auto read = [&at, end](int& field) {
        const auto result = std::from_chars(at, end, field);
        at = result.ptr;
        return result.ec == std::errc();
    };
    const auto skipSlash = [&at, end] { return at != end && *at++ == '/'; };
    const bool isDate = read(day) && skipSlash() && read(month) && skipSlash() && read(year) && at == end;
    return isDate ? RecordOf(day, month, year) : kNoDate;
}

void RegisterTextToDate()
{
    Subject("text to date", DateTexts(), [](const std::string& text) { return ConvertStrToDate(text.c_str()); })
        .Against("three from_chars", ThreeFromChars)
        .Against("strptime",
                 [](const std::string& text) {
                     std::tm fields{};
                     const char* const end = strptime(text.c_str(), "%d/%m/%Y", &fields);
                     return end && !*end ? RecordOf(fields.tm_mday, fields.tm_mon + 1, fields.tm_year + 1900) : kNoDate;
                 })
        .Against("sscanf",
                 [](const std::string& text) {
                     int day = 0, month = 0, year = 0;
                     const int read = std::sscanf(text.c_str(), "%d/%d/%d", &day, &month, &year);
                     return read == 3 ? RecordOf(day, month, year) : kNoDate;
                 })
        .Slower(
            "ours reads every way in which users type a date and asks whether there is such a day; the peer reads one "
            "way and asks nothing");
}

std::chrono::year_month_day FieldsOf(const X_DateStr_tag& record)
{
    using namespace std::chrono;
    return year(record.year) / record.month / record.day;
}

std::chrono::sys_days DaysOf(const X_DateStr_tag& record) { return FieldsOf(record); }

std::time_t TimeOf(const X_DateStr_tag& record)
{
    std::tm fields{};
    fields.tm_year = record.year - 1900;
    fields.tm_mon = record.month - 1;
    fields.tm_mday = record.day;
    return timegm(&fields);
}

/// Two dates of a period.
template<class Date>
struct Period
{
    Date from, to;
};

template<class Date>
std::vector<Period<Date>> PeriodsOf(const std::vector<Date>& dates)
{
    std::vector<Period<Date>> periods;
    for (std::size_t i = 0; i < dates.size(); ++i)
        periods.push_back({dates[i], dates[(i + 1) % dates.size()]});
    return periods;
}

void RegisterDaysBetween()
{
    using Records_t = Period<X_DateStr_tag>;
    Subject("days between records", PeriodsOf(Records()),
            [](const Records_t& period) { return DayBetween(&period.from, &period.to); })
        .Against("std::chrono",
                 [](const Records_t& period) -> long { return (DaysOf(period.to) - DaysOf(period.from)).count(); })
        .Against("timegm",
                 [](const Records_t& period) -> long { return (TimeOf(period.to) - TimeOf(period.from)) / 86'400; });

    // The same dates as each library holds them.
    struct Days
    {
        Period<Kiln::CDate> ours;
        Period<std::chrono::year_month_day> fields;
        Period<std::chrono::sys_days> numbers;
        Period<std::tm> tm;
    };
    std::vector<Days> items;
    const auto periods = PeriodsOf(Dates());
    for (const Records_t& period : PeriodsOf(Records())) {
        Days days{periods[items.size()],
                  {FieldsOf(period.from), FieldsOf(period.to)},
                  {DaysOf(period.from), DaysOf(period.to)},
                  {}};
        const std::time_t from = TimeOf(period.from), to = TimeOf(period.to);
        gmtime_r(&from, &days.tm.from);
        gmtime_r(&to, &days.tm.to);
        items.push_back(days);
    }
    Subject("days between dates", items,
            [](const Days& days) { return Kiln::DaysBetween(days.ours.from, days.ours.to); })
        .Against("day numbers subtracted",
                 [](const Days& days) -> long { return (days.numbers.to - days.numbers.from).count(); })
        .Against("std::chrono from fields",
                 [](const Days& days) -> long {
                     return (std::chrono::sys_days(days.fields.to) - std::chrono::sys_days(days.fields.from)).count();
                 })
        .Against("timegm",
                 [](const Days& days) -> long {
                     std::tm from = days.tm.from, to = days.tm.to; // timegm writes into them
                     return (timegm(&to) - timegm(&from)) / 86'400;
                 })
        .Slower("ours asks whether both dates are valid and at midnight; the peer's are nothing but whole days");
}

void RegisterTaxYear()
{
    struct Day
    {
        Kiln::CDate ours;
        std::chrono::sys_days days;
        std::time_t time;
    };
    std::vector<Day> items;
    const auto dates = Dates();
    for (const X_DateStr_tag& record : Records())
        items.push_back({dates[items.size()], DaysOf(record), TimeOf(record)});
    Subject("tax year of a date", items, [](const Day& day) { return GetTaxYear(day.ours); })
        .Against("std::chrono",
                 [](const Day& day) {
                     using namespace std::chrono;
                     const year_month_day date(day.days);
                     const bool isNext = date >= date.year() / April / 6;
                     return static_cast<short>(static_cast<int>(date.year()) + isNext);
                 })
        .Against("gmtime",
                 [](const Day& day) {
                     std::tm fields{};
                     gmtime_r(&day.time, &fields);
                     const bool isNext = fields.tm_mon > 3 || (fields.tm_mon == 3 && fields.tm_mday >= 6);
                     return static_cast<short>(fields.tm_year + 1900 + isNext);
                 })
        .Slower("ours has dates that may be not valid or hold a time of day, and is a call into the library");
}

} // namespace

void RegisterDates()
{
    RegisterTextToDate();
    RegisterDaysBetween();
    RegisterTaxYear();
}

} // namespace Rules
