#include "Progress.h"

#include <unistd.h>

#include <cmath>
#include <cstdio>

namespace Morv
{

namespace
{

/// "40 s", "3 min", "2 h 5 min".
std::string Duration(double seconds)
{
    constexpr double kLongest = 100 * 3600;
    const auto whole = static_cast<int>(std::ceil(std::fmin(seconds, kLongest)));
    if (whole < 100)
        return std::to_string(whole) + " s";
    const int minutes = (whole + 59) / 60;
    return minutes < 100 ? std::to_string(minutes) + " min"
                         : std::to_string(minutes / 60) + " h " + std::to_string(minutes % 60) + " min";
}

} // namespace

std::string ProgressText(std::size_t done, std::size_t all, double seconds)
{
    constexpr std::size_t kWidth = 20;
    const std::size_t filled = all > 0 ? done * kWidth / all : 0;
    std::string text = '[' + std::string(filled, '#') + std::string(kWidth - filled, '-') + "] ";
    text += std::to_string(done) + " of " + std::to_string(all);
    if (done > 0 && done < all)
        text += ", " + Duration(seconds / static_cast<double>(done) * static_cast<double>(all - done)) + " to go";
    return text;
}

Progress::Progress(const CommonOptions& options, std::size_t all)
    : m_isShown(!options.quiet && isatty(STDERR_FILENO)), m_all(all)
{}

Progress::~Progress() { Hide(); }

void Progress::Next()
{
    constexpr auto kBetween = std::chrono::milliseconds(100);
    ++m_at;
    const auto now = Clock::now();
    if (!m_isShown || (m_width > 0 && now - m_drawn < kBetween))
        return;
    m_drawn = now;
    const std::string text = ProgressText(m_at, m_all, std::chrono::duration<double>(now - m_began).count());
    Hide();
    std::fprintf(stderr, "\r%s", text.c_str());
    m_width = text.size();
}

void Progress::Hide()
{
    if (m_width > 0)
        std::fprintf(stderr, "\r%*s\r", static_cast<int>(m_width), "");
    m_width = 0;
}

} // namespace Morv
