#include "Shellkit/NamedItems.h"

#include <atomic>
#include <chrono>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

namespace
{

std::vector<std::string> g_events; // what creators and destroyers did, in order
std::atomic<int> g_made;

struct Named
{
    std::string name;
};

template<char Name>
void* Make()
{
    g_events.push_back(std::string("make ") + Name);
    return new Named{std::string(1, Name)};
}

void End(void* object)
{
    g_events.push_back("end " + static_cast<Named*>(object)->name);
    delete static_cast<Named*>(object);
}

void* MakeOverB()
{
    EXPECT_NE(GetGlobalDataItem("b", Make<'b'>, End), nullptr);
    return Make<'a'>();
}

using Events = std::vector<std::string>;

class NamedItems : public testing::Test
{
protected:
    void SetUp() override
    {
        Shellkit::Shutdown();
        g_events.clear();
        g_made = 0;
    }
    void TearDown() override { Shellkit::Shutdown(); }
};

} // namespace

TEST_F(NamedItems, AreMadeOncePerKeyAndTheKeyIsCopied)
{
    char key[] = "first";
    void* const item = GetGlobalDataItem(key, Make<'a'>, End);
    key[0] = 'X';
    EXPECT_EQ(GetGlobalDataItem("first", Make<'b'>, End), item);
    EXPECT_FALSE(GlobalItemExists(key));
    EXPECT_NE(GetGlobalDataItem(nullptr, Make<'n'>, End), item);
    EXPECT_TRUE(GlobalItemExists(""));
    EXPECT_EQ(g_events, (Events{"make a", "make n"}));
}

TEST_F(NamedItems, AskingWhetherOneExistsNeverMakesIt)
{
    EXPECT_FALSE(GlobalItemExists("a"));
    EXPECT_EQ(GetGlobalDataItem("a", nullptr, End), nullptr);
    EXPECT_FALSE(DeleteGlobalItem("a"));
    GetGlobalDataItem("a", Make<'a'>, End);
    EXPECT_TRUE(GlobalItemExists("a"));
    EXPECT_TRUE(DeleteGlobalItem("a"));
    EXPECT_FALSE(GlobalItemExists("a"));
    EXPECT_EQ(g_events, (Events{"make a", "end a"}));
}

TEST_F(NamedItems, WhatACreatorAskedForOutlivesItsItem)
{
    GetGlobalDataItem("a", MakeOverB, End);
    Shellkit::Shutdown();
    EXPECT_EQ(g_events, (Events{"make b", "make a", "end a", "end b"}));
}

TEST_F(NamedItems, ACreatorThatAsksForItsOwnItemGetsNull)
{
    const auto creator = []() -> void* {
        EXPECT_EQ(GetGlobalDataItem("self", Make<'x'>, End), nullptr);
        EXPECT_FALSE(GlobalItemExists("self"));
        return Make<'a'>();
    };
    EXPECT_NE(GetGlobalDataItem("self", creator, End), nullptr);
    EXPECT_EQ(g_events, (Events{"make a"}));
}

TEST_F(NamedItems, AFailedCreatorLeavesNothingAndMayTryAgain)
{
    const auto thrower = []() -> void* { throw std::runtime_error("no"); };
    EXPECT_THROW(GetGlobalDataItem("a", thrower, End), std::runtime_error);
    EXPECT_EQ(GetGlobalDataItem(
                  "a", []() -> void* { return nullptr; }, End),
              nullptr);
    EXPECT_FALSE(GlobalItemExists("a"));
    EXPECT_NE(GetGlobalDataItem("a", Make<'a'>, End), nullptr);
}

TEST_F(NamedItems, AreOutOfTheStoreBeforeTheirDestroyerRuns)
{
    const auto destroyer = [](void* object) {
        EXPECT_FALSE(GlobalItemExists("a"));
        EXPECT_FALSE(DeleteGlobalItem("a"));
        GetGlobalDataItem("late", Make<'l'>, End);
        End(object);
    };
    GetGlobalDataItem("old", Make<'o'>, End);
    GetGlobalDataItem("a", Make<'a'>, destroyer);
    Shellkit::Shutdown(); // also ends what destroyers make
    EXPECT_EQ(g_events, (Events{"make o", "make a", "make l", "end a", "end l", "end o"}));
}

namespace
{

void Revive(void*);
void* MakeReviving()
{
    ++g_made;
    return &g_made;
}
void Revive(void*)
{
    if (g_made < 100'000) // a store without a bound ends the test all the same
        GetGlobalDataItem("phoenix", MakeReviving, Revive);
}

} // namespace

TEST_F(NamedItems, ShutdownGivesUpOnAnItemThatRevivesItself)
{
    GetGlobalDataItem("phoenix", MakeReviving, Revive);
    Shellkit::Shutdown();
    EXPECT_LT(g_made, 2'000);
    g_made = 100'000; // lets it go
    EXPECT_TRUE(DeleteGlobalItem("phoenix"));
}

TEST_F(NamedItems, ThreadsThatAskAtOnceGetOneItem)
{
    std::atomic<int> waiting{4};
    void* seen[4] = {};
    std::vector<std::thread> threads;
    for (void*& mine : seen) {
        threads.emplace_back([&mine, &waiting] {
            --waiting;
            while (waiting > 0)
                std::this_thread::yield();
            mine = GetGlobalDataItem(
                "shared",
                []() -> void* {
                    ++g_made;
                    std::this_thread::sleep_for(std::chrono::milliseconds(5));
                    return &g_made;
                },
                nullptr);
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(g_made, 1);
    for (void* const item : seen)
        EXPECT_EQ(item, &g_made);
}

TEST_F(NamedItems, AFlagIsApartFromItemsOfItsName)
{
    EXPECT_FALSE(Shellkit::GetSharedFlag("pin"));
    GetGlobalDataItem("pin", Make<'p'>, End);
    EXPECT_FALSE(Shellkit::GetSharedFlag("pin"));
    Shellkit::SetSharedFlag("pin", true);
    Shellkit::SetSharedFlag("pin", true);
    EXPECT_TRUE(Shellkit::GetSharedFlag("pin"));
    Shellkit::SetSharedFlag("pin", false);
    EXPECT_FALSE(Shellkit::GetSharedFlag("pin"));
    EXPECT_TRUE(GlobalItemExists("pin"));
}
