#include "Ratios.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <exception>
#include <utility>
#include <vector>

namespace
{

struct Seconds
{
    double processor, wall;
};

struct Entry
{
    std::string subject, name; // "ours" or a peer
    Seconds time;
};

/// In the order of registration: ours before its peers.
using Entries = std::map<std::int64_t, Entry>;

/// Keeps the fastest repetition of every entry.
class Reporter : public benchmark::BenchmarkReporter
{
public:
    bool ReportContext(const Context& context) override
    {
        PrintBasicContext(&GetErrorStream(), context);
        return true;
    }
    void ReportRuns(const std::vector<Run>& runs) override
    {
        for (const Run& run : runs)
            if (run.error_occurred)
                Fail(run);
            else if (run.run_type == Run::RT_Iteration)
                Keep(run);
    }
    bool HasFailed() const noexcept { return m_hasFailed; }
    const Entries& Fastest() const noexcept { return m_entries; }

private:
    void Fail(const Run& run)
    {
        std::fprintf(stderr, "%s: %s\n", run.benchmark_name().c_str(), run.error_message.c_str());
        m_hasFailed = true;
    }
    void Keep(const Run& run)
    {
        const std::string& name = run.run_name.function_name;
        const std::size_t slash = name.rfind('/');
        const auto count = static_cast<double>(run.iterations);
        const Seconds time{run.cpu_accumulated_time / count, run.real_accumulated_time / count};
        const Entry entry{name.substr(0, slash), name.substr(slash + 1), time};
        Seconds& least = m_entries.try_emplace(run.family_index, entry).first->second.time;
        least = {std::min(least.processor, time.processor), std::min(least.wall, time.wall)};
    }

    Entries m_entries;
    bool m_hasFailed = false;
};

/// Ours against one peer.
struct Row
{
    std::string subject, peer;
    Seconds ratio;
    double limit;

    bool IsMiss() const noexcept { return ratio.processor >= limit + 0.005; } // is printed as more
};

std::vector<Row> RowsOf(const Entries& entries, const Bench::Reasons& reasons)
{
    const auto limitOf = [&](const std::string& subject) {
        const auto reason = reasons.find(subject);
        return reason == reasons.end() ? 1 : reason->second.limit;
    };
    std::map<std::string, Seconds> ours; // by subject
    std::vector<Row> rows;
    for (const auto& [family, entry] : entries)
        if (entry.name == "ours")
            ours[entry.subject] = entry.time;
        else if (const auto at = ours.find(entry.subject); at != ours.end())
            rows.push_back({entry.subject,
                            entry.name,
                            {at->second.processor / entry.time.processor, at->second.wall / entry.time.wall},
                            limitOf(entry.subject)});
    return rows;
}

void PrintTimes(const Entries& entries)
{
    std::printf("%-40s %-36s %12s %12s\n", "subject", "entry", "CPU ns", "wall ns");
    for (const auto& [family, entry] : entries)
        std::printf("%-40s %-36s %12.1f %12.1f\n", entry.subject.c_str(), entry.name.c_str(),
                    entry.time.processor * 1e9, entry.time.wall * 1e9);
}

/// By subject: its peers with their ratios, of the rows that miss or of the others.
std::vector<std::pair<std::string, std::string>> Lines(const std::vector<Row>& rows, bool areMisses)
{
    std::vector<std::pair<std::string, std::string>> lines;
    for (const Row& row : rows)
        if (row.IsMiss() == areMisses) {
            char ratios[40];
            std::snprintf(ratios, sizeof ratios, areMisses ? " **%.2f** (%.2f)" : " %.2f (%.2f)", row.ratio.processor,
                          row.ratio.wall);
            if (lines.empty() || lines.back().first != row.subject)
                lines.emplace_back(row.subject, row.peer + ratios);
            else
                lines.back().second += "; " + row.peer + ratios;
        }
    return lines;
}

void PrintMisses(const std::vector<Row>& rows, const Bench::Reasons& reasons)
{
    std::puts("\n| missing | peer: CPU (wall) | why |\n|---|---|---|");
    for (const auto& [subject, peers] : Lines(rows, true)) {
        const auto reason = reasons.find(subject);
        std::printf("| %s | %s | %s |\n", subject.c_str(), peers.c_str(),
                    reason == reasons.end() ? Bench::Reason().why.c_str() : reason->second.why.c_str());
    }
}

void PrintOthers(const std::vector<Row>& rows)
{
    std::puts("\n| ours | peer: CPU (wall) |\n|---|---|");
    for (const auto& [subject, peers] : Lines(rows, false))
        std::printf("| %s | %s |\n", subject.c_str(), peers.c_str());
}

} // namespace

int Bench::RunAll(int argc, char** argv, const Reasons& reasons)
{
    std::vector<char*> arguments(argv, argv + argc);
    char repetitions[] = "--benchmark_repetitions=10", brief[] = "--benchmark_min_time=0.03",
         turns[] = "--benchmark_enable_random_interleaving=true";
    arguments.insert(arguments.begin() + 1, {repetitions, brief, turns});
    int count = static_cast<int>(arguments.size());
    benchmark::Initialize(&count, arguments.data());
    if (benchmark::ReportUnrecognizedArguments(count, arguments.data()))
        return 1;
    Reporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    const std::vector<Row> rows = RowsOf(reporter.Fastest(), reasons);
    PrintTimes(reporter.Fastest());
    PrintMisses(rows, reasons);
    PrintOthers(rows);
    return reporter.HasFailed() ? 1 : 0;
}

int Bench::ResultOf(const std::function<int()>& run)
{
    try {
        return run();
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 2;
    }
}
