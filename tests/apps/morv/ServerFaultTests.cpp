// A connection to a server that is lost.

#include <functional>
#include <future>
#include <thread>

#include "apps/morv/Program.h"
#include "support/Databases.h"

namespace
{

using namespace Test;

using ServerFaults = OnDatabase;
ON_SERVER(ServerFaults);

/// The server ends the sessions of the practice while HMRC is slow to answer.
TEST_P(ServerFaults, ALostConnectionStagesNothing)
{
    const std::string practice = SamplePractice("firm");
    HmrcSandbox sandbox("EVERYTHING");
    EXPECT_EQ(Authorise(practice, sandbox).exit, 0);
    for (const char* const path : {"/individual-paye", "/oauth/token"})
        sandbox.Send("POST", "/sandbox/fault",
                     ReplacedAll(R"({"path": "PATH", "fault": "SLOW", "delayMs": 1500, "times": -1})", "PATH", path));
    const std::string fetch = FetchLine(practice, sandbox) + " --json";
    const Case<std::function<Ended()>, const char*> rows[] = {
        {[&] { return RunMorv(fetch); }, "/message", "fetch"},
        {[&] { return RunMorv(ReplacedAll(fetch, "--client 1", "--all")); }, "/message", "fetch --all"},
        {[&] { return Authorise(practice, sandbox); }, "/error/message", "authorise"},
    };
    const auto server = Cellar::CConnection::Open(OnServer("postgres"));
    const auto isEnded = [&] {
        return !server
                    ->Queryf("SELECT pg_terminate_backend(pid) FROM pg_stat_activity WHERE datname = %s AND "
                             "state = 'idle' AND clock_timestamp() - state_change > CAST('0.5 s' AS interval)",
                             TheDatabases().made[0].second)
                    .rows.empty();
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.why);
        auto running = std::async(std::launch::async, row.in);
        for (int i = 0; i < 200 && !isEnded(); ++i)
            std::this_thread::sleep_for(std::chrono::milliseconds(50));
        const Ended ended = running.get();
        EXPECT_EQ(ended.exit, 3) << ended.out << ended.err;
        const Json first = Json::parse(ended.out.substr(0, ended.out.find('\n')), nullptr, false);
        const std::string told = first.value(Json::json_pointer(row.out), "");
        EXPECT_NE(told.find("open the practice again"), std::string::npos) << ended.out;
        EXPECT_EQ(ended.err.find(told), ended.err.rfind(told)) << "once: " << ended.err;
        EXPECT_NE(ended.err.find(told), std::string::npos) << ended.err;
        const auto staged = OpenDatabase("firm")->Queryf("SELECT 1 FROM BRIXMTD_Employments");
        EXPECT_TRUE(staged.rows.empty());
        EXPECT_EQ(MorvJson("practice check " + practice)["ok"], true);
    }
    EXPECT_EQ(Authorise(practice, sandbox).exit, 0) << "again";
    EXPECT_EQ(RunMorv(fetch).exit, 0) << "again";
}

} // namespace
