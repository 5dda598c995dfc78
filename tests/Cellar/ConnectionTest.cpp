#include "Cellar/Connection.h"

#include <limits>
#include <set>

#include "CellarTestSupport.h"
#include "support/Case.h"

class Connection : public testing::Test
{
protected:
    void SetUp() override
    {
        connection = OpenPractice();
        connection->Script("CREATE TABLE Note(lID INTEGER PRIMARY KEY, strText TEXT COLLATE NOCASE, vb BLOB, dt TEXT, "
                           "amt INTEGER, dbl REAL, nSmall INTEGER CHECK(nSmall < 100), nSession INTEGER DEFAULT "
                           "(spid()), lParent INTEGER REFERENCES Note(lID), UNIQUE(strText))");
    }

    DatabaseError Refusal(const SqlText& statement, const std::vector<Value>& values = {})
    {
        return ErrorOf([&] { connection->Execute(statement, values); });
    }

    std::unique_ptr<CConnection> connection;
};

TEST_F(Connection, ValuesComeBackAsTheyWent)
{
    const std::string text("O'Brien \xC2\xA3 \0 end", 16);
    const Bytes bytes{0, 1, 0xFF, 0};
    const COleDateTime when(2024, 4, 5, 23, 59, 59, 999);
    const auto amount = Kiln::CAmt(std::numeric_limits<std::int64_t>::min());
    const SqlText insert = "INSERT Note (lID, strText, vb, dt, amt, dbl) VALUES (%I64d, %s, %b, %t, %m, %f)";
    EXPECT_EQ(connection->ExecuteDirectf(insert, 1LL << 40, text, bytes, when, amount, 0.1), 1);
    const CBufferedRowList list(*connection, "SELECT * FROM Note WHERE amt = %m", amount);
    ASSERT_EQ(list.GetCount(), 1);
    EXPECT_EQ(ToInt64(list.Get("LID")), 1LL << 40); // names in any case
    EXPECT_EQ(list.GetText("strtext").Str(), text);
    EXPECT_EQ(list.GetBinary("vb"), bytes);
    EXPECT_EQ(list.GetDateTime("dt"), when);
    EXPECT_EQ(list.GetAmount("amt"), amount);
    EXPECT_EQ(list.GetLong("nSmall", -7), -7);

    connection->ExecuteDirectf(insert, 1LL, "", Bytes{}, Kiln::CDate(), Kiln::CAmt(), nullptr);
    const CBufferedRowList empty(*connection, "SELECT strText, vb, dt, amt FROM Note WHERE lID = 1");
    EXPECT_TRUE(!empty.IsNull("strText") && !empty.IsNull("vb")) << "empty is not null";
    EXPECT_TRUE(empty.IsNull("dt") && empty.IsNull("amt") && empty.GetAmount("amt").IsNull());
}

TEST_F(Connection, WhatUsersTypeChangesNoStatement)
{
    for (const char* const typed : {"x'); DELETE FROM Note; --", "%s", "'", "[", "\\", "\"", "?"}) {
        SCOPED_TRACE(typed);
        connection->ExecuteDirectf("INSERT INTO Note (strText) VALUES ('%s')", typed);
        const CBufferedRowList list(*connection, "SELECT strText FROM Note WHERE strText = '%s'", CString(typed));
        ASSERT_EQ(list.GetCount(), 1);
        EXPECT_EQ(list.GetText(0), typed);
    }
    EXPECT_EQ(Count(*connection), 7);
}

