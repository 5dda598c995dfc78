#pragma once

// The file that holds a practice's key.

#include <optional>
#include <string>

#include "Shellkit/Bytes.h"
#include "Shellkit/Export.h"

namespace Shellkit
{

enum class KeyReaders
{
    Owner, // mode 0600
    Group  // mode 0640; the group is the folder's where that is setgid
};
/// The practice's key file: 64 hexadecimal digits and a line end, readable by its owner only. Beside a file `practice`
/// that its group reads and writes, that group may read the key too.
/// Make refuses to overwrite; it throws as RandomBytes does. Read refuses a file that other users may read. Each false,
/// or nothing, when the file cannot be made, read or is no key.
SHELLKIT_API bool MakeKeyFile(const std::string& path, KeyReaders readers = KeyReaders::Owner);
SHELLKIT_API std::optional<Bytes> ReadKeyFile(const std::string& path, const std::string& practice = {});
/// Why ReadKeyFile gives nothing: one line for people with the path and how to mend it. Empty when the key can be read.
SHELLKIT_API std::string KeyFileProblem(const std::string& path, const std::string& practice = {});

} // namespace Shellkit
