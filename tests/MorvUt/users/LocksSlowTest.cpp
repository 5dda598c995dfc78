// Several processes want the same lock at once, and some are killed: one has it, and everybody can tell who.

#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <csignal>
#include <iostream>
#include <optional>
#include <random>

#include "Afx/system/Computer.h"
#include "MorvUt/users/FeatureLock.h"
#include "MorvUt/users/locks/LockList.h"
#include "MorvUt/users/locks/UserLockFile.h"
#include "MorvUt/users/UserData.h"
#include "support/Practice.h"

namespace
{

using Clock = std::chrono::steady_clock;

/// What the processes of a test tell each other.
struct Shared
{
    std::atomic<int> holders{0}, taken{0}, refused{0}, others{0}, faults{0}, arrived{0};
};

struct Recorder : Afx::WindowSystem
{
    int MessageBox(const std::string& text, unsigned style) override
    {
        last = text;
        return Afx::SafeAnswer(style);
    }
    static inline std::string last;
};

/// A practice without locks that processes open by its connection text.
class LockRace : public ::Test::OnDatabase
{
protected:
    LockRace()
    {
        const ::Test::Practice made;
        m_text = ::Test::ConnectionTextOf("practice.db");
    }
    ~LockRace() override { Quarry::SetConnection(nullptr); }

