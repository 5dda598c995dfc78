#include "Cellar/Dialect.h"

#include <algorithm>
#include <initializer_list>

#include "Afx/text/Ascii.h"
#include "Afx/text/TextFold.h"
#include "Cellar/detail/Tokens.h"
#include "Cellar/detail/ValueTypes.h"
#include "Cellar/SqlText.h"

namespace Cellar
{

Dialect::~Dialect() = default;

namespace
{

using Detail::IsWord;
using Detail::Token;
using Kind = Token::Kind;

/// Text before and after what stays.
struct Around
{
    const char* before;
    const char* after;
};

/// What a procedure that inserts is made of, in the database's own names.
struct InsertProcedureParts
{
    std::string name, table;
    std::vector<std::string> columns;
};

/// The names that a statement about a sequence is made of.
struct SequenceNames
{
    SqlText sequence, table, column;
    SqlText last = "0"; // an id that was given
};
/// How a database writes sequences; the statements are T-SQL but for what `move` gives.
struct SequenceRules
{
    const char* create; // the name stands between
    const char* options;
    Around byDefault;
    SqlText (*next)(const SequenceNames& names);
    SqlText (*isBehind)(const SequenceNames& names);
    SqlText (*move)(const SequenceNames& names);
    SqlText (*moveIdentity)(const SequenceNames& names);
    SqlText (*last)(const SequenceNames& names);
    SqlText (*lastOfIdentity)(const SequenceNames& names);
};

/// How one database writes what T-SQL writes otherwise. Null: as it stands.
struct Rules
{
    const char* name;
    std::string (*bracketName)(std::string_view token);
    std::string (*quotedName)(std::string_view token);
    const char* insertInto; // for INSERT without INTO
    const char* sessionId;  // @@SPID
    const char* sessionDefault;
    const char* hostDefault; // HOST_NAME(); null: not known
    const char* identity;
    const SequenceRules* sequences; // null: none
    bool addsComputedDefaults;
    bool areNullsEqual;
    std::string (*insertProcedure)(const InsertProcedureParts& parts);
    SqlText tableColumns, fileIntegrity, filePath, sessions, isEncrypted;
    SqlText (*mayNotRead)(ColumnType type, const SqlText& column);
    const char* call; // EXEC
    Around arguments; // of the call; only with one
    const char* noArguments;
    /// What follows the mark of a value: its type, where the database would guess another. Null: nothing.
    const char* (*typeOfValue)(Placeholder::Type type) noexcept;
    Around bytes;       // round the digits of 0xAB; null `before`: as it stands
    bool plainStrings;  // '...' for N'...'
    const char* now;    // GETDATE()
    const char* utcNow; // GETUTCDATE()
    SqlText (*localToUtc)(const SqlText& column);
    Around lockTable;
    bool limitBehind; // LIMIT n behind the statement for TOP (n) in front
    /// Several INSERTs as one statement; null: each goes by itself.
    std::string (*together)(std::span<const PreparedText> statements);
    SqlText nullsFirst, nullsLast;
    const char* schemaStart;
    SqlText reuseLog;
    const char* Detail::ColumnRule::*type;
};

/// What stands between the marks; a doubled closing mark is one.
std::string Unenclosed(std::string_view token)
{
    std::string name;
    for (std::size_t i = 1; i + 1 < token.size(); ++i) {
        name += token[i];
        if (token[i] == token.back())
            ++i;
    }
    return name;
}

std::string InQuotes(std::string_view name)
{
    std::string quoted = "\"";
    for (const char c : name)
        quoted.append(c == '"' ? 2 : 1, c);
    return quoted + '"';
}

/// SQLite reads [name] itself, but ends it at the first bracket.
std::string SqliteBracketName(std::string_view token)
{
    const bool hasBracket = token.find("]]") != std::string_view::npos;
    return hasBracket ? InQuotes(Unenclosed(token)) : std::string(token);
}

/// PostgreSQL folds names that stand without quotes; the others follow, so that both mean the same column.
std::string PostgresName(std::string_view token) { return InQuotes(Afx::FoldLower(Unenclosed(token))); }

/// `each` of the columns, with commas between.
template<class Each>
std::string Listed(const std::vector<std::string>& columns, Each each)
{
    std::string list;
    for (std::size_t i = 0; i < columns.size(); ++i)
        list += (i == 0 ? "" : ", ") + each(columns[i], std::to_string(i + 1));
    return list;
}

std::string ColumnList(const std::vector<std::string>& columns)
{
    return Listed(columns, [](const std::string& column, const std::string&) { return column; });
}

std::string InsertStart(const InsertProcedureParts& parts)
{
    return "INSERT INTO " + parts.table + " (" + ColumnList(parts.columns) + ") VALUES (";
}

/// The embedded database has no procedures; a view with a trigger stands in.
std::string SqliteProcedure(const InsertProcedureParts& parts)
{
    const auto newValue = [](const std::string& column, const std::string&) { return "NEW." + column; };
    return "CREATE VIEW " + parts.name + " AS SELECT " + ColumnList(parts.columns) + " FROM " + parts.table +
           ";\nCREATE TRIGGER " + parts.name + "Insert INSTEAD OF INSERT ON " + parts.name + " BEGIN\n    " +
           InsertStart(parts) + Listed(parts.columns, newValue) + ");\nEND;\n";
}

std::string PostgresProcedure(const InsertProcedureParts& parts)
{
    const auto type = [](const std::string&, const std::string&) { return std::string("text"); };
    const auto argument = [](const std::string&, const std::string& number) { return "$" + number; };
    // Of plpgsql, which keeps its plan; a procedure of plain SQL is planned at each call.
    return "CREATE PROCEDURE " + parts.name + "(" + Listed(parts.columns, type) + ") LANGUAGE plpgsql AS 'BEGIN " +
           InsertStart(parts) + Listed(parts.columns, argument) + "); END';\n";
}

std::string SqlServerProcedure(const InsertProcedureParts& parts)
{
    const auto parameter = [](const std::string&, const std::string& number) { return "@p" + number; };
    const auto declared = [](const std::string&, const std::string& number) {
        return "@p" + number + " nvarchar(max)";
    };
    return "EXEC('CREATE PROCEDURE " + parts.name + " " + Listed(parts.columns, declared) + " AS " +
           InsertStart(parts) + Listed(parts.columns, parameter) + ")');\n";
}

/// The embedded database takes any value in any column.
SqlText SqliteMayNotRead(ColumnType type, const SqlText& column)
{
    switch (type) {
    case ColumnType::Int:
    case ColumnType::SmallInt:
    case ColumnType::Bit:
        return SqlText("typeof(") + column + ") NOT IN ('integer', 'null') OR " + column +
               " NOT BETWEEN -2147483648 AND 2147483647";
    case ColumnType::Money:
        return SqlText("typeof(") + column + ") NOT IN ('integer', 'null')";
    case ColumnType::Date: // adding nothing makes the engine notice 30 February
        return SqlText("date(") + column + ", '+0 days') IS NOT " + column;
    case ColumnType::DateTime:
        return SqlText("datetime(") + column + ", '+0 days') IS NOT substr(" + column + ", 1, 19)";
    default:
        return {};
    }
}

SqlText SqliteLocalToUtc(const SqlText& column)
{
    return SqlText("strftime('%%Y-%%m-%%d %%H:%%M:%%f', ") + column + ", 'utc')";
}
SqlText PostgresLocalToUtc(const SqlText& column)
{
    return SqlText("timezone('utc', timezone(current_setting('TimeZone'), ") + column + "))";
}
/// By as much as the clocks differ now.
SqlText SqlServerLocalToUtc(const SqlText& column)
{
    return SqlText("DATEADD(second, DATEDIFF(second, GETDATE(), GETUTCDATE()), ") + column + ")";
}

/// A value that is selected would be a text.
const char* PostgresTypeOfValue(Placeholder::Type type) noexcept
{
    switch (type) {
    case Placeholder::Type::Int:
    case Placeholder::Type::Long:
        return "::integer";
    case Placeholder::Type::Int64:
        return "::bigint";
    case Placeholder::Type::Binary:
        return "::bytea";
    case Placeholder::Type::DateTime:
        return "::timestamp";
    case Placeholder::Type::Money:
        return "::numeric";
    case Placeholder::Type::Real:
        return "::double precision";
    default:
        return "";
    }
}

SqlText ReadsAlways(ColumnType, const SqlText&) { return {}; }

constexpr Rules kSqlite = {
    .name = "sqlite",
    .bracketName = SqliteBracketName,
    .quotedName = nullptr,
    .insertInto = " INTO",
    .sessionId = "(spid())",
    .sessionDefault = "(sqlite_compileoption_used('CELLAR_SESSION'))", // see SqliteDriver
    .hostDefault = nullptr,
    .identity = "", // an INTEGER PRIMARY KEY that is left out counts up
    .sequences = nullptr,
    .addsComputedDefaults = false,
    .areNullsEqual = false,
    .insertProcedure = SqliteProcedure,
    .tableColumns = "SELECT m.name, c.name FROM sqlite_master m, pragma_table_info(m.name) c WHERE m.type = 'table'",
    .fileIntegrity = "PRAGMA integrity_check",
    .filePath = "SELECT file FROM pragma_database_list WHERE name = 'main'",
    .sessions = "", // its file does not know who has it open
    .isEncrypted = "",
    .mayNotRead = SqliteMayNotRead,
    .call = "INSERT INTO ", // a view of that name, whose trigger does the work
    .arguments = {" VALUES (", ")"},
    .noArguments = " DEFAULT VALUES",
    .typeOfValue = nullptr,
    .bytes = {"X'", "'"},
    .plainStrings = true,
    .now = "(strftime('%Y-%m-%d %H:%M:%f','now','localtime'))",
    .utcNow = "(strftime('%Y-%m-%d %H:%M:%f','now'))",
    .localToUtc = SqliteLocalToUtc,
    .lockTable = {"", ""}, // a write transaction keeps all others out
    .limitBehind = true,
    .together = nullptr,
    .nullsFirst = "", // a null is less than everything else
    .nullsLast = "",
    .schemaStart = "",
    .reuseLog = "PRAGMA wal_checkpoint(RESTART)",
    .type = &Detail::ColumnRule::sqlite,
};

constexpr char kServerColumns[] = "SELECT TABLE_NAME, COLUMN_NAME FROM INFORMATION_SCHEMA.COLUMNS "
                                  "WHERE TABLE_SCHEMA NOT IN ('pg_catalog', 'information_schema', 'sys')";

/// The largest id of the rows.
SqlText Largest(const SequenceNames& names) { return "MAX([" + names.column + "])"; }

/// All but the last as what the last one stands on: they write at one moment and see nothing of each other.
std::string PostgresTogether(std::span<const PreparedText> statements)
{
    std::string text = "WITH ";
    for (std::size_t i = 0; i + 1 < statements.size(); ++i)
        text += (i == 0 ? "s" : ", s") + std::to_string(i) + " AS (" + statements[i].text + ")";
    return text + " " + statements.back().text;
}
SqlText PostgresNext(const SequenceNames& names)
{
    return "SELECT nextval('" + names.sequence + "') FROM generate_series(1, %ld)";
}
/// The number that the sequence gives next.
constexpr SqlText kPostgresNumber = "last_value + CASE WHEN is_called THEN 32 ELSE 0 END";
SqlText PostgresIsBehind(const SequenceNames& names)
{
    return "SELECT " + Largest(names) + " FROM [" + names.table + "] HAVING " + Largest(names) + " >= (SELECT " +
           kPostgresNumber + " FROM " + names.sequence + ")";
}
SqlText PostgresMove(const SequenceNames& names)
{
    // At the end of the numbers it has given its last one, and refuses the next.
    const SqlText next = "GREATEST(" + SqlText(kPostgresNumber) + ", " + names.last +
                         " + CAST(1 AS bigint), (SELECT CAST(COALESCE(" + Largest(names) +
                         ", 0) AS bigint) + 1 FROM [" + names.table + "]))";
    return "SELECT setval('" + names.sequence + "', LEAST(" + next + ", 2147483647), " + next + " > 2147483647) FROM " +
           names.sequence;
}
/// A sequence that has not given its first number has none that it gave last.
SqlText PostgresLast(const SequenceNames& names)
{
    return "SELECT LEAST(last_value + CASE WHEN is_called THEN CAST(31 AS bigint) ELSE -1 END, 2147483647) FROM " +
           names.sequence;
}
SqlText PostgresLastOfIdentity(const SequenceNames& names)
{
    return "SELECT pg_sequence_last_value(pg_get_serial_sequence('" + names.table + "', LOWER('" + names.column +
           "')))";
}
SqlText PostgresMoveIdentity(const SequenceNames& names)
{
    const SqlText last = "GREATEST((" + PostgresLastOfIdentity(names) + "), " + names.last + ", (SELECT " +
                         Largest(names) + " FROM [" + names.table + "]))"; // of what is not null
    return "SELECT setval(pg_get_serial_sequence('" + names.table + "', LOWER('" + names.column + "')), GREATEST(" +
           last + ", 1), " + last + " > 0)";
}
constexpr SequenceRules kPostgresSequences = {
    .create = "CREATE SEQUENCE IF NOT EXISTS ",
    .options = " AS integer INCREMENT BY 32 MINVALUE 1;\n",
    .byDefault = {"nextval('", "')"},
    .next = PostgresNext,
    .isBehind = PostgresIsBehind,
    .move = PostgresMove,
    .moveIdentity = PostgresMoveIdentity,
    .last = PostgresLast,
    .lastOfIdentity = PostgresLastOfIdentity,
};

SqlText SqlServerNext(const SequenceNames& names)
{
    return "SELECT NEXT VALUE FOR [" + names.sequence +
           "] FROM (SELECT TOP (%ld) 1 AS n FROM sys.all_columns a CROSS JOIN sys.all_columns b) blocks";
}
SqlText SqlServerIsBehind(const SequenceNames& names)
{
    return "SELECT " + Largest(names) + " FROM [" + names.table + "] HAVING " + Largest(names) +
           " >= (SELECT CAST(current_value AS bigint) + 32 FROM sys.sequences WHERE name = '" + names.sequence + "')";
}
SqlText SqlServerMove(const SequenceNames& names)
{
    const SqlText variable = "@" + names.sequence; // several stand in one script
    const SqlText last =
        "CASE WHEN " + Largest(names) + " > " + names.last + " THEN " + Largest(names) + " ELSE " + names.last + " END";
    return "DECLARE " + variable + " nvarchar(400) = (SELECT 'ALTER SEQUENCE [" + names.sequence +
           "] RESTART WITH ' + CAST(1 + " + last + " AS nvarchar(20)) FROM [" + names.table + "] HAVING " + last +
           " >= (SELECT CAST(current_value AS bigint) FROM sys.sequences WHERE name = '" + names.sequence +
           "')); EXEC(" + variable + ")";
}
/// The last number of a table that never had a row is the one that it gives next.
SqlText SqlServerMoveIdentity(const SequenceNames& names)
{
    const SqlText check = "DBCC CHECKIDENT ('" + names.table + "', RESEED";
    return (names.last.View() == "0" ? SqlText() : check + ", " + names.last + "); ") + check + ")";
}
SqlText SqlServerLast(const SequenceNames& names)
{
    return "SELECT " + SqlText("CAST(current_value AS bigint) + 31 FROM sys.sequences WHERE name = '") +
           names.sequence + "'";
}
SqlText SqlServerLastOfIdentity(const SequenceNames& names)
{
    return "SELECT CAST(IDENT_CURRENT('" + names.table + "') AS bigint)";
}
constexpr SequenceRules kSqlServerSequences = {
    .create = "CREATE SEQUENCE ",
    .options = " AS int START WITH 1 INCREMENT BY 32 MINVALUE 1;\n",
    .byDefault = {"(NEXT VALUE FOR ", ")"},
    .next = SqlServerNext,
    .isBehind = SqlServerIsBehind,
    .move = SqlServerMove,
    .moveIdentity = SqlServerMoveIdentity,
    .last = SqlServerLast,
    .lastOfIdentity = SqlServerLastOfIdentity,
};

constexpr Rules kPostgres = {
    .name = "postgres",
    .bracketName = PostgresName,
    .quotedName = PostgresName,
    .insertInto = " INTO",
    .sessionId = "pg_backend_pid()",
    .sessionDefault = "(pg_backend_pid())",
    .hostDefault = nullptr,
    .identity = " GENERATED BY DEFAULT AS IDENTITY",
    .sequences = &kPostgresSequences,
    .addsComputedDefaults = true,
    .areNullsEqual = false,
    .insertProcedure = PostgresProcedure,
    .tableColumns = kServerColumns,
    .fileIntegrity = "",
    .filePath = "",
    .sessions = "SELECT pid AS [nSession], CAST(timezone('utc', backend_start) AS timestamp(3)) AS [dtBegan] "
                "FROM pg_stat_activity",
    .isEncrypted = "SELECT CAST(ssl AS integer) AS [bEncrypted] FROM pg_stat_ssl WHERE pid = @@SPID",
    .mayNotRead = ReadsAlways,
    .call = "CALL ",
    .arguments = {"(", ")"},
    .noArguments = "()",
    .typeOfValue = PostgresTypeOfValue,
    .bytes = {"'\\x", "'::bytea"},
    .plainStrings = true,
    .now = "localtimestamp(3)",
    .utcNow = "timezone('utc', now())::timestamp(3)",
    .localToUtc = PostgresLocalToUtc,
    .lockTable = {"LOCK TABLE ", " IN SHARE ROW EXCLUSIVE MODE"},
    .limitBehind = true,
    .together = PostgresTogether,
    .nullsFirst = " NULLS FIRST",
    .nullsLast = " NULLS LAST",
    .schemaStart = "CREATE COLLATION IF NOT EXISTS morvut_nocase "
                   "(provider = icu, locale = 'und-u-ks-level2', deterministic = false);\n",
    .reuseLog = "",
    .type = &Detail::ColumnRule::postgres,
};

constexpr Rules kSqlServer = {
    .name = "sqlserver",
    .bracketName = nullptr,
    .quotedName = nullptr,
    .insertInto = nullptr,
    .sessionId = nullptr,
    .sessionDefault = "(@@SPID)",
    .hostDefault = "(HOST_NAME())",
    .identity = " IDENTITY(1,1)",
    .sequences = &kSqlServerSequences,
    .addsComputedDefaults = true,
    .areNullsEqual = true,
    .insertProcedure = SqlServerProcedure,
    .tableColumns = kServerColumns,
    .fileIntegrity = "",
    .filePath = "",
    .sessions = "",    // without a right of administrators a session sees itself only
    .isEncrypted = "", // nor that without the right
    .mayNotRead = ReadsAlways,
    .call = nullptr,
    .arguments = {nullptr, nullptr},
    .noArguments = nullptr,
    .typeOfValue = nullptr,
    .bytes = {nullptr, nullptr},
    .plainStrings = false,
    .now = nullptr,
    .utcNow = nullptr,
    .localToUtc = SqlServerLocalToUtc,
    .lockTable = {"SELECT TOP (1) 1 FROM ", " WITH (TABLOCKX, HOLDLOCK)"},
    .limitBehind = false,
    .together = nullptr,
    .nullsFirst = "",
    .nullsLast = "",
    .schemaStart = "",
    .reuseLog = "",
    .type = &Detail::ColumnRule::sqlServer,
};

/// One statement on its way from T-SQL to a dialect.
class Translation
{
public:
    Translation(const Rules& rules, std::string_view statement)
        : m_rules(rules), m_statement(statement), m_tokens(Detail::Tokenize(statement)), m_first(Significant(0)),
          m_end(m_tokens.size())
    {
        m_out.text.reserve(statement.size() + 32);
    }

