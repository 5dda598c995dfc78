#pragma once

// Opening a practice: its file or server, its schema, its key.

#include <optional>
#include <string>

#include "common/CommandError.h"

namespace Morv
{

/// Opens the practice as the current connection: schema (an older one is upgraded), key, format of dates. Why the key
/// is not in use; nothing when it is. Throws CommandError, and then no practice is open.
std::optional<CommandError> OpenPractice(const std::string& practice);

/// Of a practice that is there and whole, but cannot be written: the code of its CommandError.
inline constexpr char kReadOnly[] = "READ_ONLY";

/// Another program writes to the practice: the code of its CommandError.
inline constexpr char kBusy[] = "PRACTICE_BUSY";

/// What mends an installation that lacks a module.
inline constexpr char kInstallAgain[] = "Install this program again, with all of its parts.";
/// Throws CommandError where the module of the ciphers cannot be loaded: no practice opens without its key, and none is
/// made.
void NeedCiphers();

/// What a user gives for a practice. Throws CommandError for control characters, which could forge a message, and for
/// bytes that are not UTF-8: in messages, logs and JSON they would name another file.
void CheckPracticeText(const std::string& practice);
/// The practice as it may be shown: without a server's password.
std::string PracticeName(const std::string& practice);
/// The file behind a practice text: "sqlite:path" (in any case) or a bare path; empty for a server.
std::string PracticePath(const std::string& practice);
/// The key beside that file, or the one that a server's text or the environment names. Throws CommandError when none
/// does.
std::string KeyPath(const std::string& practice);

/// What the database refused, as an error of the command.
CommandError FromDatabaseError(const std::exception& error);

} // namespace Morv
