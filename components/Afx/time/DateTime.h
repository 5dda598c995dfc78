#pragma once

// Date-times as OLE automation numbers: days since 30 December 1899, the time of day as fraction.

#include "Afx/Export.h"
#include "Afx/text/CString.h"
#include "Afx/time/Clock.h"

/// A date and time, 0100-01-01 to 9999-12-31, to the millisecond, with a status. The default is 0.0 and valid.
class AFX_API COleDateTime
{
public:
    enum DateTimeStatus
    {
        valid = 0,
        invalid = 1,
        null = 2
    };

    COleDateTime() noexcept = default;
    explicit COleDateTime(double oleDate) noexcept;
    COleDateTime(int year, int month, int day, int hour, int minute, int second, int milliseconds = 0) noexcept;
    explicit COleDateTime(const Afx::LocalTime& time) noexcept;
    static COleDateTime Null() noexcept;
    /// Now by the machine's zone, and in UTC (from Afx::Clock).
    static COleDateTime GetCurrentTime();
    static COleDateTime GetCurrentUtcTime();
    /// `YYYY-MM-DD`, or with `HH:MM[:SS[.mmm]]` after a blank or `T`; not valid when it is anything else. One to nine
    /// digits of a second are read (servers differ), those beyond the millisecond are dropped.
    static COleDateTime ParseIso(std::string_view text) noexcept;

    DateTimeStatus GetStatus() const noexcept { return m_status; }
    void SetStatus(DateTimeStatus status) noexcept { m_status = status; }
    double GetOleDate() const noexcept { return m_date; }
    /// The calendar fields, rounded to the millisecond; all zero when not valid.
    Afx::LocalTime Fields() const noexcept;
    /// Since 1970-01-01 00:00 of the same clock; only of a valid one.
    std::int64_t ToMilliseconds() const noexcept { return Afx::ToUnixMilliseconds(Fields()); }
    /// `YYYY-MM-DD HH:MM:SS.mmm`; empty when not valid.
    CString FormatIso() const;

    friend bool operator==(const COleDateTime& a, const COleDateTime& b) noexcept
    {
        return a.m_status == b.m_status && (a.m_status != valid || a.m_date == b.m_date);
    }

private:
    double m_date = 0.0;
    DateTimeStatus m_status = valid;
};

/// Whole seconds since 1970-01-01 00:00 UTC, in 64 bits on every target.
class AFX_API CTime
{
public:
    CTime() noexcept = default;
    explicit CTime(std::int64_t seconds) noexcept : m_seconds(seconds) {}
    static CTime GetCurrentTime();
    std::int64_t GetTime() const noexcept { return m_seconds; }
    friend auto operator<=>(const CTime&, const CTime&) = default;

private:
    std::int64_t m_seconds = 0;
};
