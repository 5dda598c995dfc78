// What reaches SQL Server, and what is made of its answers: a scripted one, since none runs here.

#include <algorithm>

#include "Cellar/ValueTypes.h"
#include "CellarTestSupport.h"
#include "support/ScriptedServer.h"

namespace
{

using ::Test::ScriptedServer;

constexpr char kInsert[] = "INSERT INTO [Note] ([lID], [strText]) VALUES (%ld, %s)";

/// The error of one statement that the server answers so.
DatabaseError ErrorFor(const std::string& answer)
{
    const ScriptedServer server("on INSERT*\n" + answer + "\n");
    const auto connection = server.Open();
    return ErrorOf([&] { connection->ExecuteDirectf(kInsert, 1L, "Smith"); });
}

Category CategoryOf(const std::string& name)
{
    const char* const kNames[] = {"DuplicateKey", "Busy",       "LostConnection", "Constraint",
                                  "Syntax",       "CannotOpen", "ReadOnly",       "Other"};
    return static_cast<Category>(std::find(std::begin(kNames), std::end(kNames), name) - kNames);
}

} // namespace

TEST(SqlServer, IsKnownByWhatItCallsItself)
{
    const ScriptedServer server;
    EXPECT_STREQ(server.Open()->GetDialect().GetName(), "sqlserver");
    ::Test::WriteFile("script", "dbms PostgreSQL");
    EXPECT_STREQ(server.Open()->GetDialect().GetName(), "postgres");
    ::Test::WriteFile("script", "dbms Another");
    EXPECT_EQ(ErrorOf([&] { server.Open(); }).GetCategory(), Category::CannotOpen);
}

/// A NULL has the type of its placeholder: the server takes no text for bytes, not even a NULL.
TEST(SqlServer, TypesEveryValueAndEveryNull)
{
    const ScriptedServer server;
    const auto connection = server.Open();
    const SqlText insert =
        "INSERT INTO [Note] ([strText], [nNumber], [lID], [lLong], [vbBytes], [dtTime], [amt], [dbl]) "
        "VALUES (%s, %d, %ld, %I64d, %b, %t, %m, %f)";
    Value moment("2024-04-06 10:11:12.123");
    MakeCanonical(ColumnType::DateTime, moment);
    connection->ExecuteDirectf(insert, "Grüße €", 7, 8L, std::int64_t{1} << 40, Bytes(3), moment, Kiln::CAmt(-123400),
                               0.1);
    connection->ExecuteDirectf(insert, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr);
    const std::vector<std::string> bound = ScriptedServer::Lines("  ");
    ASSERT_EQ(bound.size(), 16u) << ScriptedServer::Record();
    const std::pair<const char*, const char*> rows[] = {
        {"SQL_C_WCHAR as SQL_WVARCHAR(4000,0) ", "7 characters: Grüße €"},
        {"SQL_C_SLONG as SQL_INTEGER(10,0) ", "7"},
        {"SQL_C_SLONG as SQL_INTEGER(10,0) ", "8"},
        {"SQL_C_SBIGINT as SQL_BIGINT(19,0) ", "1099511627776"},
        {"SQL_C_BINARY as SQL_VARBINARY(8000,0) ", "3 bytes"},
        {"SQL_C_TYPE_TIMESTAMP as SQL_TYPE_TIMESTAMP(23,3) ", "2024-04-06 10:11:12.123000000"},
        {"SQL_C_CHAR as SQL_NUMERIC(19,4) ", "8 bytes: -12.3400"},
        {"SQL_C_CHAR as SQL_DOUBLE(53,0) ", "3 bytes: 0.1"},
    };
    for (std::size_t i = 0; i < std::size(rows); ++i) {
        const std::string type = std::to_string(i + 1) + ": " + rows[i].first;
        EXPECT_EQ(bound[i], type + rows[i].second);
        EXPECT_EQ(bound[i + 8], type + "NULL");
    }
}

/// What is compared must not be sent as the types that the server compares with nothing (ntext, image).
TEST(SqlServer, BindsLongValues)
{
    const ScriptedServer server;
    const auto connection = server.Open();
    for (const std::size_t length : {0u, 1u, 4000u, 4001u, 8000u, 8001u, 70000u})
        connection->ExecuteDirectf("UPDATE [Note] SET [vb] = %b WHERE [strText] = %s", Bytes(length),
                                   std::string(length, 'x'));
    std::string sizes;
    for (const std::string& bound : ScriptedServer::Lines("  "))
        sizes += bound.substr(bound.find('('), bound.find(',') - bound.find('(')) + (bound[0] == '1' ? "" : " ");
    EXPECT_EQ(sizes, "(8000(4000 (8000(4000 (8000(4000 (8000(0 (8000(0 (0(0 (0(0 ");
}

