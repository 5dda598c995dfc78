#include "Cellar/RowCursor.h"

#include "CellarTestSupport.h"

class RowCursor : public testing::Test
{
protected:
    void SetUp() override
    {
        connection = OpenPractice();
        connection->Script("CREATE TABLE Note(lID INTEGER PRIMARY KEY, strText TEXT);"
                           "INSERT INTO Note VALUES (1, 'a'), (2, NULL), (3, 'c')");
    }

    std::unique_ptr<CConnection> connection;
};

TEST_F(RowCursor, WalksOnceOverTheRows)
{
    CRowCursor cursor(*connection, "SELECT lID, strText FROM Note WHERE lID > %ld ORDER BY lID", 1);
    EXPECT_EQ(ErrorOf([&] { cursor.Get(0); }).GetCategory(), Category::Other) << "before the first row";
    ASSERT_TRUE(cursor.Next());
    EXPECT_EQ(cursor.GetLong("LID"), 2);
    EXPECT_TRUE(cursor.IsNull(1)) << "nothing is left of another row";
    EXPECT_EQ(ErrorOf([&] { cursor.Get(2); }).GetCategory(), Category::Other);
    EXPECT_EQ(ErrorOf([&] { cursor.Get("dt"); }).GetCategory(), Category::Other);
    ASSERT_TRUE(cursor.Next());
    EXPECT_EQ(cursor.GetText("strText"), "c");
    EXPECT_FALSE(cursor.Next());
    EXPECT_FALSE(cursor.Next()) << "a second time";
    EXPECT_EQ(ErrorOf([&] { cursor.Get(0); }).GetCategory(), Category::Other) << "behind the last row";
}

TEST_F(RowCursor, SeveralWalkOverOneStatementWhileRowsAreWritten)
{
    int pairs = 0;
    for (CRowCursor outer(*connection, "SELECT lID FROM Note WHERE lID < 10"); outer.Next();)
        for (CRowCursor inner(*connection, "SELECT lID FROM Note WHERE lID < 10"); inner.Next(); ++pairs)
            if (inner.GetLong(0) == 3)
                connection->ExecuteDirectf("INSERT Note (lID) VALUES (%ld)", 10 + outer.GetLong(0));
    EXPECT_EQ(pairs, 9);
    EXPECT_EQ(Count(*connection), 6);
}

TEST_F(RowCursor, LeavesNoLockAndOutlivesItsConnection)
{
    const auto other = OpenPractice();
    auto cursor = std::make_unique<CRowCursor>(CRowCursor(*connection, "SELECT lID FROM Note"));
    ASSERT_TRUE(cursor->Next());
    other->ExecuteDirect("DELETE FROM Note WHERE lID > 1");
    connection.reset();
    EXPECT_TRUE(cursor->Next()) << "what it reads is one state of the data";
    cursor.reset();
    const CBufferedRowList checkpoint(*other, "PRAGMA wal_checkpoint(TRUNCATE)");
    EXPECT_EQ(checkpoint.GetLong(0), 0) << "nobody reads the old state any more";
}

TEST_F(RowCursor, RefusesWhatReadsNothing)
{
    EXPECT_EQ(ErrorOf([&] { CRowCursor(*connection, "DELETE FROM Note"); }).GetCategory(), Category::Syntax);
    EXPECT_EQ(Count(*connection), 3);
}
