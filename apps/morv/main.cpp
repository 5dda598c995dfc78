// morv: everything of the library that can be done without a window.

#include <fcntl.h>

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <memory>
#include <string>
#include <vector>

#include "Afx/Exceptions.h"
#include "Afx/system/CoreDumps.h"
#include "Afx/text/Utf8.h"
#include "Afx/windows/WindowSystem.h"
#include "ArgumentChecks.h"
#include "Cellar/DatabaseError.h"
#include "Commands.h"
#include "Documents.h"
#include "MorvUt/StartUp.h"
#include "Output.h"
#include "Quarry/DataList.h"
#include "Shellkit/Registry.h"

namespace
{

using namespace Morv;

constexpr char kFooter[] =
    R"(PRACTICE is the path of a practice (or sqlite:PATH), or one on a server:
odbc:Driver=PostgreSQL Unicode;Servername=HOST;Database=NAME;UID=USER;PasswordFile=PATH;KeyFile=PATH.
A year is the one in which the tax year ends, 2018, or 2017/18.
Exit codes: 0 done; 1 refused, or errors were reported; 2 bad arguments or input; 3 the practice cannot be opened or
written; 4 HMRC cannot be reached. docs/errors.md tells of each error why, who mends it, and how.)";

/// What a message box says may come from HMRC.
class MorvWindowSystem : public Afx::ConsoleWindowSystem
{
public:
    int MessageBox(const std::string& text, unsigned style) override
    {
        constexpr std::size_t kMost = 2000;
        return ConsoleWindowSystem::MessageBox(std::string(Afx::CutUtf8(text, kMost)), style);
    }
};

Exit Report(const CommandError& error, bool json)
{
    PrintError(error, json);
    return error.exit;
}

/// A file that the program opens must not be taken for a standard one that it was started without. Writing to a
/// standard output that is not there fails.
void OpenStandardFiles()
{
    for (int file = 0; file <= 2; ++file)
        if (fcntl(file, F_GETFD) < 0)
            open("/dev/null", file == 1 ? O_RDONLY : O_RDWR); // the lowest number that is free
}

bool IsOutputWritten() { return std::fflush(stdout) == 0 && std::ferror(stdout) == 0; }

void AddCommonOptions(CLI::App& app, CommonOptions& options)
{
    app.add_flag("--json", options.json, "Print one JSON document on standard output");
    app.add_flag("--quiet", options.quiet, "Print no progress");
    app.add_option("--user", options.user, "Who is logged in (default: the practice's first listed user)")
        ->check(NotEmpty());
    app.add_option("--year", options.year, "Tax year of this run (default: the current one of the profile)")
        ->check(NotEmpty())
        ->transform(PlainYear());
}

// Sub-commands see the options of the program wherever they stand on the line.
void FallThrough(CLI::App& app)
{
    for (CLI::App* command : app.get_subcommands({})) {
        command->fallthrough();
        FallThrough(*command);
    }
}

/// The first word that belongs to nothing is what is wrong; the library alone says what is missing then.
std::string MessageOf(const CLI::ParseError& error, const CLI::App& app)
{
    const std::vector<std::string> unread = app.remaining(true);
    const bool isOfWords = error.get_exit_code() == static_cast<int>(CLI::ExitCodes::ExtrasError) ||
                           error.get_exit_code() == static_cast<int>(CLI::ExitCodes::RequiredError);
    if (unread.empty() || !isOfWords) { // the library repeats whole arguments
        constexpr std::size_t kLongest = 300;
        return Cut(error.what(), kLongest);
    }
    const std::string& word = unread.front();
    if (word.starts_with('-'))
        return Quoted(word) + " is no option here";
    const CLI::App* command = &app;
    while (!command->get_subcommands().empty())
        command = command->get_subcommands().front();
    std::vector<std::string> names;
    for (const CLI::App* inner : command->get_subcommands({}))
        names.push_back(inner->get_name());
    return Quoted(word) + (names.empty() ? " was not expected" : " is no command" + DidYouMean(word, names));
}

Exit Run(CLI::App& app, Program& program, const std::vector<std::string>& arguments)
{
    try {
        app.parse(std::vector<std::string>(arguments.rbegin(), arguments.rend())); // it takes them from the back
        return program.exit;
    } catch (const CLI::ParseError& error) {
        if (error.get_exit_code() == static_cast<int>(CLI::ExitCodes::Success))
            return static_cast<Exit>(app.exit(error)); // --help, --version
        // The flag may not have been read yet when the line is wrong.
        const bool json = std::any_of(arguments.begin(), arguments.end(), [](const std::string& text) {
            return text == "--json" || text == "--json=true";
        });
        return Report(CommandError(Exit::BadInput, "BAD_ARGUMENTS", MessageOf(error, app), "morv --help tells how."),
                      json);
    } catch (const CommandError& error) {
        return Report(error, program.options.json);
    } catch (const Cellar::DatabaseError& error) {
        return Report(FromDatabaseError(error), program.options.json);
    } catch (const Quarry::ChangedByAnotherUser& error) {
        return Report(FromDatabaseError(error), program.options.json);
    } catch (const std::exception& error) {
        return Report(CommandError(Exit::Refused, "FAILED", error.what(), ""), program.options.json);
    } catch (CException* error) {
        const CommandError failed(Exit::Refused, "FAILED", error->GetErrorMessage().Str(), "");
        error->Delete();
        return Report(failed, program.options.json);
    }
}

} // namespace

int main(int argc, char** argv)
{
    OpenStandardFiles();
    std::signal(SIGXFSZ, SIG_IGN); // a limit of the size of files is an error, as a full disk is
    Afx::SwitchOffCoreDumps();
    MorvApp application;
    MorvUtStartUp(kProductName, kMakersKey);
    Afx::WindowSystem::Install(std::make_unique<MorvWindowSystem>());

    Program program;
    CLI::App app("MorvUt on the command line: practices, clients, and their records at HMRC.", "morv");
    app.footer(kFooter);
    app.set_version_flag("--version", MORVUT_VERSION);
    app.require_subcommand(1);
    AddCommonOptions(app, program.options);
    AddPracticeCommands(app, program);
    AddClientCommands(app, program);
    AddEnquiryCommands(app, program);
    AddYearCommands(app, program);
    AddUserCommands(app, program);
    AddHmrcCommands(app, program);
    AddGatewayCommands(app, program);
    AddLockCommands(app, program);
    AddTableCommands(app, program);
    AddDoctorCommand(app, program);
    AddCalcCommand(app, program);
    AddDocumentCommands(app);
    FallThrough(app);
    ListInheritedOptions(app);

    Exit exit = Run(app, program, ArgumentsOf(argc, argv, app));
    MorvUtShutDown();
    if (!IsOutputWritten()) {
        std::fprintf(stderr,
                     "morv: not all could be written to standard output. Free some space, or name another file.\n");
        exit = exit == Exit::Done ? Exit::Refused : exit;
    }
    return static_cast<int>(exit);
}
