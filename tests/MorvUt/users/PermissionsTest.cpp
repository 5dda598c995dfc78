#include "MorvUt/users/StaffRights.h"
#include "MorvUt/users/UsersTest.h"

using Numbers = std::vector<int>;
using Permissions = UsersTest;
ON_BOTH_DATABASES(Permissions);

TEST_P(Permissions, AreReadByTheirNumbers)
{
    EXPECT_EQ(Allowed(), Numbers{}) << "before the login";
    const std::pair<int, bool (CUserData::*)(bool) const> rows[] = {
        {1, &CUserData::AssetRegisterSaveAllowed}, {24, &CUserData::GlobalClientOperationsAllowed},
        {26, &CUserData::QueryManagerAllowed},     {87, &CUserData::HMRCDataGetAllowed},
        {99, &CUserData::ViewMTDTaxReturnAllowed},
    };
    AddUser("Bob");
    for (const int nobodyAsksFor : {-1, 0, 25, 94, 100, 1'000'000})
        LetUser("Bob", nobodyAsksFor);
    Numbers expected;
    for (const auto& [number, query] : rows) {
        LetUser("Bob", number);
        expected.push_back(number);
    }
    CUserData::SetUser("Bob");
    for (const auto& [number, query] : rows)
        EXPECT_TRUE((TheUser().*query)(true)) << number;
    EXPECT_EQ(Allowed(), expected);
}

TEST_P(Permissions, ComeFromTheRoleOrTheUserAndStayUntilTheyAreCleared)
{
    AddUser("Bob", "", true, "Manager");
    AddUser("Eve");
    AddUser("Ian", "", true, "Nobody");
    LetRole("Manager", 3, false);
    LetRole("Manager", 3);
    LetRole("Manager", 4);
    LetRole("Manager", 5, false);
    LetUser("Eve", 4, false);
    for (const char* user : {"Bob", "Ian"})
        LetUser(user, 74);
    CUserData::SetUser("Bob");
    EXPECT_EQ(Allowed(), (Numbers{3, 4})) << "a role's user has nothing of his own";
    EXPECT_FALSE(FindStaff("Bob")->rights.at(4).isAllowed) << "a row that takes a right away";
    EXPECT_TRUE(FindStaff("Bob")->rights.at(2).isAllowed) << "of two rows the last counts";
    CUserData::SetUser("Eve");
    EXPECT_EQ(Allowed(), Numbers{3}) << "her rows do not mention 3";
    for (const char* user : {"Eve", "Ian"}) {
        CUserData::ClearPermissions();
        CUserData::SetUser(user);
        EXPECT_EQ(Allowed(), Numbers{}) << user;
    }
    AddUser("Élan", "", false);
    LetUser("Élan", 7);
    CUserData::SetUser("élan");
    EXPECT_EQ(Allowed(), Numbers{7}) << "by the id as stored, though not listed";
    for (const StaffMember& listed : ListStaff())
        EXPECT_NE(listed.id, "Élan");
    LetUser("Élan", 27);
    EXPECT_EQ(CUserData::UserHasReviewToolUse("ÉLAN"), 1) << "of another user, too";
    EXPECT_FALSE(WhyNotNewStaff("ÉLAN", "Another", "").IsEmpty());
}

TEST_P(Permissions, AreRefusedWithAMessageWhenAsked)
{
    EXPECT_FALSE(TheUser().TaxReturnSaveAllowed(false));
    ::Test::Windows().Answer(1);
    EXPECT_FALSE(TheUser().TaxReturnSaveAllowed(true));
    ASSERT_EQ(::Test::Windows().Messages().size(), 1u);
    EXPECT_EQ(::Test::Windows().Messages()[0].text,
              "You do not have permission to do this.\n\nPlease contact your administrator for more details.");
    EXPECT_EQ(Afx::ResourceContext::Current(), nullptr) << "the caller's resources are back";
}

TEST_P(Permissions, OfOtherUsersAreReadFromTheDatabase)
{
    AddUser("Bob");
    AddUser("Eve", "", true, "Manager");
    const std::pair<int, int (*)(CString)> rows[] = {
        {74, CUserData::IsTaxExchangeAllowedForUser},
        {27, CUserData::UserHasReviewToolUse},
        {28, CUserData::UserHasReviewToolViewEventsLog},
        {29, CUserData::UserHasReviewToolStartOrCompleteReviewsAssignedToAnotherUser},
        {30, CUserData::UserHasReviewToolFinaliseReviews},
        {31, CUserData::UserHasReviewToolEditTolerances},
    };
    for (const auto& [number, query] : rows) {
        SCOPED_TRACE(number);
        LetUser("Eve", number); // counts for nothing: Eve has a role
        EXPECT_EQ(query("Bob"), 0) << "no row";
        LetUser("Bob", number);
        EXPECT_TRUE(query("Bob") == 1 && query("Eve") == 0 && query("Mallory") == 0);
        LetRole("Manager", number);
        EXPECT_EQ(query("Eve"), 1);
    }
    EXPECT_EQ(Allowed(), Numbers{}) << "nobody has logged in";
}
