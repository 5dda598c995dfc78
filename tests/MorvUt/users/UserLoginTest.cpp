#include <cstring>

#include "Afx/Application.h"
#include "Cellar/DatabaseError.h"
#include "MorvUt/users/UsersTest.h"
#include "Shellkit/Cipher.h"

namespace
{

class UserLogin : public UsersTest
{
protected:
    static std::vector<std::string> Texts(const CStringArray& array)
    {
        std::vector<std::string> texts;
        for (const CString& text : array)
            texts.push_back(text.Str());
        return texts;
    }
    static std::vector<std::string> GroupNames()
    {
        std::vector<std::string> names;
        for (const auto& group : CUserData::m_UserGroups)
            names.push_back(group.m_strName.Str());
        return names;
    }
};

using Names = std::vector<std::string>;

} // namespace

TEST_F(UserLogin, ListsTheUsersInOrderOfTheirIds)
{
    AddUser("carol", "Carol Example");
    AddUser("Bob", "Bob Example");
    AddUser("adminMORV", "Built in");
    AddUser("Gone", "Left the practice", false);
    EXPECT_EQ(CUserData::SetUser("bob"), 1);
    EXPECT_EQ(CUserData::m_strUser, "Bob") << "as stored";
    EXPECT_EQ(Texts(CUserData::m_arrUsers), (Names{"Bob", "carol"}));
    EXPECT_EQ(Texts(CUserData::m_arrUserFullnames), (Names{"Bob Example", "Carol Example"}));
    EXPECT_EQ(TheUser().HasUserLoggedIn(), 1);

    CUserData::SetUser("AdminMorv");
    EXPECT_EQ(Texts(CUserData::m_arrUsers), (Names{"Bob", "carol"})) << "never listed, and the list is made anew";
    EXPECT_STREQ(TheUser().GetFullUserName(), "Built in") << "not listed, but a user";
}

TEST_F(UserLogin, LoadsTheUsersGroups)
{
    const long tax = AddGroup("Tax"), audit = AddGroup("Audit");
    AddGroup("Payroll");
    AddUser("Bob", "Bob Example");
    AddUser("Eve", "Eve Example");
    Join("Bob", audit);
    Join("Bob", tax);
    CUserData::SetUser("Bob");
    EXPECT_EQ(GroupNames(), (Names{"Audit", "Tax"}));
    EXPECT_EQ(CUserData::m_UserGroups[0].m_nID, audit);
    EXPECT_EQ(TheUser().GetGroupInList(), "('Audit', 'Tax')");
    EXPECT_EQ(TheUser().HasGroup("Tax"), 1);
    EXPECT_EQ(TheUser().HasGroup("tax"), 0);
    EXPECT_EQ(TheUser().HasGroup(nullptr), 0);

    CUserData::SetUser("Eve");
    EXPECT_EQ(TheUser().GetGroupInList(), "()");
}

TEST_F(UserLogin, GivesAllStaffEveryGroup)
{
    const long tax = AddGroup("Tax"), everyone = AddGroup("All Staff"), audit = AddGroup("Audit");
    AddUser("Bob", "Bob Example");
    Join("Bob", tax);
    Join("Bob", everyone);
    Join("Bob", audit);
    CUserData::SetUser("Bob");
    EXPECT_EQ(GroupNames(), (Names{"All Staff", "Tax", "All Staff", "Audit"})) << "first, then the whole table";
}

TEST_F(UserLogin, LoadsTheParticulars)
{
    AddUser("Bob", "Bob Example");
    Brix::CUser row;
    ASSERT_TRUE(row.Open());
    const auto stored = Shellkit::Seal(Shellkit::KeyId::Application, "file me");
    ASSERT_TRUE(stored);
    row.SetEmail("bob@example.org");
    row.SetTelephone("020 7946 0000");
    row.SetGatewayID("gateway");
    row.SetFBIUserName("bob-fbi");
    row.SetFBIPassword(*stored);
    row.SetRememberFBIPassword(true);
    row.SetTallywickUserName("bob-tw");
    row.SetTallywickPassword(Cellar::Bytes{1, 2, 3}); // no envelope
    row.Update();

    const auto particulars = [&user = TheUser()] {
        return Names{user.GetFullUserName(),      user.GetEmailAddress(),     user.GetTelephone(),
                     user.GetGatewayID(),         user.GetFBIUserName(),      user.GetFBIPassword(),
                     user.GetTallywickUserName(), user.GetTallywickPassword()};
    };
    CUserData::SetUser("Bob");
    EXPECT_EQ(particulars(),
              (Names{"Bob Example", "bob@example.org", "020 7946 0000", "gateway", "bob-fbi", "file me", "bob-tw", ""}))
        << "the last cannot be deciphered";
    EXPECT_EQ(TheUser().GetEncryptedFBIPassword(), *stored);
    EXPECT_EQ(TheUser().RememberFBIPassword(), 1);
    EXPECT_EQ(TheUser().FBICanSendImmediately(), 0);

    CUserData::SetUser("Mallory");
    EXPECT_EQ(CUserData::m_strUser, "Mallory");
    EXPECT_EQ(particulars(), Names(8)) << "nothing of the user before";
    EXPECT_TRUE(TheUser().GetEncryptedFBIPassword().empty());
    EXPECT_EQ(TheUser().RememberFBIPassword(), 0);
}

TEST_F(UserLogin, KeepsANewTallywickPasswordEnciphered)
{
    const char password[] = "open sesame";
    TheUser().SetTallywickUserNameAndPassword("bob-tw", password);
    EXPECT_STREQ(TheUser().GetTallywickUserName(), "bob-tw");
    const int length = TheUser().GetTallywickPasswordLength();
    ASSERT_EQ(length, 11);
    std::string held(TheUser().GetTallywickPassword(), 11);
    EXPECT_NE(held, password);
    Decrypt(reinterpret_cast<unsigned char*>(held.data()), 11);
    EXPECT_EQ(held, password);
}

TEST_F(UserLogin, TellsTheApplication)
{
    struct App : CWinApp
    {
        void OnUserChanged() override { heard = CUserData::m_strUser; }
        CString heard;
    } app;
    AddUser("Bob", "Bob Example");
    CUserData::SetUser("bob");
    EXPECT_EQ(app.heard, "Bob");
}

TEST_F(UserLogin, LeavesTheUserBeforeWhenTheDatabaseFails)
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