    PreparedText Run()
    {
        if (m_first == m_end || m_tokens[m_first].text == ";")
            Detail::FailSyntax(m_statement, m_statement, "there is no statement");
        m_out.effect = FindEffect();
        if (m_out.effect == Effect::Call)
            Call();
        else if (IsOneOf(m_tokens[m_first], {"SELECT"}))
            Select();
        else
            Emit(0, m_end);
        return std::move(m_out);
    }

private:
    /// The first token from `at` on that is not blank; the end when there is none.
    std::size_t Significant(std::size_t at) const noexcept
    {
        while (at < m_tokens.size() && m_tokens[at].kind == Kind::Blank)
            ++at;
        return at;
    }
    bool IsSymbol(std::size_t at, char symbol) const noexcept
    {
        return at < m_end && m_tokens[at].kind == Kind::Symbol && m_tokens[at].text.front() == symbol;
    }
    bool IsOneOf(const Token& token, std::initializer_list<std::string_view> words) const noexcept
    {
        return std::any_of(words.begin(), words.end(), [&](std::string_view word) { return IsWord(token, word); });
    }

    Effect FindEffect() const
    {
        if (IsOneOf(m_tokens[m_first], {"EXEC", "EXECUTE"}))
            return Effect::Call;
        const auto firstWord =
            std::find_if(m_tokens.begin(), m_tokens.end(), [](const Token& token) { return token.kind == Kind::Word; });
        if (firstWord == m_tokens.end())
            return Effect::Write;
        if (!IsOneOf(*firstWord, {"SELECT", "WITH", "VALUES", "PRAGMA", "EXPLAIN"}))
            return Effect::Write;
        const bool writes = std::any_of(firstWord, m_tokens.end(), [&](const Token& token) {
            return IsOneOf(token, {"INSERT", "UPDATE", "DELETE", "MERGE", "INTO"});
        });
        return writes ? Effect::Write : Effect::Read;
    }

