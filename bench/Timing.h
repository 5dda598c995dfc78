#pragma once

// Time that has passed, and time of the processor.

#include <chrono>
#include <ctime>

namespace Bench
{

using Clock = std::chrono::steady_clock;

inline double SecondsSince(Clock::time_point start)
{
    return std::chrono::duration<double>(Clock::now() - start).count();
}

/// Of this process (CLOCK_PROCESS_CPUTIME_ID) or thread (CLOCK_THREAD_CPUTIME_ID).
inline double ProcessorSeconds(clockid_t clock)
{
    timespec time{};
    clock_gettime(clock, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * 1e-9;
}

} // namespace Bench
