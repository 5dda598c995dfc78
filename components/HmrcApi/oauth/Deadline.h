#pragma once

// An end to waiting.

#include <algorithm>
#include <chrono>
#include <cstdint>

#include "Afx/time/Clock.h"

namespace HmrcApi
{

/// A length of time that began with the object. It is over as soon as one of two clocks says so: the steady one stands
/// still while a computer sleeps, the other may be set back.
class Deadline
{
public:
    explicit Deadline(std::int64_t milliseconds) : m_length(milliseconds) {}

    /// Milliseconds; 0 when it is over.
    unsigned Left() const
    {
        const auto steady = std::chrono::duration_cast<std::chrono::milliseconds>(Steady::now() - m_steady).count();
        const std::int64_t gone = std::max<std::int64_t>(steady, Afx::Clock::UnixMilliseconds() - m_wall);
        return static_cast<unsigned>(std::clamp<std::int64_t>(m_length - gone, 0, m_length));
    }
    bool IsOver() const { return Left() == 0; }

private:
    using Steady = std::chrono::steady_clock;
    std::int64_t m_length;
    Steady::time_point m_steady = Steady::now();
    std::int64_t m_wall = Afx::Clock::UnixMilliseconds();
};

} // namespace HmrcApi
