// One client's main job without the network: HMRC's answer read and staged, schedules made of it, both compared. Beside
// it the same by the engine's own C interface. Before anything is timed, both must have sent the same statements in the
// same order and left the same rows.

#include <algorithm>
#include <cstdio>
#include <stdexcept>
#include <string>
#include <vector>

#include "HmrcApi/interfaces/Examples.h"
#include "HmrcApi/interfaces/Interface.h"
#include "main-job/MainJob.h"
#include "main-job/raw/Job.h"
#include "Ratios.h"

namespace
{

constexpr short kYear = 2018;
constexpr int kClients = 4000; // more than a repetition needs
constexpr auto kAnswer = HmrcApi::IEndpointOverride::Everything;

const std::string& Answer()
{
    static const std::string answer(HmrcApi::ExampleOf(HmrcApi::kPaye, kAnswer));
    return answer;
}

void Require(bool isSo, const std::string& what)
{
    if (!isSo)
        throw std::runtime_error(what);
}

void DoOurs(long client)
{
    HmrcApi::CPAYEPrepop prepop(ClientId(client), TaxYear(kYear), "AA000001A", kAnswer);
    const auto errors = std::make_shared<HmrcApi::CAPIErrorHandler>();
    prepop.GetPAYEData("AA000001A", errors, nullptr);
    prepop.CreateNewSchedules();
    Require(errors->GetErrorCount() == 0 && prepop.GetCreatedSchedules().pensionsAndBenefits == 7 &&
                HmrcApi::FindDifferences(ClientId(client), TaxYear(kYear)).empty(),
            "the client's job was not done whole");
}

/// A practice of clients who have nothing yet, 1 the first, in use by nobody.
void MakePractice(const std::string& path, int clients)
{
    OpenPractice(path);
    Test::AddClients(clients);
    Quarry::SetConnection(nullptr);
}

class Ours
{
public:
    explicit Ours(const std::string& path) { Quarry::SetConnection(Cellar::CConnection::Open(CString(path))); }
    Ours(const Ours&) = delete;
    Ours& operator=(const Ours&) = delete;
    ~Ours() { Quarry::SetConnection(nullptr); }

    void Do(long client) { DoOurs(client); }
    template<class Hook>
    void OnSent(Hook hook)
    {
        Quarry::GetConnection().OnSent(hook);
    }
};

class InC
{
public:
    explicit InC(const std::string& path) { Raw::Open(m_database, path); }
    InC(const InC&) = delete;
    InC& operator=(const InC&) = delete;
    ~InC() { Raw::Close(m_database); }

    void Do(long client) { Raw::DoJob(m_database, client, kYear, Answer()); }
    template<class Hook>
    void OnSent(Hook hook)
    {
        Raw::OnSent(m_database, hook);
    }

private:
    Raw::Database m_database;
};

template<class Whose>
void Time(benchmark::State& state, const std::string& path)
{
    try {
        MakePractice(path, kClients);
        Whose whose(path);
        long client = 1;
        whose.Do(client); // what a process and a connection do once is done
        for (auto _ : state)
            whose.Do(++client);
    } catch (const std::exception& error) {
        state.SkipWithError(error.what());
    }
}

/// What the second client's job sends, counters and statements being there, and the rows of both.
struct Trace
{
    std::vector<std::string> statements, rows;
};

template<class Whose>
Trace TraceOf(const std::string& path)
{
    Trace trace;
    MakePractice(path, 2);
    {
        Whose whose(path);
        whose.Do(1);
        whose.OnSent([&](std::string_view statement) { trace.statements.emplace_back(statement); });
        whose.Do(2);
        whose.OnSent(nullptr);
    }
    const Ours reader(path);
    for (const char* const table :
         {"BRIXMTD_TaxYear", "BRIXMTD_Employments", "BRIXMTD_EmploymentsCompanyBenefits",
          "BRIXMTD_PensionStateBenefits", "BRIXMTD_TaxFreeAllowances", "BRIXTaxForm", "BRIXNewEmploy",
          "BRIXNewEmployBenefits", "BRIXPensionStateBenefits", "BRIXNextID"}) {
        const Cellar::RowSet set =
            Quarry::GetConnection().Queryf(Cellar::SqlText("SELECT * FROM ") + Cellar::SqlText::Identifier(table));
        for (const auto& row : set.rows) {
            std::string& text = trace.rows.emplace_back(table);
            for (std::size_t column = 0; column < row.size(); ++column)
                if (set.columns[column] != "strGUID" && set.columns[column] != "dtFetched") // anew each time
                    text += '|' + (row[column].IsNull() ? "NULL" : Cellar::ToText(row[column]).Str());
        }
    }
    return trace;
}

/// Says where the lines part.
void RequireSame(const std::vector<std::string>& ours, const std::vector<std::string>& theirs)
{
    for (std::size_t line = 0; line < std::max(ours.size(), theirs.size()); ++line) {
        const std::string mine = line < ours.size() ? ours[line] : "nothing";
        const std::string other = line < theirs.size() ? theirs[line] : "nothing";
        Require(mine == other, "the peer does not do the same: ours " + mine + "\nin C " + other);
    }
}

/// How many statements one client's job takes.
std::size_t RequireSameJob()
{
    const std::string path = Places().back().folder;
    const Trace ours = TraceOf<Ours>(path + "/ours.db"), theirs = TraceOf<InC>(path + "/raw.db");
    RequireSame(ours.statements, theirs.statements);
    RequireSame(ours.rows, theirs.rows);
    return ours.statements.size();
}

} // namespace

int RunComparison(int argc, char** argv)
{
    std::printf("%zu statements, the same of both\n", RequireSameJob());
    Bench::Reasons reasons;
    for (const Place& place : Places()) {
        const std::string subject = std::string("main job of a client, ") + place.name;
        const auto add = [&](const char* entry, auto* time, const char* file) {
            const std::string path = place.folder + file;
            benchmark::RegisterBenchmark((subject + '/' + entry).c_str(), [=](benchmark::State& state) {
                time(state, path);
            })->MeasureProcessCPUTime();
        };
        add("ours", &Time<Ours>, "/ours.db");
        add("the same in C", &Time<InC>, "/raw.db");
        reasons[subject] = {
            "ours also gives every value the one form of its column, finds its statements by their text "
            "and knows rows that are there already",
            2};
    }
    return Bench::RunAll(argc, argv, reasons);
}
