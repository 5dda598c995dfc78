#include "Cellar/Dialect.h"

#include <sstream>

#include "CellarTestSupport.h"
#include "support/Case.h"

namespace Cellar
{
namespace
{

struct Row
{
    const char* tsql;
    const char* sqlite; // null: as in T-SQL
    const char* postgres;
    const char* sqlServer;
    const char* why;
};

constexpr Row kRows[] = {
    {"SELECT [a b], [A]]\"b] FROM [T]", "SELECT [a b], \"A]\"\"b\" FROM [T]", "SELECT \"a b\", \"a]\"\"b\" FROM \"t\"",
     nullptr, "names in brackets"},
    {"SELECT \"Na\"\"me\" FROM t", nullptr, "SELECT \"na\"\"me\" FROM t", nullptr, "names in quotes"},
    {"INSERT t (a) VALUES (1)", "INSERT INTO t (a) VALUES (1)", "INSERT INTO t (a) VALUES (1)", nullptr,
     "INSERT without INTO"},
    {"insert  into t (a) VALUES (1)", nullptr, nullptr, nullptr, "INSERT with INTO"},
    {"DELETE FROM t WHERE c=@@SPID", "DELETE FROM t WHERE c=(spid())", "DELETE FROM t WHERE c=pg_backend_pid()",
     nullptr, "session id"},
    {"EXEC Log %s, N'a,b' ;", "INSERT INTO Log VALUES (?, 'a,b');", "CALL Log(?, 'a,b');", "EXEC Log ?, N'a,b' ;",
     "procedure with arguments"},
    {"execute [Log]", "INSERT INTO [Log] DEFAULT VALUES", "CALL \"log\"()", nullptr, "procedure without arguments"},
    {"SELECT 0xAB, 0xABC, 0x", "SELECT X'AB', X'0ABC', X''", "SELECT '\\xAB'::bytea, '\\x0ABC'::bytea, '\\x'::bytea",
     nullptr, "bytes"},
    {"SELECT N'it''s', n'x'", "SELECT 'it''s', 'x'", "SELECT 'it''s', 'x'", nullptr, "national strings"},
    {"SELECT GetDate ( ), getdate FROM t", "SELECT (strftime('%Y-%m-%d %H:%M:%f','now','localtime')), getdate FROM t",
     "SELECT localtimestamp(3), getdate FROM t", nullptr, "now, and a column of that name"},
    {"SELECT '[a] @@SPID 0xAB GETDATE() -- /*', [0xAB] FROM t", nullptr,
     "SELECT '[a] @@SPID 0xAB GETDATE() -- /*', \"0xab\" FROM t", nullptr, "nothing happens in strings and names"},
    {"SELECT 1 -- %s ? '\n, 2 /* a /* %d ' */ b */ FROM t", "SELECT 1  \n, 2   FROM t", "SELECT 1  \n, 2   FROM t",
     "SELECT 1  \n, 2   FROM t", "comments go, nested ones whole"},
    {"SELECT 7 %% 4, 'a%%' , '?'", "SELECT 7 % 4, 'a%' , '?'", "SELECT 7 % 4, 'a%' , '?'", "SELECT 7 % 4, 'a%' , '?'",
     "per cent signs, and a question mark in a string"},
    {"SELECT a FROM t WHERE b = '%s' AND c = N'%s'", "SELECT a FROM t WHERE b = ? AND c = ?",
     "SELECT a FROM t WHERE b = ? AND c = ?", "SELECT a FROM t WHERE b = ? AND c = ?", "placeholders in quotes"},
    {"SELECT 1.5e-3, 1e5, .5, 12, 1e FROM t;", nullptr, nullptr, nullptr, "numbers, and a semicolon at the end"},
};

TEST(Dialect, RewritesTokensAndNothingElse)
{
    for (const Row& row : kRows) {
        SCOPED_TRACE(row.why);
        EXPECT_EQ(SqliteDialect().Translate(row.tsql).text, row.sqlite ? row.sqlite : row.tsql);
        EXPECT_EQ(PostgresDialect().Translate(row.tsql).text, row.postgres ? row.postgres : row.tsql);
        EXPECT_EQ(SqlServerDialect().Translate(row.tsql).text, row.sqlServer ? row.sqlServer : row.tsql);
    }
}

TEST(Dialect, KnowsThePlaceholders)
{
    using Type = Placeholder::Type;
    const PreparedText prepared = SqliteDialect().Translate("SELECT %s,%d,%ld,%I64d,%b,%t,%m,%f,'%s'");
    EXPECT_EQ(prepared.text, "SELECT ?,?,?,?,?,?,?,?,?");
    const Type types[] = {Type::Text,     Type::Int,   Type::Long, Type::Int64, Type::Binary,
                          Type::DateTime, Type::Money, Type::Real, Type::Text};
    ASSERT_EQ(prepared.placeholders.size(), std::size(types));
    for (std::size_t i = 0; i < std::size(types); ++i)
        EXPECT_EQ(prepared.placeholders[i].type, types[i]) << i;
}

TEST(Dialect, RefusesWhatItCannotRead)
{
    const struct
    {
        const char* tsql;
        const char* why;
    } rows[] = {
        {"SELECT %x", "unknown placeholder"},
        {"SELECT %", "a per cent sign alone"},
        {"SELECT %day", "more letters than the placeholder has"},
        {"SELECT ' %s'", "a placeholder and a blank in quotes"},
        {"SELECT '%d'", "only text may stand in quotes"},
        {"SELECT '50%'", "a per cent sign that is not doubled"},
        {"SELECT 'abc''", "open string after a doubled quote"},
        {"SELECT [abc", "open name"},
        {"SELECT \"abc", "open name in quotes"},
        {"SELECT 1 /* /* */", "open comment"},
        {"SELECT 1 /*/", "a star that opens cannot close"},
        {"SELECT @@VERSION", "another system value"},
        {"SELECT @a", "a variable"},
        {"SELECT ?", "a parameter of the engine"},
        {"SELECT :a", "a named parameter of the engine"},
        {"SELECT $a", "another"},
        {"SELECT `a`", "a quote of another language"},
        {"SELECT 1; DELETE FROM t", "two statements"},
        {"EXEC Log 1; DELETE FROM t", "two, the first a call"},
        {"EXEC ", "a call of nothing"},
        {"", "no statement"},
        {" /* */ ;", "nothing but a comment"},
    };
    for (const auto& row : rows)
        for (const Dialect* const dialect : {&SqliteDialect(), &PostgresDialect(), &SqlServerDialect()}) {
            SCOPED_TRACE(std::string(row.why) + ", " + dialect->GetName());
            const DatabaseError error = ErrorOf([&] { dialect->Translate(row.tsql); });
            EXPECT_EQ(error.GetCategory(), Category::Syntax);
            EXPECT_EQ(error.GetStatement(), row.tsql);
        }
}

TEST(Dialect, TellsReadingFromWriting)
{
    const ::Test::Case<const char*, Effect> rows[] = {
        {" -- DELETE\n SELECT 'INSERT' FROM [Update]", Effect::Read, "words in comments, strings and names"},
        {"WITH a AS (SELECT 1 b) SELECT b FROM a", Effect::Read, "a table expression that reads"},
        {"WITH a AS (SELECT 1 b) DELETE FROM t", Effect::Write, "a table expression that writes"},
        {"SELECT a INTO b FROM c", Effect::Write, "a new table"},
        {"UPDATE t SET a = 1", Effect::Write, "a write"},
        {"CREATE TABLE t(a int)", Effect::Write, "what is not known to read"},
        {"EXEC Log", Effect::Call, "a call"},
        {"%d EXEC Log", Effect::Write, "no call, though EXEC is its first word"},
        {"PRAGMA integrity_check", Effect::Read, "a question to the engine"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.why);
        EXPECT_EQ(SqliteDialect().Translate(row.in).effect, row.out);
    }
    EXPECT_TRUE(SqliteDialect().Translate("SELECT @@spid").usesSessionId);
    EXPECT_FALSE(SqliteDialect().Translate("SELECT '@@SPID'").usesSessionId);
}

TEST(Dialect, NamesTypesAndLocks)
{
    EXPECT_EQ(SqliteDialect().TypeName(ColumnType::Text), "TEXT COLLATE NOCASE");
    EXPECT_EQ(SqliteDialect().TypeName(ColumnType::Money), "INTEGER");
    EXPECT_EQ(SqliteDialect().TypeName(ColumnType::Double), "REAL");
    EXPECT_EQ(PostgresDialect().TypeName(ColumnType::Bit), "smallint");
    EXPECT_EQ(PostgresDialect().TypeName(ColumnType::Money), "numeric(19,4)");
    EXPECT_EQ(SqlServerDialect().TypeName(ColumnType::Binary), "varbinary(max)");
    EXPECT_EQ(SqliteDialect().LockTable("Source"), "");
    EXPECT_EQ(PostgresDialect().LockTable("Source"), "LOCK TABLE Source IN SHARE ROW EXCLUSIVE MODE");
    EXPECT_EQ(ErrorOf([] { PostgresDialect().LockTable("a; DROP TABLE b"); }).GetCategory(), Category::Syntax);
}

/// Four lines a statement (T-SQL, then the dialects); blank lines between, '#' begins a remark.
TEST(Dialect, GoldenStatements)
{
    const auto connection = OpenPractice(); // what SQLite gets must also mean something to it
    connection->Script("CREATE TABLE MTDAuthorisation(lID, strGatewayID, nAuthorisedStatus, vbAccessToken, "
                       "vbRefreshToken, nExpiresIn, strScope, strTokenType, dtAuthenticated);"
                       "CREATE TABLE MTDAuthorisationLock(lMTDAuthorisationID, strUserID, strWorkstation);"
                       "CREATE TABLE MTDLogWrite(a, b, c, d, e, f, g, h, i)");
    std::istringstream file(::Test::ReadFile(CELLAR_GOLDEN "/authorisation.txt"));
    int statements = 0;
    for (std::string tsql; std::getline(file, tsql);) {
        if (tsql.empty() || tsql.front() == '#')
            continue;
        SCOPED_TRACE(tsql);
        ++statements;
        for (const Dialect* const dialect : {&SqliteDialect(), &PostgresDialect(), &SqlServerDialect()}) {
            std::string expected;
            std::getline(file, expected);
            EXPECT_EQ(std::string(dialect->GetName()) + ": " + dialect->Translate(tsql).text, expected);
        }
        EXPECT_NO_THROW(connection->Script("EXPLAIN " + SqliteDialect().Translate(tsql).text));
    }
    EXPECT_EQ(statements, 12);
}

} // namespace
} // namespace Cellar
