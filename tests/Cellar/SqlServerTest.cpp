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

/// How it binds "values" of every type, "nulls" likewise, or bytes and a text of that length.
std::string Bound(CConnection& connection, const std::string& what)
{
    const std::size_t before = ScriptedServer::Lines("  ").size();
    const SqlText insert =
        "INSERT INTO [Note] ([strText], [nNumber], [lID], [lLong], [vbBytes], [dtTime], [amt], [dbl]) "
        "VALUES (%s, %d, %ld, %I64d, %b, %t, %m, %f)";
    Value moment("2024-04-06 10:11:12.123");
    MakeCanonical(ColumnType::DateTime, moment);
    if (what == "values")
        connection.ExecuteDirectf(insert, "Grüße €", 7, 8L, std::int64_t{1} << 40, Bytes(3), moment,
                                  Kiln::CAmt(-123400), 0.1);
    else if (what == "nulls")
        connection.Execute(insert, std::vector<Value>(8));
    else
        connection.ExecuteDirectf("UPDATE [Note] SET [vb] = %b WHERE [strText] = %s", Bytes(std::stoul(what)),
                                  std::string(std::stoul(what), 'x'));
    std::string shown;
    const std::vector<std::string> lines = ScriptedServer::Lines("  ");
    for (std::size_t i = before; i < lines.size(); ++i)
        shown += lines[i].substr(0, 80) + '\n';
    return shown;
}

} // namespace

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
/// What came of writes is shown, too. "bind WHAT" shows how that is sent.
TEST(SqlServer, StoriesGoAsTold)
{
    std::optional<Story> story;
    std::optional<ScriptedServer> server;
    ::Test::ExpectTranscript("Cellar/stories/sqlserver.txt", [&](const std::string& act) {
        const std::string script = ::Test::ReplacedAll(act.substr(act.find(' ') + 1), "\\n", "\n");
        if (act.starts_with("then "))
            return ::Test::WriteFile("script", script), std::string();
        if (act.starts_with("server")) {
            story.reset();
            server.emplace(act == "server" ? "" : script);
            story.emplace([&] { return server->Open(); });
            return std::string();
        }
        if (act.starts_with("bind "))
            return Bound(*server->Open(), act.substr(5));
        const std::size_t before = ScriptedServer::Record().size();
        std::string shown = (*story)(act);
        std::istringstream record(ScriptedServer::Record().substr(before));
        for (std::string line; std::getline(record, line);)
            if (line.starts_with("DURABLE") || line.starts_with("UNDONE"))
                shown += "> " + line + '\n';
        return shown;
    });
}
