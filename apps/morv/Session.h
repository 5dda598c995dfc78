#pragma once

// An open practice with someone logged in.

#include <optional>
#include <string>

#include "Afx/system/Application.h"
#include "Brix/Records.h"
#include "CommandError.h"

namespace Morv
{

/// What every command takes.
struct CommonOptions
{
    bool json = false;
    bool quiet = false;
    std::string user;   // empty: the practice's first listed user
    std::string year;   // real tax year; empty: the current one of the profile
    std::string base;   // loopback address in place of HMRC's; empty: HMRC
    bool paced = false; // at HMRC's pace there, too
};

/// The program's application object. The profile is read and never written: --year holds for one run.
class MorvApp : public CWinApp
{
public:
    bool WriteProfileInt(const char*, const char*, int) override { return true; }
    bool WriteProfileString(const char*, const char*, const char*) override { return true; }
};

enum class Login
{
    Needed,
    IfGiven // commands that look at the practice itself
};

/// Makes --year the current tax year of this run. Throws CommandError for a year that is none.
void UseYear(const CommonOptions& options);

enum class Key
{
    Needed,
    Examined // commands that report what is wrong with it, and store no secret
};

/// Opens the practice: its file, its schema, its key, and the user. Ends them all in the end (MorvUtShutDown).
class PracticeSession
{
public:
    PracticeSession(const std::string& practice, const CommonOptions& options, Login login, Key key = Key::Needed);
    ~PracticeSession();
    PracticeSession(const PracticeSession&) = delete;
    PracticeSession& operator=(const PracticeSession&) = delete;

    /// Why the practice's key is not in use; nothing when it is.
    const std::optional<CommandError>& GetKeyProblem() const noexcept { return m_keyProblem; }

private:
    std::optional<CommandError> m_keyProblem;
};

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
