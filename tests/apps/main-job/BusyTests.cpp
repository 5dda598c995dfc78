// Another program holds the practice's write lock for longer than a statement waits.

#include "apps/main-job/FetchTest.h"

using Busy = FetchTest;

TEST_F(Busy, StagingIsGivenUpWithOneLineAndNothingIsLost)
{
    Quarry::GetConnection().SetBusyTimeout(50);
    Serve(1000);
    EXPECT_TRUE(Fetch().result.ok);
    Serve(1001);
    ::Test::Windows().Clear();
    const Tables tables = Read();
    {
        const auto writer = ::Test::Practice::Open();
        writer->Query("BEGIN IMMEDIATE", {});
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