TEST_F(Connection, ChecksArgumentsBeforeAnythingIsSent)
{
    const ::Test::Case<SqlText, std::vector<Value>> rows[] = {
        {"DELETE FROM Note WHERE strText = %s", {}, "too few"},
        {"DELETE FROM Note", {1}, "too many"},
        {"DELETE FROM Note WHERE strText = %s", {1}, "a number for text"},
        {"DELETE FROM Note WHERE lID = %d", {"1"}, "text for a number"},
        {"DELETE FROM Note WHERE lID = %d", {2147483648LL}, "beyond an int"},
        {"DELETE FROM Note WHERE lID = %ld", {-2147483649LL}, "beyond a long of 32 bits"},
        {"DELETE FROM Note WHERE lID = %I64d", {1.0}, "a double for an integer"},
        {"DELETE FROM Note WHERE vb = %b", {"1"}, "text for bytes"},
        {"DELETE FROM Note WHERE dt = %t", {"2024-04-06"}, "text for a date"},
        {"DELETE FROM Note WHERE amt = %m", {1}, "pounds, pence or ten-thousandths?"},
        {"DELETE FROM Note WHERE dbl = %f", {std::numeric_limits<double>::quiet_NaN()}, "not a number"},
    };
    connection->Begin();
    for (const auto& row : rows) {
        SCOPED_TRACE(row.why);
        const DatabaseError error = Refusal(row.in, row.out);
        EXPECT_EQ(error.GetCategory(), Category::Syntax);
        EXPECT_EQ(error.GetStatement(), row.in.View());
    }
    EXPECT_FALSE(connection->HasUnsavedWrites());
    EXPECT_EQ(connection->ExecuteDirectf("DELETE FROM Note WHERE lID = %ld AND vb = %b", nullptr, nullptr), 0);
}

TEST_F(Connection, ErrorsHaveCategoryAndCode)
{
    connection->ExecuteDirect("INSERT Note (lID, strText) VALUES (1, 's3cret')");
    const ::Test::Case<SqlText, std::pair<Category, const char*>> rows[] = {
        {"INSERT Note (lID) VALUES (1)", {Category::DuplicateKey, "1555"}, "primary key"},
        {"INSERT Note (strText) VALUES ('S3CRET')", {Category::DuplicateKey, "2067"}, "unique column, in any case"},
        {"INSERT Note (nSmall) VALUES (100)", {Category::Constraint, "275"}, "check"},
        {"INSERT Note (lParent) VALUES (99)", {Category::Constraint, "787"}, "foreign keys are on"},
        {"SELEKT 1", {Category::Syntax, "1"}, "no such statement"},
        {"SELECT nothing FROM Note", {Category::Syntax, "1"}, "no such column"},
        {"SELECT \"nothing\" FROM Note", {Category::Syntax, "1"}, "a name in quotes is never a string"},
        {"INSERT Note (lID) VALUES ('one')", {Category::Other, "20"}, "not the column's type"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.why);
        const DatabaseError error = Refusal(row.in);
        EXPECT_EQ(error.GetCategory(), row.out.first);
        EXPECT_EQ(error.GetCode(), row.out.second);
        EXPECT_EQ(error.GetStatement(), row.in.View());
        EXPECT_NE(std::string(error.what()).find(row.in.View()), std::string::npos);
    }
    const std::string message = Refusal("INSERT Note (strText) VALUES (%s)", {"s3cret"}).what();
    EXPECT_EQ(message.find("s3cret"), std::string::npos) << message;
}

TEST_F(Connection, CountsTheRowsOfItsOwnStatement)
{
    EXPECT_EQ(connection->ExecuteDirect("INSERT Note (lID) VALUES (1), (2), (3)"), 3);
    EXPECT_EQ(connection->ExecuteDirect("CREATE TABLE Another(lID INTEGER)"), 0);
    EXPECT_EQ(connection->ExecuteDirect("UPDATE Note SET nSmall = 1 WHERE lID > 1"), 2);
    EXPECT_EQ(connection->ExecuteDirect("DELETE FROM Note WHERE lID = 99"), 0);
    EXPECT_EQ(connection->ExecuteDirect("SELECT * FROM Note"), 0);
}

