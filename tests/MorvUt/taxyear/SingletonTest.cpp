#include "MorvUt/taxyear/Singleton.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace
{

int g_alive = 0, g_listening = 0;

struct CountedData
{
    virtual ~CountedData() = default;
    int figure = 0;
};

class Counted : public CSingleton<CountedData, Counted>
{
public:
    ~Counted() override { --g_alive; }
    void AddListeners() override
    {
        if (refuse)
            throw std::runtime_error("no database");
        ++g_listening;
    }
    void RemoveListeners() override { --g_listening; }
    CountedData& Data() { return m_data; }
    inline static bool refuse = false;

private:
    friend class CSingleton<CountedData, Counted>;
    Counted() { ++g_alive; }
};

class Singleton : public testing::Test
{
protected:
    ~Singleton() override
    {
        DisableQuarryListeners(false);
        Counted::refuse = false;
        Counted::Destroy();
        g_alive = g_listening = 0;
    }
};

} // namespace

TEST_F(Singleton, IsMadeOnFirstUseAndAnewAfterDestroy)
{
    EXPECT_EQ(Counted::Loaded(), 0);
    Counted::Instance().Data().figure = 7;
    EXPECT_EQ(Counted::Instance().Data().figure, 7);
    EXPECT_TRUE(Counted::Loaded() == 1 && g_alive == 1 && g_listening == 1);
    Counted::Destroy();
    EXPECT_TRUE(Counted::Loaded() == 0 && g_alive == 0 && g_listening == 0);
    EXPECT_EQ(Counted::Instance().Data().figure, 0);
}

TEST_F(Singleton, IsFoundByItsKeyWhicheverModuleAsks)
{
    Counted& ours = Counted::Instance();
    const std::string key = std::string("MORVUT::") + typeid(CSingleton<CountedData, Counted>).name();
    EXPECT_EQ(GetGlobalDataItem(key.c_str(), nullptr, nullptr), &ours);
    EXPECT_TRUE(DeleteGlobalItem(key.c_str()) && g_alive == 0);
    EXPECT_EQ(Counted::Instance().Data().figure, 0) << "another module destroyed it: made anew, not remembered";
    Shellkit::Shutdown();
    EXPECT_EQ(g_alive, 0) << "the store ends it";
}

TEST_F(Singleton, LeavesListenersAloneWhileTheyAreDisabled)
{
    DisableQuarryListeners(true);
    Counted::Instance();
    EXPECT_EQ(g_listening, 0) << "made without listeners";
    Counted::Destroy();
    DisableQuarryListeners(false);
    Counted::Instance();
    DisableQuarryListeners(true);
    EXPECT_EQ(g_listening, 1) << "those that exist stay";
    Counted::Destroy();
    EXPECT_EQ(g_listening, 1);
}

TEST_F(Singleton, IsNotThereWhenItCannotListen)
{
    Counted::refuse = true;
    EXPECT_THROW(Counted::Instance(), std::runtime_error);
    EXPECT_TRUE(g_alive == 0 && Counted::Loaded() == 0);
    Counted::refuse = false;
    Counted::Instance();
    EXPECT_EQ(g_listening, 1);
}
