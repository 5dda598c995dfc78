#include "MorvUt/users/UsersTest.h"
#include "Shellkit/MemoryCipher.h"

namespace
{

using UserLogin = UsersTest;
ON_BOTH_DATABASES(UserLogin);

} // namespace

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
