#include "Cellar/Dialect.h"

#include <sstream>

#include "CellarTestSupport.h"

const Dialect* const kDialects[] = {&SqliteDialect(), &PostgresDialect(), &SqlServerDialect()};

TEST(Dialect, RefusesWhatItCannotRead)
{
    for (const auto& [tsql, why] : ::Test::Table<const char*>("Cellar/Dialect.tsv"))
        for (const Dialect* const dialect : kDialects) {
            SCOPED_TRACE(std::string(tsql) + ", " + dialect->GetName() + ": " + why);
            const DatabaseError error = ErrorOf([dialect, text = tsql] { dialect->Translate(text); });
            EXPECT_EQ(error.GetCategory(), Category::Syntax);
            EXPECT_EQ(error.GetStatement(), tsql);
        }
}

TEST(Dialect, TellsReadingFromWriting)
{
    constexpr const char* kNames[] = {"Read", "Write", "Call"};
    for (const auto& [tsql, effect, why] : ::Test::Table<const char*, const char*>("Cellar/Dialect.tsv"))
        EXPECT_STREQ(kNames[static_cast<int>(SqliteDialect().Translate(tsql).effect)], effect) << why;
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
