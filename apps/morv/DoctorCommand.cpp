// doctor: what may keep the programs from working, in plain words.

#include <chrono>
#include <filesystem>
#include <fstream>
#include <functional>
#include <memory>

#include "Afx/system/Settings.h"
#include "Afx/time/Clock.h"
#include "ArgumentChecks.h"
#include "Brix/Check.h"
#include "Brix/Schema.h"
#include "Cellar/ConnectionText.h"
#include "Cellar/ServerState.h"
#include "Commands.h"
#include "Finding.h"
#include "HmrcApi/http/Http.h"
#include "HmrcApi/transport/Transport.h"
#include "HmrcCommands.h"
#include "MorvUt/hmrc/access/AuthorisationStore.h"
#include "MorvUt/MorvUt.h"
#include "Output.h"
#include "Quarry/Session.h"
#include "ServerChecks.h"
#include "Shellkit/Bytes.h"
#include "Shellkit/Envelope.h"
#include "Shellkit/PracticeKey.h"

namespace Morv
{

namespace
{

Finding CheckSettings()
{
    const std::string path = Afx::Settings::GetPath().Str();
    if (const CString problem = Afx::Settings::GetProblem(); !problem.IsEmpty())
        return {"settings", false, path + ' ' + problem.Str(),
                "Until then the defaults are used: make it a text in UTF-8 that you may read, or name another with "
                "MORVUT_SETTINGS."};
    std::error_code none;
    if (path.empty() || !std::filesystem::exists(path, none))
        return {"settings", true, "none yet; the defaults are used" + (path.empty() ? "" : " (" + path + ")"), ""};
    return {"settings", true, path, ""};
}

Finding CheckClock()
{
    const int year = Afx::Clock::Local().year;
    if (year >= GetMinRealTaxYear() && year <= 2100)
        return {"clock", true, COleDateTime::GetCurrentTime().FormatIso().Str(), ""};
    return {"clock", false, "the machine's clock says " + std::to_string(year),
            "Set the clock: HMRC's tokens depend on it."};
}

Finding CheckCertificates()
{
    std::error_code none;
    if (const std::string own = HmrcApi::ReadHttpSettings().authorities; !own.empty()) {
        if (std::ifstream(own).good() && std::filesystem::is_regular_file(own, none))
            return {"certificates", true, own + " (setting HMRCCertificates)", ""};
        return {"certificates", false, "the setting HMRCCertificates names " + own + ", which cannot be read",
                "Name a file of certificates (PEM), or remove the setting: the system's are used then."};
    }
    for (const char* path :
         {"/etc/ssl/certs/ca-certificates.crt", "/etc/pki/tls/certs/ca-bundle.crt", "/etc/ssl/cert.pem"})
        if (std::filesystem::exists(path, none))
            return {"certificates", true, path, ""};
    return {"certificates", false, "the system has no list of trusted certificates",
            "Install the package ca-certificates: HMRC cannot be reached safely without it."};
}

Finding CheckProxy()
{
    const std::string proxy = HmrcApi::ProxyInUse(HmrcApi::ReadHttpSettings());
    return {"proxy", true, proxy.empty() ? "HMRC is asked directly" : "HMRC is asked through " + proxy, ""};
}

/// What the libraries load only when they need it.
Finding CheckModules()
{
    for (const std::string& problem : {Shellkit::CipherProblem(), HmrcApi::HttpProblem()})
        if (!problem.empty())
            return {"modules", false, problem, kInstallAgain};
    return {"modules", true, "those for ciphers and for HTTP are there", ""};
}

Finding CheckDrivers()
{
    if (const std::string problem = Cellar::ServerDriverProblem(); !problem.empty())
        return {"drivers", true, "embedded database (SQLite); no servers: " + problem, ""};
    std::string names;
    for (const std::string& driver : Cellar::InstalledServerDrivers())
        names += (names.empty() ? "" : ", ") + driver;
    return {"drivers", true,
            "embedded database (SQLite); servers by ODBC, " +
                (names.empty() ? std::string("but no driver is installed") : "installed: " + names),
            ""};
}

Finding CheckCredentials()
{
    if (!HmrcApi::CClientData().GetId().empty())
        return {"credentials", true, "this build is registered with HMRC", ""};
    return {"credentials", true, "this build holds no HMRC credentials: only a loopback server can be asked",
            "Build with cmake -DMORVUT_HMRC_CREDENTIALS=FILE."};
}

Finding CheckSpace(const std::string& practice)
{
    if (PracticePath(practice).empty())
        return {"disk", true, "the practice is on a server", ""};
    constexpr std::uintmax_t kLeast = 16 * 1024 * 1024; // bytes; a fetch for all clients writes less
    std::error_code none;
    const auto folder = std::filesystem::absolute(PracticePath(practice), none).parent_path();
    const auto space = std::filesystem::space(folder, none);
    if (none)
        return {"disk", true, "its free space is not known", ""};
    const std::string found = std::to_string(space.available / (1024 * 1024)) + " MiB free beside the practice";
    if (space.available >= kLeast)
        return {"disk", true, found, ""};
    return {"disk", false, found, "Free some space: on a full disk nothing that HMRC sends can be kept."};
}

Finding CheckPracticeFile(const std::string& practice)
{
    const auto version = Brix::ReadSchemaVersion(Quarry::GetConnection());
    const auto faults = Brix::CheckPractice(Quarry::GetConnection());
    if (faults.empty())
        return {"schema", true,
                PracticeName(practice) + ": version " + std::to_string(version.version) + ", nothing wrong", ""};
    const Brix::Fault& first = faults.front();
    return {"schema", false,
            Counted(static_cast<int>(faults.size()), "fault") + ", the first" +
                (first.table.empty() ? "" : " in " + first.table) + ": " + first.fault,
            "morv practice check lists them."};
}

Finding CheckKey(const std::string& practice, const PracticeSession& session)
{
    if (const auto& problem = session.GetKeyProblem())
        return {"key", false, problem->what(),
                problem->action + " Stored tokens and passwords cannot be read without it."};
    return {"key", true, KeyPath(practice), ""};
}

/// The practice's key does not open them: another program's, or copied from where another key was.
bool AreTokensShut(const std::string& gateway)
{
    HmrcApi::CAuthorisationStore store(gateway);
    if (!Shellkit::HasPracticeKey() || !store.LoadTokens())
        return false;
    auto token = Shellkit::Open(store.GetAccessToken());
    if (token)
        Shellkit::Wipe(token->data(), token->size());
    return !token;
}

Finding CheckTokens(const std::string&)
{
    const auto gateways = HmrcApi::ListGateways();
    if (gateways.empty())
        return {"tokens", true, "no Government Gateway user ID is registered yet", ""};
    std::string authorised, lapsed, warnings;
    for (const HmrcApi::GatewayState& state : gateways) {
        std::string& list = state.isAuthorised ? authorised : lapsed;
        list += (list.empty() ? "" : ", ") + state.gateway;
        if (!state.service.empty())
            list += " at " + state.service;
        if (state.isAuthorised && AreTokensShut(state.gateway))
            warnings += (warnings.empty() ? "" : " ") + state.gateway + ": its tokens cannot be read with this key.";
        if (const CString warning = WarningOf(state); !warning.IsEmpty())
            warnings += (warnings.empty() ? "" : " ") + state.gateway + ": " + warning.Str();
    }
    if (lapsed.empty() && warnings.empty())
        return {"tokens", true, "authorised: " + authorised, ""};
    if (!lapsed.empty())
        warnings = "not authorised: " + lapsed + (warnings.empty() ? "" : ". ") + warnings;
    return {"tokens", false, warnings, "morv hmrc authorise PRACTICE --gateway ID"};
}

Finding CheckLocks(const std::string&)
{
    const auto locks = ListLocks(Quarry::GetConnection());
    if (locks.empty())
        return {"locks", true, "none is held", ""};
    for (const HeldLock& lock : locks) {
        const std::string holder = lock.user.Str() + " at workstation " + OrDash(lock.workstation.Str());
        if (lock.kind == LockKind::Token)
            return {"locks", false, "tokens are being refreshed by " + holder,
                    "A lock that is left behind is cleared by the next fetch: at once at that workstation, elsewhere "
                    "after 150 seconds."};
        if (lock.isAlive == false)
            return {"locks", false,
                    std::string(LockKindName(lock.kind)) + ' ' + lock.key.Str() + " was left behind by " + holder,
                    "morv locks list shows all of them, morv locks clear removes one."};
    }
    return {"locks", true, Counted(static_cast<int>(locks.size()), "lock") + " held, none left behind", ""};
}

constexpr Finding (*kMachineChecks[])() = {CheckSettings, CheckClock,   CheckCertificates, CheckProxy,
                                           CheckModules,  CheckDrivers, CheckCredentials};
constexpr Finding (*kPracticeChecks[])(const std::string&) = {CheckPracticeFile, CheckTokens, CheckLocks};

Finding Failed(const CommandError& error)
{
    return {"practice", false, error.what(),
            error.action.empty() ? "Until then the practice cannot be used." : error.action};
}

/// A damaged file may open and fail later: each check tells for itself.
Finding Checked(Finding (*check)(const std::string&), const std::string& practice)
{
    try {
        return check(practice);
    } catch (const Cellar::DatabaseError& error) {
        return Failed(FromDatabaseError(error));
    }
}

void ExaminePractice(const std::string& practice, const CommonOptions& options, std::vector<Finding>& findings)
{
    findings.push_back(CheckSpace(practice));
    const bool isOnServer = PracticePath(practice).empty();
    if (isOnServer)
        findings.push_back(CheckServerDriver(practice));
    try {
        const PracticeSession session(practice, options, Login::IfGiven, Key::Examined);
        findings.push_back(CheckKey(practice, session));
        if (isOnServer)
            ExamineServer(practice, findings);
        for (const auto check : kPracticeChecks)
            findings.push_back(Checked(check, practice));
    } catch (const CommandError& error) {
        if (error.exit == Exit::BadInput) // the line is wrong, not the practice
            throw;
        findings.push_back(Failed(error));
    }
}

std::vector<Finding> Examine(const std::string& practice, const CommonOptions& options)
{
    std::vector<Finding> findings;
    for (const auto check : kMachineChecks)
        findings.push_back(check());
    if (!practice.empty() && Shellkit::CipherProblem().empty()) // no practice opens without a cipher
        ExaminePractice(practice, options, findings);
    return findings;
}

Exit Doctor(const std::string& practice, const CommonOptions& options)
{
    const auto findings = Examine(practice, options);
    Json list = Json::array();
    TextTable table({"Check", "", "Found", "What to do"});
    bool ok = true;
    for (const Finding& finding : findings) {
        ok = ok && finding.ok;
        list.push_back({{"check", finding.check},
                        {"ok", finding.ok},
                        {"found", finding.found},
                        {"action", finding.action.empty() ? Json(nullptr) : Json(finding.action)}});
        table.Add({finding.check, finding.ok ? "ok" : "look", finding.found, finding.action});
    }
    if (options.json)
        PrintJson(list);
    else
        table.Print();
    return ok ? Exit::Done : Exit::Refused;
}

} // namespace

void AddDoctorCommand(CLI::App& app, Program& program)
{
    auto path = std::make_shared<std::string>();
    CLI::App* doctor = app.add_subcommand("doctor", "What may keep the programs from working, in plain words");
    doctor->add_option("practice", *path, "Look at this practice too")->check(NotEmpty());
    doctor->callback([=, &program] { program.exit = Doctor(*path, program.options); });
}

} // namespace Morv
