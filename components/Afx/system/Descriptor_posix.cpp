#include "Afx/system/Descriptor_posix.h"

#include <cerrno>
#include <filesystem>
#include <utility>

#include <fcntl.h>
#include <unistd.h>

namespace Afx
{

Descriptor::Descriptor(const std::string& path, int flags, mode_t rights) noexcept
    : m_descriptor(::open(path.c_str(), flags | O_CLOEXEC, rights))
{}

bool Descriptor::Close() noexcept
{
    const int descriptor = std::exchange(m_descriptor, -1);
    return descriptor < 0 || ::close(descriptor) == 0;
}

bool WriteAll(const Descriptor& file, std::string_view text) noexcept
{
    while (!text.empty()) {
        const ssize_t written = ::write(file.Get(), text.data(), text.size());
        if (written < 0 && errno == EINTR)
            continue;
        if (written <= 0)
            return false;
        text.remove_prefix(static_cast<std::size_t>(written));
    }
    return true;
}

void SyncFolderOf(const std::string& path)
{
    const std::string folder = std::filesystem::path(path).parent_path().string();
    if (const Descriptor handle(folder.empty() ? "." : folder, O_RDONLY | O_DIRECTORY); handle)
        ::fsync(handle.Get());
}

} // namespace Afx
