#pragma once

// How far a command is that works through many clients.

#include <chrono>
#include <cstddef>
#include <string>

#include "Session.h"

namespace Morv
{

/// "[######--------------] 3 of 12, 40 s to go" on a terminal's standard error, at most some ten times a second;
/// nothing where that is none.
class Progress
{
public:
    Progress(const CommonOptions& options, std::size_t all);
    ~Progress();
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;
    void Next();
    /// Makes room for a line on the same terminal.
    void Hide();

private:
    using Clock = std::chrono::steady_clock;

    bool m_isShown;
    std::size_t m_at = 0, m_all;
    std::size_t m_width = 0; // of what stands there
    Clock::time_point m_began = Clock::now(), m_drawn;
};

/// The bar's text. `seconds`: what those that are done have taken together.
std::string ProgressText(std::size_t done, std::size_t all, double seconds);

} // namespace Morv
