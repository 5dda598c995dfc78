#include "Afx/system/Application.h"
#include "Cellar/DatabaseError.h"
#include "MorvUt/users/UsersTest.h"
#include "Shellkit/Envelope.h"
#include "Shellkit/MemoryCipher.h"

namespace
{

using UserLogin = UsersTest;
ON_BOTH_DATABASES(UserLogin);
using Names = std::vector<CString>;

Names Listed() { return {CUserData::m_arrUsers.begin(), CUserData::m_arrUsers.end()}; }

} // namespace

TEST_P(UserLogin, ListsTheUsersInOrderOfTheirIdsAndTellsTheApplication)
{
    struct App : CWinApp
    {
        void OnUserChanged() override { heard = CUserData::m_strUser; }
        CString heard;
    } app;
    AddUser("carol", "Carol Example");
    AddUser("Bob", "Bob Example");
    AddUser("adminMORV", "Built in");
    AddUser("Gone", "Left the practice", false);
    EXPECT_EQ(CUserData::SetUser("bob"), 1);
    EXPECT_EQ(CUserData::m_strUser, "Bob") << "as stored";
    EXPECT_EQ(app.heard, "Bob");
    EXPECT_EQ(Listed(), (Names{"Bob", "carol"}));
    EXPECT_EQ(CUserData::m_arrUserFullnames[1], "Carol Example");
    EXPECT_EQ(TheUser().HasUserLoggedIn(), 1);

    CUserData::SetUser("AdminMorv");
    EXPECT_EQ(Listed(), (Names{"Bob", "carol"})) << "never listed, and the list is made anew";
    EXPECT_STREQ(TheUser().GetFullUserName(), "Built in") << "not listed, but a user";
}

TEST_P(UserLogin, LoadsTheUsersGroupsAndEveryGroupForAllStaff)
{
    Sql("INSERT INTO BRIXGroup (lID, strName) VALUES (11, 'Tax'), (12, 'All Staff'), (13, 'Audit'), (14, 'Payroll')");
    Sql("INSERT INTO BRIXGroupUser (strUserID, lGroupID) VALUES ('Bob', 13), ('Bob', 11), ('Ann', 11), ('Ann', 12), "
        "('Ann', 13)");
    const auto groupsOf = [](const char* user) {
        AddUser(user);
        CUserData::SetUser(user);
        return TheUser().GetGroupInList();
    };
    EXPECT_EQ(groupsOf("Ann"), "('All Staff', 'Tax', 'All Staff', 'Audit', 'Payroll')") << "first, then the table";
    EXPECT_EQ(groupsOf("Eve"), "()");
    EXPECT_EQ(groupsOf("Bob"), "('Audit', 'Tax')");
    EXPECT_EQ(CUserData::m_UserGroups[0].m_nID, 13);
    EXPECT_EQ(TheUser().HasGroup("Tax"), 1);
    EXPECT_EQ(TheUser().HasGroup("tax"), 0);
    EXPECT_EQ(TheUser().HasGroup(nullptr), 0);
    AddUser("Élan", "", false);
    Sql("INSERT INTO BRIXGroupUser (strUserID, lGroupID) VALUES ('Élan', 13)");
    CUserData::SetUser("élan");
    EXPECT_EQ(TheUser().GetGroupInList(), "('Audit')") << "by the id as stored, though not listed";
}

TEST_P(UserLogin, LoadsTheParticulars)
{
    const auto stored = Shellkit::Seal(Shellkit::KeyId::Application, "file me");
    ASSERT_TRUE(stored);
    AddUser("Bob", "Bob Example");
    Sql("UPDATE BRIXUser SET strEmail = 'bob@example.org', strTelephone = '020 7946 0000', strGatewayID = 'gateway', "
        "strFBIUserName = 'bob-fbi', vbFBIPassword = %b, bRememberFBIPassword = 1, strTallywickUserName = 'bob-tw', "
        "vbTallywickPassword = %b",
        *stored, Cellar::Bytes{1, 2, 3}); // the last is no envelope
    const auto particulars = [&user = TheUser()] {
        return Names{user.GetFullUserName(),      user.GetEmailAddress(),     user.GetTelephone(),
                     user.GetGatewayID(),         user.GetFBIUserName(),      user.GetFBIPassword(),
                     user.GetTallywickUserName(), user.GetTallywickPassword()};
    };
    CUserData::SetUser("Bob");
    EXPECT_EQ(particulars(), (Names{"Bob Example", "bob@example.org", "020 7946 0000", "gateway", "bob-fbi", "file me",
                                    "bob-tw", ""}));
    EXPECT_EQ(TheUser().GetEncryptedFBIPassword(), *stored);
    EXPECT_EQ(TheUser().RememberFBIPassword(), 1);
    EXPECT_EQ(TheUser().FBICanSendImmediately(), 0);

    CUserData::SetUser("Mallory");
    EXPECT_EQ(CUserData::m_strUser, "Mallory");
    EXPECT_EQ(particulars(), Names(8)) << "nothing of the user before";
    EXPECT_TRUE(TheUser().GetEncryptedFBIPassword().empty());
    EXPECT_EQ(TheUser().RememberFBIPassword(), 0);
}

TEST_P(UserLogin, KeepsANewTallywickPasswordEnciphered)
{
    const char password[] = "open sesame";
    TheUser().SetTallywickUserNameAndPassword("bob-tw", password);
    EXPECT_STREQ(TheUser().GetTallywickUserName(), "bob-tw");
    ASSERT_EQ(TheUser().GetTallywickPasswordLength(), 11);
    std::string held(TheUser().GetTallywickPassword(), 11);
    EXPECT_NE(held, password);
    Decrypt(reinterpret_cast<unsigned char*>(held.data()), 11);
    EXPECT_EQ(held, password);
}

TEST_P(UserLogin, LeavesTheUserBeforeWhenTheDatabaseFails)
{
    AddUser("Bob", "Bob Example");
    LetUser("Bob", 3);
    CUserData::SetUser("Bob");
    Quarry::GetConnection().Script("DROP TABLE BRIXUserPermissions;");
    EXPECT_THROW(CUserData::SetUser("Mallory"), Cellar::DatabaseError);
    EXPECT_EQ(CUserData::m_strUser, "Bob");
    EXPECT_STREQ(TheUser().GetFullUserName(), "Bob Example");
    EXPECT_EQ(Allowed(), std::vector<int>{3});
    EXPECT_EQ(Afx::ResourceContext::Current(), nullptr);
}
