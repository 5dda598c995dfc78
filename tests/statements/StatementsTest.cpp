// Every statement of the library, in every dialect: the golden files are all that reaches a database. They are written
// anew with MORVUT_WRITE_TRANSCRIPTS in the environment, to be read before they are kept:
//
//   written.txt         what stands whole in the sources
//   sent.DATABASE.sql   what the library puts together, as it is sent
//   schema.DATABASE.sql what a new practice is made with

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <regex>
#include <sstream>

#include "Brix/Schema.h"
#ifdef CELLAR_ODBC_FAKE
#include "support/ScriptedServer.h"
#endif
#include "Scenario.h"
#include "support/Practice.h"
#include "support/SqliteTool.h"

namespace
{

using Cellar::Dialect;
namespace fs = std::filesystem;

struct SourceText
{
    std::string place; // file:line
    std::string text;  // literals that follow one another are one
};

/// The string literals of a C++ source.
std::vector<SourceText> LiteralsOf(const std::string& name, const std::string& source)
{
    static constexpr struct
    {
        std::string_view begin, end;
        bool isText, hasEscapes;
    } kKinds[] = {{"//", "\n", false, false},
                  {"/*", "*/", false, false},
                  {"'", "'", false, true},
                  {"R\"(", ")\"", true, false},
                  {"\"", "\"", true, true}};
    std::vector<SourceText> texts;
    bool follows = false; // only blanks and remarks since the last literal
    const auto stands = [&](std::string_view what, std::size_t at) {
        return source.compare(at, what.size(), what) == 0;
    };
    for (std::size_t at = 0; at < source.size();) {
        const auto* const kind = std::find_if(std::begin(kKinds), std::end(kKinds), [&](const auto& each) {
            const bool isSeparator = each.begin == "'" && at > 0 &&
                                     std::isalnum(static_cast<unsigned char>(source[at - 1])); // between digits
            return !isSeparator && stands(each.begin, at);
        });
        if (kind == std::end(kKinds)) {
            follows = follows && std::isspace(static_cast<unsigned char>(source[at]));
            ++at;
            continue;
        }
        const std::size_t start = at;
        std::string text;
        for (at += kind->begin.size(); at < source.size() && !stands(kind->end, at); ++at)
            if (kind->hasEscapes && source[at] == '\\')
                text += source[++at] == 'n' ? '\n' : source[at];
            else
                text += source[at];
        at += kind->end.size();
        if (kind->isText && follows)
            texts.back().text += text;
        else if (kind->isText)
            texts.push_back({name + ":" + std::to_string(1 + std::count(&source[0], &source[start], '\n')), text});
        follows = kind->isText || (follows && kind->begin != "'");
    }
    return texts;
}

bool HoldsSql(const std::string& text)
{
    static const std::regex words("\\b(SELECT|INSERT|UPDATE|DELETE|EXEC|CALL|CREATE|ALTER|DROP|PRAGMA|LOCK|SAVE|BEGIN|"
                                  "COMMIT|ROLLBACK|SAVEPOINT|RELEASE|FROM|WHERE|AND|OR|NOT|NULL|VALUES|ORDER|GROUP|"
                                  "HAVING|CASE|WHEN|ELSE|COALESCE|MAX|MIN|COUNT|SUM|TOP|LIMIT|DESC|JOIN|EXISTS|IN|IS|"
                                  "BETWEEN|LIKE|UNION|SET|TRANSACTION|NULLS|DEFAULT|COLLATE|IDENTITY)\\b");
    return std::regex_search(text, words);
}

/// Every string of components and apps that holds words of SQL in capitals, in the order of files and lines.
std::vector<SourceText> SqlInSources(const std::string& root)
{
    std::vector<std::string> files;
    for (const char* const folder : {"components", "apps"})
        for (const auto& entry : fs::recursive_directory_iterator(fs::path(root) / folder)) {
            const fs::path kind = entry.path().extension();
            if (kind == ".cpp" || kind == ".h" || kind == ".def")
                files.push_back(fs::relative(entry.path(), root).generic_string());
        }
    std::sort(files.begin(), files.end());
    std::vector<SourceText> found;
    for (const std::string& file : files) {
        std::ostringstream source;
        source << std::ifstream(fs::path(root) / file).rdbuf();
        for (SourceText& text : LiteralsOf(file, source.str()))
            if (HoldsSql(text.text))
                found.push_back(std::move(text));
    }
    return found;
}

/// It begins with a verb and can stand for itself: no name, list or condition is missing at its end.
bool IsWholeStatement(const std::string& text)
{
    static const std::regex verb("^(SELECT|INSERT|UPDATE|DELETE|EXEC)\\b[^]*[^ (,[]$");
    const auto opened = std::count(text.begin(), text.end(), '('), closed = std::count(text.begin(), text.end(), ')');
    static const std::regex verbOnly("^[A-Z]+$");
    return opened == closed && std::regex_match(text, verb) && !std::regex_match(text, verbOnly);
}

const Dialect* const kDialects[] = {&Cellar::SqliteDialect(), &Cellar::PostgresDialect(), &Cellar::SqlServerDialect()};

std::string GoldenPath(const std::string& name)
{
    return std::string(STATEMENTS_ROOT "/tests/statements/golden/") + name;
}

void ExpectGolden(const std::string& name, const std::string& text)
{
    const std::string path = GoldenPath(name);
    if (std::getenv("MORVUT_WRITE_TRANSCRIPTS"))
        std::ofstream(path) << text;
    std::istringstream now(text), kept(::Test::ReadFile(path));
    std::string line, keptLine;
    for (int number = 1; std::getline(now, line); ++number) {
        std::getline(kept, keptLine);
        ASSERT_EQ(line, keptLine) << name << ":" << number;
    }
    EXPECT_FALSE(std::getline(kept, keptLine)) << name << " holds more: " << keptLine;
}

const std::vector<SourceText>& Sources()
{
    static const auto& texts = *new std::vector<SourceText>(SqlInSources(STATEMENTS_ROOT));
    return texts;
}

/// Not statements, although they hold such words; and what no golden file can hold.
bool IsExempt(const SourceText& source)
{
    const std::pair<const char*, const char*> exempt[] = {
        {"apps/hmrc-sandbox/", ""},                    // methods of HTTP, messages
        {"components/Cellar/Connection.cpp", "BEGIN"}, // for messages
        {"components/Cellar/drivers/", ""},            // what opens, steers and ends a session is each driver's own
        {"apps/morv/Backup.cpp", "PRAGMA page_size"},  // of a file
        {"", "EXISTS"},                                // a code of errors
        {"", "EXEC names no procedure"},
        {"", "TOP takes a number in brackets"},
        // Each database has its own word for the session; what has no workstation is sent where no mark can be set.
        {"components/MorvUt/users/locks/UserLockFile.cpp", " where userid = '%s' AND ConnectionID=@@SPID"},
        {"components/MorvUt/users/locks/UserLockFile.cpp", " (UserID ) VALUES('%s')"},
        {"components/MorvUt/users/locks/UserLockFile.cpp", " ( UserId ) SELECT '%s'"},
        {"components/Cellar/Dialect.cpp", " DEFAULT VALUES"}, // no procedure of ours has no arguments
    };
    static const std::regex word("[A-Z]+"); // of a table of words
    return std::regex_match(source.text, word) ||
           std::any_of(std::begin(exempt), std::end(exempt), [&](const auto& each) {
               return source.place.starts_with(each.first) && (!*each.second || source.text == each.second);
           });
}

/// As it is sent: placeholders are question marks, without a cast; names have the same marks in every database.
std::string AsSent(const std::string& text)
{
    static const std::regex placeholder("'?%(s|d|ld|I64d|b|t|m|f)\\b'?|\\?::\\w+"), mark("[\\[\\]]");
    return std::regex_replace(std::regex_replace(text, placeholder, "?"), mark, "\"");
}

std::string Joined(const std::vector<std::string>& statements)
{
    std::string text;
    for (const std::string& statement : statements)
        text += statement + (statement.ends_with('\n') ? "" : statement.ends_with(';') ? "\n" : ";\n");
    return text;
}

} // namespace

