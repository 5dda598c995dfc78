#pragma once

// Small files that belong to one user alone, or to him and the group that shares what lies beside them.

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
    bool groupMayRead = false; // its group shares `shared`
};

/// Reads a file that only its owner may read, and its group where that group reads and writes the file `shared`; one
/// that others may read is not read.
OwnFile ReadOwnFile(const std::string& path, std::size_t limit, const std::string& shared);
/// Makes the file with `text`, for its owner only or his group to read too, and sees it on the disk. False when there
/// is one already, and, with nothing left behind, when it cannot be written. One of this user that is empty is filled
/// (not on Windows): its maker was killed, or is waited for.
bool MakeOwnFile(const std::string& path, std::string_view text, bool forGroup);

} // namespace Shellkit::Detail
