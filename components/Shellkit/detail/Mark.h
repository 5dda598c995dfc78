#pragma once

// What the system gives a process that marks itself by a name.

#include <string>

namespace Shellkit::Detail
{

inline constexpr long long kNoMark = -1;

struct TakenMark
{
    long long handle = kNoMark;
    bool isElsewhere = true; // set already, or not to be found out
};

TakenMark TakeMark(const std::string& name) noexcept;
void ReleaseMark(long long handle) noexcept;

} // namespace Shellkit::Detail
