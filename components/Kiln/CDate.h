#pragma once

// Calendar dates as OLE automation numbers with a status.

#include <cstdint>

#include "Afx/text/CString.h"
#include "Afx/text/Numbers.h"
#include "Afx/time/CivilDate.h"
#include "Kiln/Export.h"

namespace Kiln
{

/// A date, 1 January 100 to 31 December 9999 (proleptic Gregorian), or invalid, or null. Held as the OLE automation
/// number: days since 30 December 1899, the time of day as fraction. The default is null.
///
/// Ordering is false unless both dates are valid. Two dates are equal when both are valid and less than half a second
/// apart, or have the same other status. That equality is not transitive: no ordered container and no hash of dates.
class KILN_API CDate
{
public:
    enum class Status : std::uint8_t
    {
        Valid,
        Invalid,
        Null
    };

    CDate() noexcept = default;
    /// Invalid when there is no such day; (0, 0, 0) is null.
    CDate(int year, int month, int day) noexcept;
    /// Invalid for NaN, infinity and days outside the years 100 to 9999.
    static CDate FromOleDate(double oleDate) noexcept;
    static CDate Invalid() noexcept;
    /// The local date (Afx::Clock).
    static CDate Today();

    /// Reads a date as users type it (day first, or month first by SetParseOrder); true when it is one. Otherwise the
    /// date becomes invalid, or null for an empty or blank text, and the result is false.
    ///
    /// Day, month and year between single `/`, `-` or `.`, or blanks; the month as number or English name (three
    /// letters or whole, any case; with a year it may also stand first: Apr 5 2024); a year of four digits, or of two:
    /// 00 to 49 are 2000 to 2049, 50 to 99 are 1950 to 1999; `yyyy-mm-dd`; `ddmmyy` and `ddmmyyyy`. Day and month alone
    /// take the year from the year handler. A month above 12 is never taken for the day.
    bool ParseDate(const char* text);
    /// Why `text` is no date, and how to mend it, for the user: "31 April does not exist". Empty when it is one.
    static CString WhyNotDate(const char* text);
    enum class ParseOrder : std::uint8_t
    {
        DayFirst,
        MonthFirst
    };
    static void SetParseOrder(ParseOrder order) noexcept;
    static ParseOrder GetParseOrder() noexcept;
    /// Gives the year of a date typed as day and month alone; 0 refuses it.
    using YearHandler = int (*)(int day, int month);
    /// Installs a handler and gives back the one before. Null: the current calendar year.
    static YearHandler SetYearHandler(YearHandler handler) noexcept;

    Status GetStatus() const noexcept { return m_status; }
    bool IsValid() const noexcept { return m_status == Status::Valid; }
    bool IsNull() const noexcept { return m_status == Status::Null; }
    int GetYear() const noexcept; // 0 when not valid, likewise month and day
    int GetMonth() const noexcept;
    int GetDay() const noexcept;
    /// The three in one step; zeros when not valid.
    Afx::CivilDate GetFields() const noexcept;
    double GetOleDate() const noexcept { return m_date; }
    static bool IsLeapYear(int year) noexcept;

    /// By a strftime-like pattern (Afx::FormatTime); empty when not valid.
    CString Format(const char* pattern) const;
    /// `YYYY-MM-DD`; empty when not valid.
    CString FormatIso() const;
    /// The same calendar day, whatever the time; false unless both are valid.
    bool IsSameDay(const CDate& other) const noexcept;
    /// An earlier calendar day; the second: the same day or an earlier one. Whatever the time; false unless both are
    /// valid.
    bool IsEarlierDay(const CDate& other) const noexcept;
    bool IsNotLaterDay(const CDate& other) const noexcept;

    CDate operator+(int days) const noexcept; // not valid stays as it is; invalid outside the range
    CDate operator-(int days) const noexcept;
    /// Days from `other` to this date, fractions included; 0 unless both are valid.
    double operator-(const CDate& other) const noexcept;

    friend KILN_API bool operator==(const CDate& a, const CDate& b) noexcept;
    friend KILN_API bool operator<(const CDate& a, const CDate& b) noexcept;
    friend KILN_API bool operator<=(const CDate& a, const CDate& b) noexcept;
    friend bool operator>(const CDate& a, const CDate& b) noexcept { return b < a; }
    friend bool operator>=(const CDate& a, const CDate& b) noexcept { return b <= a; }

private:
    double m_date = 0.0;
    Status m_status = Status::Null;
};

/// Keeps a year handler installed while it lives, then the one before.
class KILN_API YearHandlerScope
{
public:
    explicit YearHandlerScope(CDate::YearHandler handler) noexcept : m_before(CDate::SetYearHandler(handler)) {}
    YearHandlerScope(const YearHandlerScope&) = delete;
    YearHandlerScope& operator=(const YearHandlerScope&) = delete;
    ~YearHandlerScope() { CDate::SetYearHandler(m_before); }

private:
    CDate::YearHandler m_before;
};

namespace Detail
{

/// DaysBetween for any dates.
KILN_API long RoundedDaysBetween(const CDate& from, const CDate& to) noexcept;

} // namespace Detail

/// Days from `from` to `to`, to the nearest whole day after half a second's correction toward the sign of the
/// difference; halves go away from zero. 0 unless both are valid.
inline long DaysBetween(const CDate& from, const CDate& to) noexcept
{
    // From 30 December 1899 on whole days subtract as they are; only fractions and older dates need more.
    const double first = from.GetOleDate(), last = to.GetOleDate();
    if (from.IsValid() && to.IsValid() && first >= 0 && last >= 0) {
        const auto days = static_cast<long>(Afx::ToInt64(last - first).value_or(0));
        if (static_cast<double>(days) == last - first)
            return days;
    }
    return Detail::RoundedDaysBetween(from, to);
}

/// A period; both ends belong to it.
class KILN_API DatePeriod
{
public:
    DatePeriod() noexcept = default;
    DatePeriod(CDate from, CDate to) noexcept : m_from(from), m_to(to) {}
    CDate GetFrom() const noexcept { return m_from; }
    CDate GetTo() const noexcept { return m_to; }
    /// False for a date that is not valid, and when an end is not valid.
    bool IsDateInPeriod(const CDate& date) const noexcept { return date >= m_from && date <= m_to; }

private:
    CDate m_from;
    CDate m_to;
};

} // namespace Kiln
