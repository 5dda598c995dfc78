#pragma once

// How far a command is that works through many clients.

#include <cstddef>

#include "Session.h"

namespace Morv
{

/// "3 of 12" on a terminal's standard error, at most some hundred times.
class Progress
{
public:
    Progress(const CommonOptions& options, std::size_t all);
    ~Progress();
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;
    void Next();

private:
    bool m_isShown;
    std::size_t m_at = 0, m_all, m_step;
};

} // namespace Morv
