// The fetch for many clients: four at once, ended by a signal or by HMRC's absence, killed and gone on with.

#include <algorithm>
#include <chrono>
#include <csignal>
#include <functional>
#include <set>
#include <sstream>
#include <thread>

#include "Afx/time/Clock.h"
#include "apps/main-job/FetchTest.h"
#include "MorvUt/hmrc/access/SharedPace.h"
#include "MorvUt/MorvUt.h"
#include "support/Practice.h"

namespace
{

using namespace ::Test;

constexpr int kClients = 12; // 1 of the sample practice, the others AA100001A to AA100011A

class Many : public OnDatabase
{
protected:
    Many()
    {
        MorvJson("practice create --sample --clients 1 " + m_practice);
        Quarry::SetConnection(OpenDatabase("practice.db"));
        AddClients(kClients - 1);
        EXPECT_EQ(Authorise(m_practice, m_sandbox).exit, 0);
    }
    ~Many() override { Quarry::SetConnection(nullptr); }

    std::string Line(const std::string& more = {}, const std::string& ofHmrc = {}) const
    {
        return "hmrc " + ofHmrc + "fetch --all --json --gateway gateway-1 --year 2018 --base " + m_sandbox.Base() +
               ' ' + m_practice + more;
    }
    void Fault(const std::string& path, const std::string& members)
    {
        m_sandbox.Send("POST", "/sandbox/fault", R"({"path": ")" + path + R"(", )" + members + '}');
    }
    void ClearFaults()
    {
        m_sandbox.Send("DELETE", "/sandbox/fault");
        m_sandbox.Send("DELETE", "/sandbox/requests");
    }
    /// The National Insurance numbers that were asked for, in that order.
    std::vector<std::string> Asked()
    {
        const std::string below = "/individual-paye/nino/";
        std::vector<std::string> asked;
        for (const Json& request : Json::parse(m_sandbox.Send("GET", "/sandbox/requests", "")))
            if (const std::string path = request["path"]; path.starts_with(below))
                asked.push_back(path.substr(below.size(), 9));
        return asked;
    }
    static void Await(const std::function<bool()>& isSo)
    {
        for (int i = 0; i < 600 && !isSo(); ++i)
            std::this_thread::sleep_for(std::chrono::milliseconds(25));
        EXPECT_TRUE(isSo());
    }
    static std::string Count(const Cellar::SqlText& of)
    {
        return Practice::Query(Cellar::SqlText("SELECT COUNT(*) FROM ") + of);
    }

    /// "1 ok, 2 failed, ..." of each line, by the client's place, and the summary.
    static std::string Told(const Ended& ended)
    {
        std::string told;
        std::istringstream lines(ended.out);
        for (std::string line; std::getline(lines, line);) {
            const Json json = Json::parse(line, nullptr, false);
            EXPECT_FALSE(json.is_discarded()) << line;
            told += json.contains("client") ? PlaceOf(json["client"]) + (json["ok"] == true ? " ok, " : " failed, ")
                                            : json["ok"].dump() + " of " + json["clients"].dump() + ", before " +
                                                  json["fetchedBefore"].dump() + ", left " + json["notAsked"].dump() +
                                                  ' ' + json["stopped"].dump();
        }
        return told;
    }

    static std::string PlaceOf(long client)
    {
        return Count(Cellar::SqlText("BRIXClient WHERE lID <= ") + Cellar::SqlText::Number(client));
    }

