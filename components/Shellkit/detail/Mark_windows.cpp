#include "Shellkit/detail/Mark.h"

#include <cstdint>

#include "Afx/Platform.h"

namespace Shellkit::Detail
{

TakenMark TakeMark(const std::string& name) noexcept
{
    const HANDLE mutex = CreateMutexA(nullptr, FALSE, ("Global\\" + name).c_str());
    if (!mutex)
        return {};
    if (GetLastError() == ERROR_ALREADY_EXISTS) {
        CloseHandle(mutex);
        return {};
    }
    return {static_cast<long long>(reinterpret_cast<std::intptr_t>(mutex)), false};
}

void ReleaseMark(long long handle) noexcept
{
    CloseHandle(reinterpret_cast<HANDLE>(static_cast<std::intptr_t>(handle)));
}

} // namespace Shellkit::Detail
