// What a whole run of the program costs, from its start to its end, beside two programs whose start everybody calls
// instant. The programs take turns, in an order that is drawn anew for each: what else the machine does falls on all of
// them, and so does coming after the one that leaves least in the caches.
//
// usage: start-up [RUNS]     200 runs of each program unless told otherwise; ends with 1 when one is over its limit

#include <fcntl.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <random>
#include <string>
#include <vector>

extern char** environ;

namespace
{

/// Least and middle of what was measured, in milliseconds.
class Times
{
public:
    void Add(double milliseconds) { m_times.push_back(milliseconds); }
    double Least() const { return *std::min_element(m_times.begin(), m_times.end()); }
    double Median() const
    {
        std::vector<double> times = m_times;
        const auto middle = times.begin() + static_cast<std::ptrdiff_t>(times.size() / 2);
        std::nth_element(times.begin(), middle, times.end());
        return *middle;
    }

private:
    std::vector<double> m_times;
};

struct Program
{
    std::vector<std::string> words;
    bool isOurs;
    Times processor, wall;

    std::string Line() const
    {
        std::string line = isOurs ? "morv" : words.front();
        for (std::size_t i = 1; i < words.size(); ++i)
            line += ' ' + words[i];
        return line;
    }
};

/// Ours may take this many times the peer's processor time.
struct Peer
{
    std::size_t program;
    double limit;
};

double Milliseconds(const timeval& time)
{
    return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_usec) / 1e3;
}

[[noreturn]] void Fail(const Program& program)
{
    std::fprintf(stderr, "start-up: %s does not run\n", program.Line().c_str());
    std::exit(2);
}

/// Runs the program once, its output going nowhere.
void Measure(Program& program)
{
    std::vector<char*> arguments;
    for (std::string& word : program.words)
        arguments.push_back(word.data());
    arguments.push_back(nullptr);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, 1, "/dev/null", O_WRONLY, 0);
    const auto begin = std::chrono::steady_clock::now();
    pid_t process = 0;
    int status = 0;
    rusage used{};
    if (posix_spawnp(&process, arguments.front(), &actions, nullptr, arguments.data(), environ) != 0 ||
        wait4(process, &status, 0, &used) != process || status != 0)
        Fail(program);
    program.wall.Add(std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - begin).count());
    program.processor.Add(Milliseconds(used.ru_utime) + Milliseconds(used.ru_stime));
    posix_spawn_file_actions_destroy(&actions);
}

void PrintTimes(const std::vector<Program>& programs)
{
    std::printf("%-36s %10s %10s %10s %10s\n", "milliseconds", "CPU least", "median", "wall least", "median");
    for (const Program& program : programs)
        std::printf("%-36s %10.2f %10.2f %10.2f %10.2f\n", program.Line().c_str(), program.processor.Least(),
                    program.processor.Median(), program.wall.Least(), program.wall.Median());
}

/// The pairs, those over their limit first; whether there were any. The least counts: what else the machine does only
/// ever adds.
bool PrintRatios(const std::vector<Program>& programs, const std::vector<Peer>& peers)
{
    std::string misses, others;
    for (const Program& ours : programs)
        for (const Peer& peer : peers) {
            if (!ours.isOurs)
                continue;
            const Program& theirs = programs[peer.program];
            const double ratio = ours.processor.Least() / theirs.processor.Least();
            char line[200];
            std::snprintf(line, sizeof line, "%-36s %-20s %6.2f %6.2f %6.2f\n", ours.Line().c_str(),
                          theirs.Line().c_str(), ratio, ours.wall.Least() / theirs.wall.Least(), peer.limit);
            (ratio > peer.limit ? misses : others) += line;
        }
    std::printf("\n%-36s %-20s %6s %6s %6s\n%s%s%s\n", "ours", "peer", "CPU", "wall", "limit",
                misses.empty() ? "" : "over the limit:\n", misses.c_str(), misses.empty() ? "" : "the others:");
    std::fputs(others.c_str(), stdout);
    return !misses.empty();
}

} // namespace

int main(int argc, char** argv)
{
    const int runs = argc > 1 ? std::max(1, std::atoi(argv[1])) : 200;
    std::vector<Program> programs{
        {{MORV_PROGRAM, "calc", "GetTaxYear", "2024-04-06"}, true, {}, {}},
        {{MORV_PROGRAM, "table", "find", "mapPSBTypes", "1140"}, true, {}, {}},
        {{MORV_PROGRAM, "--version"}, true, {}, {}},
        {{"sqlite3", "--version"}, false, {}, {}},
        {{"curl", "--version"}, false, {}, {}},
    };
    for (Program& program : programs) { // what the disk has to give is given now
        Measure(program);
        program.processor = program.wall = {};
    }
    std::vector<std::size_t> turns{0, 1, 2, 3, 4};
    std::mt19937 random; // NOLINT(cert-msc32-c,cert-msc51-cpp): the same order each time
    for (int run = 0; run < runs; ++run) {
        std::shuffle(turns.begin(), turns.end(), random);
        for (const std::size_t turn : turns)
            Measure(programs[turn]);
    }
    PrintTimes(programs);
    return PrintRatios(programs, {{3, 2}, {4, 1}}) ? 1 : 0;
}
