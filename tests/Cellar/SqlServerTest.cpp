// What reaches SQL Server, and what is made of its answers: a scripted one, since none runs here.

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
    const ::Test::Row<const char*, Category, const char*> rows[] = {
        {"23000 2627 Violation of PK. The duplicate key value is (Smith).", Category::DuplicateKey, "already", "a key"},
        {"23000 2601 Duplicate key. The duplicate key value is (Smith).", Category::DuplicateKey, "already",
         "an index"},
        {"23000 515 Cannot insert the value NULL into column 'lID'", Category::Constraint, "rule", "a NULL"},
        {"23000 547 The INSERT statement conflicted", Category::Constraint, "rule", "a foreign key"},
        {"22001 8152 String or binary data would be truncated.", Category::Constraint, "longer", "too long"},
        {"42000 2628 Data would be truncated. Truncated value: 'Smith'.", Category::Constraint, "longer",
         "with its value"},
        {"22018 245 Conversion failed for 'Smith' to int.", Category::Other, "does not fit", "a value in a message"},
        {"40001 1205 Transaction (Process ID 51) was deadlocked", Category::Busy, "try again", "deadlock"},
        {"42000 1222 Lock request time out period exceeded.", Category::Busy, "try again", "lock time-out"},
        {"HYT00 0 Query timeout expired", Category::Busy, "try again", "the driver's time-out"},
        {"42000 50000 lock request time out", Category::Busy, "try again", "a lock of the application"},
        {"42000 9002 The transaction log is full", Category::ReadOnly, "disk is full", "log"},
        {"42000 1105 Could not allocate space for object", Category::ReadOnly, "disk is full", "data"},
        {"42000 1101 Could not allocate a new page", Category::ReadOnly, "disk is full", "a page"},
        {"53100 0 could not extend file", Category::ReadOnly, "disk is full", "PostgreSQL's"},
        {"42000 3906 the database is read-only.", Category::ReadOnly, "can only be read", "a replica"},
        {"42000 229 The INSERT permission was denied", Category::ReadOnly, "right", "no right"},
        {"42S02 208 Invalid object name 'Note'.", Category::Syntax, "does not take", "no such table"},
        {"42000 102 Incorrect syntax near 'LIMIT'.", Category::Syntax, "does not take", "another's words"},
        {"08S01 10054 TCP Provider: Error code 0x2746", Category::LostConnection, "lost", "the server is gone"},
        {"HY000 0 Something else", Category::Other, "Something else", "anything else"},
    };
    for (const auto& [answer, category, says, why] : rows) {
        SCOPED_TRACE(why);
        const DatabaseError error = ErrorFor(std::string("error ") + answer);
        EXPECT_EQ(error.GetCategory(), category) << error.what();
        EXPECT_NE(error.GetReason().find(says), std::string::npos) << error.GetReason();
        EXPECT_EQ(std::string(error.what()).find("Smith"), std::string::npos) << "a value: " << error.what();
        EXPECT_EQ(error.GetStatement(), kInsert);
    }
}

TEST(SqlServer, SaysWhyItCannotBeOpened)
{
    const ::Test::Case<const char*, const char*> rows[] = {
        {"28000 18456 Login failed for user 'alice'.", "check UID and the password", "wrong password"},
        {"42000 4060 Cannot open database requested by the login.", "check Database", "no such database"},
        {"08001 10061 TCP Provider: Error code 0x274D", "check Servername", "no server"},
        {"08001 -1 SSL Provider: certificate verify failed", "certificate", "a stranger's certificate"},
        {"HY000 0 [a][b]Bad text 'UID=alice;pwd={pass;w}}rd-17};X=1'", "X=1", "quotes the text"},
        {"HY000 0 Bad text 'UID=alice;PASSWORD={pass;w", "check Servername", "which is cut"},
        {"HY000 0 Who is alice with pass;w}rd-17?", "with ***?", "the bare password"},
        {"HYT00 0 Login timeout expired", "that the server is running", "no answer"},
    };
    for (const auto& row : rows) {
        const ScriptedServer server(std::string("on CONNECT\nerror ") + row.in + "\n");
        const DatabaseError error = ErrorOf([&] { server.Open(); });
        EXPECT_EQ(error.GetCategory(), Category::CannotOpen) << row.in;
        EXPECT_NE(error.GetReason().find(row.out), std::string::npos) << error.GetReason();
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
    const ::Test::Row<const char*, std::size_t, std::size_t> rows[] = {
        {"B1", 0, 0, "nothing is durable before the end"},
        {"B2R", 0, 1, "the inner level is undone"},
        {"B3CC", 2, 1, "the rest stays"},
        {"B4R", 2, 2, "all of it undone"},
        {"5", 3, 2, "by itself again"},
    };
    for (const auto& [steps, durable, undone, why] : rows) {
        Take(*connection, steps);
        EXPECT_EQ(ScriptedServer::Lines("DURABLE").size(), durable) << why << ScriptedServer::Record();
        EXPECT_EQ(ScriptedServer::Lines("UNDONE").size(), undone) << why << ScriptedServer::Record();
    }
}

/// The server ends the transaction, or loses the connection, in the middle; the disk is full at the end.
TEST(SqlServer, SavesNothingOfATransactionThatFailed)
{
    const ::Test::Case<const char*, Category> rows[] = {
        {"on INSERT*third*\nerror 42000 9002 The transaction log is full\nends\n", Category::ReadOnly, "full"},
        {"on INSERT*third*\nerror 40001 1205 deadlocked\n", Category::Busy, "deadlock"},
        {"on INSERT*third*\nerror 08S01 10054 gone\n", Category::LostConnection, "lost"},
        {"on COMMIT*\nerror 42000 9002 The transaction log is full\nends\n", Category::ReadOnly, "full at the end"},
        {"dbms PostgreSQL\non INSERT*third*\nerror 53100 0 No space left\n", Category::ReadOnly, "PostgreSQL, full"},
        {"dbms PostgreSQL\non COMMIT*\nerror 53100 0 No space left\nends\n", Category::ReadOnly, "and at its end"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.why);
        const ScriptedServer server(row.in);
        const auto connection = server.Open();
        int failures = 0;
        const auto attempt = [&](auto action) {
            try {
                action();
            } catch (const DatabaseError& error) {
                EXPECT_TRUE(failures++ > 0 || error.GetCategory() == row.out) << error.what();
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
