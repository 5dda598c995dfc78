// Everybody of a practice rolled into the new year, as `morv year roll-forward` does it client by client, each in a
// durable transaction, against one hand-written set of INSERT ... SELECT for the same rows, as the practice grows.
// roll-forward [MOST [PLACE]]: 100 clients and ten times as many up to so many, 10,000 unless told otherwise, on disk,
// in memory and on a server unless one of these is named. Ends with 1 when the processor's time of a client grows.

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <functional>
#include <stdexcept>
#include <string>
#include <vector>

#include <unistd.h>

#include "MorvUt/MorvUt.h"
#include "Places.h"
#include "roll-forward/RollForward.h"
#include "server/Server.h"
#include "Timing.h"

namespace
{

constexpr double kSteepest = 1.1; // the exponent with which the processor's time grows stays below

struct Seconds
{
    double processor = 0, wall = 0;
};

/// Of the server's process for a connection, in hundredths of a second; nothing in a practice that has none.
class ServerProcess
{
public:
    explicit ServerProcess(Cellar::CConnection& connection)
    {
        if (!connection.GetDialect().HasOneWriter())
            m_status = "/proc/" + Cellar::ToText(connection.Queryf("SELECT @@SPID").rows.at(0).at(0)).Str() + "/stat";
    }
    double Seconds() const
    {
        if (m_status.empty())
            return 0;
        std::ifstream file(m_status);
        constexpr int kBeforeTimes = 13; // fields
        std::string skipped;
        for (int i = 0; i < kBeforeTimes; ++i)
            file >> skipped;
        double user = 0, system = 0;
        if (!(file >> user >> system))
            throw std::runtime_error(m_status + " tells no times");
        return (user + system) / static_cast<double>(sysconf(_SC_CLK_TCK));
    }

private:
    std::string m_status;
};

template<class Work>
Seconds Time(Work work)
{
    const ServerProcess server(Quarry::GetConnection());
    const auto processor = [&] { return Bench::ProcessorSeconds(CLOCK_PROCESS_CPUTIME_ID) + server.Seconds(); };
    const double before = processor();
    const auto start = Bench::Clock::now();
    work();
    return {processor() - before, Bench::SecondsSince(start)};
}

void RollForwardOurs()
{
    std::vector<TrackerOwner> owners;
    for (const ClientView& client : ListClients())
        owners.push_back({client.id, client.IsPartnership()});
    for (const TrackerOwner& owner : owners)
        Tracker::RollForwardOne(Quarry::GetConnection(), kNewYear, owner, false);
}

/// Opens an empty practice of a new name.
using OpenNew = std::function<void(const std::string& name)>;

struct Pair
{
    Seconds ours, raw;
};
Pair MeasureOnce(const OpenNew& open, int clients, const std::string& name)
{
    Pair pair;
    open("raw" + name);
    FillPractice(Quarry::GetConnection(), clients);
    pair.raw = Time([] { RollForwardRaw(Quarry::GetConnection()); });
    const std::string expected = SummaryOf(Quarry::GetConnection());
    open("ours" + name);
    FillPractice(Quarry::GetConnection(), clients);
    pair.ours = Time([] { RollForwardOurs(); });
    if (const std::string made = SummaryOf(Quarry::GetConnection()); made != expected)
        throw std::runtime_error("the rows are others: " + made + "instead of " + expected);
    return pair;
}

/// The fastest of three rounds, since other programs can only add to a time; of one from 100,000 clients on.
Pair Measure(const OpenNew& open, int clients)
{
    const int rounds = clients < 100'000 ? 3 : 1;
    Pair fastest;
    for (int round = 0; round < rounds; ++round) {
        const Pair pair = MeasureOnce(open, clients, std::to_string(clients) + '_' + std::to_string(round));
        for (Seconds Pair::*who : {&Pair::ours, &Pair::raw})
            for (double Seconds::*time : {&Seconds::processor, &Seconds::wall})
                if (round == 0 || pair.*who.*time < fastest.*who.*time)
                    fastest.*who.*time = pair.*who.*time;
    }
    return fastest;
}

/// Rows of the table for all sizes; whether the time of a client stays.
bool MeasureAll(const char* where, const OpenNew& open, int most)
{
    Seconds before;
    bool isGood = true;
    for (int clients = 100; clients <= most; clients *= 10) {
        const Pair pair = Measure(open, clients);
        const Seconds &ours = pair.ours, &raw = pair.raw;
        const auto exponent = [&](double Seconds::*time) {
            return before.wall > 0 ? std::log10(ours.*time / before.*time) : 1;
        };
        const bool isSteep = clients > 1000 && exponent(&Seconds::processor) >= kSteepest; // the smallest warm up
        std::printf("| a new year, %s | %d | %.0f us (%.0f us) | %.1f (%.1f) | %.2f (%.2f)%s |\n", where, clients,
                    ours.processor / clients * 1e6, ours.wall / clients * 1e6, ours.processor / raw.processor,
                    ours.wall / raw.wall, exponent(&Seconds::processor), exponent(&Seconds::wall),
                    isSteep ? " **misses**" : "");
        std::fflush(stdout);
        isGood = isGood && !isSteep;
        before = ours;
    }
    return isGood;
}

bool MeasureOnServer(int most)
{
    const Bench::Server server(Places().front().folder);
    return MeasureAll(
        "server",
        [&](const std::string& name) {
            Quarry::SetConnection(nullptr);
            server.MakePractice(name);
            Quarry::SetConnection(Cellar::CConnection::Open(server.TextOf(name).c_str()));
        },
        most);
}

int Run(int most, const std::string& where)
{
    std::printf("| ours | clients | a client: CPU (wall) | INSERT ... SELECT: CPU (wall) | exponent: CPU (wall) |\n"
                "|---|---|---|---|---|\n");
    bool isGood = true;
    for (const Place& place : Places())
        if (where.empty() || where == place.name)
            isGood = MeasureAll(
                         place.name, [&](const std::string& name) { OpenPractice(place.folder + '/' + name); }, most) &&
                     isGood;
    if (where.empty() || where == "server")
        isGood = MeasureOnServer(most) && isGood;
    return isGood ? 0 : 1;
}

} // namespace

int main(int argc, char** argv)
{
    const int most = argc > 1 ? std::atoi(argv[1]) : 10'000;
    return RunWithPlaces([=] { return Run(most, argc > 2 ? argv[2] : ""); });
}
