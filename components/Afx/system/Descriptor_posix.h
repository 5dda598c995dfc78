#pragma once

// Open files of a POSIX system. Not for Windows.

#include <string>
#include <string_view>

#include <sys/types.h>

#include "Afx/Export.h"

namespace Afx
{

/// An open file or folder, closed at the end and by every program that is started. False when it could not be opened;
/// `errno` tells why.
class AFX_API Descriptor
{
public:
    /// `flags` as of open(2); `rights` of a file that is made.
    explicit Descriptor(const std::string& path, int flags, mode_t rights = 0) noexcept;
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    ~Descriptor() { Close(); }

    explicit operator bool() const noexcept { return m_descriptor >= 0; }
    int Get() const noexcept { return m_descriptor; }
    /// Closes it now; false when the system reports that what was written is lost. True when it is closed already.
    bool Close() noexcept;

private:
    int m_descriptor;
};

/// Writes all of `text`; false when the system refuses, or takes nothing any more.
AFX_API bool WriteAll(const Descriptor& file, std::string_view text) noexcept;
/// Sees the folder of `path` on the disk: only then a name that is new there is safe. Not every file system can do
/// that.
AFX_API void SyncFolderOf(const std::string& path);

} // namespace Afx
