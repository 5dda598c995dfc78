#include "Cellar/Connection.h"

#include <limits>
#include <set>
#include <tuple>

#include "CellarTestSupport.h"

class Connection : public ::Test::OnDatabase
{
protected:
    void SetUp() override
    {
        connection = OpenPractice();
        ::Test::Declare(*connection, "CREATE TABLE Note(lID {Id}, strText {Text}, vb {Binary}, dt {DateTime}, "
                                     "amt {Money}, dbl {Double}, nSmall {Small} CHECK(nSmall < 100), nSession {Int} "
                                     "DEFAULT {Session}, lParent {Int} REFERENCES Note(lID), UNIQUE(strText))");
    }

    DatabaseError Refusal(const SqlText& statement, const std::vector<Value>& values = {})
    {
        return ErrorOf([&] { connection->Execute(statement, values); });
    }

    std::unique_ptr<CConnection> connection;
};
ON_BOTH_DATABASES(Connection);

TEST_P(Connection, ValuesComeBackAsTheyWent)
{
    const std::string text("O'Brien \xC2\xA3 \xF0\x9F\x98\x80 \\ ? {d} %s;");
    const Bytes bytes{0, 1, 0xFF, 0};
    const COleDateTime when(2024, 4, 5, 23, 59, 59, 999);
    const auto amount = Kiln::CAmt(std::numeric_limits<std::int64_t>::min());
    const SqlText insert = "INSERT Note (lID, strText, vb, dt, amt, dbl) VALUES (%I64d, %s, %b, %t, %m, %f)";
    EXPECT_EQ(connection->ExecuteDirectf(insert, 1LL << 30, text, bytes, when, amount, 0.1), 1);
    const CBufferedRowList list(*connection, "SELECT Note.*, %I64d AS nLarge FROM Note WHERE amt = %m", 1LL << 40,
                                amount);
    ASSERT_EQ(list.GetCount(), 1);
    EXPECT_EQ(list.GetInt64("LID"), 1LL << 30); // names in any case
    EXPECT_EQ(list.GetInt64("nLarge"), 1LL << 40);
    EXPECT_EQ(list.GetDouble("dbl"), 0.1);
    EXPECT_EQ(list.GetText("strtext").Str(), text);
    EXPECT_EQ(list.GetBinary("vb"), bytes);
    EXPECT_EQ(list.GetDateTime("dt"), when);
    EXPECT_EQ(list.GetAmount("amt"), amount);
    EXPECT_EQ(list.GetLong("nSmall", -7), -7);

    connection->ExecuteDirectf(insert, 1LL, "", Bytes{}, Kiln::CDate(), Kiln::CAmt(), nullptr);
    const CBufferedRowList empty(*connection, "SELECT strText, vb, dt, amt FROM Note WHERE lID = 1");
    EXPECT_TRUE(!empty.IsNull("strText") && !empty.IsNull("vb")) << "empty is not null";
    EXPECT_TRUE(empty.IsNull("dt") && empty.IsNull("amt") && empty.GetAmount("amt").IsNull());

    const std::string all("\0 in between", 12);
    if (::Test::IsOnServer())
        EXPECT_EQ(Refusal(insert, {2, all, nullptr, nullptr, nullptr, nullptr}).GetCategory(), Category::Constraint);
    else
        EXPECT_EQ(ToText(connection->Queryf("SELECT %s", all).rows[0][0]).Str(), all);
}

