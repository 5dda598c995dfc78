#pragma once

// One session of the scripted server: its rules, its transaction, its record.

#include <algorithm>
#include <cctype>
#include <fstream>
#include <optional>
#include <set>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "Script.h"

namespace OdbcFake
{

inline std::string Upper(std::string_view text)
{
    std::string upper(text);
    std::transform(upper.begin(), upper.end(), upper.begin(), [](unsigned char c) { return std::toupper(c); });
    return upper;
}

inline bool IsNameCharacter(char c) noexcept
{
    return std::isalnum(static_cast<unsigned char>(c)) || c == '_' || c == '@';
}

inline std::string_view WithoutBlanks(std::string_view text)
{
    while (!text.empty() && std::isspace(static_cast<unsigned char>(text.front())))
        text.remove_prefix(1);
    return text;
}

/// A name, a number, a string, or one character; marks of names are dropped. `text` moves on.
inline std::string NextToken(std::string_view& text)
{
    text = WithoutBlanks(text);
    if (text.empty())
        return {};
    const char first = text.front();
    const char close = first == '[' ? ']' : first == '"' || first == '\'' ? first : '\0';
    std::size_t length = 1;
    if (close)
        length = std::min(text.find(close, 1), text.size() - 1) + 1;
    else if (IsNameCharacter(first))
        while (length < text.size() && IsNameCharacter(text[length]))
            ++length;
    std::string token(text.substr(0, length));
    text.remove_prefix(length);
    return close && close != '\'' ? token.substr(1, token.size() - 2) : token;
}

inline std::vector<std::string> Tokens(std::string_view text)
{
    std::vector<std::string> tokens;
    for (std::string token = NextToken(text); !token.empty(); token = NextToken(text))
        tokens.push_back(token);
    return tokens;
}

/// In capitals; empty when the statement begins otherwise.
inline std::string FirstWord(std::string_view statement)
{
    const std::string token = NextToken(statement);
    return token.empty() || !IsNameCharacter(token.front()) ? "" : Upper(token);
}

/// At semicolons outside of strings; with variables the rest is one.
inline std::vector<std::string_view> Statements(std::string_view batch)
{
    std::vector<std::string_view> statements;
    const auto add = [&](std::string_view text) {
        if (text = WithoutBlanks(text); !text.empty())
            statements.push_back(text);
    };
    bool isString = false;
    std::size_t start = 0;
    for (std::size_t i = 0; i < batch.size(); ++i) {
        isString = isString != (batch[i] == '\'');
        if (batch[i] != ';' || isString)
            continue;
        if (FirstWord(batch.substr(start)) == "DECLARE")
            break;
        add(batch.substr(start, i - start));
        start = i + 1;
    }
    add(batch.substr(start));
    return statements;
}

inline bool IsOneOf(std::string_view word, std::initializer_list<std::string_view> words)
{
    return std::find(words.begin(), words.end(), word) != words.end();
}

/// A variable of the batch; empty: none.
inline std::string DeclaredTwice(std::string_view batch)
{
    std::set<std::string> declared;
    const std::vector<std::string> tokens = Tokens(batch);
    for (std::size_t i = 0; i + 1 < tokens.size(); ++i)
        if (Upper(tokens[i]) == "DECLARE" && !declared.insert(tokens[i + 1]).second)
            return tokens[i + 1];
    return {};
}

/// What the connection text has behind the word, which stands there as the tests write it.
inline std::string ValueOf(std::string_view text, std::string_view word)
{
    const std::size_t at = text.find(word);
    return at == text.npos ? "" : std::string(text.substr(at + word.size(), text.find(';', at) - at - word.size()));
}

/// What was written since BEGIN, savepoints within it, and what happened in the end. The record holds DURABLE or UNDONE
/// with each statement that writes.
class Session
{
public:
    /// Of the text it takes `Script=` and `Record=`, files. Throws std::runtime_error when there is no script.
    explicit Session(std::string_view connectionText) : m_record(ValueOf(connectionText, "Record="), std::ios::app)
    {
        std::ifstream script(ValueOf(connectionText, "Script="));
        if (!script)
            throw std::runtime_error("cannot read the script");
        m_script.Read(script);
    }

    bool IsSqlServer() const noexcept { return m_script.GetDbms() == "Microsoft SQL Server"; }
    const std::string& GetDbms() const noexcept { return m_script.GetDbms(); }

