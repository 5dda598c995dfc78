#include "MorvUt/users/UsersTest.h"

namespace
{

using Numbers = std::vector<int>;
using Permissions = UsersTest;

} // namespace

TEST_F(Permissions, KeepTheirStoredNumbers)
{
    EXPECT_EQ(CUserData::GetPermissionQueries().size(), 97u);
    AddUser("Bob", "Bob Example");
    const struct
    {
        int number;
        bool (CUserData::*query)(bool) const;
    } rows[] = {
        {1, &CUserData::AssetRegisterSaveAllowed},
        {24, &CUserData::GlobalClientOperationsAllowed},
        {26, &CUserData::QueryManagerAllowed},
        {34, &CUserData::TaxReturnSaveAllowed},
        {50, &CUserData::OptionsAppearanceAllowed},
        {51, &CUserData::OptionsTaxInfoAllowed},
        {71, &CUserData::SoleTradeEnabled},
        {74, &CUserData::TaxExchangeAllowed},
        {87, &CUserData::HMRCDataGetAllowed},
        {93, &CUserData::ImportDataFromOTQAllowed},
        {95, &CUserData::PasswordProtectedClientsAllowed},
        {99, &CUserData::ViewMTDTaxReturnAllowed},
    };
    for (const auto& row : rows)
        LetUser("Bob", row.number);
    CUserData::SetUser("Bob");
    Numbers expected;
    for (const auto& row : rows) {
        EXPECT_TRUE((TheUser().*row.query)(true)) << row.number;
        expected.push_back(row.number);
    }
    EXPECT_EQ(Allowed(), expected);
}

TEST_F(Permissions, IgnoreStoredNumbersThatNobodyAsksFor)
{
    EXPECT_EQ(Allowed(), Numbers{}) << "before the login";
    AddUser("Bob", "Bob Example");
    for (const int number : {-1, 0, 25, 94, 100, 1'000'000, 3})
        LetUser("Bob", number);
    CUserData::SetUser("Bob");
    EXPECT_EQ(Allowed(), Numbers{3});
}

TEST_F(Permissions, ComeFromTheRoleWhenThereIsOne)
{
    AddRole("Manager");
    AddRole("Nobody");
    AddUser("Bob", "Bob Example", true, "Manager");
    AddUser("Eve", "Eve Example", true, "Nobody");
    LetRole("Manager", 3);
    LetRole("Manager", 4, false);
    for (const char* user : {"Bob", "Eve"})
        LetUser(user, 74);

    CUserData::SetUser("Bob");
    EXPECT_EQ(Allowed(), Numbers{3});
    CUserData::ClearPermissions();
    CUserData::SetUser("Eve");
    EXPECT_EQ(Allowed(), Numbers{}) << "a role without rows refuses everything, whatever the user's own rows say";
}

TEST_F(Permissions, OfTheUserBeforeStayUntilTheyAreCleared)
{
    AddUser("Bob", "Bob Example");
    AddUser("Eve", "Eve Example");
    LetUser("Bob", 3);
    LetUser("Bob", 4);
    LetUser("Eve", 4, false);
    CUserData::SetUser("Bob");
    CUserData::SetUser("Eve");
    EXPECT_EQ(Allowed(), Numbers{3}) << "Eve's rows do not mention 3";

    CUserData::ClearPermissions();
    CUserData::SetUser("Eve");
    EXPECT_EQ(Allowed(), Numbers{});
}

TEST_F(Permissions, AreRefusedWithAMessageWhenAsked)
{
    EXPECT_FALSE(TheUser().TaxReturnSaveAllowed(false));
    ASSERT_TRUE(::Test::Windows().Messages().empty());

    ::Test::Windows().Answer(1);
    EXPECT_FALSE(TheUser().TaxReturnSaveAllowed(true));
    ASSERT_EQ(::Test::Windows().Messages().size(), 1u);
    EXPECT_EQ(::Test::Windows().Messages()[0].text,
              "You do not have permission to do this.\n\nPlease contact your administrator for more details.");
    EXPECT_EQ(Afx::ResourceContext::Current(), nullptr) << "the caller's resources are back";
}

TEST_F(Permissions, OfOtherUsersAreReadFromTheDatabase)
{
    AddRole("Manager");
    AddUser("Bob", "Bob Example");
    AddUser("Eve", "Eve Example", true, "Manager");
    const struct
    {
        int number;
        int (*query)(CString);
    } rows[] = {
        {74, CUserData::IsTaxExchangeAllowedForUser},
        {27, CUserData::UserHasReviewToolUse},
        {28, CUserData::UserHasReviewToolViewEventsLog},
        {29, CUserData::UserHasReviewToolStartOrCompleteReviewsAssignedToAnotherUser},
        {30, CUserData::UserHasReviewToolFinaliseReviews},
        {31, CUserData::UserHasReviewToolEditTolerances},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.number);
        LetUser("Eve", row.number); // counts for nothing: Eve has a role
        EXPECT_EQ(row.query("Bob"), 0) << "no row";
        LetUser("Bob", row.number);
        EXPECT_EQ(row.query("Bob"), 1);
        EXPECT_EQ(row.query("Eve"), 0);
        LetRole("Manager", row.number);
        EXPECT_EQ(row.query("Eve"), 1);
        EXPECT_EQ(row.query("Mallory"), 0) << "no such user";
    }
    EXPECT_EQ(Allowed(), Numbers{}) << "nobody has logged in";
}
