#include "Shellkit/NamedItems.h"

#include <atomic>
#include <chrono>
#include <memory>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

namespace
{

std::vector<std::string> g_events; // what creators and destroyers did, in order
std::atomic<int> g_made;

template<char Name>
void* Make()
{
    g_events.push_back(std::string("make ") + Name);
    return new std::string(1, Name);
}

void End(void* object)
{
    const std::unique_ptr<std::string> name(static_cast<std::string*>(object));
    g_events.push_back("end " + *name);
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
    static char key[] = "first";
    const auto spoilsTheKey = []() -> void* {
        key[0] = 'X';
        return Make<'a'>();
    };
    void* const item = GetGlobalDataItem(key, spoilsTheKey, End);
    EXPECT_EQ(GetGlobalDataItem("first", Make<'b'>, End), item);
    EXPECT_FALSE(GlobalItemExists(key));
    EXPECT_FALSE(DeleteGlobalItem(key));
    EXPECT_EQ(GetGlobalDataItem(key, nullptr, End), nullptr) << "asking whether one exists never makes it";
    EXPECT_NE(GetGlobalDataItem(nullptr, Make<'n'>, End), item);
    EXPECT_TRUE(GlobalItemExists(""));
    EXPECT_TRUE(DeleteGlobalItem("first"));
    EXPECT_FALSE(GlobalItemExists("first"));
    EXPECT_EQ(g_events, (Events{"make a", "make n", "end a"}));
}

TEST_F(NamedItems, WhatACreatorAskedForOutlivesItsItem)
{
    const auto overB = []() -> void* { return GetGlobalDataItem("b", Make<'b'>, End) ? Make<'a'>() : nullptr; };
    GetGlobalDataItem("a", overB, End);
    Shellkit::Shutdown();
    EXPECT_EQ(g_events, (Events{"make b", "make a", "end a", "end b"}));
}

TEST_F(NamedItems, AreThereOnlyOnceTheirCreatorIsDone)
{
    const auto thrower = []() -> void* { throw std::runtime_error("no"); };
    const auto nothing = []() -> void* { return nullptr; };
    const auto nested = []() -> void* {
        EXPECT_EQ(GetGlobalDataItem("a", Make<'x'>, End), nullptr) << "asks for its own item";
        EXPECT_FALSE(GlobalItemExists("a"));
        return Make<'a'>();
    };
    EXPECT_THROW(GetGlobalDataItem("a", thrower, End), std::runtime_error);
    EXPECT_EQ(GetGlobalDataItem("a", nothing, End), nullptr);
    EXPECT_FALSE(GlobalItemExists("a"));
    EXPECT_NE(GetGlobalDataItem("a", nested, End), nullptr) << "after a failure it may try again";
    EXPECT_EQ(g_events, (Events{"make a"}));
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

TEST_F(NamedItems, ThreadsThatAskAtOnceGetOneItem)
{
    const auto slow = []() -> void* {
        std::this_thread::sleep_for(std::chrono::milliseconds(20)); // the others ask meanwhile
        ++g_made;
        return &g_made;
    };
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i)
        threads.emplace_back([&] { EXPECT_EQ(GetGlobalDataItem("shared", slow, nullptr), &g_made); });
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(g_made, 1);
}
