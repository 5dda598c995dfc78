#pragma once

// A disk that is soon full.

#include <sys/mount.h>
#include <sys/stat.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <string>

#include "support/TestSupport.h"

namespace Test
{

/// A small disk of its own, in memory; only root may mount it.
class SmallDisk
{
public:
    /// `size` as mount takes it, "2m".
    explicit SmallDisk(const std::string& size)
        : m_isMounted(mkdir(Path().c_str(), 0700) == 0 &&
                      mount("tmpfs", Path().c_str(), "tmpfs", 0, ("size=" + size).c_str()) == 0)
    {}
    SmallDisk(const SmallDisk&) = delete;
    SmallDisk& operator=(const SmallDisk&) = delete;
    ~SmallDisk()
    {
        if (m_isMounted)
            umount(Path().c_str());
    }
    bool IsMounted() const { return m_isMounted; }
    std::string Path() const { return TempDir() + "/disk"; }
    /// Fills it but for that many bytes.
    void Leave(std::size_t bytes) const
    {
        Free();
        const auto room = static_cast<std::size_t>(std::filesystem::space(Path()).available);
        std::ofstream(Ballast()) << std::string(room - std::min(room, bytes), 'x');
    }
    void Free() const { std::filesystem::remove(Ballast()); }
    /// From now on nobody writes to it, root neither.
    void MakeReadOnly() const { mount("tmpfs", Path().c_str(), "tmpfs", MS_REMOUNT | MS_RDONLY, ""); }

private:
    std::string Ballast() const { return Path() + "/ballast"; }
    bool m_isMounted;
};

} // namespace Test
