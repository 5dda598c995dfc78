#include "Afx/system/Resources.h"
#include "MorvUt/users/UserData.h"
#include "support/Test.h"

namespace
{

class ReadOnly : public testing::Test
{
protected:
    ~ReadOnly() override
    {
        CUserData::SetReadOnly(0);
        CUserData::SetReadOnlyPIN(0);
        CUserData::m_nLocalReadOnly = 0;
    }
};

} // namespace

TEST_F(ReadOnly, HasThreeCauses)
{
    const ::Test::Row<int, int, int> rows[] = {
        {0, 0, 0, "none"}, {1, 0, 0, "locked by another user"}, {0, 1, 0, "read-only PIN"}, {0, 0, 1, "local"}};
    for (const auto& [locked, pin, local, why] : rows) {
        SCOPED_TRACE(why);
        CUserData::SetReadOnly(locked);
        CUserData::SetReadOnlyPIN(pin);
        CUserData::m_nLocalReadOnly = local;
        const int isReadOnly = locked + pin + local;
        EXPECT_EQ(CUserData::IsReadOnly(), isReadOnly);
        EXPECT_EQ(CUserData::IsReadOnlyBecauseLocked(), locked);
        EXPECT_EQ(CUserData::IsReadOnlyPIN(), pin);
        for (int box = 0; box < isReadOnly + locked; ++box)
            ::Test::Windows().Answer(1);
        EXPECT_EQ(CUserData::CheckForReadOnlyWithError(), isReadOnly);
        EXPECT_EQ(CUserData::IsReadOnlyBecauseLockedWithError(), locked);
        for (const auto& shown : ::Test::Windows().Messages())
            EXPECT_EQ(shown.text, "Operation cannot be performed. Client is read only.");
        EXPECT_EQ(Afx::ResourceContext::Current(), nullptr) << "the caller's resources are back";
    }
}

TEST_F(ReadOnly, NestsLocallyAndNeverGoesBelowZero)
{
    CUserData::SetLocalReadOnly();
    CUserData::SetLocalReadOnly();
    CUserData::ReleaseLocalReadOnly();
    EXPECT_EQ(CUserData::IsReadOnly(), 1);
    CUserData::ReleaseLocalReadOnly();
    CUserData::ReleaseLocalReadOnly();
    EXPECT_EQ(CUserData::IsReadOnly(), 0);
    CUserData::SetLocalReadOnly();
    EXPECT_EQ(CUserData::IsReadOnly(), 1) << "one release too many counts for nothing";
}