    const std::string m_practice = PracticeText("practice.db");
    HmrcSandbox m_sandbox{"EVERYTHING"};
};
ON_BOTH_DATABASES(Many);

using ManyInAFile = Many;
ON_EMBEDDED(ManyInAFile);

/// HMRC's pace for one practice.
class Pace : public OnPractice
{
protected:
    static std::int64_t Next()
    {
        const auto set = Quarry::GetConnection().Queryf("SELECT dtNext FROM MTDPace");
        return Cellar::ToDateTime(set.rows.at(0).at(0)).ToMilliseconds();
    }
};
ON_BOTH_DATABASES(Pace);

/// One client many times over: nothing depends on who it is.
class Absent : public FetchTest
{
protected:
    Absent() : FetchTest("EVERYTHING")
    {
        Afx::Clock::SetSleep([](unsigned milliseconds) { // on several threads
            std::this_thread::sleep_for(std::chrono::milliseconds(std::min(milliseconds, 5u)));
        });
    }
    HmrcApi::ManyFetched FetchMany()
    {
        m_told = 0;
        return HmrcApi::FetchManyFromHmrc(
            std::vector<ClientId>(kClients, m_client), kGateway,
            [this](std::size_t place, const HmrcApi::FetchResult&) { m_told += m_told == place ? 1 : 0; });
    }
    void ListenToNobody()
    {
        const std::string nobody = "http://127.0.0.1:1";
        HmrcApi::CClientData::SetLoopbackOverride(nobody);
        Practice::Sql("UPDATE MTDAuthorisation SET strService = %s", nobody);
    }

    std::size_t m_told = 0;
};

} // namespace

TEST_P(Many, GoesOnAfterAKillAndLeavesOutWhoWasFetched)
{
    Fault("/individual-paye/nino/AA100002A", R"("fault": "INTERNAL_SERVER_ERROR", "times": 2)");
    Fault("/individual-paye/nino/AA100005A", R"("fault": "SLOW", "times": 0, "delayMs": 60000)");
    RunningMorv killed(Line());
    Await([&] { return Count("BRIXMTD_TaxYear WHERE dtComplete IS NOT NULL") == "4"; });
    Await([&] { return Asked().size() == kClients + 1; }); // the third twice
    killed.Kill();
    EXPECT_EQ(Told(killed.Wait()), "1 ok, 2 ok, 3 failed, 4 ok, 5 ok, ") << "in the order of the clients";

    ClearFaults();
    const Ended goneOn = RunMorv(Line());
    EXPECT_EQ(goneOn.exit, 0) << goneOn.out << goneOn.err;
    EXPECT_EQ(Told(goneOn), "3 ok, 6 ok, 7 ok, 8 ok, 9 ok, 10 ok, 11 ok, 12 ok, 8 of 8, before 4, left 0 null");
    EXPECT_NE(goneOn.err.find("4 clients were fetched since"), std::string::npos) << goneOn.err;
    std::vector<std::string> asked = Asked();
    EXPECT_EQ(std::set<std::string>(asked.begin(), asked.end()).size(), 8u);
    EXPECT_EQ(asked.size(), 8u);
    EXPECT_EQ(Count("BRIXMTD_Employments"), std::to_string(2 * kClients));

    ClearFaults();
    EXPECT_EQ(RunMorv(Line()).exit, 0);
    EXPECT_EQ(Asked().size(), kClients + 0u) << "the run before had come to its end";
    EXPECT_EQ(Count("BRIXMTD_Employments"), std::to_string(2 * kClients));
}

TEST_P(ManyInAFile, AsksAboutFourAtOnceAndEndsWithThemOnASignal)
{
    Fault("/individual-paye", R"("fault": "SLOW", "times": 0, "delayMs": 1500)");
    RunningMorv running(Line());
    Await([&] { return Asked().size() >= 4; });
    std::this_thread::sleep_for(std::chrono::milliseconds(400));
    EXPECT_EQ(Asked().size(), 4u);
    running.Signal(SIGINT);
    const Ended ended = running.Wait();
    EXPECT_EQ(ended.exit, -SIGINT);
    EXPECT_EQ(Told(ended), R"(1 ok, 2 ok, 3 ok, 4 ok, 4 of 4, before 0, left 8 "cancelled")");
    EXPECT_NE(ended.err.find("it was cancelled; 8 clients were not asked about"), std::string::npos) << ended.err;

    ClearFaults();
    EXPECT_EQ(Told(RunMorv(Line(" --anew"))).find("1 ok, 2 ok, "), 0u) << "about everybody";
}

