// Several workstations fetch for, or make the schedules of, every client of one practice at once.

#include <chrono>
#include <memory>
#include <random>
#include <sstream>
#include <thread>

#include "apps/morv/Program.h"
#include "MorvUt/MorvUt.h"
#include "support/Practice.h"

namespace
{

using namespace ::Test;
using Cellar::SqlText;

constexpr int kClients = 50;
constexpr char kBusy[] = "another program is writing";

/// How many rows each client c must have after the answer with everything.
struct Expected
{
    int rows;
    SqlText from;
};

#define STAGED(table) table " t JOIN BRIXMTD_TaxYear y ON y.lID = t.lMTD_TaxYearID AND y.lClientID = c.lID"
#define SCHEDULE(table) table " t JOIN BRIXTaxForm f ON f.lID = t.lTaxFormID AND f.lClientID = c.lID"

const std::vector<Expected> kStaged{
    {1, "BRIXMTD_TaxYear y WHERE y.lClientID = c.lID"},
    {2, STAGED("BRIXMTD_Employments")},
    {6, STAGED("BRIXMTD_Employments") " JOIN BRIXMTD_EmploymentsCompanyBenefits b ON b.lMTD_EmploymentsID = t.lID"},
    {7, STAGED("BRIXMTD_PensionStateBenefits")},
    {3, STAGED("BRIXMTD_TaxFreeAllowances")},
};
const std::vector<Expected> kInsurance{{1, STAGED("BRIXMTD_NIC")}};
const std::vector<Expected> kSchedules{
    {1, "BRIXTaxForm f WHERE f.lClientID = c.lID"},
    {2, SCHEDULE("BRIXNewEmploy")},
    {6, SCHEDULE("BRIXNewEmploy") " JOIN BRIXNewEmployBenefits b ON b.lNewEmployID = t.lID"},
    {7, SCHEDULE("BRIXPensionStateBenefits")},
};

/// Milliseconds before each process of a round: together, then up to 50 apart.
std::vector<int> Pauses(int round, int processes)
{
    std::mt19937 random(static_cast<unsigned>(round));
    std::vector<int> pauses(static_cast<std::size_t>(processes));
    for (int& pause : pauses)
        pause = round == 0 ? 0 : static_cast<int>(random() % 51);
    return pauses;
}

/// Whether each client was done. What was not must have met another program's writing, and say so.
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

/// The test's database of this name as it is now, to be put back. Nobody may have it open.
class Kept
{
public:
    explicit Kept(const std::string& name) : m_name(name)
    {
        if (IsOnServer()) {
            ConnectionTextOf(kKept, NameOnServer(m_name));
            return;
        }
        Execute(PracticeText(m_name), "PRAGMA wal_checkpoint(TRUNCATE)");
        m_bytes = ReadFile(PracticeText(m_name));
    }
    void PutBack() const
    {
        if (!IsOnServer()) {
            WriteFile(m_name, m_bytes);
            return;
        }
        ExecuteOnServer("DROP DATABASE " + NameOnServer(m_name) + " WITH (FORCE)");
        ExecuteOnServer("CREATE DATABASE " + NameOnServer(m_name) + " TEMPLATE " + NameOnServer(kKept));
    }

private:
    static constexpr char kKept[] = "kept";
    std::string m_name, m_bytes;
};

class Race : public OnDatabase
{
protected:
    Race()
    {
        MorvJson("practice create --sample --clients 1 " + m_practice);
        Open();
        AddClients(kClients - 1);
    }
    ~Race() override { Close(); }

    static void Open() { Quarry::SetConnection(OpenDatabase(kName)); }
    static void Close()
    {
        CUserData::ClearPermissions();
        Quarry::SetConnection(nullptr);
    }

    /// In each round several processes do the same to the same practice; then each client must have the rows.
    void Run(const std::string& command, const std::vector<Expected>& expected)
    {
        Close(); // a process of its own has a connection of its own
        const std::string line = command + " --json --year 2018 " + m_practice;
        const Kept before(kName);
        const int rounds = static_cast<int>(Setting("MORVUT_RACES", 1)); // in 32 every distance in time is met
        for (int round = 0; round < rounds; ++round)
            for (const int processes : {2, 4}) {
                SCOPED_TRACE(testing::Message() << processes << " processes, round " << round);
                std::vector<std::unique_ptr<RunningMorv>> running;
                for (const int pause : Pauses(round, processes)) {
                    std::this_thread::sleep_for(std::chrono::milliseconds(pause));
                    running.push_back(std::make_unique<RunningMorv>(line));
                }
                bool isWhole = false;
                for (const auto& each : running)
                    isWhole = IsWhole(each->Wait()) || isWhole;
                EXPECT_TRUE(isWhole || IsWhole(RunMorv(line))) << "nobody else is writing";
                ExpectRows(kStaged);
                ExpectRows(expected);
                before.PutBack();
            }
    }

    void ExpectRows(const std::vector<Expected>& tables)
    {
        Open();
        EXPECT_EQ(Practice::Query("SELECT COUNT(*) FROM BRIXClient"), std::to_string(kClients));
        for (const Expected& each : tables)
            EXPECT_EQ(Practice::Query("SELECT c.lID FROM BRIXClient c WHERE (SELECT COUNT(*) FROM " + each.from +
                                      ") <> " + SqlText::Number(each.rows)),
                      "")
                << "clients with another number than " << each.rows << " of " << each.from.View();
        Close();
        const Ended check = RunMorv("practice check --json " + m_practice);
        EXPECT_EQ(check.exit, 0) << check.out << check.err;
    }

    const std::string m_practice = PracticeText(kName);

private:
    static constexpr char kName[] = "practice.db";
};

ON_BOTH_DATABASES(Race);

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

ON_BOTH_DATABASES(CreateRace);

} // namespace

TEST_P(Race, StagesEachItemOfEachClientOnce)
{
    Close();
    HmrcSandbox sandbox("EVERYTHING");
    ASSERT_EQ(Authorise(m_practice, sandbox).exit, 0);
    Run("hmrc fetch --all --gateway gateway-1 --base " + sandbox.Base(), kInsurance);
}

TEST_P(CreateRace, MakesEachScheduleOfEachClientOnce) { Run("hmrc create --all", kSchedules); }
