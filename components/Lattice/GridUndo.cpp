#include "Lattice/GridUndo.h"

#include <algorithm>
#include <utility>

namespace Lattice
{
namespace
{

constexpr std::size_t kDepth = 100;

} // namespace

void GridUndo::End()
{
    if (--m_depth > 0 || m_open.empty())
        return;
    m_changes.push_back(std::exchange(m_open, {}));
    if (m_changes.size() > kDepth)
        m_changes.erase(m_changes.begin());
}

void GridUndo::Add(Step step)
{
    if (IsRecording())
        m_open.push_back(std::move(step));
}

std::optional<std::vector<GridUndo::Step>> GridUndo::TakeLast()
{
    if (m_changes.empty())
        return std::nullopt;
    std::vector<Step> steps = std::move(m_changes.back());
    m_changes.pop_back();
    std::reverse(steps.begin(), steps.end());
    return steps;
}

void GridUndo::Clear() noexcept
{
    m_changes.clear();
    m_open.clear();
}

} // namespace Lattice
