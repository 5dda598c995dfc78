#include <CLI/CLI.hpp>
#include <csignal>
#include <cstdio>
#include <string>
#include <thread>
#include <vector>

#include "Afx/system/CoreDumps.h"
#include "Afx/text/Utf8.h"
#include "Faults.h"
#include "Interfaces.h"
#include "Scenarios.h"
#include "Server.h"

namespace
{

constexpr int kBadArguments = 2;
constexpr int kCannotListen = 3;

volatile std::sig_atomic_t endAsked = 0;

void AskForEnd(int) { endAsked = 1; }

/// Decimal digits only: the library alone reads 010 as eight, and takes 0x50 and +5.
template<int kMost>
std::string WhyNoNumber(const std::string& text)
{
    constexpr std::size_t kDigits = 5;
    const bool isPlain = !text.empty() && text.size() <= kDigits && (text == "0" || text.front() != '0') &&
                         text.find_first_not_of("0123456789") == std::string::npos;
    return isPlain && std::stoi(text) <= kMost
               ? ""
               : "Value " + text.substr(0, 2 * kDigits) + " is no number from 0 to " + std::to_string(kMost);
}

int Serve(int port, const std::string& scenario, int delay)
{
    Sandbox::Options options;
    options.scenario = scenario;
    options.delay = std::chrono::milliseconds(delay);
    Sandbox::Server server(options);
    try {
        server.Start(port);
    } catch (const Sandbox::PortError& error) {
        std::fprintf(stderr, "hmrc-sandbox: %s\n", error.what());
        return kCannotListen;
    }
    std::printf("HMRC sandbox at %s/ (Ctrl-C ends it)\n", server.Address().c_str());
    std::fflush(stdout);
    while (endAsked == 0)
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
    return 0;
}

/// `names` over as many lines as it takes.
std::string InLines(const std::vector<std::string>& names)
{
    constexpr std::size_t kWidth = 100;
    const std::string kIndent(6, ' ');
    std::string text, line = kIndent;
    for (const std::string& name : names) {
        if (line.size() + name.size() > kWidth) {
            text += line + '\n';
            line = kIndent;
        }
        line += name + ' ';
    }
    return text + line + '\n';
}

/// Everything that can be asked, from the tables that answer it.
std::string WhatItSpeaks()
{
    std::string text = "Client id morvut-sandbox, secret morvut-sandbox-secret. Requests, Accept header, scope:\n"
                       "  GET  /oauth/authorize\n  POST /oauth/token\n";
    for (const Sandbox::Interface& each : Sandbox::Interfaces())
        text += "  GET  " + std::string(each.path) + "  " + std::string(each.versions) + "  " +
                std::string(each.isForApplications ? "(client_credentials)"
                            : each.scope.empty()   ? "(no token)"
                                                   : each.scope) +
                '\n';
    text += "  GET  /test/fraud-prevention-headers/validate  1.0  (no token)\n"
            "\nTest data, no token needed; a scenario in the body, as {\"scenario\":\"HAPPY_PATH_1\"}:\n"
            "  POST /create-test-user/individuals\n";
    for (const Sandbox::Interface& each : Sandbox::Interfaces())
        if (!each.supportPath.empty())
            text += "  POST " + std::string(each.supportPath) + '\n' +
                    (each.scenarios.empty() ? "" : InLines(Sandbox::ScenarioNames(each.scenarios)));
    return text +
           "\nSwitches, no token needed:\n"
           "  PUT, DELETE /sandbox/answer/PATH    the 200 answer of a path, byte for byte\n"
           "  POST, GET, DELETE /sandbox/fault    breaks the next answers of a path:\n"
           "      "
           "{\"path\":\"/individual-paye\",\"fault\":\"SERVER_ERROR\",\"times\":2,\"retryAfter\":1,\"delayMs\":500}\n"
           "  POST, GET /sandbox/token            expires, revokes, refuses: \"expire\", \"expireCodes\", \"revoke\",\n"
           "      \"dropScope\", \"lifetime\", \"authorise\", \"refuseRefresh\", \"refreshInProgress\", \"maySee\"\n"
           "  POST /sandbox/throttle              {\"on\":true}: three requests a second\n"
           "  GET, DELETE /sandbox/requests       what came\n"
           "  POST /sandbox/reset                 as after the start\nFaults:\n" +
           InLines(Sandbox::FaultNames()) +
           "\ndocs/sandbox.md tells all of it, docs/errors.md what the programs that ask it say.\n"
           "Exit codes: 0 ended by Ctrl-C or a signal, 2 bad arguments, 3 the port cannot be had.";
}

} // namespace

int main(int argc, char** argv)
{
    Afx::SwitchOffCoreDumps(); // it holds tokens, as the programs that ask it do
    std::signal(SIGINT, AskForEnd);
    std::signal(SIGTERM, AskForEnd);

    CLI::App app(
        "A loopback server that speaks HMRC's OAuth, Individual PAYE, Employment, Income, Benefits, Tax and\n"
        "National Insurance interfaces, with made-up figures and faults on demand. Nothing leaves this machine.",
        "hmrc-sandbox");
    app.footer(&WhatItSpeaks);
    constexpr int kLastPort = 65535, kLongestDelay = 60'000;
    int port = 0, delay = 0;
    std::string scenario;
    app.add_option("--port", port, "Port on 127.0.0.1 and [::1]; 0, the default, is a free one")
        ->check(CLI::Validator(&WhyNoNumber<kLastPort>, "INT in [0 - 65535]"))
        ->type_name("N");
    app.add_option("--scenario", scenario, "Figures of every person and year that has not been primed")
        ->check(CLI::IsMember(Sandbox::ScenarioNames("paye")))
        ->type_name("NAME");
    app.add_option("--delay", delay, "Milliseconds before each answer, as if the server were far away; default 0")
        ->check(CLI::Validator(&WhyNoNumber<kLongestDelay>, "INT in [0 - 60000]"))
        ->type_name("MS");
    try {
        app.parse(argc, argv);
    } catch (const CLI::CallForHelp& help) {
        return app.exit(help);
    } catch (const CLI::ParseError& error) {
        std::fprintf(stderr, "hmrc-sandbox: %s; see --help\n", Afx::ToPrintable(error.what()).c_str());
        return kBadArguments;
    }
    return Serve(port, scenario, delay);
}
