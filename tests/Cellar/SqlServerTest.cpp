// What reaches SQL Server, and what is made of its answers: a scripted one, since none runs here.

#include <algorithm>

#include "Cellar/ValueTypes.h"
#include "Story.h"
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
        {"SQL_TYPE_TIMESTAMP as SQL_TYPE_TIMESTAMP(23,3) ", "2024-04-06 10:11:12.123000000"},
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
            std::string shown;
            for (const auto& row : set.rows)
                for (std::size_t i = 0; i < row.size(); ++i)
                    shown += (row[i].IsNull() ? "null" : ToText(row[i]).Str()) + (i < 8 ? "|" : "\n");
            EXPECT_EQ(shown, "5|" + text +
                                 "||2024-04-06 10:11:12.123|2024-04-05|-12.34|0.1|1|1099511627776\n"
                                 "null|null|null|null|null|null|null|null|null\n"
                                 "0|||1753-01-01 00:00:00.000|0100-01-01|0.0001|-1e-05|0|-1\n");
            EXPECT_EQ(ToBytes(set.rows.at(0)[2]), (Bytes{0x00, 0xAB})) << "which are no text";
        }
}

TEST(SqlServer, SaysWhatAnErrorMeans)
{
    for (const auto& [answer, category, says, why] :
         ::Test::Table<const char*, const char*, const char*>("Cellar/SqlServer.tsv")) {
        SCOPED_TRACE(why);
        const DatabaseError error = ErrorFor(std::string("error ") + answer);
        EXPECT_STREQ(NameOf(error.GetCategory()), category) << error.what();
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

/// "server SCRIPT" is another server, with \n for the ends of lines, and "then SCRIPT" what it is to later connections.
/// What came of writes is shown, too.
TEST(SqlServer, StoriesGoAsTold)
{
    std::optional<Story> story;
    std::optional<ScriptedServer> server;
    ::Test::ExpectTranscript(CELLAR_STORIES "sqlserver.txt", [&](const std::string& act) {
        const std::string script = ::Test::ReplacedAll(act.substr(act.find(' ') + 1), "\\n", "\n");
        if (act.starts_with("then "))
            return ::Test::WriteFile("script", script), std::string();
        if (act.starts_with("server")) {
            story.reset();
            server.emplace(act == "server" ? "" : script);
            story.emplace([&] { return server->Open(); });
            return std::string();
        }
        const std::size_t before = ScriptedServer::Record().size();
        std::string shown = (*story)(act);
        std::istringstream record(ScriptedServer::Record().substr(before));
        for (std::string line; std::getline(record, line);)
            if (line.starts_with("DURABLE") || line.starts_with("UNDONE"))
                shown += "> " + line + '\n';
        return shown;
    });
}
