#include "Progress.h"

#include <unistd.h>

#include <algorithm>
#include <cstdio>

namespace Morv
{

Progress::Progress(const CommonOptions& options, std::size_t all)
    : m_isShown(!options.quiet && isatty(STDERR_FILENO)), m_all(all), m_step(std::max<std::size_t>(all / 500, 1))
{}

Progress::~Progress()
{
    if (m_isShown && m_at > 0)
        std::fputc('\n', stderr);
}

void Progress::Next()
{
    ++m_at;
    if (m_isShown && (m_at % m_step == 0 || m_at == m_all))
        std::fprintf(stderr, "\r%zu of %zu", m_at, m_all);
}

} // namespace Morv
