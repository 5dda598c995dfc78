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

constexpr char kMessage[] = "Operation cannot be performed. Client is read only.";

} // namespace

TEST_F(ReadOnly, HasThreeCauses)
{
    const struct
    {
        void (*begin)();
        void (*end)();
        bool locked, pin;
        const char* why;
    } rows[] = {
        {[] { CUserData::SetReadOnly(1); }, [] { CUserData::SetReadOnly(0); }, true, false, "locked by another user"},
        {[] { CUserData::SetReadOnlyPIN(1); }, [] { CUserData::SetReadOnlyPIN(0); }, false, true, "read-only PIN"},
        {CUserData::SetLocalReadOnly, CUserData::ReleaseLocalReadOnly, false, false, "local"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.why);
        EXPECT_EQ(CUserData::IsReadOnly(), 0);
        EXPECT_EQ(CUserData::CheckForReadOnlyWithError(), 0);
        EXPECT_EQ(CUserData::IsReadOnlyBecauseLockedWithError(), 0);
        row.begin();
        EXPECT_EQ(CUserData::IsReadOnly(), 1);
        EXPECT_EQ(CUserData::IsReadOnlyBecauseLocked(), row.locked);
        EXPECT_EQ(CUserData::IsReadOnlyPIN(), row.pin);
        ::Test::Windows().Clear();
        ::Test::Windows().Answer(1);
        EXPECT_EQ(CUserData::CheckForReadOnlyWithError(), 1);
        if (row.locked)
            ::Test::Windows().Answer(1);
        EXPECT_EQ(CUserData::IsReadOnlyBecauseLockedWithError(), row.locked);
        ASSERT_EQ(::Test::Windows().Messages().size(), row.locked ? 2u : 1u);
        for (const auto& shown : ::Test::Windows().Messages())
            EXPECT_EQ(shown.text, kMessage);
        row.end();
    }
    EXPECT_EQ(CUserData::IsReadOnly(), 0);
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
