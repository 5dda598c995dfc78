#include "MorvUt/users/UsersTest.h"
#include "Shellkit/Envelope.h"
#include "Shellkit/MemoryCipher.h"

namespace
{

using UserLogin = UsersTest;
ON_BOTH_DATABASES(UserLogin);
using Names = std::vector<CString>;

} // namespace

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
    EXPECT_EQ(TheUser().HasGroup(nullptr), 0);

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