    /// EXEC name argument, argument
    void Call()
    {
        std::size_t nameEnd = Significant(m_first + 1);
        const std::size_t name = nameEnd;
        while (nameEnd < m_end && m_tokens[nameEnd].kind != Kind::Blank && !IsSymbol(nameEnd, ';'))
            ++nameEnd;
        if (name == nameEnd)
            Detail::FailSyntax(m_statement, m_statement, "EXEC names no procedure");
        if (!m_rules.call)
            return Emit(0, m_end);
        std::size_t end = nameEnd;
        while (end < m_end && !IsSymbol(end, ';'))
            ++end;
        std::size_t last = end; // without the blanks before the semicolon
        while (last > nameEnd && m_tokens[last - 1].kind == Kind::Blank)
            --last;
        const std::size_t first = std::min(Significant(nameEnd), last);

        m_out.text += m_rules.call;
        Emit(name, nameEnd);
        if (first == last) {
            m_out.text += m_rules.noArguments;
        } else {
            m_out.text += m_rules.arguments.before;
            Emit(first, last);
            m_out.text += m_rules.arguments.after;
        }
        Emit(end, m_end);
    }

    /// SELECT TOP (number) … becomes SELECT … LIMIT number.
    void Select()
    {
        const std::size_t top = Significant(m_first + 1);
        const std::size_t open = Significant(top + 1), number = Significant(open + 1), close = Significant(number + 1);
        if (top == m_end || !IsWord(m_tokens[top], "TOP"))
            return Emit(0, m_end);
        if (!IsSymbol(open, '(') || number >= m_end || m_tokens[number].kind != Kind::Number || !IsSymbol(close, ')'))
            Detail::FailSyntax(m_statement, m_tokens[top].text, "TOP takes a number in brackets");
        if (!m_rules.limitBehind)
            return Emit(0, m_end);
        std::size_t end = m_end; // without the semicolon, and blanks before it
        while (end > close + 1 && (m_tokens[end - 1].kind == Kind::Blank || IsSymbol(end - 1, ';')))
            --end;
        Emit(0, top);
        Emit(Significant(close + 1), end);
        m_out.text += " LIMIT ";
        m_out.text += m_tokens[number].text;
    }

