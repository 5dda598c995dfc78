// The caches of year, user and options.

#include "MorvUt/context/singletons/OptionsSingleton.h"
#include "MorvUt/context/singletons/UserSingleton.h"
#include "MorvUt/context/singletons/YearSingleton.h"
#include "support/Practice.h"

namespace
{

/// Changes what no cache hears of.
void Silently(const Cellar::SqlText& statement)
{
    const Quarry::CIgnoreDirectSQL quiet;
    ::Test::Practice::Sql(statement);
}

using OtherSingletons = ::Test::OnPractice;
ON_BOTH_DATABASES(OtherSingletons);

} // namespace

TEST_P(OtherSingletons, HoldTheYearWithTheThreadsOffset)
{
    Sql("INSERT INTO BRIXPFile (nYear, nValue) VALUES (2024, 7), (2023, 0)");
    EXPECT_EQ(CYearSingleton::Data(2024).pfileValue, 7);
    Silently("UPDATE BRIXPFile SET nValue = 8");
    EXPECT_EQ(CYearSingleton::Data(2024).pfileValue, 7) << "read once";
    EXPECT_EQ(CYearSingleton::Data(2022).pfileValue, 1) << "no record";
    const CPFileYearOffsetter offsetter(-1);
    EXPECT_TRUE(CYearSingleton::Data(2024).year == 2023 && CYearSingleton::Data(2024).pfileValue == 8);
    Sql("UPDATE BRIXPFile SET nValue = 9");
    EXPECT_EQ(CYearSingleton::Data(2024).pfileValue, 9) << "told to reload";
}

TEST_P(OtherSingletons, HoldAUserInAnyCase)
{
    Sql("INSERT INTO BRIXUser (strUserID, strFullName, nUserValue) VALUES ('ANNÉ', 'Anné O''Neill', 4)");
    const CUserSingletonData anna = CUserSingleton::Data("anné");
    EXPECT_TRUE(anna.userText == "Anné O'Neill" && anna.userValue == 4);
    Silently("UPDATE BRIXUser SET nUserValue = 5");
    EXPECT_EQ(CUserSingleton::Data("Anné").userValue, 4);
    EXPECT_EQ(CUserSingleton::Data("nobody").userText, "");
    EXPECT_EQ(CUserSingleton::Data(nullptr).userValue, 0);
    EXPECT_EQ(CUserSingleton::Data("Anné").userValue, 5);
}

TEST_P(OtherSingletons, EndWithTheRollbackOfAnInnerLevel)
{
    const Quarry::CTransaction outer;
    CYearSingleton::Data(2024);
    CUserSingleton::Data("bob");
    COptionsSingleton::Data();
    {
        const Quarry::CTransaction rolledBack;
    }
    EXPECT_TRUE(!CYearSingleton::Loaded() && !CUserSingleton::Loaded() && !COptionsSingleton::Loaded());
}

TEST_P(OtherSingletons, HoldNoOptionsWhileNoPracticeIsOpen)
{
    Quarry::SetConnection(nullptr);
    EXPECT_TRUE(COptionsSingleton::Data().payeInterface == 0 && COptionsSingleton::Data().debugLogging == 0);
    Quarry::SetConnection(Open());
    Sql("INSERT INTO BRIXOptions (lID, nPAYEInterface, nDebugLogging) VALUES (1, 1, 3)");
    EXPECT_TRUE(COptionsSingleton::Data().payeInterface == 1 && COptionsSingleton::Data().debugLogging == 3);
    Silently("UPDATE BRIXOptions SET nDebugLogging = 0");
    EXPECT_EQ(COptionsSingleton::Data().debugLogging, 3);
    Quarry::SetConnection(nullptr);
    EXPECT_EQ(COptionsSingleton::Data().debugLogging, 0);
}
