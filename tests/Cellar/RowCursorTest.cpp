#include "Cellar/RowCursor.h"

#include "CellarTestSupport.h"

class RowCursor : public ::Test::OnDatabase
{
protected:
    void SetUp() override
    {
        connection = OpenPractice();
        ::Test::Declare(*connection, "CREATE TABLE Note(lID {Id}, strText {Text});"
                                     "INSERT INTO Note VALUES (1, 'a'), (2, NULL), (3, 'c')");
    }

    std::unique_ptr<CConnection> connection;
};
ON_BOTH_DATABASES(RowCursor);

TEST_P(RowCursor, WalksOnceOverTheRows)
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

TEST_P(RowCursor, SeveralWalkOverOneStatementWhileRowsAreWritten)
{
    int pairs = 0;
    for (CRowCursor outer(*connection, "SELECT lID FROM Note WHERE lID < 10"); outer.Next();)
        for (CRowCursor inner(*connection, "SELECT lID FROM Note WHERE lID < 10"); inner.Next(); ++pairs)
            if (inner.GetLong(0) == 3)
                connection->ExecuteDirectf("INSERT Note (lID) VALUES (%ld)", 10 + outer.GetLong(0));
    EXPECT_EQ(pairs, 9);
    EXPECT_EQ(Count(*connection), 6);
}

TEST_P(RowCursor, WalksOverMoreThanAPart)
{
    for (int count = 3; count < 12'000; count *= 2)
        connection->ExecuteDirect("INSERT INTO Note (lID, strText) SELECT lID + (SELECT MAX(lID) FROM Note), strText "
                                  "FROM Note");
    for (const bool isInLevel : {false, true}) {
        SCOPED_TRACE(isInLevel);
        if (isInLevel)
            connection->Begin(Intent::Write);
        CRowCursor cursor(*connection, "SELECT lID, strText FROM Note ORDER BY lID");
        long id = 0;
        while (cursor.Next() && cursor.GetLong(0) == id + 1)
            ++id;
        EXPECT_EQ(id, 12'288);
    }
    connection->Rollback();
}

TEST_P(RowCursor, RefusesWhatReadsNothing)
{
    EXPECT_EQ(ErrorOf([&] { CRowCursor(*connection, "DELETE FROM Note"); }).GetCategory(), Category::Syntax);
    EXPECT_EQ(Count(*connection), 3);
}
