#pragma once

// Small files that belong to one user alone.

#include <string>
#include <string_view>
#include <system_error>

namespace Shellkit::Detail
{

/// What reading gave: the text, or why there is none.
struct OwnFile
{
    std::string text;      // at most `limit` + 1 bytes: one more tells that the file is too long
    std::error_code error; // of the system
    bool openToOthers = false;
};

/// Reads a file that only its owner may read; one that others may read is not read.
OwnFile ReadOwnFile(const std::string& path, std::size_t limit);
/// Makes the file anew with `text`, for its owner only, and sees it on the disk. False when there is one already, and,
/// with nothing left behind, when it cannot be written.
bool MakeOwnFile(const std::string& path, std::string_view text);

} // namespace Shellkit::Detail
