#include "MorvUt/ui/progress/LongProcess.h"

#include <algorithm>
#include <limits>
#include <string>

#include "Afx/system/Resources.h"
#include "Afx/text/Numbers.h"
#include "Afx/time/Clock.h"
#include "Afx/time/FormatTime.h"
#include "Afx/windows/Static.h"
#include "MorvUt/res/Strings.h"

namespace
{

constexpr int kOneMinute = 60, kOneHour = 3600, kOneDay = 86'400; // seconds

/// `value` cut to a whole number, and to what fits.
int Clamped(double value) noexcept
{
    constexpr double kLeast = std::numeric_limits<int>::min(), kMost = std::numeric_limits<int>::max();
    return static_cast<int>(Afx::ToInt64(std::clamp(value, kLeast, kMost)).value_or(0));
}

/// A number of units, as in " 2 minutes"; nothing when there is none.
CString CountOf(int number, unsigned one, unsigned several)
{
    if (number == 0)
        return {};
    return Afx::FillPlaces(LibraryText(number > 1 ? several : one).View(), {std::to_string(number)});
}

} // namespace

std::optional<int> SecondsToGo(std::int64_t elapsed, int done, int total) noexcept
{
    if (done == 0)
        return std::nullopt;
    const auto spent = static_cast<double>(elapsed);
    return Clamped(spent * (static_cast<double>(total) / done) - spent);
}

CLongProcess::CLongProcess(CStatic& remainingText, CStatic& completionText, int) noexcept
    : m_remainingText(remainingText), m_completionText(completionText)
{}

void CLongProcess::UpdateTimes(int done, int total)
{
    const std::int64_t now = CTime::GetCurrentTime().GetTime();
    const std::optional<int> toGo = SecondsToGo(now - m_start.GetTime(), done, total);
    if (!toGo)
        return;
    int rounded = *toGo;
    RoundSecondsToGo(rounded);
    if (rounded != m_shownSeconds) {
        m_remainingText.SetWindowText(FormatTimeRemaining(rounded));
        m_shownSeconds = rounded;
    }
    if (const std::int64_t completion = now + *toGo; completion != m_shownCompletion) {
        const Afx::LocalTime local = Afx::Clock::LocalAt(completion * 1000);
        m_completionText.SetWindowText(Afx::FormatTime(local, LibraryText(IDS_COMPLETION_TIME).View()));
        m_shownCompletion = completion;
    }
}

void CLongProcess::RoundSecondsToGo(int& seconds) noexcept
{
    constexpr struct
    {
        int from, unit;
    } kUnits[] = {
        {6 * kOneHour, kOneHour},     {2 * kOneHour, kOneHour / 2},     {kOneHour, kOneHour / 4},
        {6 * kOneMinute, kOneMinute}, {2 * kOneMinute, kOneMinute / 2}, {kOneMinute, kOneMinute / 4},
    };
    for (const auto& row : kUnits)
        if (seconds >= row.from)
            return RoundTime(seconds, row.unit);
}

void CLongProcess::RoundTime(int& seconds, int unit) noexcept
{
    if (unit > 0)
        seconds = Clamped(static_cast<double>(Clamped(static_cast<double>(seconds) / unit + 0.5)) * unit);
}

CString CLongProcess::FormatTimeRemaining(int seconds)
{
    // One day reads " 1 days", as it always has.
    return LibraryText(IDS_TIME_REMAINING) + CountOf(seconds / kOneDay, IDS_TIME_DAYS, IDS_TIME_DAYS) +
           CountOf(seconds / kOneHour - seconds / kOneDay * 24, IDS_TIME_HOUR, IDS_TIME_HOURS) +
           CountOf(seconds / kOneMinute - seconds / kOneHour * 60, IDS_TIME_MINUTE, IDS_TIME_MINUTES) +
           CountOf(seconds % kOneMinute, IDS_TIME_SECOND, IDS_TIME_SECONDS);
}
