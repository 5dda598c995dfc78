#pragma once

// Runs benchmarks in pairs and prints how ours compares with each peer.
//
// A row is a subject; its first entry is ours, the others are peers: "pence to text/ours", "pence to text/snprintf".

#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstring>
#include <map>
#include <string>
#include <vector>

namespace Bench
{

/// Collects the median time of every entry.
class RatioReporter : public benchmark::ConsoleReporter
{
public:
    void ReportRuns(const std::vector<Run>& runs) override
    {
        ConsoleReporter::ReportRuns(runs);
        for (const Run& run : runs)
            if (!run.error_occurred && (run.aggregate_name == "median" || run.repetitions == 1)) {
                const std::string name = run.run_name.function_name;
                const std::size_t slash = name.rfind('/');
                m_times[name.substr(0, slash)][name.substr(slash + 1)] = run.GetAdjustedRealTime();
            }
    }

    /// One line a pair: subject, peer, ratio. The number of ratios of 1 and above.
    int PrintRatios() const
    {
        int misses = 0;
        std::printf("\n%-36s %-28s %s\n", "subject", "peer", "ours / peer");
        for (const auto& [subject, times] : m_times) {
            const auto ours = times.find("ours");
            if (ours == times.end())
                continue;
            for (const auto& [peer, time] : times)
                if (peer != "ours") {
                    const double ratio = ours->second / time;
                    misses += ratio >= 1 ? 1 : 0;
                    std::printf("%-36s %-28s %.2f\n", subject.c_str(), peer.c_str(), ratio);
                }
        }
        return misses;
    }

private:
    std::map<std::string, std::map<std::string, double>> m_times;
};

/// Runs everything that is registered; five repetitions unless the command line says otherwise.
inline int RunAll(int argc, char** argv)
{
    std::vector<char*> arguments(argv, argv + argc);
    char repetitions[] = "--benchmark_repetitions=5", aggregates[] = "--benchmark_report_aggregates_only=true",
         brief[] = "--benchmark_min_time=0.05";
    arguments.insert(arguments.begin() + 1, {repetitions, aggregates, brief});
    int count = static_cast<int>(arguments.size());
    benchmark::Initialize(&count, arguments.data());
    RatioReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    reporter.PrintRatios();
    return 0;
}

} // namespace Bench
