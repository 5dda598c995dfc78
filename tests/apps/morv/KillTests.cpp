// A fetch that is killed at any moment leaves a practice that opens, is sound, and can be fetched for again.

#include <chrono>
#include <iostream>
#include <random>
#include <thread>

#include "apps/morv/Program.h"
#include "support/Test.h"

namespace
{

using namespace Test;
using Clock = std::chrono::steady_clock;

// The next fetch completes; after a kill within a refresh it may say instead that authority must be given again.
void ExpectRecovery(const std::string& practice, HmrcSandbox& sandbox)
{
    EXPECT_EQ(MorvJson("practice check " + practice)["ok"], true);
    const std::string line = FetchLine(practice, sandbox) + " --json";
    Ended ended = RunMorv(line);
    if (ended.exit != 0) {
        const std::string why = ended.Document().dump();
        EXPECT_TRUE(why.find("INVALID_GRANT") != std::string::npos ||
                    why.find("not enabled for this user") != std::string::npos)
            << why << ended.err;
        ASSERT_EQ(Authorise(practice, sandbox).exit, 0);
        ended = RunMorv(line);
    }
    EXPECT_EQ(ended.exit, 0) << ended.out << ended.err;
    const Json staged = MorvJson("client show " + practice + " --client 1 --year 2018")["staged"];
    EXPECT_EQ(staged["employments"].size(), 2u);
    EXPECT_EQ(staged["pensionsAndBenefits"].size(), 7u);
    EXPECT_EQ(staged["taxFreeAllowances"].size(), 3u);
}

TEST(Kill, APracticeSurvivesAKillAtAnyMomentOfAFetch)
{
    const unsigned kills = Setting("MORVUT_KILLS", 5);
    const unsigned seed = Setting("MORVUT_SEED", std::random_device{}());
    std::cout << "seed " << seed << " (MORVUT_SEED repeats it), " << kills << " kills\n";
    std::mt19937 random(seed);

    HmrcSandbox sandbox("EVERYTHING");
    const std::string practice = AuthorisedPractice(sandbox);
    const auto begun = Clock::now();
    ASSERT_EQ(RunMorv(FetchLine(practice, sandbox)).exit, 0);
    const auto length = std::chrono::duration_cast<std::chrono::microseconds>(Clock::now() - begun).count();

    for (unsigned kill = 0; kill < kills; ++kill) {
        if (kill % 2 == 0) // in a fetch whose token has expired, so that the refresh is hit too
            sandbox.Send("POST", "/sandbox/token", R"({"expire":true})");
        const auto after = std::uniform_int_distribution<long long>(0, length)(random);
        SCOPED_TRACE("killed after " + std::to_string(after) + " of " + std::to_string(length) + " microseconds");
        RunningMorv running(FetchLine(practice, sandbox));
        std::this_thread::sleep_for(std::chrono::microseconds(after));
        running.Kill();
        running.Wait();
        ExpectRecovery(practice, sandbox);
    }
}

} // namespace