    /// Runs `work` in a process of its own, as user N at workstation DESKN, for at most two minutes.
    template<class Work>
    pid_t Start(int number, Work work) const
    {
        Quarry::SetConnection(nullptr); // no connection lives in two processes
        const pid_t child = fork();
        if (child != 0)
            return child;
        alarm(120);
        try {
            Quarry::SetConnection(Cellar::CConnection::Open(m_text));
            CUserLockFile::InitUserLocking(Quarry::GetConnection());
            CUserData::m_strUser.Format("%d", number);
            Afx::SetComputerName("DESK" + CUserData::m_strUser);
            work();
            Quarry::SetConnection(nullptr);
            _exit(0);
        } catch (const std::exception& error) {
            std::cerr << error.what() << '\n';
            _exit(1);
        }
    }
    std::vector<HeldLock> Locks() const
    {
        Quarry::SetConnection(Cellar::CConnection::Open(m_text));
        return ListLocks(Quarry::GetConnection());
    }
    /// A server notices within a moment that a process is gone.
    bool HasEnded(const CString& workstation) const
    {
        const auto runs = [&](const HeldLock& lock) {
            return lock.workstation == workstation && lock.isAlive != false;
        };
        for (int tries = 0; tries < 500; ++tries, usleep(10'000))
            if (const auto locks = Locks(); std::none_of(locks.begin(), locks.end(), runs))
                return true;
        return false;
    }
    /// All processes end well, and leave nothing.
    void ExpectCleanExit(const std::vector<pid_t>& children) const
    {
        for (const pid_t child : children) {
            int status = -1;
            EXPECT_TRUE(waitpid(child, &status, 0) == child && status == 0) << status;
        }
        EXPECT_EQ(m_shared.faults, 0);
        EXPECT_TRUE(Locks().empty());
    }
    void Expect(bool holds) const { m_shared.faults += holds ? 0 : 1; }

    void TryFeature(unsigned microseconds) const
    try {
        CFeatureLock lock(7, Quarry::GetConnection());
        CString holder = "nobody";
        if (lock.Lock(&holder)) {
            Expect(++m_shared.holders == 1);
            usleep(microseconds);
            --m_shared.holders;
            ++m_shared.taken;
        } else if (holder == "nobody") {
            Expect(Recorder::last.starts_with("Someone else has just finished"));
            ++m_shared.others;
        } else {
            Expect(holder != CUserData::m_strUser &&
                   Recorder::last == holder + " is using this at DESK" + holder + ".");
            ++m_shared.refused;
        }
    } catch (const Cellar::DatabaseError& error) {
        Expect(error.GetCategory() == Cellar::DatabaseError::Category::Busy);
        ++m_shared.others;
    }

    /// Two processes do this at once, step by step.
    void LogInAndOut(int pairs, int rows) const
    {
        auto meet = [this, met = 0]() mutable {
            ++m_shared.arrived;
            for (met += 2; m_shared.arrived < met;)
                usleep(20);
        };
        CMorvLockFile login;
        for (int pair = 0; pair < pairs; ++pair) {
            meet();
            Expect(login.AddLock("user of pair " + CString(std::to_string(pair))) == CUserLockFile::Held);
            meet();
            Expect(login.GetNumUsers() == rows && login.IsValidState() == (rows == 1));
            meet();
            login.RemoveLock();
        }
    }

    CString m_text;
    Shared& m_shared =
        *new (mmap(nullptr, sizeof(Shared), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0)) Shared;
};

ON_BOTH_DATABASES(LockRace);

// MORVUT_SECONDS=60 for a minute.
TEST_P(LockRace, OneOfEightHasTheFeature)
{
    const auto end = Clock::now() + std::chrono::seconds(::Test::Setting("MORVUT_SECONDS", 5));
    std::vector<pid_t> fighters;
    for (int number = 1; number <= 8; ++number)
        fighters.push_back(Start(number, [&] {
            Afx::WindowSystem::Install(std::make_unique<Recorder>());
            std::mt19937 random(static_cast<unsigned>(number));
            for (std::optional<Quarry::CTransaction> sheet; Clock::now() < end; sheet.reset()) {
                if (number % 2 == 0) // works in an open sheet
                    sheet.emplace();
                TryFeature(static_cast<unsigned>(random() % 2'000));
                usleep(static_cast<unsigned>(random() % 500));
            }
        }));
    ExpectCleanExit(fighters);
    std::cout << m_shared.taken << " taken, " << m_shared.refused << " refused with holder and workstation, "
              << m_shared.others << " released just then, or busy\n";
    EXPECT_TRUE(m_shared.taken > 0 && m_shared.refused > 0);
}

TEST_P(LockRace, AKilledHolderIsListedAndClearedByHand)
{
    pid_t holders[2];
    for (const int number : {0, 1})
        holders[number] = Start(number, [&] {
            CFeatureLock lock(number, Quarry::GetConnection());
            m_shared.taken += GetTrustTaxLockFile().AddLock(CUserData::m_strUser) == 0 && lock.Lock() == 1;
            pause();
        });
    while (m_shared.taken < 2)
        usleep(1'000);
    const auto end = [&](int number) {
        kill(holders[number], SIGKILL);
        waitpid(holders[number], nullptr, 0);
    };
    end(0);
    Afx::SetComputerName("DESK0");
    EXPECT_TRUE(HasEnded("DESK0"));
    for (const int number : {0, 1}) {
        Afx::SetComputerName("DESK" + CString(std::to_string(number))); // all are one computer here
        for (const HeldLock& lock : Locks())
            if (lock.workstation == Afx::GetComputerName()) {
                EXPECT_EQ(lock.isAlive, number == 1) << lock.key;
                EXPECT_TRUE(lock.age && *lock.age >= 0 && *lock.age < 60) << lock.key;
                EXPECT_TRUE(lock.isAlive == true || ClearLock(Quarry::GetConnection(), lock, "ann"));
            }
    }
    EXPECT_EQ(Locks().size(), 2U) << "the other's, which lives";
    EXPECT_EQ(CFeatureLock(0, Quarry::GetConnection()).Lock(), 1);
    end(1);
}

TEST_P(LockRace, PairsOfLogins)
{
    const int pairs = static_cast<int>(::Test::Setting("MORVUT_PAIRS", 200));
    for (const int unlimited : {0, 1}) {
        SetUnlimitedSameUserLogin(unlimited);
        m_shared.arrived = 0;
        std::vector<pid_t> pair;
        for (const int number : {1, 2})
            pair.push_back(Start(number, [&] { LogInAndOut(pairs, 1 + unlimited); }));
        ExpectCleanExit(pair);
    }
    SetUnlimitedSameUserLogin(0);
}

} // namespace
