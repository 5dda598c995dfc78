// Programs that share an authority: at the same time, ended within a refresh, at another service, on a full disk.

#include <chrono>
#include <csignal>
#include <thread>

#include <gtest/gtest.h>

#include "apps/morv/Program.h"

namespace
{

using namespace ::Test;

constexpr int kRounds = 4;

int CountRefreshes(HmrcSandbox& sandbox)
{
    int count = 0;
    for (const Json& request : Json::parse(sandbox.Send("GET", "/sandbox/requests", ""))) {
        count += request.value("grant_type", "") == "refresh_token";
        EXPECT_NE(request.value("code", ""), "invalid_grant");
    }
    return count;
}

TEST(TwoWorkstations, UseOneRefreshBetweenThem)
{
    HmrcSandbox sandbox("EVERYTHING");
    const std::string practice = AuthorisedPractice(sandbox);
    for (int round = 0; round < kRounds; ++round) {
        SCOPED_TRACE(round);
        sandbox.Send("POST", "/sandbox/token", R"({"expire": true})");
        // Long enough for the second to meet the first's lock.
        sandbox.Send("POST", "/sandbox/fault", R"({"path": "/oauth/token", "fault": "SLOW", "delayMs": 700})");
        sandbox.Send("DELETE", "/sandbox/requests");
        RunningMorv first(FetchLine(practice, sandbox, 1));
        RunningMorv second(FetchLine(practice, sandbox, 2));
        for (RunningMorv* each : {&first, &second}) {
            const Ended ended = each->Wait();
            EXPECT_EQ(ended.exit, 0) << ended.out << ended.err;
        }
        EXPECT_EQ(CountRefreshes(sandbox), 1);
    }
}

TEST(Authority, OutlastsAProgramThatIsToldToEndWithinARefresh)
{
    HmrcSandbox sandbox("EVERYTHING");
    const std::string practice = AuthorisedPractice(sandbox);
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
        SCOPED_TRACE(signal);
        sandbox.Send("POST", "/sandbox/token", R"({"expire": true})");
        sandbox.Send("POST", "/sandbox/fault", R"({"path": "/oauth/token", "fault": "SLOW", "delayMs": 1000})");
        sandbox.Send("DELETE", "/sandbox/requests");
        RunningMorv running(FetchLine(practice, sandbox));
        for (int tries = 0; CountRefreshes(sandbox) == 0 && tries < 200; ++tries)
            std::this_thread::sleep_for(std::chrono::milliseconds(20));
        running.Signal(signal);
        EXPECT_EQ(running.Wait().exit, -signal);
        const Ended ended = RunMorv(FetchLine(practice, sandbox));
        EXPECT_EQ(ended.exit, 0) << ended.out << ended.err;
        EXPECT_EQ(CountRefreshes(sandbox), 1) << "the pair was stored";
    }
}

TEST(Authority, IsShownToNoOtherService)
{
    HmrcSandbox sandbox("EVERYTHING"), other("EVERYTHING");
    const std::string practice = AuthorisedPractice(sandbox);
    sandbox.Send("POST", "/sandbox/token", R"({"expire": true})");
    EXPECT_EQ(RunMorv(FetchLine(practice, other)).exit, 1);
    EXPECT_TRUE(Json::parse(other.Send("GET", "/sandbox/requests", "")).empty());
    EXPECT_EQ(RunMorv(FetchLine(practice, sandbox)).exit, 0) << "still good for its own";
}

} // namespace
