// Two programs fetch with the same authority at the same time.

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

} // namespace
