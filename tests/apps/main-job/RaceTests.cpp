// Several workstations fetch for, or make the schedules of, every client of one practice at once.

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <random>
#include <sstream>
#include <thread>

#include "apps/morv/Program.h"
#include "HmrcApi/Errors.h"
#include "MorvUt/Clients.h"
#include "MorvUt/hmrc/fetch/PayePrepop.h"
#include "MorvUt/users/UserData.h"
#include "support/TestSupport.h"

namespace
{

using namespace ::Test;
using Cellar::SqlText;

constexpr int kClients = 200;
constexpr char kBusy[] = "another program is writing";

/// How often each race is run: in 32 rounds every distance in time is met.
int Rounds()
{
    const char* const rounds = std::getenv("MORVUT_RACES");
    return rounds ? std::atoi(rounds) : 1;
}

/// How many rows of a table each client must have after the answer with everything.
struct Expected
{
    SqlText clients; // the client of each row
    int rows;
    const char* table;
};

#define STAGED(table) "SELECT lClientID FROM " table " t JOIN BRIXMTD_TaxYear y ON y.lID = lMTD_TaxYearID"
#define SCHEDULE(table) "SELECT f.lClientID FROM " table " t JOIN BRIXTaxForm f ON f.lID = lTaxFormID"

const Expected kStaged[] = {
    {"SELECT lClientID FROM BRIXMTD_TaxYear", 1, "staged years"},
    {STAGED("BRIXMTD_Employments"), 2, "staged employments"},
    {STAGED("BRIXMTD_Employments") " JOIN BRIXMTD_EmploymentsCompanyBenefits b ON b.lMTD_EmploymentsID = t.lID", 6,
     "staged company benefits"},
    {STAGED("BRIXMTD_PensionStateBenefits"), 7, "staged pensions and benefits"},
    {STAGED("BRIXMTD_TaxFreeAllowances"), 3, "staged allowances"},
};
const Expected kInsurance[] = {{STAGED("BRIXMTD_NIC"), 1, "staged National Insurance"}};
const Expected kSchedules[] = {
    {"SELECT lClientID FROM BRIXTaxForm", 1, "tax forms"},
    {SCHEDULE("BRIXNewEmploy"), 2, "employments"},
    {SCHEDULE("BRIXNewEmploy") " JOIN BRIXNewEmployBenefits b ON b.lNewEmployID = t.lID", 6, "company benefits"},
    {SCHEDULE("BRIXPensionStateBenefits"), 7, "pensions and benefits"},
};

class Race : public testing::Test
{
protected:
    Race()
    {
        MorvJson("practice create --sample --clients 1 " + m_practice);
        Open();
        AddClients(kClients - 1);
    }
    ~Race() override { Close(); }

    void Open() { Quarry::SetConnection(Cellar::CConnection::Open(CString(m_practice))); }
    static void Close()
    {
        CUserData::ClearPermissions();
        Quarry::SetConnection(nullptr);
    }

    template<std::size_t N>
    void ExpectRows(const Expected (&tables)[N])
    {
        Open();
        for (const Expected& each : tables) {
            std::map<std::int64_t, int> rows;
            for (const auto& row : Quarry::GetConnection().Queryf(each.clients).rows)
                ++rows[row[0].integer];
            int otherwise = kClients - static_cast<int>(rows.size());
            for (const auto& [client, count] : rows)
                otherwise += count != each.rows;
            EXPECT_EQ(otherwise, 0) << "clients with another number of " << each.table;
        }
        Close();
        const Ended check = RunMorv("practice check --json " + m_practice);
        EXPECT_EQ(check.exit, 0) << check.out << check.err;
    }

    const std::string m_practice = TempDir() + "/practice.db";
};

/// The starts of a round's processes after its own, in milliseconds: together, then ever further apart.
std::vector<int> Starts(int round, int processes)
{
    std::mt19937 random(static_cast<unsigned>(round));
    std::vector<int> starts(static_cast<std::size_t>(processes));
    for (int& start : starts)
        start = round == 0 ? 0 : std::uniform_int_distribution<>(0, 50)(random);
    return starts;
}

void Wait(int milliseconds) { std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds)); }

/// Whether each client was fetched for. What was not must have met another program's writing, and say so.
bool IsWhole(const Ended& ended)
{
    std::string problems;
    std::istringstream lines(ended.out);
    for (std::string line; std::getline(lines, line);)
        if (line.find("\"ok\":false") != std::string::npos || line.find("\"error\":") != std::string::npos) {
            EXPECT_NE(line.find(kBusy), std::string::npos) << line;
            problems += line;
        }
    EXPECT_EQ(ended.exit == 0, problems.empty()) << ended.exit << ": " << ended.err << problems;
    return ended.exit == 0;
}

