// One client from HMRC's answer to schedules, without the network, against the same rows written with the engine's own
// C interface. Both make 19 staging rows and 16 of the tax form and its schedules durable in a practice file, in two
// transactions.

#include "main-job/MainJob.h"
#include "main-job/RawRows.h"
#include "Ratios.h"

namespace
{

// Fetch (a canned answer), stage, create. Whether all went well.
bool FetchAndCreate(long client)
{
    HmrcApi::CPAYEPrepop prepop(ClientId(client), TaxYear(2018), "AA000001A", HmrcApi::IEndpointOverride::Everything);
    const auto errors = std::make_shared<HmrcApi::CAPIErrorHandler>();
    prepop.GetPAYEData("AA000001A", errors, nullptr);
    prepop.CreateNewSchedules();
    return errors->GetErrorCount() == 0 && prepop.GetCreatedSchedules().pensionsAndBenefits == 7;
}

void Ours(benchmark::State& state, const Place& place)
{
    OpenPractice(place.folder + "/ours.db");
    FetchAndCreate(Test::AddClients(1)); // what a process and a connection do once is done
    for (auto _ : state) {
        state.PauseTiming();
        const long client = Test::AddClients(1);
        state.ResumeTiming();
        if (!FetchAndCreate(client))
            return state.SkipWithError("the client was not fetched whole");
    }
}

void SameRows(benchmark::State& state, const Place& place, const RawRows& rows)
{
    const std::string path = place.folder + "/raw.db";
    OpenPractice(path); // for its schema
    Quarry::SetConnection(nullptr);
    RawWriter writer(path, rows);
    writer.WriteClient();
    for (auto _ : state)
        writer.WriteClient();
}

// What ours writes for one client.
RawRows RowsOfOneClient()
{
    OpenPractice(Places().front().folder + "/one.db");
    FetchAndCreate(Test::AddClients(1));
    return ReadRawRows();
}

} // namespace

int RunComparison(int argc, char** argv)
{
    const RawRows rows = RowsOfOneClient();
    Bench::Reasons reasons;
    for (const Place& place : Places()) {
        const std::string subject = std::string("fetch to schedules, ") + place.name;
        const auto add = [&](const std::string& entry, auto action) {
            benchmark::RegisterBenchmark((subject + '/' + entry).c_str(), action)->MeasureProcessCPUTime();
        };
        add("ours", [&place](benchmark::State& state) { Ours(state, place); });
        add("same rows in C", [&place, &rows](benchmark::State& state) { SameRows(state, place, rows); });
        reasons[subject] =
            "ours also reads the answer, asks which rows are stored already and which schedules match, and "
            "takes the ids from the practice; the peer knows all rows beforehand";
    }
    return Bench::RunAll(argc, argv, reasons);
}
