#include "Cellar/Dialect.h"

#include <algorithm>
#include <array>
#include <initializer_list>

#include "Afx/text/TextFold.h"
#include "Cellar/detail/Tokens.h"
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

/// How one database writes what T-SQL writes otherwise. Null: as it stands.
struct Rules
{
    const char* name;
    std::string (*bracketName)(std::string_view token);
    std::string (*quotedName)(std::string_view token);
    const char* insertInto; // for INSERT without INTO
    const char* sessionId;  // @@SPID
    const char* sessionDefault;
    const char* call; // EXEC
    Around arguments; // of the call; only with one
    const char* noArguments;
    Around bytes;       // round the digits of 0xAB; null `before`: as it stands
    bool plainStrings;  // '...' for N'...'
    const char* now;    // GETDATE()
    const char* utcNow; // GETUTCDATE()
    Around lockTable;
    const char* schemaStart;
    SqlText reuseLog;
    std::array<const char*, 9> types; // in the order of ColumnType
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

constexpr Rules kSqlite = {
    .name = "sqlite",
    .bracketName = SqliteBracketName,
    .quotedName = nullptr,
    .insertInto = " INTO",
    .sessionId = "(spid())",
    .sessionDefault = "(sqlite_compileoption_used('CELLAR_SESSION'))", // see SqliteDriver
    .call = "INSERT INTO ", // a view of that name, whose trigger does the work
    .arguments = {" VALUES (", ")"},
    .noArguments = " DEFAULT VALUES",
    .bytes = {"X'", "'"},
    .plainStrings = true,
    .now = "(strftime('%Y-%m-%d %H:%M:%f','now','localtime'))",
    .utcNow = "(strftime('%Y-%m-%d %H:%M:%f','now'))",
    .lockTable = {"", ""}, // a write transaction keeps all others out
    .schemaStart = "",
    .reuseLog = "PRAGMA wal_checkpoint(RESTART)",
    // Int, SmallInt, Bit, Text, Binary, Date, DateTime, Money, Double
    .types = {"INTEGER", "INTEGER", "INTEGER", "TEXT COLLATE NOCASE", "BLOB", "TEXT", "TEXT", "INTEGER", "REAL"},
};

constexpr Rules kPostgres = {
    .name = "postgres",
    .bracketName = PostgresName,
    .quotedName = PostgresName,
    .insertInto = " INTO",
    .sessionId = "pg_backend_pid()",
    .sessionDefault = "(pg_backend_pid())",
    .call = "CALL ",
    .arguments = {"(", ")"},
    .noArguments = "()",
    .bytes = {"'\\x", "'::bytea"},
    .plainStrings = true,
    .now = "localtimestamp(3)",
    .utcNow = "timezone('utc', now())::timestamp(3)",
    .lockTable = {"LOCK TABLE ", " IN SHARE ROW EXCLUSIVE MODE"},
    .schemaStart = "CREATE COLLATION IF NOT EXISTS morvut_nocase "
                   "(provider = icu, locale = 'und-u-ks-level2', deterministic = false);\n",
    .reuseLog = "",
    .types = {"integer", "smallint", "smallint", "text COLLATE morvut_nocase", "bytea", "date", "timestamp(3)",
              "numeric(19,4)", "double precision"},
};

constexpr Rules kSqlServer = {
    .name = "sqlserver",
    .bracketName = nullptr,
    .quotedName = nullptr,
    .insertInto = nullptr,
    .sessionId = nullptr,
    .sessionDefault = "(@@SPID)",
    .call = nullptr,
    .arguments = {nullptr, nullptr},
    .noArguments = nullptr,
    .bytes = {nullptr, nullptr},
    .plainStrings = false,
    .now = nullptr,
    .utcNow = nullptr,
    .lockTable = {"SELECT TOP (1) 1 FROM ", " WITH (TABLOCKX, HOLDLOCK)"},
    .schemaStart = "",
    .reuseLog = "",
    .types = {"int", "smallint", "bit", "nvarchar(max)", "varbinary(max)", "date", "datetime", "money", "float"},
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
    std::string TypeName(ColumnType type) const override { return m_rules.types[static_cast<std::size_t>(type)]; }
    std::string LockTable(std::string_view table) const override
    {
        const SqlText name = SqlText::Identifier(table);
        if (!*m_rules.lockTable.before)
            return {};
        return m_rules.lockTable.before + std::string(name.View()) + m_rules.lockTable.after;
    }
    std::string SessionIdDefault() const override { return m_rules.sessionDefault; }
    std::string SchemaStart() const override { return m_rules.schemaStart; }
    SqlText ReuseLog() const override { return m_rules.reuseLog; }

private:
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