    void Emit(std::size_t from, std::size_t to)
    {
        for (std::size_t at = from; at < to;)
            at = EmitToken(at);
    }

    /// Writes the token at `at`, and those that belong to it; returns where to go on.
    std::size_t EmitToken(std::size_t at)
    {
        const Token& token = m_tokens[at];
        switch (token.kind) {
        case Kind::Blank:
            m_out.text += IsComment(token) ? std::string_view(" ") : token.text;
            break;
        case Kind::Word:
            return EmitWord(at);
        case Kind::BracketName:
            EmitName(token, m_rules.bracketName);
            break;
        case Kind::QuotedName:
            EmitName(token, m_rules.quotedName);
            break;
        case Kind::NString:
            EmitString(m_rules.plainStrings ? token.text.substr(1) : token.text);
            break;
        case Kind::String:
            EmitString(token.text);
            break;
        case Kind::Bytes:
            EmitBytes(token.text);
            break;
        case Kind::System:
            EmitSystem(token);
            break;
        case Kind::Placeholder:
            m_out.text += '?';
            if (m_rules.typeOfValue)
                m_out.text += m_rules.typeOfValue(token.placeholder);
            m_out.placeholders.push_back({token.placeholder});
            break;
        case Kind::Percent:
            m_out.text += '%';
            break;
        case Kind::Symbol:
            if (token.text == ";" && Significant(at + 1) != m_end)
                Detail::FailSyntax(m_statement, token.text, "more than one statement");
            m_out.text += token.text;
            break;
        case Kind::Number:
            m_out.text += token.text;
        }
        return at + 1;
    }

