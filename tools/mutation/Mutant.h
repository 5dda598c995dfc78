// Included by tools/mutate before everything else. A run has at most one mutant, chosen by its number in the
// environment variable MORVUT_MUTANT; all others leave the code as it stands. With MORVUT_MUTANT_TRACE=FILE the numbers
// that a run meets are appended to FILE, which tells what test reaches what mutant.
#pragma once

#include <fcntl.h>
#include <unistd.h>

#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <type_traits>

namespace Mutation
{

inline int ChosenNumber() noexcept
{
    static const int number = [] {
        const char* const text = std::getenv("MORVUT_MUTANT");
        return text ? std::atoi(text) : 0;
    }();
    return number;
}

/// Appends `number` to the trace, once for a process and library. What cannot be written ends the program: a mutant
/// that is missing in the trace would pass for one that no test reaches.
inline void Trace(int number)
{
    constexpr int kMost = 10'000;
    static const char* const path = std::getenv("MORVUT_MUTANT_TRACE");
    static std::atomic<bool> seen[kMost];
    if (!path || seen[number % kMost].exchange(true))
        return;
    char line[16];
    const int size = std::snprintf(line, sizeof line, "%d\n", number);
    const int file = ::open(path, O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0644);
    if (file < 0 || ::write(file, line, static_cast<std::size_t>(size)) != size)
        std::abort();
    ::close(file);
}

inline bool IsChosen(int number)
{
    Trace(number);
    return ChosenNumber() == number;
}

#if __cplusplus >= 202002L // not while CMake tries the compiler
/// For functions that the compiler may compute too: there the code as it stands.
constexpr bool IsChosenAtRunTime(int number)
{
    if (std::is_constant_evaluated())
        return false;
    return IsChosen(number);
}
#endif

} // namespace Mutation
