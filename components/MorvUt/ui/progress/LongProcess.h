#pragma once

// How long a long piece of work still takes, told on the screen that waits for it.

#include <cstdint>
#include <optional>

#include "Afx/text/CString.h"
#include "Afx/time/DateTime.h"
#include "MorvUt/Export.h"

class CStatic;

/// Seconds that the rest of the work takes at the pace of its `done` of `total` steps, which took `elapsed` seconds:
/// elapsed * (total / done) - elapsed, cut to whole seconds. 0 when all is done; negative beyond that; nothing when
/// nothing is done yet.
MORVUT_API std::optional<int> SecondsToGo(std::int64_t elapsed, int done, int total) noexcept;

/// Writes the time that is left, rounded, and the time of day of the end into two texts, which must outlive it. Each is
/// written only when it changes.
class MORVUT_API CLongProcess
{
public:
    /// The last parameter, a number of steps, is taken from callers that tell it here; UpdateTimes is told each time.
    CLongProcess(CStatic& remainingText, CStatic& completionText, int steps = 0) noexcept;

    void SetStartTime(CTime start) noexcept { m_start = start; }
    /// `done` of `total` steps are done now. While none is, the texts stay as they are.
    void UpdateTimes(int done, int total);

    /// To the nearest hour from 6 hours on, half hour from 2, quarter from 1, minute from 6 minutes, half minute from
    /// 2, quarter from 1; below a minute they stay. Halves go up: 67 is 60, 68 is 75.
    static void RoundSecondsToGo(int& seconds) noexcept;
    /// To the nearest multiple of `unit`, halves up; a unit below 1 changes nothing.
    static void RoundTime(int& seconds, int unit) noexcept;
    /// 3725 is "Estimated Time Remaining: 1 hour 2 minutes 5 seconds"; units of which there is none are left out, days
    /// are always in the plural.
    static CString FormatTimeRemaining(int seconds);

private:
    CStatic& m_remainingText;
    CStatic& m_completionText;
    CTime m_start;
    std::optional<int> m_shownSeconds;             // rounded
    std::optional<std::int64_t> m_shownCompletion; // seconds since 1970-01-01 00:00 UTC
};
