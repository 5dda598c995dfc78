#include <string>

#include "fuzz/Targets.h"
#include "Kiln/CDate.h"
#include "MorvUt/taxyear/DateStrings.h"

namespace Fuzz
{
namespace
{

using Kiln::CDate;

/// Keeps the order of day and month while it lives, then the one before.
class OrderScope
{
public:
    explicit OrderScope(CDate::ParseOrder order) noexcept : m_before(CDate::GetParseOrder())
    {
        CDate::SetParseOrder(order);
    }
    OrderScope(const OrderScope&) = delete;
    OrderScope& operator=(const OrderScope&) = delete;
    ~OrderScope() { CDate::SetParseOrder(m_before); }

private:
    CDate::ParseOrder m_before;
};

bool ReadsAs(const CString& text, const CDate& wanted)
{
    CDate read;
    return read.ParseDate(text) && read == wanted && CDate::WhyNotDate(text).IsEmpty();
}

void CheckRecord(const char* text, const CDate& date)
{
    X_DateStr_tag record{};
    ParseDateStr(text, &record);
    if (*text == '\0')
        Require(DateIsNull(&record) != 0, "an empty text is the null record");
    else if (*text == 'X' || *text == 'U')
        Require(DtoxL(&record) == kUnknownDay, "a text that begins with X or U is the Unknown record");
    else if (date.IsValid())
        Require(record.day == date.GetDay() && record.month == date.GetMonth() && record.year == date.GetYear(),
                "the record holds the same day");
    else
        Require(record.day == 0 && record.month == 13 && record.year == 0, "a text that is no date is month 13");
}

void Check(const char* text, CDate::ParseOrder order)
{
    const OrderScope scope(order);
    CDate date(1999, 12, 31); // what was there before must not matter
    const bool isAccepted = date.ParseDate(text);
    Require(isAccepted == date.IsValid(), "accepted means valid");
    Require(isAccepted == CDate::WhyNotDate(text).IsEmpty(), "a reason is given exactly for what is refused");
    CheckRecord(text, date);
    if (!isAccepted) {
        const bool isBlank = std::string_view(text).find_first_not_of(" \t\n\v\f\r") == std::string_view::npos;
        Require(date.IsNull() == isBlank, "null exactly for a blank text");
        Require(date == (isBlank ? CDate() : CDate::Invalid()), "nothing is left of the value before");
        return;
    }
    Require(date == CDate(date.GetYear(), date.GetMonth(), date.GetDay()), "a day of the calendar, at midnight");
    Require(ReadsAs(date.FormatIso(), date), "the ISO form reads as the same date in either order");
    const bool isDayFirst = order == CDate::ParseOrder::DayFirst;
    for (const char* pattern : {isDayFirst ? "%d/%m/%Y" : "%m/%d/%Y", "%d %b %Y", "%B %d %Y"})
        Require(ReadsAs(date.Format(pattern), date), "the usual forms read as the same date");
}

} // namespace

void DateText(std::string_view input)
{
    const std::string text(input);
    const Kiln::YearHandlerScope handler([](int, int) { return 2023; }); // not a leap year
    Check(text.c_str(), CDate::ParseOrder::DayFirst);
    Check(text.c_str(), CDate::ParseOrder::MonthFirst);
}

} // namespace Fuzz