    /// Comments go: not every engine nests them, and a question mark in one is no parameter.
    static bool IsComment(const Token& token) noexcept
    {
        return token.text.starts_with("--") || token.text.starts_with("/*");
    }

    /// How the database tells the time that the word asks for; null: as it stands, or another word.
    const char* MomentOf(const Token& word) const noexcept
    {
        if (IsWord(word, "GETDATE"))
            return m_rules.now;
        return IsWord(word, "GETUTCDATE") ? m_rules.utcNow : nullptr;
    }

    std::size_t EmitWord(std::size_t at)
    {
        const Token& token = m_tokens[at];
        const std::size_t next = Significant(at + 1);
        const char* const moment = MomentOf(token);
        if (moment && IsSymbol(next, '(') && IsSymbol(Significant(next + 1), ')')) {
            m_out.text += moment;
            return Significant(next + 1) + 1;
        }
        m_out.text += token.text;
        if (m_rules.insertInto && IsWord(token, "INSERT") && (next == m_end || !IsWord(m_tokens[next], "INTO")))
            m_out.text += m_rules.insertInto;
        return at + 1;
    }

    void EmitName(const Token& token, std::string (*rule)(std::string_view))
    {
        if (rule)
            m_out.text += rule(token.text);
        else
            m_out.text += token.text;
    }