TEST(SqlServer, ReadsEveryTypeAndNulls)
{
    // A pair of surrogates lies across the pieces in which long values come, wherever these end.
    std::string wide;
    for (int i = 0; i < 5001; ++i)
        wide += "\xF0\x9F\x98\x80";
    for (const char* const way : {"", "nototal\n"})
        for (const char* const before : {"", "x"}) {
            const std::string text = before + wide;
            const ScriptedServer server(
                "on SELECT*\n"
                "columns a:int b:nvarchar c:varbinary d:datetime2 e:date f:money g:float h:bit i:bigint\n" +
                std::string(way) + "row 5|" + text +
                "|0x00AB|2024-04-06 10:11:12.123|2024-04-05|-12.3400|0.1|1|1099511627776\n"
                "row null|null|null|null|null|null|null|null|null\nrow 0||0x|1753-01-01 00:00:00.000|0100-01-01|0.0001|"
                "-1e-5|0|-1\n");
            const auto connection = server.Open();
            const RowSet set = connection->Query("SELECT * FROM [Note]", {});
            ASSERT_EQ(set.rows.size(), 3u);
            const auto& row = set.rows[0];
            EXPECT_EQ(ToLong(row[0]), 5);
            EXPECT_EQ(ToText(row[1]).Str(), text);
            EXPECT_EQ(ToBytes(row[2]), (Bytes{0x00, 0xAB}));
            EXPECT_EQ(row[3].View(), "2024-04-06 10:11:12.123");
            EXPECT_EQ(row[4].View(), "2024-04-05");
            EXPECT_EQ(ToAmount(row[5]), Kiln::CAmt(-123400));
            EXPECT_EQ(ToDouble(row[6]), 0.1);
            EXPECT_EQ(ToLong(row[7]), 1);
            EXPECT_EQ(ToInt64(row[8]), std::int64_t{1} << 40);
            for (const Value& value : set.rows[1])
                EXPECT_TRUE(value.IsNull());
            EXPECT_EQ(ToText(set.rows[2][1]).Str(), "");
            EXPECT_FALSE(set.rows[2][1].IsNull());
            EXPECT_EQ(ToAmount(set.rows[2][5]), Kiln::CAmt(1));
        }
}

TEST(SqlServer, CountsRows)
{
    const ScriptedServer server("on UPDATE none*\ncount 0\non UPDATE three*\ncount 3\non EXEC*\ncount -1\n"
                                "on DELETE*\ncount 2\ninfo 01000 3621 The statement has been terminated.\n");
    const auto connection = server.Open();
    EXPECT_EQ(connection->ExecuteDirect("UPDATE none SET a = 1"), 0); // SQL_NO_DATA
    EXPECT_EQ(connection->ExecuteDirect("UPDATE three SET a = 1"), 3);
    EXPECT_EQ(connection->ExecuteDirect("EXEC MTDLogWrite"), 0); // it does not tell
    EXPECT_EQ(connection->ExecuteDirect("DELETE FROM a"), 2);    // SQL_SUCCESS_WITH_INFO
}

TEST(SqlServer, SaysWhatAnErrorMeans)
{
    for (const auto& [answer, category, says, why] :
         ::Test::Table<const char*, const char*, const char*>("Cellar/SqlServer.tsv")) {
        SCOPED_TRACE(why);
        const DatabaseError error = ErrorFor(std::string("error ") + answer);
        EXPECT_EQ(error.GetCategory(), CategoryOf(category)) << error.what();
        EXPECT_NE(error.GetReason().find(says), std::string::npos) << error.GetReason();
        EXPECT_EQ(std::string(error.what()).find("Smith"), std::string::npos) << "a value: " << error.what();
        EXPECT_EQ(error.GetStatement(), kInsert);
    }
}

TEST(SqlServer, SaysWhyItCannotBeOpened)
{
    for (const auto& [in, out, why] : ::Test::Table<const char*, const char*>("Cellar/SqlServer.tsv")) {
        const ScriptedServer server(std::string("on CONNECT\nerror ") + in + "\n");
        const DatabaseError error = ErrorOf([&] { server.Open(); });
        EXPECT_EQ(error.GetCategory(), Category::CannotOpen) << in;
        EXPECT_NE(error.GetReason().find(out), std::string::npos) << error.GetReason();
        EXPECT_EQ(std::string(error.what()).find("pass;w"), std::string::npos) << error.what();
    }
}

TEST(SqlServer, ShowsNoPassword)
{
    const ScriptedServer server("on INSERT*\nerror 42000 102 Incorrect syntax\n");
    const auto connection = server.Open();
    std::string seen = connection->GetConnectionText().Str();
    connection->OnSent([&](std::string_view statement) { seen += statement; });
    seen += ErrorOf([&] { connection->ExecuteDirectf(kInsert, 1L, "Smith"); }).what();
    EXPECT_EQ(seen.find("w}"), std::string::npos) << seen;
    EXPECT_EQ(seen.find("Smith"), std::string::npos) << seen;
    for (const char* const sent :
         {"PWD={pass;w}}rd-17}", "MARS_Connection=No"}) // with MARS a level ends with its batch
        EXPECT_NE(ScriptedServer::Record().find(sent), std::string::npos) << ScriptedServer::Record();
}

