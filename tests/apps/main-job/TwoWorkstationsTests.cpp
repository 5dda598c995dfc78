// Programs that share an authority: at the same time, and on a full disk.

#include "apps/morv/Program.h"
#include "support/Databases.h"
#include "support/SmallDisk.h"

namespace
{

using namespace ::Test;

int CountRefreshes(HmrcSandbox& sandbox)
{
    int count = 0;
    for (const Json& request : Json::parse(sandbox.Send("GET", "/sandbox/requests", ""))) {
        count += request.value("grant_type", "") == "refresh_token";
        EXPECT_NE(request.value("code", ""), "invalid_grant");
    }
    return count;
}

using TwoWorkstations = OnDatabase;
ON_BOTH_DATABASES(TwoWorkstations);

// MORVUT_REFRESHES=200 for as many tries.
TEST_P(TwoWorkstations, UseOneRefreshBetweenThem)
{
    const unsigned rounds = Setting("MORVUT_REFRESHES", 4);
    HmrcSandbox sandbox("EVERYTHING");
    const std::string practice = AuthorisedPractice(sandbox);
    for (unsigned round = 0; round < rounds; ++round) {
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

// Who is second is told, and only one decision is on record.
TEST_P(TwoWorkstations, DecideOnOneDifferenceOnce)
{
    HmrcSandbox sandbox("EVERYTHING");
    const std::string practice = AuthorisedPractice(sandbox);
    const std::string client = practice + " --client 1 --year 2018";
    const auto fetch = [&](std::size_t pounds) {
        sandbox.Send("PUT", "/sandbox/answer/individual-paye/nino/AA000001B/annual-summary/2017-18",
                     R"({"employments": [{"employerPayeReference": "123/AB456", "taxablePayTotal": )" +
                         std::to_string(pounds) + "}]}");
        MorvJson(FetchLine(practice, sandbox));
    };
    fetch(100);
    MorvJson("hmrc create " + client);
    for (std::size_t round = 1; round <= 4; ++round) {
        fetch(100 + round);
        const Json differences = MorvJson("hmrc differences " + client)["differences"];
        ASSERT_EQ(differences.size(), 1U);
        const std::string line = "hmrc differences --json " + client + (round % 2 == 0 ? " --reject " : " --accept ") +
                                 differences[0]["number"].dump();
        RunningMorv first(line), second(line);
        int done = 0;
        for (RunningMorv* each : {&first, &second}) {
            const Ended ended = each->Wait();
            done += ended.exit == 0;
            EXPECT_TRUE(ended.exit == 0 || (ended.out + ended.err).find("NO_SUCH_DIFFERENCE") != std::string::npos)
                << ended.out << ended.err;
        }
        EXPECT_EQ(done, 1);
        EXPECT_EQ(MorvJson("hmrc history " + client).size(), round);
    }
}

TEST(Authority, OutlastsAFullDisk)
{
    const SmallDisk disk("8m");
    if (!disk.IsMounted())
        GTEST_SKIP() << "only root may mount a small disk";
    HmrcSandbox sandbox("EVERYTHING");
    const std::string practice = SamplePractice("disk/practice.db");
    ASSERT_EQ(Authorise(practice, sandbox).exit, 0);
    std::string shown;
    for (std::size_t left = 0; left <= 640; left += 16) {
        SCOPED_TRACE(left);
        sandbox.Send("POST", "/sandbox/token", R"({"expire": true})");
        disk.Leave(left * 1024);
        const Ended full = RunMorv(FetchLine(practice, sandbox));
        shown += full.out + full.err;
        disk.Free();
        const Ended again = RunMorv(FetchLine(practice, sandbox));
        ASSERT_EQ(again.exit, 0) << full.out << full.err << again.out << again.err;
    }
    EXPECT_NE(shown.find("cannot keep HMRC's tokens: the disk is full"), std::string::npos) << shown;
}

} // namespace