    void EmitString(std::string_view text) // %% is one per cent sign
    {
        for (std::size_t i = 0; i < text.size(); ++i) {
            m_out.text += text[i];
            if (text[i] == '%')
                ++i;
        }
    }

    void EmitBytes(std::string_view text)
    {
        if (!m_rules.bytes.before) {
            m_out.text += text;
            return;
        }
        m_out.text += m_rules.bytes.before;
        if (text.size() % 2 != 0)
            m_out.text += '0'; // 0xABC is 0x0ABC
        m_out.text += text.substr(2);
        m_out.text += m_rules.bytes.after;
    }

    void EmitSystem(const Token& token)
    {
        if (!Afx::EqualNoCase(token.text, "@@SPID"))
            Detail::FailSyntax(m_statement, token.text, "of the @@ names only @@SPID is known");
        m_out.usesSessionId = true;
        m_out.text += m_rules.sessionId ? std::string_view(m_rules.sessionId) : token.text;
    }

    const Rules& m_rules;
    std::string_view m_statement;
    std::vector<Token> m_tokens;
    std::size_t m_first;
    std::size_t m_end;
    PreparedText m_out;
};

class RuleDialect final : public Dialect
{
public:
    explicit RuleDialect(const Rules& rules) noexcept : m_rules(rules) {}

