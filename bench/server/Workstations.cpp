#include "server/Workstations.h"

#include <sys/wait.h>
#include <unistd.h>

#include <cstdint>
#include <cstdio>
#include <exception>
#include <memory>
#include <stdexcept>
#include <string_view>

#include "MorvUt/MorvUt.h"
#include "support/Practice.h"
#include "Timing.h"

namespace Bench
{
namespace
{

constexpr short kYear = 2018;
constexpr clockid_t kOurs = CLOCK_THREAD_CPUTIME_ID; // the proxy has a thread of its own
constexpr char kUser[] = "ANNA", kGateway[] = "GATEWAY1";

/// The practice is open while it lives.
class Workstation
{
public:
    explicit Workstation(const std::string& practice)
    {
        Quarry::SetConnection(Cellar::CConnection::Open(CString(practice)));
        CUserData::ClearPermissions();
        CUserData::SetUser(kUser);
        TaxYearHelpers::SetCurrentTaxYear(TaxYear(kYear));
    }
    Workstation(const Workstation&) = delete;
    Workstation& operator=(const Workstation&) = delete;
    ~Workstation() { Quarry::SetConnection(nullptr); }

    /// `between` is called between fetching and making schedules.
    template<class Between>
    void Do(long client, Between between)
    {
        const HmrcApi::FetchResult fetched =
            HmrcApi::FetchFromHmrc(ClientId(client), kGateway, HmrcApi::IEndpointOverride::Everything);
        between();
        const HmrcApi::CreateResult made = HmrcApi::CreateFromHmrc(ClientId(client), TaxYear(kYear));
        if (!fetched.ok || fetched.errors->GetErrorCount() != 0 || made.created.pensionsAndBenefits != 7)
            throw std::runtime_error("a client's work was not done whole");
    }
    void Do(std::span<const long> clients)
    {
        for (const long client : clients)
            Do(client, [] {});
    }
};

void Give(int pipe, const double& value)
{
    if (write(pipe, &value, sizeof value) != sizeof value)
        _exit(2);
}

double Take(int pipe)
{
    double value = 0;
    if (read(pipe, &value, sizeof value) != sizeof value)
        throw std::runtime_error("a workstation has ended before its work was done");
    return value;
}

/// One of several processes: says when it is ready, works when it is told to, says what it has needed.
[[noreturn]] void WorkAsOneOf(const std::string& practice, std::span<const long> clients, int told, int tells)
{
    try {
        Workstation workstation(practice);
        workstation.Do(clients.first(kWarmUp));
        Give(tells, 0);
        Take(told);
        const double before = ProcessorSeconds(kOurs);
        workstation.Do(clients.subspan(kWarmUp));
        Give(tells, ProcessorSeconds(kOurs) - before);
        Take(told); // ends with the others, so that none is measured by another's leaving
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
        _exit(2);
    }
    _exit(0);
}

} // namespace

std::vector<long> FillPractice(int clients)
{
    Cellar::CConnection& practice = Quarry::GetConnection();
    practice.ExecuteDirectf("INSERT INTO BRIXUser (lID, strUserID) VALUES (1, %s)", kUser);
    for (const int permission : {87, 34}) // to fetch, and to save returns
        practice.ExecuteDirectf("INSERT INTO BRIXUserPermissions (lID, strUserID, nPermission, bAllowed) "
                                "VALUES (%d, %s, %d, 1)",
                                permission, kUser, permission);
    practice.ExecuteDirectf("DELETE FROM BRIXOptions");
    practice.ExecuteDirectf("INSERT INTO BRIXOptions (lID, nPAYEInterface, bHMRCRetrieval) VALUES (1, 1, 1)");
    practice.ExecuteDirectf("INSERT INTO MTDAuthorisation (lID, strGatewayID, nAuthorisedStatus) VALUES (7, %s, 1)",
                            kGateway);
    Test::AddClients(clients);
    std::vector<long> ids;
    const Cellar::RowSet set = practice.Queryf("SELECT lID FROM BRIXClient ORDER BY lID");
    for (const auto& row : set.rows)
        ids.push_back(Cellar::ToLong(row[0]));
    return ids;
}

Spent WorkAlone(const std::string& practice, std::span<const long> clients, const Proxy* proxy)
{
    Workstation workstation(practice);
    workstation.Do(clients.first(kWarmUp));
    const auto counted = clients.subspan(kWarmUp);
    const auto trips = [&] { return proxy ? static_cast<double>(proxy->GetRoundTrips()) : 0; };
    Spent spent;
    const double processor = ProcessorSeconds(kOurs);
    const auto start = Clock::now();
    for (const long client : counted) {
        const double before = trips();
        double fetched = 0;
        workstation.Do(client, [&] { fetched = trips(); });
        spent.fetchTrips += fetched - before;
        spent.createTrips += trips() - fetched;
    }
    spent.wall = SecondsSince(start);
    spent.processor = ProcessorSeconds(kOurs) - processor;
    for (double* const each : {&spent.fetchTrips, &spent.createTrips, &spent.wall, &spent.processor})
        *each /= static_cast<double>(counted.size());
    return spent;
}

Together WorkTogether(const std::string& practice, std::span<const long> clients, int workstations)
{
    int told[2], tells[2];
    if (pipe(told) != 0 || pipe(tells) != 0)
        throw std::runtime_error("there is no pipe");
    const std::size_t share = clients.size() / static_cast<std::size_t>(workstations);
    for (int i = 0; i < workstations; ++i)
        if (fork() == 0)
            WorkAsOneOf(practice, clients.subspan(static_cast<std::size_t>(i) * share, share), told[0], tells[1]);
    close(told[0]);
    close(tells[1]);
    const auto each = [&](auto action) {
        for (int i = 0; i < workstations; ++i)
            action();
    };
    each([&] { Take(tells[0]); });
    const auto start = Clock::now();
    each([&] { Give(told[1], 0); });
    double processor = 0;
    each([&] { processor += Take(tells[0]); });
    const double wall = SecondsSince(start);
    each([&] { Give(told[1], 0); });
    each([&] { wait(nullptr); });
    close(told[1]);
    close(tells[0]);
    const double counted = static_cast<double>((share - kWarmUp) * static_cast<std::size_t>(workstations));
    return {counted / wall, processor / counted};
}

void PrintStatements(const std::string& practice, std::span<const long> clients, const Proxy& proxy)
{
    Workstation workstation(practice);
    workstation.Do(clients.first(clients.size() - 1));
    std::int64_t before = proxy.GetRoundTrips();
    std::string last;
    const auto tell = [&](std::string_view next) {
        const std::int64_t trips = proxy.GetRoundTrips();
        if (!last.empty())
            std::printf("%3lld  %.120s\n", static_cast<long long>(trips - before), last.c_str());
        before = trips;
        last = next;
    };
    Quarry::GetConnection().OnSent(tell);
    workstation.Do(clients.back(), [&] { tell("(schedules)"); });
    tell({});
    Quarry::GetConnection().OnSent(nullptr);
}

} // namespace Bench
