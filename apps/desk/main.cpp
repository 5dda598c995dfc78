// morv-desk: the screens on a practice's database.

#include <CLI/CLI.hpp>

#include <iostream>

#include "Afx/system/CoreDumps.h"
#include "AfxWx/WxWindowSystem.h"
#include "Desk.h"
#include "MorvUt/StartUp.h"
#include "Shellkit/Registry.h"

namespace
{

constexpr char kFooter[] =
    R"(PRACTICE is the path of a practice (or sqlite:PATH), or one on a server:
odbc:Driver=PostgreSQL Unicode;Servername=HOST;Database=NAME;UID=USER;PasswordFile=PATH;KeyFile=PATH.
Without it the program asks for one.)";

} // namespace

int main(int argc, char** argv)
{
    Afx::SwitchOffCoreDumps();
    Desk::DeskApp application;
    Desk::DeskOptions options;
    options.helpFolder = MORVUT_HELP_FOLDER;
    CLI::App app("A practice's clients, their returns and their records at HMRC.", "morv-desk");
    app.footer(kFooter);
    app.set_version_flag("--version", MORVUT_VERSION);
    app.add_option("practice", options.practice, "The practice");
    app.add_option("--base", options.base, "Ask a server on this machine instead of HMRC");
    app.add_option("--help-folder", options.helpFolder, "Where the pages of the help are");
    constexpr int kUsage = 2, kNoDisplay = 3; // as the command line has them
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        return app.exit(error) == 0 ? 0 : kUsage;
    }
    const int result = AfxWx::RunApplication(
        "morv-desk",
        [&options] {
            MorvUtStartUp(kProductName, kMakersKey);
            Desk::Run(options);
            return 0;
        },
        kNoDisplay);
    MorvUtShutDown();
    if (result == kNoDisplay)
        std::cerr << "morv-desk: there is no display to show windows on. On the command line: morv --help.\n";
    return result;
}
