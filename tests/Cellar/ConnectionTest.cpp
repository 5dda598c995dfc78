#include "Cellar/Connection.h"

#include <limits>
#include <set>
#include <thread>

#include "CellarTestSupport.h"
#include "support/Case.h"

namespace Cellar
{
namespace
{

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

    std::unique_ptr<CConnection> connection;
};

TEST_F(Connection, ValuesComeBackAsTheyWent)
{
    const std::string text("O'Brien \xC2\xA3 \0 end", 16);
    const Bytes bytes{0, 1, 0xFF, 0};
    const COleDateTime when(2024, 4, 5, 23, 59, 59, 999);
    const auto amount = Kiln::CAmt(std::numeric_limits<std::int64_t>::min());
    EXPECT_EQ(
        connection->ExecuteDirectf("INSERT Note (lID, strText, vb, dt, amt, dbl) VALUES (%I64d, %s, %b, %t, %m, %f)",
                                   1LL << 40, text, bytes, when, amount, 0.1),
        1);
    CBufferedRowList list(*connection, "SELECT * FROM Note WHERE amt = %m", amount);
    ASSERT_EQ(list.GetCount(), 1);
    EXPECT_EQ(ToInt64(list.Get("LID")), 1LL << 40); // names in any case
    EXPECT_EQ(list.GetText("strtext").Str(), text);
    EXPECT_EQ(list.GetBinary("vb"), bytes);
    EXPECT_EQ(list.GetDateTime("dt"), when);
    EXPECT_EQ(list.GetAmount("amt"), amount);
    EXPECT_EQ(ToDouble(list.Get("dbl")), 0.1);
    EXPECT_TRUE(list.IsNull("nSmall"));
    EXPECT_EQ(list.GetLong("nSmall", -7), -7);
    EXPECT_EQ(list.Get(0), list.Get("lID"));
}

TEST_F(Connection, EmptyIsNotNull)
{
    connection->ExecuteDirectf("INSERT Note (lID, strText, vb, dt, amt) VALUES (%d, %s, %b, %t, %m)", 1, "", Bytes{},
                               Kiln::CDate(), Kiln::CAmt());
    const CBufferedRowList list(*connection, "SELECT strText, vb, dt, amt FROM Note");
    EXPECT_FALSE(list.IsNull("strText"));
    EXPECT_FALSE(list.IsNull("vb"));
    EXPECT_TRUE(list.IsNull("dt"));
    EXPECT_TRUE(list.IsNull("amt"));
    EXPECT_TRUE(list.GetAmount("amt").IsNull());
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
        const DatabaseError error = ErrorOf([&] { connection->Execute(row.in, row.out); });
        EXPECT_EQ(error.GetCategory(), Category::Syntax);
        EXPECT_EQ(error.GetStatement(), row.in.View());
    }
    EXPECT_FALSE(connection->HasUnsavedWrites());
    EXPECT_EQ(connection->ExecuteDirectf("DELETE FROM Note WHERE lID = %ld AND vb = %b", nullptr, nullptr), 0);
}

TEST_F(Connection, ErrorsHaveCategoryAndCode)
{
    connection->ExecuteDirect("INSERT Note (lID, strText) VALUES (1, 'a')");
    const struct
    {
        SqlText statement;
        Category category;
        const char* code;
        const char* why;
    } rows[] = {
        {"INSERT Note (lID) VALUES (1)", Category::DuplicateKey, "1555", "primary key"},
        {"INSERT Note (strText) VALUES ('A')", Category::DuplicateKey, "2067", "unique column, in any case"},
        {"INSERT Note (nSmall) VALUES (100)", Category::Constraint, "275", "check"},
        {"INSERT Note (lParent) VALUES (99)", Category::Constraint, "787", "foreign keys are on"},
        {"SELEKT 1", Category::Syntax, "1", "no such statement"},
        {"SELECT nothing FROM Note", Category::Syntax, "1", "no such column"},
        {"SELECT \"nothing\" FROM Note", Category::Syntax, "1", "a name in quotes is never a string"},
        {"INSERT Note (lID) VALUES ('one')", Category::Other, "20", "not the column's type"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.why);
        const DatabaseError error = ErrorOf([&] { connection->ExecuteDirect(row.statement); });
        EXPECT_EQ(error.GetCategory(), row.category);
        EXPECT_EQ(error.GetCode(), row.code);
        EXPECT_EQ(error.GetStatement(), row.statement.View());
        EXPECT_NE(std::string(error.what()).find(row.statement.View()), std::string::npos);
    }
}

TEST_F(Connection, ErrorsShowNoValues)
{
    connection->ExecuteDirectf("INSERT Note (strText) VALUES (%s)", "s3cret");
    const DatabaseError error =
        ErrorOf([&] { connection->ExecuteDirectf("INSERT Note (strText) VALUES (%s)", "s3cret"); });
    EXPECT_EQ(std::string(error.what()).find("s3cret"), std::string::npos) << error.what();
}