TEST_F(Connection, TellsOfChangesUnlessSuspended)
{
    connection->Script("CREATE VIEW AddNote AS SELECT lID FROM Note; CREATE TRIGGER Adds INSTEAD OF INSERT ON AddNote "
                       "BEGIN INSERT INTO Note (lID) VALUES (new.lID); END;");
    std::string told;
    connection->OnDirectStatement([&](std::string_view statement) { told += statement.substr(0, 6); });
    connection->ExecuteDirect("DELETE FROM Note WHERE lID = 1"); // nothing changes
    connection->ExecuteDirect("INSERT Note (lID) VALUES (2)");
    {
        const SuspendDirectSQLEvents outer(*connection);
        {
            const SuspendDirectSQLEvents inner(*connection);
        }
        connection->ExecuteDirect("INSERT Note (lID) VALUES (3)");
    }
    EXPECT_EQ(connection->ExecuteDirectf("EXEC AddNote %d", 4), 0) << "a call; the engine does not tell of what";
    connection->OnDirectStatement(nullptr);
    connection->ExecuteDirect("INSERT Note (lID) VALUES (5)");
    EXPECT_EQ(told, "INSERTEXEC A");
    EXPECT_EQ(Count(*connection), 4);
}

TEST_F(Connection, SessionIdsAreNeverUsedTwice)
{
    std::set<std::int64_t> ids{connection->GetSessionId()};
    for (int i = 0; i < 3; ++i) {
        const auto next = OpenPractice();
        next->Begin();
        next->ExecuteDirect("INSERT Note (lID) VALUES (10)");
        const CBufferedRowList list(*next, "SELECT nSession, @@SPID AS nMine FROM Note");
        EXPECT_EQ(list.GetLong("nSession"), next->GetSessionId());
        EXPECT_EQ(list.GetLong("nMine"), next->GetSessionId());
        ids.insert(next->GetSessionId());
        next->Rollback(); // gives the row back, and not the id
    }
    EXPECT_EQ(ids.size(), 4U);
}

TEST_F(Connection, StatementsArePushedOutAndSurviveAChangeOfTheirTable)
{
    connection->ExecuteDirect("INSERT Note (lID) VALUES (1)");
    EXPECT_EQ(CBufferedRowList(*connection, "SELECT * FROM Note").Get(7).GetInteger(), connection->GetSessionId());
    OpenPractice()->Script("ALTER TABLE Note ADD COLUMN nMore INTEGER DEFAULT 5");
    EXPECT_EQ(CBufferedRowList(*connection, "SELECT * FROM Note").GetInt("nMore"), 5);
    for (int i = 0; i < 1400; ++i)
        EXPECT_EQ(CBufferedRowList(*connection, "SELECT " + SqlText::Number(i % 700)).GetInt(0), i % 700);
}

TEST_F(Connection, RowListsRefuseWhatIsNotThere)
{
    CBufferedRowList list(*connection, "SELECT 1 AS a, 2 AS b, 3 AS a");
    for (const int position : {3, -1})
        EXPECT_EQ(ErrorOf([&] { list.Get(position); }).GetCategory(), Category::Other);
    EXPECT_EQ(ErrorOf([&] { list.Get("c"); }).GetCategory(), Category::Other);
    EXPECT_FALSE(list.MoveNext());
    EXPECT_FALSE(list.MoveNext());
    EXPECT_EQ(ErrorOf([&] { list.Get("a"); }).GetCategory(), Category::Other);
    EXPECT_TRUE(list.MoveFirst());
    EXPECT_EQ(list.GetInt("B"), 2);
    EXPECT_EQ(list.GetInt("a"), 1); // the first of that name, whatever was read before
    EXPECT_FALSE(CBufferedRowList().MoveFirst());
    const CBufferedRowList large(*connection, "SELECT 65537 AS nLarge, -32768 AS nSmall");
    EXPECT_EQ(large.GetShort("nLarge"), 0); // and not what is left of it in 16 bits
    EXPECT_EQ(large.GetShort("nSmall"), -32768);
}
