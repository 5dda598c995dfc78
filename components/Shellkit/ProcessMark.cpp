#include "Shellkit/ProcessMark.h"

#ifdef _WIN32
#include <cstdint>

#include "Afx/Platform.h"
#else
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <cstddef>
#include <cstring>
#endif

namespace Shellkit
{
namespace
{

constexpr long long kNone = -1;

struct Taken
{
    long long handle = kNone;
    bool isElsewhere = true; // set already, or not to be found out
};

#ifdef _WIN32
Taken Take(const std::string& name) noexcept
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

void Release(long long handle) noexcept { CloseHandle(reinterpret_cast<HANDLE>(static_cast<std::intptr_t>(handle))); }
#else
/// A local socket of that name outside the file system, which the kernel takes back with the process.
Taken Take(const std::string& name) noexcept
{
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    if (name.size() + 1 > sizeof address.sun_path)
        return {};
    std::memcpy(address.sun_path + 1, name.data(), name.size());
    const int handle = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    if (handle < 0)
        return {};
    const auto length = static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + 1 + name.size());
    if (bind(handle, reinterpret_cast<const sockaddr*>(&address), length) == 0)
        return {handle, false};
    close(handle);
    return {};
}

void Release(long long handle) noexcept { close(static_cast<int>(handle)); }
#endif

} // namespace

ProcessMark::~ProcessMark() { Clear(); }

bool ProcessMark::Set(const std::string& name) noexcept
{
    Clear();
    m_handle = Take(name).handle;
    return m_handle != kNone;
}

void ProcessMark::Clear() noexcept
{
    if (m_handle != kNone)
        Release(m_handle);
    m_handle = kNone;
}

bool ProcessMark::IsSet(const std::string& name) noexcept
{
    const Taken taken = Take(name);
    if (taken.handle != kNone)
        Release(taken.handle);
    return taken.isElsewhere;
}

} // namespace Shellkit
