#pragma once

// Stories of connections to one database: acts, and below each what it shows.

#include <algorithm>
#include <functional>
#include <map>
#include <optional>
#include <span>
#include <sstream>
#include <stdexcept>

#include "Cellar/ServerState.h"
#include "CellarTestSupport.h"

class Story
{
public:
    using Open = std::function<std::unique_ptr<CConnection>()>;
    explicit Story(Open open) : m_open(std::move(open)) {}
    Story(const Story&) = delete;
    Story& operator=(const Story&) = delete;

    /// "a insert 1": by connection a, which is opened for its first act, and is the only one that waits for others.
    /// Shows a result, or the category of the error, and the levels that are open then; and what was sent, once that
    /// was asked for.
    std::string operator()(const std::string& line)
    {
        m_words = std::istringstream(line);
        m_shown = m_told = "";
        const std::string name = Word();
        Actor& actor = m_actors[name];
        try {
            if (!actor.connection)
                (actor.connection = m_open())->SetBusyTimeout(name == "a" ? 5000u : 0u);
            Act(actor);
        } catch (const DatabaseError& error) {
            m_shown = NameOf(error.GetCategory());
            EXPECT_TRUE(error.GetCategory() != Category::DuplicateKey ||
                        error.GetStatement().find("INSERT") != std::string::npos)
                << "told later, too: " << error.what();
        } catch (const std::logic_error&) {
            m_shown = "not allowed";
        }
        if (const int level = actor.connection ? actor.connection->GetLevel() : 0)
            m_shown += (m_shown.empty() ? "[" : " [") + std::to_string(level) +
                       (actor.connection->HasUnsavedWrites() ? " unsaved]"
                        : actor.connection->HasBegun()       ? " begun]"
                                                             : "]");
        return (m_shown.empty() ? "" : m_shown + '\n') + m_told;
    }

private:
    struct Actor
    {
        std::unique_ptr<CConnection> connection;
        std::optional<CRowCursor> cursor;
    };

    std::string Word()
    {
        std::string word;
        m_words >> word;
        return word;
    }
    /// 0 when there is none.
    long Number()
    {
        long number = 0;
        m_words >> number;
        return number;
    }
    void Act(Actor& actor)
    {
        const std::string word = Word();
        if (const auto act = m_acts.find(word); act != m_acts.end())
            return act->second(actor);
        const auto* const statement = std::find_if(std::begin(kStatements), std::end(kStatements),
                                                   [&](const auto& each) { return word == each.name; });
        if (statement == std::end(kStatements))
            throw std::runtime_error("no such act: " + word);
        std::vector<Value> numbers;
        for (long number = 0; m_words >> number;)
            numbers.emplace_back(number);
        if (statement->text.View().starts_with("SELECT") || word == "checkpoint")
            m_shown = ToText(actor.connection->Query(statement->text, numbers).rows.at(0).at(0)).Str();
        else
            m_shown = std::to_string(actor.connection->Execute(statement->text, numbers)) + " rows";
    }

    const std::map<std::string, std::function<void(Actor&)>> m_acts{
        {"begin", [](Actor& a) { a.connection->Begin(); }},
        {"write", // with a table and an id for what belongs to that row, otherwise for the practice
         [this](Actor& a) {
             a.connection->Begin(Intent::Write, {static_cast<int>(Number()), Number()});
         }},
        {"commit", [](Actor& a) { a.connection->Commit(); }},
        {"rollback", [](Actor& a) { a.connection->Rollback(); }},
        {"rollback-to", [this](Actor& a) { a.connection->RollbackTo(static_cast<int>(Number())); }},
        {"lock", [](Actor& a) { a.connection->LockTable("Note"); }},
        {"aside", // another act
         [this](Actor& a) {
             const CConnection::Aside aside(*a.connection);
             Act(a);
         }},
        {"later", // a row that waits; without a number its statement without values
         [this](Actor& a) {
             const Value values[] = {Value(Number()), Value("written")};
             a.connection->ExecuteLater(kInsertNote, std::span(values, ToLong(values[0]) == 0 ? 0u : 2u));
         }},
        {"script",
         [this](Actor& a) { a.connection->Script(m_words.str().substr(static_cast<std::size_t>(m_words.tellg()))); }},
        {"walk", [](Actor& a) { a.cursor = CRowCursor(*a.connection, "SELECT lID FROM Note"); }},
        {"next", [this](Actor& a) { m_shown = a.cursor->Next() ? a.cursor->GetText(0).Str() : "end"; }},
        {"leave", [](Actor& a) { a.cursor.reset(); }},
        {"close", [](Actor& a) { a.connection.reset(); }},
        {"wait", [this](Actor& a) { a.connection->SetBusyTimeout(static_cast<unsigned>(Number())); }},
        {"dialect", [this](Actor& a) { m_shown = a.connection->GetDialect().GetName(); }},
        {"lent", // with another's
         [this](Actor& a) {
             m_shown = AreSessionsLent(*a.connection, *m_actors.at(Word()).connection) ? "lent" : "each its own";
         }},
        {"end", // another's session
         [this](Actor& a) {
             a.connection->Queryf("SELECT pg_terminate_backend(%ld)",
                                  static_cast<long>(m_actors.at(Word()).connection->GetSessionId()));
         }},
        {"show-sent", [this](Actor& a) { a.connection->OnSent([this](auto sent) { Tell(std::string(sent)); }); }},
        {"show-rollbacks", [this](Actor& a) { a.connection->OnRollback([this] { Tell("a rollback"); }); }},
    };
    /// With a number for each placeholder.
    static constexpr struct
    {
        const char* name;
        SqlText text;
    } kStatements[] = {
        {"count", "SELECT COUNT(*) FROM Note"},
        {"delete", "DELETE FROM Note"},
        {"insert", "INSERT INTO Note (lID, strText) VALUES (%ld, 'written')"},
        {"insert-two", "INSERT INTO Note (lID, strText) VALUES (%ld, 'a'), (%ld, 'b')"},
        {"insert-brackets", "INSERT INTO Note (lID, strText) VALUES (%ld, 'b (''), (')"},
        {"insert-query", "INSERT INTO Note (lID, strText) SELECT %ld, 'b'"},
        {"insert-strict", "INSERT INTO Strict VALUES (%ld)"},
        {"insert-many", "WITH RECURSIVE n(i) AS (SELECT 100 UNION ALL SELECT i + 1 FROM n WHERE i < 200) "
                        "INSERT INTO Note (lID, strText) SELECT i, hex(zeroblob(2000)) FROM n"},
        {"checkpoint", "PRAGMA wal_checkpoint(TRUNCATE)"}, // 0 where nobody reads an older state
        {"break-rule", "UPDATE Note SET nSmall = 100"},
        {"cursors", "SELECT COUNT(*) FROM pg_cursors WHERE name <> ''"},
        {"first", "INSERT INTO first VALUES (1)"},
        {"second", "INSERT INTO second VALUES (1)"},
        {"third", "INSERT INTO third VALUES (1)"},
        {"call", "EXEC MTDLogWrite"},
    };
    void Tell(const std::string& what) { m_told += "> " + what + '\n'; }

    Open m_open;
    std::map<std::string, Actor> m_actors;
    std::istringstream m_words; // of the act
    std::string m_shown, m_told;
};
