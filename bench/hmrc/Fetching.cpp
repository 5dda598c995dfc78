// Clients of a practice on the disk, fetched as `morv hmrc fetch --all` does from a sandbox of its own that waits 20 ms
// before each answer. Beside each run the time that it could not have saved: two requests a client, four at once, and
// as many durable commits as it made, measured alone in the same practice.

#include "hmrc/Hmrc.h"

#include <csignal>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "HmrcApi/oauth/Authorisation.h"
#include "MorvUt/MorvUt.h"
#include "Places.h"
#include "support/Practice.h"
#include "Timing.h"

namespace
{

using Bench::Clock, Bench::ProcessorSeconds, Bench::SecondsSince;

constexpr int kSizes[] = {100, 300, 1000};
constexpr int kDelay = 20;           // milliseconds before each answer
constexpr int kRequests = 2;         // a client
constexpr int kAtOnce = 4;           // requests
constexpr int kCommits = 3;          // a client: two log lines, the staged rows
constexpr double kMost = 1.3;        // times what could not be saved
constexpr double kMostUneven = 1.25; // a client of the largest run may take as many times one of the smallest
constexpr double kMostGrowth = 4;    // MiB that the largest run's peak may be above the smallest's
constexpr short kYear = 2018;
constexpr clockid_t kOurs = CLOCK_PROCESS_CPUTIME_ID; // the sandbox is another process
constexpr char kUser[] = "ANNA", kGateway[] = "GATEWAY1";

/// MiB at most since the last call; 0 where the system does not tell.
double PeakSinceLast()
{
    std::ifstream status("/proc/self/status");
    double peak = 0;
    for (std::string word; status >> word;)
        if (word == "VmHWM:")
            status >> peak;
    std::ofstream("/proc/self/clear_refs") << "5"; // the peak begins anew
    return peak / 1024;
}

/// The program, until this object ends.
class Sandbox
{
public:
    Sandbox()
    {
        int pipe[2];
        if (::pipe(pipe) != 0 || (m_process = fork()) < 0)
            throw std::runtime_error("no process can be started");
        if (m_process == 0) {
            dup2(pipe[1], STDOUT_FILENO);
            close(pipe[0]);
            execl(SANDBOX_PROGRAM, SANDBOX_PROGRAM, "--scenario", "EVERYTHING", "--delay",
                  std::to_string(kDelay).c_str(), nullptr);
            _exit(127);
        }
        close(pipe[1]);
        std::string line;
        for (char c = 0; read(pipe[0], &c, 1) == 1 && c != '\n';)
            line += c;
        close(pipe[0]);
        const std::size_t at = line.find("http://");
        if (at == std::string::npos)
            throw std::runtime_error("the sandbox does not start");
        m_base = line.substr(at, line.find(' ', at) - at);
    }
    ~Sandbox()
    {
        kill(m_process, SIGTERM);
        waitpid(m_process, nullptr, 0);
    }
    Sandbox(const Sandbox&) = delete;
    Sandbox& operator=(const Sandbox&) = delete;
    const std::string& Base() const { return m_base; }

private:
    pid_t m_process = -1;
    std::string m_base;
};

void Authorise()
{
    HmrcApi::CAuthorisationStore::CreateGatewayID(kGateway);
    HmrcApi::CAuthorisation authorisation(std::make_shared<HmrcApi::CAuthorisationStore>(kGateway),
                                          std::make_shared<HmrcApi::CScope>(),
                                          std::make_shared<HmrcApi::CClientData>());
    authorisation.SetBrowser([](const std::string& address) {
        return std::system(("curl -sSL -o /dev/null '" + address + "' &").c_str()) == 0;
    });
    if (!authorisation.DoAuthorisation(nullptr))
        throw std::runtime_error("the sandbox gives no authority: " + authorisation.GetLastError().text);
}

std::vector<ClientId> FillPractice(int clients)
{
    Cellar::CConnection& practice = Quarry::GetConnection();
    practice.ExecuteDirectf("INSERT INTO BRIXUser (lID, strUserID) VALUES (1, %s)", kUser);
    practice.ExecuteDirectf("INSERT INTO BRIXUserPermissions (lID, strUserID, nPermission, bAllowed) "
                            "VALUES (1, %s, 87, 1)", // to fetch
                            kUser);
    practice.ExecuteDirectf("DELETE FROM BRIXOptions");
    practice.ExecuteDirectf("INSERT INTO BRIXOptions (lID, nPAYEInterface, bHMRCRetrieval) VALUES (1, 1, 1)");
    CUserData::ClearPermissions();
    CUserData::SetUser(kUser);
    TaxYearHelpers::SetCurrentTaxYear(TaxYear(kYear));
    Test::AddClients(clients);
    std::vector<ClientId> ids;
    for (const ClientView& client : ListClients())
        ids.emplace_back(client.id);
    return ids;
}

/// So many small durable commits.
double Commits(int count)
{
    const auto start = Clock::now();
    for (int number = 0; number < count; ++number)
        Quarry::GetConnection().ExecuteDirectf("UPDATE BRIXOptions SET nDebugLogging = %d", number % 2);
    const double seconds = SecondsSince(start);
    Quarry::GetConnection().ExecuteDirectf("UPDATE BRIXOptions SET nDebugLogging = 0");
    return seconds;
}

struct Run
{
    double processor, wall, network, commits, peak;

