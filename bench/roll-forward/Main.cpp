// Everybody of a practice rolled into the new year, as `morv year roll-forward` does it client by client, each in a
// durable transaction, against one hand-written set of INSERT ... SELECT for the same rows, as the practice grows.
// roll-forward [MOST]: 100 clients and ten times as many up to so many, 100,000 unless told otherwise.

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <stdexcept>
#include <string>
#include <vector>

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

template<class Work>
Seconds Time(Work work)
{
    const double processor = Bench::ProcessorSeconds(CLOCK_PROCESS_CPUTIME_ID);
    const auto start = Bench::Clock::now();
    work();
    return {Bench::ProcessorSeconds(CLOCK_PROCESS_CPUTIME_ID) - processor, Bench::SecondsSince(start)};
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
Pair Measure(const OpenNew& open, int clients)
{
    Pair pair;
    const std::string size = std::to_string(clients);
    open("raw" + size);
    FillPractice(Quarry::GetConnection(), clients);
    pair.raw = Time([] { RollForwardRaw(Quarry::GetConnection()); });
    const std::string expected = SummaryOf(Quarry::GetConnection());
    open("ours" + size);
    FillPractice(Quarry::GetConnection(), clients);
    pair.ours = Time([] { RollForwardOurs(); });
    if (const std::string made = SummaryOf(Quarry::GetConnection()); made != expected)
        throw std::runtime_error("the rows are others: " + made + "instead of " + expected);
    return pair;
}

/// Rows of the table for all sizes; whether the time of a client stays.
bool MeasureAll(const char* where, const OpenNew& open, int most)
{
    double before = 0;
    bool isFlat = true;
    for (int clients = 100; clients <= most; clients *= 10) {
        const auto [ours, raw] = Measure(open, clients);
        const double exponent = before > 0 ? std::log10(ours.wall / before) : 1;
        const bool isSteep = clients > 1000 && exponent >= kSteepest; // the smallest warm up
        before = ours.wall;
        isFlat = isFlat && !isSteep;
        std::printf("| %s | %d | %.0f us (%.0f us) | %.1f (%.1f) | %.2f%s |\n", where, clients,
                    ours.processor / clients * 1e6, ours.wall / clients * 1e6, ours.processor / raw.processor,
                    ours.wall / raw.wall, exponent, isSteep ? " *" : "");
        std::fflush(stdout);
    }
    return isFlat;
}

int Run(int most)
{
    std::printf("| place | clients | ours, a client: CPU (wall) | INSERT ... SELECT: CPU (wall) | exponent of wall |\n"
                "|---|---|---|---|---|\n");
    bool isFlat = true;
    for (const Place& place : Places())
        isFlat = MeasureAll(
                     place.name, [&](const std::string& name) { OpenPractice(place.folder + '/' + name); }, most) &&
                 isFlat;
    const Bench::Server server(Places().front().folder);
    isFlat = MeasureAll(
                 "server",
                 [&](const std::string& name) {
                     Quarry::SetConnection(nullptr);
                     server.MakePractice(name);
                     Quarry::SetConnection(Cellar::CConnection::Open(server.TextOf(name).c_str()));
                 },
                 most) &&
             isFlat;
    return isFlat ? 0 : 1;
}

} // namespace

int main(int argc, char** argv)
{
    const int most = argc > 1 ? std::atoi(argv[1]) : 100'000;
    return RunWithPlaces([=] { return Run(most); });
}
