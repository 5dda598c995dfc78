#include <gtest/gtest.h>

#include "MorvUt/users/UserData.h"
#include "support/TestSupport.h"

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
    const struct
    {
        int locked, pin, local;
        const char* why;
    } rows[] = {{0, 0, 0, "none"}, {1, 0, 0, "locked by another user"}, {0, 1, 0, "read-only PIN"}, {0, 0, 1, "local"}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.why);
        CUserData::SetReadOnly(row.locked);
        CUserData::SetReadOnlyPIN(row.pin);
        CUserData::m_nLocalReadOnly = row.local;
        const int isReadOnly = row.locked + row.pin + row.local;
        EXPECT_EQ(CUserData::IsReadOnly(), isReadOnly);
        EXPECT_EQ(CUserData::IsReadOnlyBecauseLocked(), row.locked);
        EXPECT_EQ(CUserData::IsReadOnlyPIN(), row.pin);
        ::Test::Windows().Clear();
        for (int box = 0; box < isReadOnly + row.locked; ++box)
            ::Test::Windows().Answer(1);
        EXPECT_EQ(CUserData::CheckForReadOnlyWithError(), isReadOnly);
        EXPECT_EQ(CUserData::IsReadOnlyBecauseLockedWithError(), row.locked);
        EXPECT_EQ(::Test::Windows().AnswersLeft(), 0u);
        for (const auto& shown : ::Test::Windows().Messages())
            EXPECT_EQ(shown.text, "Operation cannot be performed. Client is read only.");
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