    double Ratio() const { return wall / (network + commits); }
};

Run Measure(int clients)
{
    OpenPractice(Places().front().folder + "/fetch" + std::to_string(clients) + ".db");
    const std::vector<ClientId> ids = FillPractice(clients);
    Authorise();
    PeakSinceLast();
    const double processor = ProcessorSeconds(kOurs);
    const auto start = Clock::now();
    int fetched = 0;
    HmrcApi::FetchManyFromHmrc(ids, kGateway, [&](std::size_t, const HmrcApi::FetchResult& result) {
        fetched += result.ok && result.staged.added > 0;
    });
    Run run{};
    run.wall = SecondsSince(start);
    run.processor = ProcessorSeconds(kOurs) - processor;
    run.peak = PeakSinceLast();
    if (fetched != clients)
        throw std::runtime_error("not every client was fetched");
    run.network = kRequests * kDelay * clients / (1000.0 * kAtOnce);
    run.commits = Commits(kCommits * clients);
    Quarry::SetConnection(nullptr);
    return run;
}

} // namespace

int RunFetching()
{
    const Sandbox sandbox;
    HmrcApi::CClientData::SetLoopbackOverride(sandbox.Base());
    std::printf("%8s %10s %10s %10s %10s %8s %10s\n", "clients", "CPU s", "wall s", "network s", "commits s", "ratio",
                "peak MiB");
    std::vector<Run> runs;
    for (const int clients : kSizes) {
        const Run& run = runs.emplace_back(Measure(clients));
        std::printf("%8d %10.3f %10.3f %10.3f %10.3f %8.2f %10.1f\n", clients, run.processor, run.wall, run.network,
                    run.commits, run.Ratio(), run.peak);
        std::fflush(stdout);
    }
    HmrcApi::CClientData::SetLoopbackOverride({});
    const double uneven = runs.back().wall / runs.front().wall * kSizes[0] / kSizes[std::size(kSizes) - 1];
    const double growth = runs.back().peak - runs.front().peak;
    std::printf("wall / (network + commits): %.2f, the limit %.1f\n", runs.back().Ratio(), kMost);
    std::printf("a client of %d takes %.2f times one of %d, the limit %.2f\n", kSizes[std::size(kSizes) - 1], uneven,
                kSizes[0], kMostUneven);
    std::printf("memory: %.1f MiB more, the limit %.0f\n", growth, kMostGrowth);
    return runs.back().Ratio() <= kMost && uneven <= kMostUneven && growth <= kMostGrowth ? 0 : 1;
}
