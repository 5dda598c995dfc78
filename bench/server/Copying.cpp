#include "server/Copying.h"

#include <sys/resource.h>

#include <chrono>
#include <cstdlib>
#include <fstream>
#include <stdexcept>
#include <vector>

#include "Afx/text/TextFold.h"
#include "Brix/Copy.h"
#include "Brix/Schema.h"
#include "Shellkit/PracticeKey.h"
#include "Shellkit/Random.h"

namespace Bench
{
namespace
{

using Clock = std::chrono::steady_clock;

double ProcessorSecondsOf(int who)
{
    rusage usage{};
    getrusage(who, &usage);
    const auto seconds = [](const timeval& time) {
        return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) * 1e-6;
    };
    return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

template<class Work>
Rate Measure(int who, Work work)
{
    Rate rate;
    const double processor = ProcessorSecondsOf(who);
    const auto start = Clock::now();
    rate.rows = static_cast<double>(work());
    rate.wall = std::chrono::duration<double>(Clock::now() - start).count();
    rate.processor = ProcessorSecondsOf(who) - processor;
    return rate;
}

/// As the server names them.
std::vector<std::string> TablesWithRows(Cellar::CConnection& practice)
{
    std::vector<std::string> names;
    for (const Quarry::Table* const table : Brix::AllTables()) {
        if (std::string_view(table->sqlName) == "BRIXSchema") // is there with the schema
            continue;
        const auto rows =
            practice.Query(Cellar::SqlText("SELECT COUNT(*) FROM ") + Cellar::SqlText::Bracketed(table->sqlName), {});
        if (Cellar::ToInt64(rows.rows.at(0).at(0)) > 0)
            names.push_back(Afx::FoldLower(table->sqlName));
    }
    return names;
}

/// Has the tool copy each table from its file, or to it, in one transaction.
void RunTool(const Server& server, const std::string& database, const std::vector<std::string>& tables,
             const char* direction, const std::string& folder)
{
    const std::string commands = folder + "/commands";
    {
        std::ofstream file(commands);
        for (const std::string& table : tables)
            file << "\\copy " << table << ' ' << direction << " '" << folder << '/' << table << "'\n";
    }
    if (std::system((server.Psql(database) + "-1 -f " + commands).c_str()) != 0)
        throw std::runtime_error("the server's own tool does not copy");
}

} // namespace

Copying MeasureCopying(const Server& server, const std::string& practice, const std::string& folder)
{
    const auto from = Cellar::CConnection::Open(CString(practice));
    server.MakePractice("bulk");
    Cellar::CConnection::Open(server.TextOf("postgres"))->Script("CREATE DATABASE copied");
    const auto to = Cellar::CConnection::Open(server.TextOf("copied"));
    const auto key = Shellkit::RandomBytes(Shellkit::kKeySize);

    Copying copying;
    copying.ours = Measure(RUSAGE_SELF, [&] { return Brix::CopyPractice({*from, key}, {*to, key}, nullptr).rows; });
    const std::vector<std::string> tables = TablesWithRows(*to);
    RunTool(server, "copied", tables, "to", folder);
    copying.bulkTool = Measure(RUSAGE_CHILDREN, [&] {
        RunTool(server, "bulk", tables, "from", folder);
        return copying.ours.rows;
    });
    return copying;
}

} // namespace Bench
