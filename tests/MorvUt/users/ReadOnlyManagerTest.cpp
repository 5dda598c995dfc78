#include "MorvUt/users/ReadOnlyManager.h"

#include "UsersTest.h"

using ReadOnlyManager = UsersTest;
ON_BOTH_DATABASES(ReadOnlyManager);

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
    EXPECT_EQ(Query("SELECT COUNT(*) FROM Child"), "1");
}
