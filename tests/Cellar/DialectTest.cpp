#include "Cellar/Dialect.h"

#include <sstream>
#include <vector>

#include "CellarTestSupport.h"

const Dialect* const kDialects[] = {&SqliteDialect(), &PostgresDialect(), &SqlServerDialect()};

TEST(Dialect, RefusesWhatItCannotRead)
{
    const ::Test::Case<const char*, std::vector<std::string>> rows[] = {
        {"placeholders", {"SELECT %x", "SELECT %", "SELECT %day", "SELECT ' %s'", "SELECT '%d'", "SELECT '50%'"}},
        {"left open", {"SELECT 'abc''", "SELECT [abc", "SELECT \"abc", "SELECT 1 /* /* */", "SELECT 1 /*/"}},
        {"other languages", {"SELECT @@VERSION", "SELECT @a", "SELECT ?", "SELECT :a", "SELECT $a", "SELECT `a`"}},
        {"first rows", {"SELECT TOP 5 a FROM t", "SELECT TOP (%d) a FROM t", "SELECT TOP"}},
        {"not one statement", {"SELECT 1; DELETE FROM t", "EXEC Log 1; DELETE FROM t", "EXEC ", "", " /* */ ;"}},
    };
    for (const auto& row : rows)
        for (const std::string& tsql : row.out)
            for (const Dialect* const dialect : kDialects) {
                SCOPED_TRACE(tsql + ", " + dialect->GetName() + ": " + row.in);
                const DatabaseError error = ErrorOf([&] { dialect->Translate(tsql); });
                EXPECT_EQ(error.GetCategory(), Category::Syntax);
                EXPECT_EQ(error.GetStatement(), tsql);
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
    for (const auto& row : rows)
        EXPECT_EQ(SqliteDialect().Translate(row.in).effect, row.out) << row.why;
    EXPECT_TRUE(SqliteDialect().Translate("SELECT @@spid").usesSessionId);
    EXPECT_FALSE(SqliteDialect().Translate("SELECT '@@SPID'").usesSessionId);
}

TEST(Dialect, LocksATable)
{
    EXPECT_EQ(SqliteDialect().LockTable("Source"), "");
    EXPECT_EQ(PostgresDialect().LockTable("Source"), "LOCK TABLE Source IN SHARE ROW EXCLUSIVE MODE");
    EXPECT_EQ(ErrorOf([] { PostgresDialect().LockTable("a; DROP TABLE b"); }).GetCategory(), Category::Syntax);
}

/// Four lines a statement (T-SQL, then the dialects); blank lines between, '#' begins a remark.
TEST(Dialect, GoldenTokens)
{
    std::istringstream file(::Test::ReadFile(CELLAR_GOLDEN "/tokens.txt"));
    int statements = 0;
    for (std::string tsql; std::getline(file, tsql);) {
        if (tsql.empty() || tsql.front() == '#')
            continue;
        SCOPED_TRACE(tsql);
        ++statements;
        for (const Dialect* const dialect : kDialects) {
            std::string expected;
            std::getline(file, expected);
            EXPECT_EQ(std::string(dialect->GetName()) + ": " + dialect->Translate(tsql).text, expected);
        }
    }
    EXPECT_EQ(statements, 16);
    for (const Dialect* const dialect : kDialects)
        EXPECT_EQ(dialect->Translate("SELECT 1 -- %s ? '\n, 2 /* a /* %d ' */ b */ FROM t").text,
                  "SELECT 1  \n, 2   FROM t");
}
