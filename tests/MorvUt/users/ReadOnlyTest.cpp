#include "MorvUt/users/ReadOnlyManager.h"

#include "UsersTest.h"

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

using ReadOnlyManager = UsersTest;
ON_BOTH_DATABASES(ReadOnlyManager);

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

TEST_P(ReadOnlyManager, ReleasesWhatItSet)
{
    CReadOnlyManager outer;
    outer.SetLocalReadOnly();
    {
        CReadOnlyManager inner;
        for (int i = 0; i < 3; ++i)
            inner.SetLocalReadOnly();
    }
    EXPECT_EQ(CUserData::m_nLocalReadOnly, 1);
    for (const int pin : {1, 0}) {
        CUserData::SetReadOnlyPIN(pin);
        EXPECT_EQ(UsingReadOnlyPin(), pin);
    }
}

TEST_P(ReadOnlyManager, BouncesAllOpenLevels)
{
    BounceCommitBeginTrans();
    EXPECT_EQ(Quarry::GetTransactionLevel(), 0) << "none was open";
    Quarry::GetConnection().Script(
        "CREATE TABLE Child(p INTEGER REFERENCES BRIXOptions(lID) DEFERRABLE INITIALLY DEFERRED)");
    Quarry::CTransaction sheet, page;
    Sql("INSERT INTO Child VALUES (NULL)");
    BounceCommitBeginTrans();
    EXPECT_EQ(Quarry::GetTransactionLevel(), 2);
    Sql("INSERT INTO Child VALUES (77)"); // cannot be committed
    EXPECT_THROW(BounceCommitBeginTrans(), Cellar::DatabaseError);
    EXPECT_EQ(Quarry::GetTransactionLevel(), 2);
    sheet.Rollback();
    EXPECT_EQ(Quarry::GetTransactionLevel(), 0);
    EXPECT_EQ(Query("SELECT COUNT(*) FROM Child"), "1");
}

TEST_P(ReadOnlyManager, BouncesEachLevelWithItsIntent)
{
    constexpr Cellar::Subject kClient{1, 7};
    const auto other = Open();
    other->SetBusyTimeout(1);
    Quarry::CTransaction sheet(Cellar::Intent::Write, kClient), page;
    BounceCommitBeginTrans();
    EXPECT_THROW(other->Begin(Cellar::Intent::Write, kClient), Cellar::DatabaseError);
    if (::Test::IsOnServer()) {
        EXPECT_NO_THROW(Cellar::CTransaction(*other, Cellar::Intent::Write, {1, 8})) << "another's";
    }
    Cellar::CConnection& connection = Quarry::GetConnection();
    connection.SetBusyTimeout(1);
    connection.WaitForLevels([&](bool) { // another is quicker
        other->Begin(Cellar::Intent::Write, kClient);
        return true;
    });
    EXPECT_THROW(BounceCommitBeginTrans(), Cellar::DatabaseError);
    EXPECT_EQ(Quarry::GetTransactionLevel(), 2);
    EXPECT_FALSE(connection.HasBegun());
}

using ServerReadOnlyManager = UsersTest;
ON_SERVER(ServerReadOnlyManager);

TEST_P(ServerReadOnlyManager, LeavesNoLevelOpenOnALostConnection)
{
    for (const auto intent : {Cellar::Intent::Read, Cellar::Intent::Write}) {
        Quarry::SetConnection(Open());
        {
            Quarry::CTransaction sheet(intent), page(intent), box;
            Sql("UPDATE BRIXOptions SET nDateFormat = 1");
            Open()->Queryf("SELECT pg_terminate_backend(%ld)",
                           static_cast<long>(Quarry::GetConnection().GetSessionId()));
            EXPECT_THROW(BounceCommitBeginTrans(), Cellar::DatabaseError);
            EXPECT_EQ(Quarry::GetTransactionLevel(), 3);
        }
        EXPECT_EQ(Quarry::GetTransactionLevel(), 0);
    }
}