TEST(SqlServer, KeepsLevelsTogether)
{
    const ScriptedServer server;
    const auto connection = server.Open();
    for (const auto& [steps, durable, undone, why] :
         ::Test::Table<const char*, std::size_t, std::size_t>("Cellar/SqlServer.tsv")) {
        Take(*connection, steps);
        EXPECT_EQ(ScriptedServer::Lines("DURABLE").size(), durable) << why << ScriptedServer::Record();
        EXPECT_EQ(ScriptedServer::Lines("UNDONE").size(), undone) << why << ScriptedServer::Record();
    }
}

/// The server ends the transaction, or loses the connection, in the middle; the disk is full at the end.
TEST(SqlServer, SavesNothingOfATransactionThatFailed)
{
    for (const auto& [in, out, why] : ::Test::Table<const char*, const char*>("Cellar/SqlServer.tsv")) {
        SCOPED_TRACE(why);
        const Category category = CategoryOf(out); // clang's functions have no part of a row
        const ScriptedServer server(in);
        const auto connection = server.Open();
        int failures = 0;
        const auto attempt = [&](auto action) {
            try {
                action();
            } catch (const DatabaseError& error) {
                EXPECT_TRUE(failures++ > 0 || error.GetCategory() == category) << error.what();
            }
        };
        connection->Begin(Intent::Write);
        attempt([&] { connection->ExecuteDirect("INSERT INTO first VALUES (1)"); });
        attempt([&] { connection->ExecuteDirect("INSERT INTO second VALUES (1)"); });
        attempt([&] { connection->ExecuteDirect("INSERT INTO third VALUES (1)"); });
        attempt([&] { connection->ExecuteDirect("INSERT INTO fourth VALUES (1)"); });
        attempt([&] { connection->Commit(); });
        EXPECT_GE(failures, 1);
        while (connection->GetLevel() > 0)
            EXPECT_NO_THROW(connection->Rollback());
        EXPECT_TRUE(ScriptedServer::Lines("DURABLE").empty()) << ScriptedServer::Record();
        EXPECT_GE(ScriptedServer::Lines("UNDONE").size(), 2u) << ScriptedServer::Record();
    }
}

TEST(SqlServer, KeepsATransactionWhoseStatementFailed)
{
    const ScriptedServer server("on INSERT*second*\nerror 23000 2627 duplicate\n");
    const auto connection = server.Open();
    connection->Begin(Intent::Write);
    connection->ExecuteDirect("INSERT INTO first VALUES (1)");
    EXPECT_EQ(ErrorOf([&] { connection->ExecuteDirect("INSERT INTO second VALUES (1)"); }).GetCategory(),
              Category::DuplicateKey);
    connection->ExecuteDirect("INSERT INTO third VALUES (1)");
    connection->Commit();
    EXPECT_EQ(ScriptedServer::Lines("DURABLE").size(), 2u) << ScriptedServer::Record();
}

TEST(SqlServer, LeavesNoLevelOpenThatWasRefusedItsLock)
{
    const ScriptedServer server("on *applock*\nerror 42000 50000 no\non ROLLBACK*\nerror 42000 50000 no\n");
    const auto connection = server.Open();
    connection->Begin();
    ErrorOf([&] { connection->Begin(Intent::Write); });
    EXPECT_EQ(connection->GetLevel(), 1);
}

/// While a cursor walks, others may be sent.
TEST(SqlServer, RunsStatementsWhileACursorWalks)
{
    const ScriptedServer server("on SELECT*\ncolumns lID:int\nrow 1\nrow 2\nrow 3\n");
    const auto connection = server.Open();
    CRowCursor cursor(*connection, "SELECT [lID] FROM [Note]", std::vector<Value>{});
    long sum = 0;
    while (cursor.Next()) {
        sum += ToLong(cursor.Get(0));
        connection->ExecuteDirect("UPDATE [Note] SET [nSeen] = 1");
    }
    EXPECT_EQ(sum, 6);
    EXPECT_EQ(ScriptedServer::Lines("DURABLE").size(), 3u);
}

/// The error of a later one of several statements comes with its result only.
TEST(SqlServer, NoticesAnErrorBehindAFirstResult)
{
    const ScriptedServer server("on *CREATE TABLE b*\nerror 42000 2714 There is already an object named 'b'\nlater\n");
    const auto connection = server.Open();
    EXPECT_EQ(ErrorOf([&] { connection->Script("CREATE TABLE a (x int); CREATE TABLE b (x int)"); }).GetCategory(),
              Category::Syntax);
}
