#include <CLI/CLI.hpp>
#include <csignal>
#include <cstdio>
#include <thread>

#include "Afx/system/CoreDumps.h"
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
    app.footer("Client id morvut-sandbox, secret morvut-sandbox-secret. The README lists the switches below /sandbox.\n"
               "Exit codes: 0 ended by Ctrl-C or a signal, 2 bad arguments, 3 the port cannot be had.");
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
        std::fprintf(stderr, "hmrc-sandbox: %s; see --help\n", error.what());
        return kBadArguments;
    }
    return Serve(port, scenario, delay);
}
