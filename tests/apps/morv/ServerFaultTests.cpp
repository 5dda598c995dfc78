// What goes wrong with a practice on a server, as its users are told of it: one line, a code, an exit code.

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <algorithm>
#include <filesystem>
#include <functional>
#include <future>
#include <thread>

#include "apps/morv/Program.h"
#include "Brix/Schema.h"
#include "support/Case.h"
#include "support/Databases.h"

namespace
{

using namespace Test;

class ServerFaults : public OnDatabase
{
protected:
    static void ExpectError(const Ended& ended, int exit, const char* code, const std::string& words)
    {
        EXPECT_EQ(ended.exit, exit) << ended.out << ended.err;
        const Json error = ended.Document()["error"];
        EXPECT_EQ(error["code"], code) << ended.out;
        EXPECT_NE(ended.err.find(words), std::string::npos) << ended.err;
        EXPECT_EQ(std::count(ended.err.begin(), ended.err.end(), '\n'), 1) << ended.err;
        EXPECT_EQ((ended.out + ended.err).find("s3cret"), std::string::npos) << ended.out << ended.err;
    }
    std::string With(const char* from, const std::string& to) const { return ReplacedAll(practice, from, to); }

    const std::string password = "PasswordFile=" + WriteFile("password", "test\n");
    const std::string practice = "'" + ReplacedAll(ConnectionTextOf("firm").Str(), "PWD=test", password) +
                                 ";KeyFile=" + TempDir() + "/firm.key'";
};
ON_SERVER(ServerFaults);

TEST_P(ServerFaults, APracticeThatCannotBeOpenedIsExit3)
{
    MorvJson("practice create " + practice);
    OpenDatabase("firm")->Script("UPDATE BRIXSchema SET nVersion = 1000000");
    struct Expected
    {
        const char *code, *words;
    };
    const Case<std::string, Expected> rows[] = {
        {practice, {"NEWER_SCHEMA", "Update this program"}, "newer schema"},
        {With("PasswordFile=", "PWD=s3cret;Else="), {"CANNOT_OPEN", "check UID and the password"}, "wrong password"},
        {With("PasswordFile=", "SSLmode=verify-full;PasswordFile="), {"CANNOT_OPEN", "check SSLmode"}, "no encryption"},
        {With("Port=", "Port=1;Else="), {"CANNOT_OPEN", "check Servername and Port"}, "nobody listens"},
        {With("PostgreSQL Unicode", "Nonesuch"), {"CANNOT_OPEN", "install the driver"}, "no driver"},
    };
    for (const auto& row : rows)
        for (const char* const line :
             {"client list PRACTICE", "practice check PRACTICE", "practice options PRACTICE bCFStaff=1"}) {
            SCOPED_TRACE(std::string(row.why) + ": " + line);
            ExpectError(RunMorv(ReplacedAll(line, "PRACTICE", row.in) + " --json"), 3, row.out.code, row.out.words);
        }
}

/// The server ends the sessions of the practice while HMRC is slow to answer.
TEST_P(ServerFaults, ALostConnectionStagesNothing)
{
    MorvJson("practice create " + practice + " --sample");
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

/// A name of this machine that does not say so: a number.
TEST_P(ServerFaults, ADoctorWarnsOfAWayThatAnybodyMayStandIn)
{
    MorvJson("practice create " + practice);
    const Ended ended = RunMorv("doctor --json " + With("127.0.0.1", "2130706433"));
    EXPECT_EQ(ended.exit, 1) << ended.err;
    std::string bad;
    for (const Json& finding : ended.Document())
        if (finding["ok"] != true)
            bad += finding["check"].get<std::string>() + ": " + finding["action"].get<std::string>() + '\n';
    EXPECT_TRUE(bad.starts_with("encryption: Add SSLmode=verify-full")) << bad;
    EXPECT_EQ(std::count(bad.begin(), bad.end(), '\n'), 1) << bad;
}

#ifdef CELLAR_ODBC_FAKE
/// What a server with a full disk answers, as its driver tells it.
TEST(ServerDisk, AFullOneIsOneErrorAndNothingIsHalfWritten)
{
    const std::string folder = TempDir(), library = folder + "/psqlodbc.so";
    std::filesystem::create_symlink(CELLAR_ODBC_FAKE, library);
    WriteFile("firm.key", std::string(64, 'a') + "\n");
    chmod((folder + "/firm.key").c_str(), 0600);
    const std::string text = "'odbc:Driver=" + library + ";Script=" + folder + "/script;Record=" + folder +
                             "/record;PWD=s3cret;KeyFile=" + folder + "/firm.key'";
    const std::string full = "error 53100 0 ERROR: could not extend file \"base/1/2\": No space left on device\n";
    const std::string there = "on SELECT * FROM \"brixschema\"*\ncolumns nVersion:int vbKeyCheck:varbinary\nrow " +
                              std::to_string(Brix::kSchemaVersion) + "|null\n";
    const Case<std::pair<std::string, std::string>, int> rows[] = {
        {{"practice create PRACTICE", "on CREATE TABLE*\n" + full}, 3, "in the middle of the schema"},
        {{"practice create PRACTICE", "on SELECT nextval*\ncolumns n:int\nrow 33\non COMMIT*\n" + full + "ends\n"},
         3,
         "at its end"},
        {{"practice options PRACTICE bCFStaff=1", there + "on UPDATE*\n" + full + "on INSERT*\n" + full},
         3,
         "a change"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.why);
        std::filesystem::remove(folder + "/record");
        WriteFile("script", "dbms PostgreSQL\n" + row.in.second);
        const Ended ended = RunMorv(ReplacedAll(row.in.first, "PRACTICE", text) + " --json");
        EXPECT_EQ(ended.exit, row.out) << ended.out << ended.err;
        EXPECT_EQ(ended.Document()["error"]["code"], "READ_ONLY") << ended.out;
        EXPECT_NE(ended.err.find("the server's disk is full; tell its administrator"), std::string::npos) << ended.err;
        EXPECT_EQ(std::count(ended.err.begin(), ended.err.end(), '\n'), 1) << ended.err;
        EXPECT_EQ((ended.out + ended.err).find("s3cret"), std::string::npos) << ended.err;
        EXPECT_EQ(ReadFile(folder + "/record").find("DURABLE"), std::string::npos) << ReadFile(folder + "/record");
    }
}
#endif

} // namespace
