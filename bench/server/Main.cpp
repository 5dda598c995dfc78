// A practice on a server: how often a workstation waits for the network, what eight of them do in a second, and how
// fast a practice gets there. Nothing leaves the machine: the network is a proxy that takes its time.
//
// usage: server [CLIENTS]     300 clients for each workstation unless told otherwise
//        server --list        the statements of one client with the trips of each

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "MorvUt/MorvUt.h"
#include "Places.h"
#include "Ratios.h"
#include "server/Copying.h"
#include "server/Proxy.h"
#include "server/Server.h"
#include "server/Workstations.h"

namespace
{

constexpr std::chrono::microseconds kRoundTrip{850};
constexpr int kWorkstations = 8;
constexpr double kMostTrips = 32, kLeastClients = 250; // a client; a second, by all workstations
constexpr int kCopied = 1000;                          // clients of the practice that is copied

/// Each is worked on once.
class Clients
{
public:
    explicit Clients(int count) : m_ids(Bench::FillPractice(count)) { Quarry::SetConnection(nullptr); }
    /// The next so many.
    std::span<const long> Next(std::size_t count)
    {
        m_used += count;
        return std::span(m_ids).subspan(m_used - count, count);
    }

private:
    std::vector<long> m_ids;
    std::size_t m_used = 0;
};

struct Row
{
    std::string ours, figure, why;
    bool isMiss;
};

std::string Text(const char* format, auto... values)
{
    char text[200];
    std::snprintf(text, sizeof text, format, values...);
    return text;
}

Row RowOfRatio(const char* ours, const std::string& peer, double processor, double wall, const char* why)
{
    const bool isMiss = processor >= 1.005;
    return {ours, peer + Text(isMiss ? " **%.2f** (%.2f)" : " %.2f (%.2f)", processor, wall), why, isMiss};
}

void Print(const std::vector<Row>& rows)
{
    std::puts("\n| missing | peer: CPU (wall) | why |\n|---|---|---|");
    for (const Row& row : rows)
        if (row.isMiss)
            std::printf("| %s | %s | %s |\n", row.ours.c_str(), row.figure.c_str(), row.why.c_str());
    std::puts("\n| ours | peer: CPU (wall) |\n|---|---|");
    for (const Row& row : rows)
        if (!row.isMiss)
            std::printf("| %s | %s |\n", row.ours.c_str(), row.figure.c_str());
}

void PrintSpent(const char* what, const Bench::Spent& spent)
{
    std::printf("%-46s %6.1f fetch %6.1f create trips %8.2f ms wall %8.2f ms CPU\n", what, spent.fetchTrips,
                spent.createTrips, spent.wall * 1e3, spent.processor * 1e3);
    std::fflush(stdout);
}

/// The one beside the other, without a network between.
Row MeasureBesideEmbedded(const Bench::Server& server, Clients& clients, std::size_t share)
{
    const std::string file = Places().back().folder + "/practice.db";
    OpenPractice(file);
    Clients embedded(static_cast<int>(share));
    const Bench::Spent ours = Bench::WorkAlone(server.TextOf("practice"), clients.Next(share), nullptr);
    const Bench::Spent peer = Bench::WorkAlone(file, embedded.Next(share), nullptr);
    PrintSpent("one workstation, no network", ours);
    PrintSpent("the embedded database in memory", peer);
    return RowOfRatio("a client's fetch and schedules on a server, no network", "embedded in memory",
                      ours.processor / peer.processor, ours.wall / peer.wall,
                      "every statement goes through the driver to another process");
}

Row MeasureTrips(const Bench::Server& server, Clients& clients, std::size_t share)
{
    const Bench::Proxy proxy(server.GetPort(), kRoundTrip);
    const Bench::Spent spent =
        Bench::WorkAlone(server.TextOf("practice", proxy.GetPort()), clients.Next(share), &proxy);
    PrintSpent("one workstation, 0.85 ms", spent);
    const double trips = spent.fetchTrips + spent.createTrips;
    return {"round trips of a client, at most 32",
            Text("%.1f (fetch %.1f, create %.1f)", trips, spent.fetchTrips, spent.createTrips),
            "more statements wait for an answer", trips > kMostTrips};
}

Row MeasureTogether(const Bench::Server& server, Clients& clients, std::size_t share, bool waitsForDisk)
{
    server.WaitForDisk(waitsForDisk);
    const Bench::Proxy proxy(server.GetPort(), kRoundTrip);
    const Bench::Together together = Bench::WorkTogether(server.TextOf("practice", proxy.GetPort()),
                                                         clients.Next(kWorkstations * share), kWorkstations);
    const char* const disk = waitsForDisk ? "commits wait for the disk" : "commits do not wait for the disk";
    std::printf("eight workstations, 0.85 ms, %-34s %7.1f clients/s %8.2f ms CPU\n", disk, together.clientsPerSecond,
                together.processor * 1e3);
    std::fflush(stdout);
    return {Text("clients a second, eight workstations, %s, more than 250", disk),
            Text("%.0f", together.clientsPerSecond), "", together.clientsPerSecond <= kLeastClients};
}

Row MeasureCopy(const Bench::Server& server)
{
    const std::string folder = Places().back().folder, file = folder + "/copied.db";
    OpenPractice(file);
    Clients clients(kCopied);
    Bench::WorkAlone(file, clients.Next(kCopied), nullptr);
    const Bench::Copying copying = Bench::MeasureCopying(server, file, folder);
    for (const auto& [name, rate] :
         {std::pair("practice copy", copying.ours), std::pair("psql \\copy", copying.bulkTool)})
        std::printf("%-20s %8.0f rows %10.0f rows/s wall %10.0f rows/s CPU\n", name, rate.rows, rate.rows / rate.wall,
                    rate.rows / rate.processor);
    return RowOfRatio("practice copied to a server", "psql \\copy out of files",
                      copying.ours.processor / copying.bulkTool.processor, copying.ours.wall / copying.bulkTool.wall,
                      "ours reads a database, and all of both again to compare");
}

int Run(int argc, char** argv)
{
    const bool isList = argc == 2 && std::string_view(argv[1]) == "--list";
    const auto share = Bench::kWarmUp + (argc == 2 && !isList ? std::stoul(argv[1]) : 300);
    const Bench::Server server(Places().front().folder);
    server.MakePractice("practice");
    Quarry::SetConnection(Cellar::CConnection::Open(CString(server.TextOf("practice"))));
    Clients clients(static_cast<int>(share) * (2 + 2 * kWorkstations));
    if (isList) {
        const Bench::Proxy proxy(server.GetPort(), {});
        Bench::PrintStatements(server.TextOf("practice", proxy.GetPort()), clients.Next(Bench::kWarmUp), proxy);
        return 0;
    }
    std::vector<Row> rows;
    rows.push_back(MeasureBesideEmbedded(server, clients, share));
    rows.push_back(MeasureTrips(server, clients, share));
    for (const bool waitsForDisk : {true, false})
        rows.push_back(MeasureTogether(server, clients, share, waitsForDisk));
    rows.push_back(MeasureCopy(server));
    Print(rows);
    return 0;
}

} // namespace

int main(int argc, char** argv)
{
    return RunWithPlaces([&] { return Run(argc, argv); });
}
