#include "Shellkit/ProcessMark.h"

#include "Shellkit/detail/Mark.h"

namespace Shellkit
{

using Detail::kNoMark;
using Detail::ReleaseMark;
using Detail::TakeMark;

ProcessMark::~ProcessMark() { Clear(); }

bool ProcessMark::Set(const std::string& name) noexcept
{
    Clear();
    m_handle = TakeMark(name).handle;
    return m_handle != kNoMark;
}

void ProcessMark::Clear() noexcept
{
    if (m_handle != kNoMark)
        ReleaseMark(m_handle);
    m_handle = kNoMark;
}

bool ProcessMark::IsSet(const std::string& name) noexcept
{
    const Detail::TakenMark taken = TakeMark(name);
    if (taken.handle != kNoMark)
        ReleaseMark(taken.handle);
    return taken.isElsewhere;
}

} // namespace Shellkit