using FetchRace = Race;

/// What a process of its own did with all clients.
enum class Did : int
{
    All,
    Busy,
    Failed
};

Did CreateAll(const std::string& practice)
{
    try {
        Quarry::SetConnection(Cellar::CConnection::Open(CString(practice)));
        CUserData::SetUser("alice");
        Brix::CClient clients;
        for (clients.Open(); !clients.IsEOL(); clients.MoveNext()) {
            HmrcApi::CPAYEPrepop prepop(ClientId(clients.GetID()), TaxYear(2018), {}, HmrcApi::IEndpointOverride::Live);
            prepop.CreateNewSchedules();
        }
        return Did::All;
    } catch (const std::exception& problem) {
        const bool isBusy = std::string(problem.what()).starts_with(kBusy);
        if (!isBusy)
            std::fprintf(stderr, "a process ended with: %s\n", problem.what());
        return isBusy ? Did::Busy : Did::Failed;
    }
}

pid_t StartCreating(const std::string& practice, int start)
{
    const pid_t child = fork();
    if (child == 0) {
        Wait(start);
        _exit(static_cast<int>(CreateAll(practice)));
    }
    return child;
}

Did WaitFor(pid_t child)
{
    int status = 0;
    waitpid(child, &status, 0);
    return WIFEXITED(status) ? static_cast<Did>(WEXITSTATUS(status)) : Did::Failed;
}

class CreateRace : public Race
{
protected:
    CreateRace()
    {
        Brix::CClient clients;
        const auto errors = std::make_shared<HmrcApi::CAPIErrorHandler>();
        for (clients.Open(); !clients.IsEOL(); clients.MoveNext()) {
            const CString number = clients.GetNINumber();
            HmrcApi::CPAYEPrepop prepop(ClientId(clients.GetID()), TaxYear(2018), number.Str(),
                                        HmrcApi::IEndpointOverride::Everything);
            prepop.GetPAYEData(number.Str(), errors, nullptr);
        }
        EXPECT_EQ(errors->GetErrorCount(), 0);
    }
};

} // namespace

TEST_F(FetchRace, StagesEachItemOfEachClientOnce)
{
    Close();
    HmrcSandbox sandbox("EVERYTHING");
    ASSERT_EQ(Authorise(m_practice, sandbox).exit, 0);
    Execute(m_practice, "PRAGMA wal_checkpoint(TRUNCATE)");
    const std::string authorised = ReadFile(m_practice);
    const std::string line =
        "hmrc fetch --all --json --gateway gateway-1 --year 2018 --base " + sandbox.Base() + ' ' + m_practice;
    for (int round = 0; round < Rounds(); ++round)
        for (const int processes : {2, 4}) {
            SCOPED_TRACE(testing::Message() << processes << " processes, round " << round);
            std::vector<std::unique_ptr<RunningMorv>> running;
            for (const int start : Starts(round, processes)) {
                Wait(start);
                running.push_back(std::make_unique<RunningMorv>(line));
            }
            bool isWhole = false;
            for (const auto& each : running)
                isWhole = IsWhole(each->Wait()) || isWhole;
            EXPECT_TRUE(isWhole || RunMorv(line).exit == 0) << "nobody else is writing";
            ExpectRows(kStaged);
            ExpectRows(kInsurance);
            WriteFile("practice.db", authorised);
        }
}

TEST_F(CreateRace, MakesEachScheduleOfEachClientOnce)
{
    Close(); // a process of its own has a connection of its own
    Execute(m_practice, "PRAGMA wal_checkpoint(TRUNCATE)");
    const std::string staged = ReadFile(m_practice);
    for (int round = 0; round < Rounds(); ++round)
        for (const int processes : {2, 4}) {
            SCOPED_TRACE(testing::Message() << processes << " processes, round " << round);
            std::vector<pid_t> children;
            for (const int start : Starts(round, processes))
                children.push_back(StartCreating(m_practice, start));
            bool isWhole = false;
            for (const pid_t child : children) {
                const Did did = WaitFor(child);
                EXPECT_NE(did, Did::Failed);
                isWhole = did == Did::All || isWhole;
            }
            EXPECT_TRUE(isWhole || WaitFor(StartCreating(m_practice, 0)) == Did::All) << "nobody else is writing";
            ExpectRows(kStaged);
            ExpectRows(kSchedules);
            WriteFile("practice.db", staged);
        }
}
