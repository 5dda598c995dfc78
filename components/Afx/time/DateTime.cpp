#include "Afx/time/DateTime.h"

#include <cmath>

#include "Afx/text/Numbers.h"
#include "Afx/time/Calendar.h"

namespace
{

constexpr int kMillisecondsPerDay = 86'400'000;

bool IsTimeOfDay(const Afx::LocalTime& time) noexcept
{
    return time.hour >= 0 && time.hour < 24 && time.minute >= 0 && time.minute < 60 && time.second >= 0 &&
           time.second < 60 && time.milliseconds >= 0 && time.milliseconds < 1000;
}

bool IsDate(const Afx::LocalTime& time) noexcept
{
    return time.year >= 100 && time.year <= 9999 && time.day >= 1 &&
           time.day <= Afx::DaysInMonth(time.year, time.month);
}

int MillisecondOfDay(const Afx::LocalTime& time) noexcept
{
    return ((time.hour * 60 + time.minute) * 60 + time.second) * 1000 + time.milliseconds;
}

/// Reads `count` digits at the start of `text` and drops them; -1 when they are not there.
int TakeDigits(std::string_view& text, std::size_t count) noexcept
{
    int value = 0;
    if (text.size() < count)
        return -1;
    for (std::size_t i = 0; i < count; ++i) {
        if (text[i] < '0' || text[i] > '9')
            return -1;
        value = value * 10 + (text[i] - '0');
    }
    text.remove_prefix(count);
    return value;
}

bool Take(std::string_view& text, char c) noexcept
{
    if (text.empty() || text.front() != c)
        return false;
    text.remove_prefix(1);
    return true;
}

/// The digits after a second's point as milliseconds, all of `text`; -1 when they are none, or more than nine.
int TakeMilliseconds(std::string_view& text) noexcept
{
    if (text.empty() || text.size() > 9)
        return -1;
    int value = 0, place = 100;
    for (const char c : text) {
        if (c < '0' || c > '9')
            return -1;
        value += (c - '0') * place;
        place /= 10;
    }
    text = {};
    return value;
}

/// Reads `HH:MM[:SS[.mmm]]`, all of `text`; false when it is not one.
bool ReadTime(std::string_view text, Afx::LocalTime& time) noexcept
{
    time.hour = TakeDigits(text, 2);
    if (!Take(text, ':'))
        return false;
    time.minute = TakeDigits(text, 2);
    if (Take(text, ':')) {
        time.second = TakeDigits(text, 2);
        if (Take(text, '.'))
            time.milliseconds = TakeMilliseconds(text);
    }
    return text.empty() && IsTimeOfDay(time);
}

} // namespace

COleDateTime::COleDateTime(double oleDate) noexcept : m_date(oleDate)
{
    const auto day = Afx::ToInt64(oleDate);
    if (!day || *day < Afx::kFirstOleDay || *day > Afx::kLastOleDay) {
        m_date = 0.0;
        m_status = invalid;
    }
}

COleDateTime::COleDateTime(int year, int month, int day, int hour, int minute, int second, int milliseconds) noexcept
    : COleDateTime(Afx::LocalTime{year, month, day, hour, minute, second, milliseconds})
{}

COleDateTime::COleDateTime(const Afx::LocalTime& time) noexcept
{
    if (!IsDate(time) || !IsTimeOfDay(time)) {
        m_status = invalid;
        return;
    }
    const auto day = static_cast<double>(Afx::OleDayOf(time.year, time.month, time.day));
    const double fraction = MillisecondOfDay(time) / static_cast<double>(kMillisecondsPerDay);
    m_date = day < 0 ? day - fraction : day + fraction; // the fraction runs forward in time on both sides
}

COleDateTime COleDateTime::Null() noexcept
{
    COleDateTime time;
    time.m_status = null;
    return time;
}

COleDateTime COleDateTime::GetCurrentTime() { return COleDateTime(Afx::Clock::Local()); }
COleDateTime COleDateTime::GetCurrentUtcTime() { return COleDateTime(Afx::Clock::Utc()); }

COleDateTime COleDateTime::ParseIso(std::string_view text) noexcept
{
    Afx::LocalTime time{};
    time.year = TakeDigits(text, 4);
    bool good = Take(text, '-');
    time.month = TakeDigits(text, 2);
    good = good && Take(text, '-');
    time.day = TakeDigits(text, 2);
    if (good && !text.empty())
        good = (Take(text, ' ') || Take(text, 'T')) && ReadTime(text, time);
    if (good)
        return COleDateTime(time);
    COleDateTime refused;
    refused.m_status = invalid;
    return refused;
}

Afx::LocalTime COleDateTime::Fields() const noexcept
{
    if (m_status != valid)
        return {};
    std::int64_t day = Afx::ToInt64(m_date).value_or(0); // in range: the constructors see to it
    const double fraction = std::fabs(m_date - static_cast<double>(day));
    std::int64_t milliseconds = Afx::ToInt64(fraction * kMillisecondsPerDay + 0.5).value_or(0);
    if (milliseconds == kMillisecondsPerDay) {
        if (day == Afx::kLastOleDay)
            --milliseconds;
        else
            ++day, milliseconds = 0;
    }
    return Afx::FromUnixMilliseconds((day + Afx::kOleDayZero) * kMillisecondsPerDay + milliseconds);
}

CString COleDateTime::FormatIso() const
{
    CString text;
    if (m_status != valid)
        return text;
    const Afx::LocalTime t = Fields();
    text.Format("%04d-%02d-%02d %02d:%02d:%02d.%03d", t.year, t.month, t.day, t.hour, t.minute, t.second,
                t.milliseconds);
    return text;
}

CTime CTime::GetCurrentTime()
{
    const std::int64_t milliseconds = Afx::Clock::UnixMilliseconds();
    return CTime(milliseconds / 1000 - (milliseconds % 1000 < 0));
}
