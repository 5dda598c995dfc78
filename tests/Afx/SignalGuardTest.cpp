#include "Afx/system/SignalGuard.h"

#include <atomic>
#include <csignal>
#include <optional>
#include <thread>

#include <gtest/gtest.h>

namespace
{

std::atomic<int> g_arrived{0};
void Count(int) { ++g_arrived; }

} // namespace

TEST(SignalGuard, HoldsBackUntilTheLastOneEnds)
{
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
        SCOPED_TRACE(signal);
        const auto before = std::signal(signal, &Count);
        g_arrived = 0;
        std::optional<Afx::SignalGuard> outer(std::in_place);
        {
            const Afx::SignalGuard inner;
            EXPECT_FALSE(Afx::SignalGuard::IsSignalWaiting());
            std::thread([signal] { std::raise(signal); }).join(); // on whatever thread it arrives
        }
        EXPECT_TRUE(Afx::SignalGuard::IsSignalWaiting());
        EXPECT_EQ(g_arrived, 0);
        outer.reset();
        EXPECT_EQ(g_arrived, 1);
        EXPECT_FALSE(Afx::SignalGuard::IsSignalWaiting());

        std::signal(signal, SIG_IGN); // as nohup does
        outer.emplace();
        std::raise(signal);
        EXPECT_FALSE(Afx::SignalGuard::IsSignalWaiting());
        outer.reset();
        std::signal(signal, before);
    }
}

TEST(SignalGuard, LosesNoneWhenGuardsOfTwoThreadsBeginAndEnd)
{
    const auto before = std::signal(SIGTERM, &Count);
    g_arrived = 0;
    std::atomic<bool> isOver{false};
    std::thread other([&] {
        while (!isOver)
            const Afx::SignalGuard guard;
    });
    for (int raised = 1; raised <= 20'000 && g_arrived == raised - 1; ++raised) {
        {
            const Afx::SignalGuard guard;
            std::raise(SIGTERM);
        }
        for (int turn = 0; turn < 100'000 && g_arrived != raised; ++turn)
            std::this_thread::yield();
    }
    isOver = true;
    other.join();
    EXPECT_EQ(g_arrived, 20'000);
    std::signal(SIGTERM, before);
}