    /// Answers a statement, several with semicolons between up to the first that fails (the last one's answer), or
    /// CONNECT.
    Answer Run(std::string_view batch)
    {
        const std::vector<std::string_view> statements = Statements(batch);
        Answer answer;
        for (const std::string_view statement : statements) {
            answer = RunOne(statement);
            if (answer.error)
                break;
        }
        if (statements.size() > 1)
            answer.count = -1;
        return answer;
    }
    void Record(std::string_view line) { m_record << line << std::endl; }

private:
    Answer RunOne(std::string_view statement)
    {
        if (std::optional<Message> refusal = Refusal(statement))
            return Refuse(std::move(*refusal));
        const Answer* const scripted = m_script.Find(statement);
        if (scripted && scripted->error && !scripted->isLater)
            return Refuse(*scripted->error, scripted->endsTransaction);
        const std::string verb = FirstWord(statement);
        if (IsOneOf(verb, {"BEGIN", "SAVE", "SAVEPOINT", "RELEASE", "COMMIT", "ROLLBACK"}))
            return Control(statement);
        Answer answer = scripted ? *scripted : Default(statement);
        if (answer.count != 0 &&
            IsOneOf(verb, {"INSERT", "UPDATE", "DELETE", "EXEC", "CALL", "CREATE", "ALTER", "DROP"})) {
            m_written.emplace_back(statement);
            if (!m_isOpen)
                End("DURABLE");
        }
        return answer;
    }
    Answer Refuse(Message message, bool endsTransaction = false)
    {
        if (message.state.starts_with("08")) {
            m_isLost = true;
            endsTransaction = true;
        }
        const bool isVictim = message.native == 1205;
        if (m_isOpen && (endsTransaction || isVictim))
            End("UNDONE");
        m_hasFailed = m_isOpen && !IsSqlServer();
        Answer answer;
        answer.error = std::move(message);
        return answer;
    }
    /// What no script needs to say: how the server refuses it.
    std::optional<Message> Refusal(std::string_view statement) const
    {
        if (m_isLost)
            return Message{"08S01", 10054, "TCP Provider: Error code 0x2746"};
        if (m_hasFailed && FirstWord(statement) != "ROLLBACK")
            return Message{"25P02", 0, "ERROR: current transaction is aborted, commands ignored until end of block"};
        if (const std::string twice = DeclaredTwice(statement); !twice.empty())
            return Message{"42000", 134, "The variable name '" + twice + "' has already been declared."};
        return std::nullopt;
    }
    /// BEGIN, SAVE (SAVEPOINT), RELEASE, COMMIT, ROLLBACK of all or to a savepoint.
    Answer Control(std::string_view statement)
    {
        const std::vector<std::string> tokens = Tokens(statement);
        const std::string verb = Upper(tokens.front()), name = Upper(tokens.back());
        const auto found = std::find_if(m_savepoints.rbegin(), m_savepoints.rend(),
                                        [&](const auto& savepoint) { return savepoint.first == name; });
        if (!m_isOpen && verb != "BEGIN" && (IsSqlServer() || verb == "SAVEPOINT"))
            return Refuse({"25000", 3902, "The request has no corresponding BEGIN TRANSACTION."});
        if (verb == "BEGIN") {
            m_isOpen = true;
        } else if (verb == "SAVE" || verb == "SAVEPOINT") {
            m_savepoints.emplace_back(name, m_written.size());
        } else if (verb == "ROLLBACK" && found != m_savepoints.rend()) {
            const std::size_t from = found->second;
            m_savepoints.erase(found.base(), m_savepoints.end()); // the savepoint itself stays
            m_hasFailed = false;
            Settle("UNDONE", from);
        } else if (verb != "RELEASE") {
            End(verb == "COMMIT" ? "DURABLE" : "UNDONE");
        }
        Answer answer;
        answer.count = -1;
        return answer;
    }
    /// One row changed; no row; -1 rows where the server does not tell.
    Answer Default(std::string_view statement) const
    {
        const std::string verb = FirstWord(statement), upper = Upper(statement);
        Answer answer;
        if (verb == "SELECT") {
            answer.columns = {{"", "nvarchar"}};
            const bool isSession = upper == "SELECT @@SPID" || upper == "SELECT PG_BACKEND_PID()";
            if (isSession || upper == "SELECT @@TRANCOUNT") {
                answer.columns = {{"", "int"}};
                answer.rows = {{isSession ? "51" : m_isOpen ? "1" : "0"}};
            }
        } else if (!IsOneOf(verb, {"INSERT", "UPDATE", "DELETE"})) {
            answer.count = -1;
        }
        return answer;
    }
    /// What was written from there on.
    void Settle(const char* how, std::size_t from)
    {
        for (std::size_t i = from; i < m_written.size(); ++i)
            Record(how + (" " + m_written[i]));
        m_written.resize(from);
    }
    /// The transaction.
    void End(const char* how)
    {
        Settle(how, 0);
        m_savepoints.clear();
        m_isOpen = m_hasFailed = false;
    }

    Script m_script;
    std::ofstream m_record;
    bool m_isLost = false, m_isOpen = false; // the transaction
    bool m_hasFailed = false;                // PostgreSQL refuses everything then
    std::vector<std::string> m_written;
    std::vector<std::pair<std::string, std::size_t>> m_savepoints; // where in m_written
};

} // namespace OdbcFake
