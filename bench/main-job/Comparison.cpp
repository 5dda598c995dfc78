// One client from HMRC's answer to schedules, without the network, against the same rows written with the engine's own
// C interface. Both make a client's 18 staging rows and 15 schedule rows durable in a practice file.

#include "main-job/MainJob.h"

#include <sqlite3.h>

#include <map>
#include <stdexcept>
#include <string>
#include <vector>

#include "Brix/Records.h"
#include "Ratios.h"

namespace
{

// Fetch (a canned answer), stage, create.
void Ours(benchmark::State& state)
{
    for (auto _ : state) {
        state.PauseTiming();
        const long client = Test::AddClients(1);
        state.ResumeTiming();
        HmrcApi::CPAYEPrepop prepop(ClientId(client), TaxYear(2018), "AA000001A",
                                    HmrcApi::IEndpointOverride::Everything);
        auto errors = std::make_shared<HmrcApi::CAPIErrorHandler>();
        prepop.GetPAYEData("AA000001A", errors, nullptr);
        prepop.CreateNewSchedules();
        if (errors->GetErrorCount() || prepop.GetCreatedSchedules().pensionsAndBenefits != 7)
            state.SkipWithError("the client was not fetched whole");
    }
}

// The rows of one client as the practice file holds them: table, columns, values of one row.
struct RawRow
{
    std::string statement;
    std::vector<Cellar::Value> values;
};

class RawDatabase
{
public:
    explicit RawDatabase(const std::string& path)
    {
        if (sqlite3_open(path.c_str(), &m_database) != SQLITE_OK)
            throw std::runtime_error("cannot open " + path);
        Run("PRAGMA journal_mode=WAL");
        Run("PRAGMA synchronous=FULL");
    }
    ~RawDatabase()
    {
        for (auto& [text, statement] : m_statements)
            sqlite3_finalize(statement);
        sqlite3_close(m_database);
    }
    void Run(const char* text) { sqlite3_exec(m_database, text, nullptr, nullptr, nullptr); }
    void Insert(const RawRow& row, long id)
    {
        sqlite3_stmt*& statement = m_statements[row.statement];
        if (!statement)
            sqlite3_prepare_v2(m_database, row.statement.c_str(), -1, &statement, nullptr);
        sqlite3_bind_int64(statement, 1, id);
        int place = 2;
        for (const Cellar::Value& value : row.values)
            Bind(statement, place++, value);
        if (sqlite3_step(statement) != SQLITE_DONE)
            throw std::runtime_error(sqlite3_errmsg(m_database));
        sqlite3_reset(statement);
    }

private:
    static void Bind(sqlite3_stmt* statement, int place, const Cellar::Value& value)
    {
        using Kind = Cellar::Value::Kind;
        if (value.kind == Kind::Null)
            sqlite3_bind_null(statement, place);
        else if (value.kind == Kind::Integer || value.kind == Kind::Money)
            sqlite3_bind_int64(statement, place, value.integer);
        else
            sqlite3_bind_text(statement, place, value.text.data(), static_cast<int>(value.text.size()), SQLITE_STATIC);
    }

    sqlite3* m_database = nullptr;
    std::map<std::string, sqlite3_stmt*> m_statements;
};

// Reads back what Ours wrote for one client, so that both write the same rows.
std::vector<RawRow> RowsOfOneClient()
{
    const Quarry::Table* tables[] = {&Brix::CMTD_TaxYear::Declaration(),
                                     &Brix::CMTD_Employments::Declaration(),
                                     &Brix::CMTD_EmploymentsCompanyBenefits::Declaration(),
                                     &Brix::CMTD_PensionStateBenefits::Declaration(),
                                     &Brix::CMTD_TaxFreeAllowances::Declaration(),
                                     &Brix::CTaxForm::Declaration(),
                                     &Brix::CNewEmploy::Declaration(),
                                     &Brix::CNewEmployBenefits::Declaration(),
                                     &Brix::CPensionStateBenefits::Declaration()};
    std::vector<RawRow> rows;
    for (const Quarry::Table* table : tables) {
        Quarry::CDataList list(*table);
        std::string columns = "lID", places = "?";
        for (const Quarry::Column& column : table->columns)
            if (column.ordinal != 0) {
                columns += std::string(", ") + column.name;
                places += ", ?";
            }
        for (list.Open(); !list.IsEOL(); list.MoveNext()) {
            RawRow row{"INSERT INTO " + std::string(table->sqlName) + " (" + columns + ") VALUES (" + places + ")", {}};
            for (const Quarry::Column& column : table->columns)
                if (column.ordinal != 0)
                    row.values.push_back(list.Get(column.ordinal));
            rows.push_back(std::move(row));
        }
    }
    return rows;
}

std::vector<RawRow> g_rows;

void RawC(benchmark::State& state)
{
    static RawDatabase database(Scratch() + "/raw.db");
    static long id = 1000000;
    for (auto _ : state) {
        database.Run("BEGIN IMMEDIATE"); // staging, as ours, is one transaction
        std::size_t at = 0;
        for (; at < g_rows.size() && g_rows[at].statement.find("MTD_") != std::string::npos; ++at)
            database.Insert(g_rows[at], ++id);
        database.Run("COMMIT");
        database.Run("BEGIN IMMEDIATE"); // schedules the other
        for (; at < g_rows.size(); ++at)
            database.Insert(g_rows[at], ++id);
        database.Run("COMMIT");
    }
}

} // namespace

int RunComparison(int argc, char** argv)
{
    OpenPractice(Scratch() + "/raw.db"); // its schema serves the C interface
    OpenPractice(Scratch() + "/one.db");
    HmrcApi::CPAYEPrepop prepop(ClientId(Test::AddClients(1)), TaxYear(2018), "AA000001A",
                                HmrcApi::IEndpointOverride::Everything);
    prepop.GetPAYEData("AA000001A", std::make_shared<HmrcApi::CAPIErrorHandler>(), nullptr);
    prepop.CreateNewSchedules();
    g_rows = RowsOfOneClient();
    OpenPractice(Scratch() + "/ours.db");
    benchmark::RegisterBenchmark("fetch to schedules/ours", Ours)->Unit(benchmark::kMicrosecond);
    benchmark::RegisterBenchmark("fetch to schedules/same rows in C", RawC)->Unit(benchmark::kMicrosecond);
    return Bench::RunAll(argc, argv, Bench::Clock::Real);
}