TEST_F(Connection, CountsTheRowsOfItsOwnStatement)
{
    EXPECT_EQ(connection->ExecuteDirect("INSERT Note (lID) VALUES (1), (2), (3)"), 3);
    EXPECT_EQ(connection->ExecuteDirect("CREATE TABLE Another(lID INTEGER)"), 0);
    EXPECT_EQ(connection->ExecuteDirect("UPDATE Note SET nSmall = 1 WHERE lID > 1"), 2);
    EXPECT_EQ(connection->ExecuteDirect("DELETE FROM Note WHERE lID = 99"), 0);
    EXPECT_EQ(connection->ExecuteDirect("SELECT * FROM Note"), 0);
}

TEST_F(Connection, CallsGoThroughAView)
{
    connection->Script("CREATE TABLE Log(strA TEXT, strB TEXT);"
                       "CREATE VIEW LogWrite AS SELECT strA, strB FROM Log;"
                       "CREATE TRIGGER LogWriteInsert INSTEAD OF INSERT ON LogWrite "
                       "BEGIN INSERT INTO Log VALUES (new.strA, new.strB); END;");
    std::string told;
    connection->OnDirectStatement([&](std::string_view statement) { told = statement; });
    EXPECT_EQ(connection->ExecuteDirectf("EXEC LogWrite %s, %s", "a", "b"), 0); // the engine does not tell
    EXPECT_EQ(told, "EXEC LogWrite %s, %s");
    const CBufferedRowList list(*connection, "SELECT strA, strB FROM Log");
    ASSERT_EQ(list.GetCount(), 1);
    EXPECT_EQ(list.GetText("strB"), "b");
}

TEST_F(Connection, TellsOfChangesUnlessSuspended)
{
    int told = 0;
    connection->OnDirectStatement([&](std::string_view) { ++told; });
    connection->ExecuteDirect("INSERT Note (lID) VALUES (1)");
    EXPECT_EQ(told, 1);
    connection->ExecuteDirect("DELETE FROM Note WHERE lID = 99");
    EXPECT_EQ(told, 1); // nothing changed
    {
        const SuspendDirectSQLEvents outer(*connection);
        {
            const SuspendDirectSQLEvents inner(*connection);
            EXPECT_TRUE(connection->AreDirectEventsSuspended());
        }
        connection->ExecuteDirect("INSERT Note (lID) VALUES (2)");
        EXPECT_EQ(told, 1);
    }
    EXPECT_FALSE(connection->AreDirectEventsSuspended());
    connection->ExecuteDirect("INSERT Note (lID) VALUES (3)");
    EXPECT_EQ(told, 2);
    connection->OnDirectStatement(nullptr);
    connection->ExecuteDirect("INSERT Note (lID) VALUES (4)");
    EXPECT_EQ(told, 2);
}

TEST_F(Connection, SessionIdsAreNeverUsedTwice)
{
    std::set<std::int64_t> ids{connection->GetSessionId()};
    for (int i = 0; i < 3; ++i) {
        const auto next = OpenPractice();
        next->Begin();
        next->ExecuteDirectf("INSERT Note (lID) VALUES (%d)", 10);
        const CBufferedRowList list(*next, "SELECT nSession, @@SPID AS nMine FROM Note WHERE lID = 10");
        EXPECT_EQ(list.GetLong("nSession"), next->GetSessionId());
        EXPECT_EQ(list.GetLong("nMine"), next->GetSessionId());
        ids.insert(next->GetSessionId());
        next->Rollback(); // gives the row back, and not the id
    }
    EXPECT_EQ(ids.size(), 4U);
}

TEST_F(Connection, ManyDifferentStatementsPushOldOnesOut)
{
    for (int round = 0; round < 2; ++round)
        for (int i = 0; i < 700; ++i)
            EXPECT_EQ(CBufferedRowList(*connection, "SELECT " + SqlText::Number(i)).GetInt(0), i);
}

TEST_F(Connection, AStatementSurvivesAChangeOfItsTable)
{
    connection->ExecuteDirect("INSERT Note (lID) VALUES (1)");
    EXPECT_EQ(CBufferedRowList(*connection, "SELECT * FROM Note").Get(7).integer, connection->GetSessionId());
    OpenPractice()->Script("ALTER TABLE Note ADD COLUMN nMore INTEGER DEFAULT 5");
    EXPECT_EQ(CBufferedRowList(*connection, "SELECT * FROM Note").GetInt("nMore"), 5);
}

TEST_F(Connection, RowListsRefuseWhatIsNotThere)
{
    CBufferedRowList list(*connection, "SELECT 1 AS a, 2 AS b, 3 AS a");
    EXPECT_EQ(ErrorOf([&] { list.Get("c"); }).GetCategory(), Category::Other);
    EXPECT_EQ(ErrorOf([&] { list.Get(3); }).GetCategory(), Category::Other);
    EXPECT_EQ(ErrorOf([&] { list.Get(-1); }).GetCategory(), Category::Other);
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

} // namespace
} // namespace Cellar
