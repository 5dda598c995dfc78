// Another program holds the practice's write lock for longer than a statement waits.

#include "apps/main-job/FetchTest.h"

namespace
{

/// Holds the write lock while it lives.
std::unique_ptr<Cellar::CConnection> Writer()
{
    auto connection = ::Test::Practice::Open();
    connection->Query("BEGIN IMMEDIATE", {});
    return connection;
}

class Busy : public FetchTest
{
protected:
    Busy()
    {
        Quarry::GetConnection().SetBusyTimeout(50);
        Serve(1000);
        EXPECT_TRUE(Fetch().result.ok);
        Serve(1001);
        ::Test::Windows().Clear();
    }
};

} // namespace

TEST_F(Busy, StagingIsGivenUpWithOneLineAndNothingIsLost)
{
    const Tables tables = Read();
    {
        const auto writer = Writer();
        const Fetched fetched = Fetch();
        EXPECT_FALSE(fetched.result.ok || fetched.result.newData);
        EXPECT_EQ(fetched.result.stopped, HmrcApi::FetchResult::Stopped::Busy);
        const std::string message = fetched.result.message.Str();
        EXPECT_TRUE(message.starts_with("another program is writing to the database; try again")) << message;
        EXPECT_EQ(message.find_first_of("\n["), std::string::npos) << "no statement: " << message;
        ASSERT_EQ(::Test::Windows().Messages().size(), 1u);
        EXPECT_EQ(::Test::Windows().Messages()[0].text, message);
    }
    EXPECT_EQ(Changed(tables, Read(), {"CellarSession"}), std::set<std::string>{});
    EXPECT_TRUE(Fetch().result.ok);
    EXPECT_EQ(StagedPaye(), 1001);
    EXPECT_EQ(StagedNationalInsurance(), 1001);
}

TEST_F(Busy, ATokenThatCouldNotBeKeptIsNotAskedFor)
{
    m_sandbox.Send("POST", "/sandbox/token", R"({"expire": true})");
    const Tables tables = Read();
    {
        const auto writer = Writer();
        const Fetched fetched = Fetch();
        EXPECT_TRUE(fetched.asked.empty()) << "a refresh token is good for one use";
        EXPECT_EQ(fetched.result.stopped, HmrcApi::FetchResult::Stopped::Busy);
    }
    EXPECT_EQ(Changed(tables, Read(), {"CellarSession"}), std::set<std::string>{});
    const Fetched again = Fetch();
    EXPECT_TRUE(again.result.ok);
    EXPECT_EQ(again.asked.at("oauth"), 1);
    EXPECT_EQ(StagedPaye(), 1001);
}