// The sandbox refuses what is more than three requests in a second.
TEST_P(ManyInAFile, TwoRunsAtOnceShareOnePace)
{
    Practice::Sql("DELETE FROM BRIXClient WHERE strCode > 'AA100001A' AND strCode < 'B'");
    m_sandbox.Send("POST", "/sandbox/throttle", R"({"on": true})");
    for (const char* const pace : {"--paced ", ""}) {
        ClearFaults();
        const auto begun = std::chrono::steady_clock::now();
        RunningMorv first(Line(" --anew", pace)), second(Line(" --anew", pace));
        EXPECT_EQ(first.Wait().exit, 0);
        EXPECT_EQ(second.Wait().exit, 0);
        const auto took = std::chrono::steady_clock::now() - begun;
        int answered = 0, refused = 0;
        for (const Json& request : Json::parse(m_sandbox.Send("GET", "/sandbox/requests", "")))
            ++(request["status"] == 200 ? answered : refused);
        EXPECT_EQ(answered, 2 * 2 * 2) << "two runs, clients and interfaces";
        EXPECT_EQ(refused == 0, *pace != 0) << refused << " refused";
        EXPECT_TRUE(*pace == 0 || took >= std::chrono::milliseconds(3000)) << "eight turns of half a second";
    }
}

TEST_F(Absent, EndsTheRunOnceItIsCertainAndNobodyElseIsBegunInDoubt)
{
    // what the sandbox is told, "PATH BODY; PATH BODY"; how the run ends, after how many clients
    for (const auto& [sent, absence, done, why] :
         Table<std::string, std::string, std::size_t>("apps/main-job/Absence.tsv")) {
        SCOPED_TRACE(why);
        std::istringstream requests(sent);
        for (std::string path, body; requests >> path && std::getline(requests, body, ';');)
            m_sandbox.Send("POST", path, body);
        if (sent.empty())
            ListenToNobody();
        const HmrcApi::ManyFetched fetched = FetchMany();
        EXPECT_EQ(NameOf(fetched.ended), absence);
        EXPECT_EQ(fetched.done, done);
        EXPECT_EQ(fetched.isAnyReached, !sent.empty());
        EXPECT_EQ(m_told, fetched.done) << "in the order of the clients";
        m_sandbox.Send("DELETE", "/sandbox/fault");
        if (absence == "noAuthority")
            Authorise();
    }
}

TEST_F(Absent, NobodyReadsOptionsOrAuthorityAgain)
{
    int options = 0, authority = 0;
    Quarry::GetConnection().OnSent([&](std::string_view sent) {
        options += sent.find("BRIXOptions") != sent.npos;
        authority += sent.find("MTDAuthorisation") != sent.npos;
    });
    EXPECT_EQ(FetchMany().done, kClients + 0u);
    EXPECT_EQ(options, 1);
    EXPECT_LE(authority, 4 + 1) << "whether there is one, by those who begin together; its tokens once";
    authority = 0;
    m_sandbox.Send("POST", "/sandbox/token", R"({"expire": true})");
    EXPECT_EQ(FetchMany().done, kClients + 0u);
    EXPECT_LE(authority, 4 + 1 + 4 * 8) << "and the refresh";
    Quarry::GetConnection().OnSent(nullptr);
}

TEST_P(Pace, GivesEachSecondToOneRunOnly)
{
    HmrcApi::TakeSharedSecond();
    std::int64_t before = Next();
    for (int turn = 1; turn < 6; ++turn) {
        Quarry::SetConnection(Practice::Open()); // as another program has it
        const std::int64_t wait = HmrcApi::TakeSharedSecond(), next = Next();
        EXPECT_GE(next - before, 1000) << "nobody else's second";
        EXPECT_LE(wait, 1000 * turn) << "none is left out";
        before = next;
    }
    Practice::Sql("UPDATE MTDPace SET dtNext = %t", COleDateTime(2999, 1, 1, 0, 0, 0));
    EXPECT_EQ(HmrcApi::TakeSharedSecond(), 0) << "the clock was set back";
}
