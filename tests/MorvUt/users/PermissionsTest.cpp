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
