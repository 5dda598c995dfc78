// Several processes write one practice at once, and some are killed: nothing is lost, nothing is half written.

#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <iostream>
#include <random>
#include <thread>

#include "NewPractice.h"

namespace
{

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;

class ManyProcesses : public NewPractice
{
protected:
    ManyProcesses()
    {
        ::Test::Add<Brix::CPFile>([](Brix::CPFile& row) { row.SetYear(2018); });
        Quarry::SetConnection(nullptr); // no connection lives in two processes
        EXPECT_EQ(pipe(m_pipe), 0);
    }

    pid_t Start(Clock::duration time)
    {
        const pid_t child = fork();
        if (child == 0)
            Work(Clock::now() + time);
        return child;
    }

    /// What the workers told, against what is there. Each that was killed may have done one thing more of each.
    void ExpectAllThere(long killed)
    {
        close(m_pipe[1]);
        std::map<char, long> told;
        for (char event; read(m_pipe[0], &event, 1) == 1;)
            ++told[event];
        close(m_pipe[0]);
        std::cout << told['a'] << " added, " << told['c'] << " counted, " << told['t']
                  << " told that another changed it, " << told['b'] << " busy\n";
        Quarry::SetConnection(Open());
        EXPECT_EQ(Brix::CheckPractice(Quarry::GetConnection()).size(), 0U);
        const long forms = Cellar::ToLong(Single("SELECT COUNT(*) FROM BRIXTaxForm"));
        const long counted = Cellar::ToLong(Single("SELECT COALESCE(nValue, 0) FROM BRIXPFile"));
        EXPECT_EQ(Cellar::ToLong(Single("SELECT COUNT(*) FROM BRIXClient")), forms);
        EXPECT_TRUE(forms > 0 && forms >= told['a'] && forms <= told['a'] + killed) << forms;
        EXPECT_TRUE(counted >= told['c'] && counted <= told['c'] + killed) << counted;
    }

private:
    static void AddClient()
    {
        Quarry::CTransaction transaction(Cellar::Intent::Write);
        const long client = ::Test::Add<Brix::CClient>([](Brix::CClient& row) { row.SetName("Ann"); });
        ::Test::Add<Brix::CTaxForm>([&](Brix::CTaxForm& form) { form.SetClientID(client); });
        transaction.Commit();
    }
    static void CountUp()
    {
        Brix::CPFile shared;
        shared.Open();
        shared.SetValue(shared.GetValue() + 1);
        shared.Update();
    }

    [[noreturn]] void Work(Clock::time_point end)
    try {
        Quarry::SetConnection(Open());
        for (bool adds = true; adds || Clock::now() < end; adds = !adds) { // once however slowly it was opened
            char event = adds ? 'a' : 'c';
            try {
                adds ? AddClient() : CountUp();
            } catch (const Quarry::ChangedByAnotherUser&) {
                event = 't';
            } catch (const Cellar::DatabaseError& error) {
                if (error.GetCategory() != Cellar::DatabaseError::Category::Busy)
                    throw;
                event = 'b';
            }
            if (write(m_pipe[1], &event, 1) != 1)
                _exit(2);
        }
        _exit(0);
    } catch (const std::exception& error) {
        std::cerr << error.what() << '\n';
        _exit(1);
    }

    int m_pipe[2] = {};
};

ON_BOTH_DATABASES(ManyProcesses);

// MORVUT_SECONDS=60 for a minute.
TEST_P(ManyProcesses, WriteOnePracticeAndLoseNothing)
{
    std::vector<pid_t> workers(8);
    for (pid_t& worker : workers)
        worker = Start(std::chrono::seconds(::Test::Setting("MORVUT_SECONDS", 5)));
    ExpectAllThere(0);
    for (const pid_t worker : workers) {
        int status = 0;
        EXPECT_TRUE(waitpid(worker, &status, 0) == worker && status == 0);
    }
}

TEST_P(ManyProcesses, KilledAtAnyMomentLeaveASoundPractice)
{
    const unsigned kills = ::Test::Setting("MORVUT_KILLS", 5) * 4;
    const unsigned seed = ::Test::Setting("MORVUT_SEED", std::random_device{}());
    std::cout << "seed " << seed << " (MORVUT_SEED repeats it), " << kills << " kills\n";
    std::mt19937 random(seed);
    for (unsigned kill = 0; kill < kills; ++kill) {
        const pid_t one = Start(1min), other = Start(100ms);
        std::this_thread::sleep_for(std::chrono::microseconds(random() % 120'000));
        ::kill(one, SIGKILL);
        waitpid(one, nullptr, 0);
        waitpid(other, nullptr, 0);
    }
    ExpectAllThere(kills);
}

} // namespace
