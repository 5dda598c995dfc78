#pragma once

// Runs benchmarks in pairs and prints how ours compares with each peer.
//
// A row is a subject; its first entry is ours, the others are peers: "pence to text/ours", "pence to text/snprintf".

#include <benchmark/benchmark.h>

#include <cstdio>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace Bench
{

/// What a row is timed by. Arithmetic by processor time, which other programs disturb less; what waits for a disk by
/// real time.
enum class Clock
{
    Processor,
    Real
};

/// By "subject/peer": the ratio that a row must stay below, where that is not 1.
using Limits = std::map<std::string, double>;

/// Collects the median time of every entry.
class RatioReporter : public benchmark::ConsoleReporter
{
public:
    RatioReporter(Clock clock, Limits limits) : m_clock(clock), m_limits(std::move(limits)) {}

    void ReportRuns(const std::vector<Run>& runs) override
    {
        ConsoleReporter::ReportRuns(runs);
        for (const Run& run : runs)
            if (!run.error_occurred && (run.aggregate_name == "median" || run.repetitions == 1)) {
                const std::string name = run.run_name.function_name;
                const std::size_t slash = name.rfind('/');
                m_times[name.substr(0, slash)][name.substr(slash + 1)] =
                    m_clock == Clock::Processor ? run.GetAdjustedCPUTime() : run.GetAdjustedRealTime();
            }
    }

    /// One line a pair: subject, peer, ratio. Then those that reach their limit.
    void PrintRatios() const
    {
        std::printf("\n%-36s %-36s %s\n", "subject", "peer", "ours / peer");
        std::string misses;
        for (const auto& [subject, times] : m_times) {
            const auto ours = times.find("ours");
            for (const auto& [peer, time] : times)
                if (ours != times.end() && peer != "ours")
                    PrintRatio(subject, peer, ours->second / time, misses);
        }
        std::printf("\n%s%s", misses.empty() ? "every row is below its limit\n" : "not below the limit:\n",
                    misses.c_str());
    }

private:
    void PrintRatio(const std::string& subject, const std::string& peer, double ratio, std::string& misses) const
    {
        char line[160];
        std::snprintf(line, sizeof line, "%-36s %-36s %.2f\n", subject.c_str(), peer.c_str(), ratio);
        std::fputs(line, stdout);
        const auto limit = m_limits.find(subject + '/' + peer);
        if (ratio >= (limit == m_limits.end() ? 1 : limit->second))
            misses += line;
    }

    Clock m_clock;
    Limits m_limits;
    std::map<std::string, std::map<std::string, double>> m_times; // subject, entry
};

/// Runs everything that is registered; five repetitions, ours and the peers taking turns, unless the command line says
/// otherwise.
inline int RunAll(int argc, char** argv, Clock clock, const Limits& limits = {})
{
    std::vector<char*> arguments(argv, argv + argc);
    char repetitions[] = "--benchmark_repetitions=5", aggregates[] = "--benchmark_report_aggregates_only=true",
         brief[] = "--benchmark_min_time=0.05", turns[] = "--benchmark_enable_random_interleaving=true";
    arguments.insert(arguments.begin() + 1, {repetitions, aggregates, brief, turns});
    int count = static_cast<int>(arguments.size());
    benchmark::Initialize(&count, arguments.data());
    if (benchmark::ReportUnrecognizedArguments(count, arguments.data()))
        return 1;
    RatioReporter reporter(clock, limits);
    benchmark::RunSpecifiedBenchmarks(&reporter);
    reporter.PrintRatios();
    return 0;
}

} // namespace Bench