TEST(Statements, StandInTheSourcesAsKept)
{
    std::map<std::string, std::string> statements; // and what they become
    for (const SourceText& source : Sources()) {
        if (!IsWholeStatement(source.text) || IsExempt(source) || statements.contains(source.text))
            continue;
        for (const Dialect* const dialect : kDialects)
            statements[source.text] +=
                std::string(dialect->GetName()) + ": " + dialect->Translate(source.text).text + "\n";
    }
    std::string text = "# Every statement that stands whole in the sources: T-SQL, then what each database gets.\n";
    for (const auto& [tsql, translations] : statements)
        text += "\n" + tsql + "\n" + translations;
    ExpectGolden("written.txt", text);
}

TEST(Statements, MakeTheSchemaAsKept)
{
    for (const Dialect* const dialect : kDialects)
        ExpectGolden(std::string("schema.") + dialect->GetName() + ".sql", Brix::SchemaScript(*dialect));
}

TEST(Statements, AreSentAsKept)
{
    ::Test::SetNow(2024, 4, 6);
    const auto send = [](const char* name, std::unique_ptr<Cellar::CConnection> whole,
                         std::unique_ptr<Cellar::CConnection> older) {
        std::vector<std::string> sent = SendEverything(std::move(whole));
        for (std::string& statement : SendUpgrade(std::move(older)))
            if (std::find(sent.begin(), sent.end(), statement) == sent.end())
                sent.push_back(std::move(statement));
        ExpectGolden(std::string("sent.") + name + ".sql", Joined(sent));
        Quarry::SetConnection(nullptr);
    };
    auto whole = ::Test::Practice::Open();
    Brix::CreateSchema(*whole);
    ::Test::Execute(::Test::TempDir() + "/older.db", ::Test::ReadFile(STATEMENTS_ROOT "/tests/Brix/practice-1.sql"));
    send("sqlite", std::move(whole), ::Test::Practice::Open("older.db"));
#ifdef CELLAR_ODBC_FAKE
    for (const auto& [name, product] : {std::pair("postgres", "PostgreSQL"), {"sqlserver", "Microsoft SQL Server"}})
        send(name, ::Test::ScriptedServer("dbms " + std::string(product) + '\n' + WholePractice()).Open(),
             ::Test::ScriptedServer("dbms " + std::string(product) + '\n' + OlderPractice()).Open());
#endif
}

/// A statement that nobody listed would be missed by all that reads the golden files.
TEST(Statements, AreAllKept)
{
    std::string kept;
    for (const auto& entry : std::filesystem::directory_iterator(GoldenPath("")))
        kept += ::Test::ReadFile(entry.path().string());
    kept = AsSent(kept);
    for (const SourceText& source : Sources()) {
        EXPECT_TRUE(IsExempt(source) || kept.find(AsSent(source.text)) != std::string::npos)
            << source.place << " holds SQL that is in no golden file (tests/statements): " << source.text;
    }
    EXPECT_GT(Sources().size(), 150u) << "the sources are not read";
}
