// morv year roll-forward twice at once, interrupted and killed, by the rows that it leaves.

#include <chrono>
#include <csignal>
#include <random>
#include <thread>

#include "apps/morv/Program.h"
#include "MorvUt/enquiries/RandomOwners.h"
#include "support/Practice.h"

namespace
{

using namespace Test;
using ProgramClock = std::chrono::steady_clock;

class RollForwardProgram : public OnDatabase
{
protected:
    ~RollForwardProgram() override { Quarry::SetConnection(nullptr); }

    /// A practice with work of the year before; the same each time.
    std::string NewPractice(const std::string& name)
    {
        const std::string practice = PracticeText(name);
        MorvJson("practice create --sample --clients 1 " + practice);
        Quarry::SetConnection(OpenDatabase(name));
        AddRandomOwners(11, 60, 2025);
        return "year roll-forward --year 2025 --json " + practice;
    }
};
ON_BOTH_DATABASES(RollForwardProgram);

} // namespace

// MORVUT_KILLS=50 for as many.
TEST_P(RollForwardProgram, GoesOnAfterItWasInterruptedOrKilledBesideAnother)
{
    const std::string whole = NewPractice("undisturbed.db");
    const auto began = ProgramClock::now();
    const Json once = MorvJson(whole);
    const auto length = ProgramClock::now() - began;
    EXPECT_GT(once["sources"], 60);
    const std::string undisturbed = WorkInPractice();

    const std::string line = NewPractice("practice.db");
    const unsigned seed = Setting("MORVUT_SEED", std::random_device{}());
    SCOPED_TRACE("MORVUT_SEED=" + std::to_string(seed));
    std::mt19937 random(seed);
    for (unsigned kill = Setting("MORVUT_KILLS", 3); kill > 0; --kill) {
        RunningMorv killed(line), interrupted(line);
        std::this_thread::sleep_for(length * std::uniform_real_distribution<>(0, 1)(random));
        killed.Kill();
        interrupted.Signal(SIGINT);
        killed.Wait();
        const Ended ended = interrupted.Wait();
        if (ended.exit < 0) // before it was ready to be asked
            continue;
        const Json told = ended.Document();
        EXPECT_EQ(ended.exit, told["stopped"].is_null() ? 0 : 1) << ended.out << ended.err;
        EXPECT_EQ(told["clients"].get<int>() + told["left"].get<int>(), once["clients"].get<int>());
    }
    RunningMorv first(line), second(line);
    for (RunningMorv* each : {&first, &second})
        EXPECT_EQ(each->Wait().exit, 0);
    EXPECT_EQ(WorkInPractice(), undisturbed);
    const Json again = MorvJson(line);
    EXPECT_TRUE(again["sources"] == 0 && again["tasks"] == 0 && again["enquiries"] == 0) << again;
}