    const char* GetName() const noexcept override { return m_rules.name; }
    PreparedText Translate(std::string_view tsql) const override { return Translation(m_rules, tsql).Run(); }
    bool SendsTogether() const noexcept override { return m_rules.together != nullptr; }
    PreparedText Together(std::span<const PreparedText> statements) const override
    {
        PreparedText all{m_rules.together(statements), {}, Effect::Write, false};
        for (const PreparedText& each : statements)
            all.placeholders.insert(all.placeholders.end(), each.placeholders.begin(), each.placeholders.end());
        return all;
    }
    std::string TypeName(ColumnType type) const override { return Detail::RuleOf(type).*m_rules.type; }
    bool HasOneWriter() const noexcept override { return !*m_rules.lockTable.before; }
    std::string LockTable(std::string_view table) const override
    {
        const SqlText name = SqlText::Identifier(table);
        if (HasOneWriter())
            return {};
        return m_rules.lockTable.before + std::string(name.View()) + m_rules.lockTable.after;
    }
    std::string Default(std::string_view tsql) const override
    {
        if (tsql == "@@SPID")
            return m_rules.sessionDefault;
        if (tsql == "HOST_NAME()")
            return m_rules.hostDefault ? m_rules.hostDefault : "";
        if (tsql.empty() || Afx::AreDigits(tsql))
            return std::string(tsql);
        const std::string native = Translate(tsql).text;
        return native.front() == '(' ? native : "(" + native + ")";
    }
    const char* Identity() const noexcept override { return m_rules.identity; }
    long IdsOfSequence() const noexcept override { return m_rules.sequences ? kBlock : 0; }
    std::string CreateSequence(std::string_view table) const override
    {
        const SequenceRules* const rules = m_rules.sequences;
        return rules ? rules->create + SequenceOf(table) + rules->options : std::string();
    }
    std::string SequenceDefault(std::string_view table) const override
    {
        const SequenceRules* const rules = m_rules.sequences;
        return rules ? rules->byDefault.before + SequenceOf(table) + rules->byDefault.after : std::string();
    }
    SqlText NextBlocks(std::string_view table) const override { return About(&SequenceRules::next, table, "lID"); }
    SqlText SequenceIsBehind(std::string_view table, std::string_view column) const override
    {
        return About(&SequenceRules::isBehind, table, column);
    }
    std::string MoveSequence(std::string_view table, std::string_view column, std::int64_t last) const override
    {
        return Native(About(&SequenceRules::move, table, column, last));
    }
    std::string MoveIdentity(std::string_view table, std::string_view column, std::int64_t last) const override
    {
        return Native(About(&SequenceRules::moveIdentity, table, column, last));
    }
    SqlText LastOfSequence(std::string_view table) const override { return About(&SequenceRules::last, table, "lID"); }
    SqlText LastOfIdentity(std::string_view table, std::string_view column) const override
    {
        return About(&SequenceRules::lastOfIdentity, table, column);
    }
    bool AddsComputedDefaults() const noexcept override { return m_rules.addsComputedDefaults; }
    bool AreNullsEqual() const noexcept override { return m_rules.areNullsEqual; }
    std::string InsertProcedure(std::string_view name, std::string_view table,
                                std::span<const char* const> columns) const override
    {
        InsertProcedureParts parts{std::string(name), Name(table), {}};
        for (const char* const column : columns)
            parts.columns.push_back(Name(column));
        return m_rules.insertProcedure(parts);
    }
    const SqlText& TableColumns() const noexcept override { return m_rules.tableColumns; }
    const SqlText& FileIntegrity() const noexcept override { return m_rules.fileIntegrity; }
    const SqlText& FilePath() const noexcept override { return m_rules.filePath; }
    const SqlText& Sessions() const noexcept override { return m_rules.sessions; }
    const SqlText& IsEncrypted() const noexcept override { return m_rules.isEncrypted; }
    SqlText LocalToUtc(const SqlText& column) const override { return m_rules.localToUtc(column); }
    SqlText MayNotRead(ColumnType type, const SqlText& column) const override
    {
        return m_rules.mayNotRead(type, column);
    }
    const SqlText& NullsFirst(bool descending) const noexcept override
    {
        return descending ? m_rules.nullsLast : m_rules.nullsFirst;
    }
    std::string SchemaStart() const override { return m_rules.schemaStart; }
    SqlText ReuseLog() const override { return m_rules.reuseLog; }

private:
    std::string Name(std::string_view name) const { return Translate("[" + std::string(name) + "]").text; }
    /// Scripts of servers that speak T-SQL hold several statements and variables.
    std::string Native(const SqlText& script) const
    {
        const bool isTranslated = m_rules.bracketName && !script.IsEmpty();
        return isTranslated ? Translate(script.View()).text : std::string(script.View());
    }
    static std::string SequenceOf(std::string_view table) { return std::string(table) + "_ids"; }
    SqlText About(SqlText (*SequenceRules::*statement)(const SequenceNames&), std::string_view table,
                  std::string_view column, std::int64_t last = 0) const
    {
        if (!m_rules.sequences)
            return {};
        return (m_rules.sequences->*statement)({SqlText::Identifier(SequenceOf(table)), SqlText::Identifier(table),
                                                SqlText::Identifier(column), SqlText::Number(last)});
    }

    const Rules& m_rules;
};

} // namespace

const Dialect& SqliteDialect()
{
    static const RuleDialect dialect(kSqlite);
    return dialect;
}
const Dialect& PostgresDialect()
{
    static const RuleDialect dialect(kPostgres);
    return dialect;
}
const Dialect& SqlServerDialect()
{
    static const RuleDialect dialect(kSqlServer);
    return dialect;
}

} // namespace Cellar
