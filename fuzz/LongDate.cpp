#include <charconv>

#include "fuzz/Targets.h"
#include "MorvUt/taxyear/DateRules.h"
#include "MorvUt/taxyear/DateStrings.h"

namespace Fuzz
{
namespace
{

using Kiln::CDate;

/// What the record of a day that the calendar has must tell.
void CheckDay(const CDate& date, const X_DateStr_tag& record)
{
    Require(validXDate(&record) != 0, "every day of the calendar is a day of the records");
    CString text;
    ConvertDateToStr(&record, text);
    X_DateStr_tag read = ConvertStrToDate(text);
    Require(DatesIdentical(&record, &read) != 0, "the record comes back from its text");
    const short taxYear = GetTaxYear(date);
    const bool hasPeriod = GetTaxYearStart(taxYear).IsValid() && GetTaxYearEnd(taxYear).IsValid();
    Require(!hasPeriod || IsDateInTaxYear(date, taxYear), "a date lies in its tax year");

    const CDate next = date + 1;
    if (!next.IsValid())
        return;
    X_DateStr_tag tomorrow{};
    LtoxD(CDateToLong(next), &tomorrow);
    Require(DayBetween(&record, &tomorrow) == 1 && DayBetween(&tomorrow, &record) == -1, "the next day is one day on");
    Require(CompareDates(&record, &tomorrow) == 1, "the next day is later");
    const int weekday = GetDayOfWeek(record.day, record.month, record.year);
    constexpr int kEndOfWeekdays = 3000; // from there on they are not all right
    Require(tomorrow.year >= kEndOfWeekdays ||
                GetDayOfWeek(tomorrow.day, tomorrow.month, tomorrow.year) == (weekday + 1) % 7,
            "the next day is the next day of the week");
}

void Check(long value)
{
    const CDate date = LongToCDate(value);
    Require(date.IsNull() == (value == 0), "null exactly for 0");
    Require(CDateToLong(date) == (date.IsValid() ? value : 0), "a long date comes back, or is 0");

    X_DateStr_tag record{};
    LtoxD(value, &record);
    constexpr long kLargest = 65535'99'99; // that the record's fields can hold
    if (value < 0 || value > kLargest) {
        Require(!date.IsValid(), "only long dates that a record can hold are dates");
        return;
    }
    Require(DtoxL(&record) == value, "the fields hold the long date");
    const bool isSpecial = value == 0 || value == kUnknownDay;
    Require((IsValidDate(&record) != 0) == (validXDate(&record) != 0 || isSpecial),
            "beside the days only null and Unknown are valid");
    if (date.IsValid())
        CheckDay(date, record);
    else if (validXDate(&record) && record.year >= 100 && record.year <= 9999)
        Require(record.day == 29 && record.month == 2 && record.year % 100 == 0,
                "the calendars differ in century leap days alone");
}

} // namespace

void LongDate(std::string_view input)
{
    long value = 0;
    const char* const end = input.data() + input.size();
    const auto [stop, error] = std::from_chars(input.data(), end, value);
    if (error == std::errc() && stop == end)
        Check(value);
}

} // namespace Fuzz