TEST_P(Connection, ValuesOfAnyLengthComeBack)
{
    std::string text, bytes;
    for (const std::size_t length : {1023U, 1024U, 2047U, 2048U, 4000U, 8001U, 100'000U, 5'000'000U}) {
        SCOPED_TRACE(length);
        text.resize(length, 'x');
        text.back() = '.';
        const std::string wide = "\xF0\x9F\x98\x80" + text + "\xC2\xA3"; // a pair of UTF-16 across any piece
        bytes.resize(length, '\0');
        connection->ExecuteDirectf("INSERT Note (strText, vb) VALUES (%s, %b)", wide.substr(0, 2000),
                                   Bytes(bytes.begin(), bytes.end()));
        const CBufferedRowList list(*connection, "SELECT %s AS strText, vb FROM Note", wide);
        EXPECT_TRUE(list.GetText(0).Str() == wide);
        EXPECT_EQ(list.GetBinary(1).size(), length);
        connection->ExecuteDirect("DELETE FROM Note");
    }
}

TEST_P(Connection, WhatUsersTypeChangesNoStatement)
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

TEST_P(Connection, ChecksArgumentsBeforeAnythingIsSent)
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

TEST_P(Connection, ErrorsHaveCategoryAndCode)
{
    connection->ExecuteDirect("INSERT Note (lID, strText) VALUES (1, 's3cret')");
    // the code of the embedded database, and of the server
    const ::Test::Case<SqlText, std::tuple<Category, const char*, const char*>> rows[] = {
        {"INSERT Note (lID) VALUES (1)", {Category::DuplicateKey, "1555", "23505"}, "primary key"},
        {"INSERT Note (strText) VALUES ('S3CRET')", {Category::DuplicateKey, "2067", "23505"}, "unique, in any case"},
        {"INSERT Note (lID) VALUES (7), (1)", {Category::DuplicateKey, "1555", "23505"}, "one of several rows"},
        {"UPDATE Note SET lID = 2 WHERE lID = 1; ", {Category::Constraint, "787", "23503"}, "foreign keys are on"},
        {"INSERT Note (nSmall) VALUES (100)", {Category::Constraint, "275", "23514"}, "check"},
        {"INSERT Note (lParent) VALUES (99)", {Category::Constraint, "787", "23503"}, "foreign keys are on"},
        {"SELEKT 1", {Category::Syntax, "1", "42601"}, "no such statement"},
        {"SELECT nothing FROM Note", {Category::Syntax, "1", "42703"}, "no such column"},
        {"SELECT \"nothing\" FROM Note", {Category::Syntax, "1", "42703"}, "a name in quotes is never a string"},
        {"INSERT Note (lID) VALUES ('one')", {Category::Other, "20", "22P02"}, "not the column's type"},
    };
    connection->ExecuteDirect("INSERT Note (lID, lParent) VALUES (5, 1)");
    for (const auto& row : rows) {
        SCOPED_TRACE(row.why);
        const auto& [category, embedded, server] = row.out;
        const DatabaseError error = Refusal(row.in);
        EXPECT_EQ(error.GetCategory(), category);
        EXPECT_EQ(error.GetCode(), ::Test::IsOnServer() ? server : embedded);
        EXPECT_EQ(error.GetStatement(), row.in.View());
        EXPECT_NE(std::string(error.what()).find(row.in.View()), std::string::npos);
    }
    for (const SqlText& statement : {SqlText("INSERT Note (strText) VALUES (%s)"),
                                     SqlText("INSERT Note (strText) "
                                             "SELECT %s"),
                                     SqlText("UPDATE Note SET nSmall = 100 WHERE strText = %s"),
                                     SqlText("SELECT * FROM Note WHERE lID / 0 = lID AND strText = %s AND x = 1")}) {
        const std::string message = Refusal(statement, {"s3cret"}).what();
        EXPECT_EQ(message.find("s3cret"), std::string::npos) << message;
    }
}

TEST_P(Connection, CountsTheRowsOfItsOwnStatement)
{
    EXPECT_EQ(connection->ExecuteDirect("INSERT Note (lID) VALUES (1), (2), (3)"), 3);
    EXPECT_EQ(connection->ExecuteDirect("CREATE TABLE Another(lID INTEGER)"), 0);
    EXPECT_EQ(connection->ExecuteDirect("UPDATE Note SET nSmall = 1 WHERE lID > 1"), 2);
    EXPECT_EQ(connection->ExecuteDirect("DELETE FROM Note WHERE lID = 99"), 0);
    EXPECT_EQ(connection->ExecuteDirect("SELECT * FROM Note"), 0);
}

TEST_P(Connection, TellsOfChangesUnlessSuspended)
{
    static constexpr const char* kColumns[] = {"strText"};
    connection->Script(connection->GetDialect().InsertProcedure("AddNote", "Note", kColumns));
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
    EXPECT_EQ(connection->ExecuteDirectf("EXEC AddNote %s", "4"), 0) << "a call; the engine does not tell of what";
    connection->OnDirectStatement(nullptr);
    connection->ExecuteDirect("INSERT Note (lID) VALUES (5)");
    EXPECT_EQ(told, "INSERTEXEC A");
    EXPECT_EQ(Count(*connection), 4);
}

TEST_P(Connection, SessionIdsAreNeverUsedTwice)
{
    std::vector<std::unique_ptr<CConnection>> open; // a server's numbers come back once a session has ended
    std::set<std::int64_t> ids{connection->GetSessionId()};
    for (int i = 0; i < 3; ++i) {
        const auto& next = open.emplace_back(OpenPractice());
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

TEST_P(Connection, StatementsArePushedOutAndSurviveAChangeOfTheirTable)
{
    connection->ExecuteDirect("INSERT Note (lID) VALUES (1)");
    EXPECT_EQ(CBufferedRowList(*connection, "SELECT * FROM Note").Get(7).GetInteger(), connection->GetSessionId());
    OpenPractice()->Script("ALTER TABLE Note ADD COLUMN nMore INTEGER DEFAULT 5");
    EXPECT_EQ(CBufferedRowList(*connection, "SELECT * FROM Note").GetInt("nMore"), 5);
    for (int i = 0; i < 600; ++i)
        EXPECT_EQ(CBufferedRowList(*connection, "SELECT " + SqlText::Number(i % 300)).GetInt(0), i % 300);
}

TEST_P(Connection, RowListsRefuseWhatIsNotThere)
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
