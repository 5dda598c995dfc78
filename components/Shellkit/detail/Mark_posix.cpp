#include "Shellkit/detail/Mark.h"

#include <cstddef>
#include <cstring>

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace Shellkit::Detail
{

/// A local socket of that name outside the file system, which the kernel takes back with the process.
TakenMark TakeMark(const std::string& name) noexcept
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

void ReleaseMark(long long handle) noexcept { close(static_cast<int>(handle)); }

} // namespace Shellkit::Detail
