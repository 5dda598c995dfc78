#pragma once

// An open practice with someone logged in.

#include <optional>
#include <string>

#include "Afx/system/Application.h"
#include "Brix/Records.h"
#include "common/OpenPractice.h"

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

} // namespace Morv
