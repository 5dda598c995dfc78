#pragma once

// A practice for a test, and what it holds as text.

#include <map>
#include <sstream>

#include "Afx/text/Ascii.h"
#include "Afx/text/TextFold.h"
#include "Brix/Records.h"
#include "Brix/Schema.h"
#include "Quarry/Listeners.h"
#include "Quarry/Session.h"
#include "support/Databases.h"

namespace Test
{

/// An empty practice of the test's own, in its folder or on the server; its connection is the current one while it
/// lives.
class Practice
{
public:
    explicit Practice(const char* name = "practice.db")
    {
        if (IsOnServer())
            MakeOnServer(name);
        Quarry::SetConnection(Open(name));
        if (!IsOnServer())
            Brix::CreateSchema(Quarry::GetConnection());
    }
    Practice(const Practice&) = delete;
    Practice& operator=(const Practice&) = delete;
    ~Practice()
    {
        Quarry::RemoveAllListeners();
        Quarry::SetConnection(nullptr);
    }

    /// Another connection to the practice, as another program has it.
    static std::unique_ptr<Cellar::CConnection> Open(const std::string& name = "practice.db")
    {
        return OpenDatabase(name);
    }

    template<class... Args>
    static void Sql(const Cellar::SqlText& statement, const Args&... args)
    {
        Quarry::GetConnection().ExecuteDirectf(statement, args...);
        PutIdsBehind(statement.View());
    }
    /// Statements of the database's own dialect.
    static void Script(const std::string& statements)
    {
        Quarry::GetConnection().Script(statements);
        PutIdsBehind(statements);
    }

    /// The rows of a SELECT: values separated by "|", "-" for nothing, amounts in pounds, bytes in hexadecimal, and "!
    /// " before a row whose bWithdrawn is set. Each row ends in `end`.
    static std::string Rows(const Cellar::SqlText& select, const char* end = "\n")
    {
        std::string text;
        const Cellar::RowSet set = Quarry::GetConnection().Queryf(select);
        for (const auto& row : set.rows) {
            std::string line;
            for (std::size_t i = 0; i < row.size(); ++i)
                if (!Afx::EqualNoCase(set.columns[i], "bWithdrawn"))
                    line += (line.empty() ? "" : "|") + Show(set.columns[i], row[i]);
                else if (row[i].GetInteger() != 0)
                    text += "! ";
            text += line + end;
        }
        return text;
    }
    /// The same, with ", " between the rows.
    static std::string Query(const Cellar::SqlText& select)
    {
        const std::string text = Rows(select, ", ");
        return text.substr(0, text.empty() ? 0 : text.size() - 2);
    }
    /// The same of a SELECT that is read from a file.
    static std::string Asked(const std::string& select)
    {
        Script("DROP VIEW IF EXISTS Asked; CREATE TEMP VIEW Asked AS " + select);
        return Query("SELECT * FROM Asked");
    }
    /// What "TABLE: column, column" holds: the rows in the order of their texts, equal ones once, with their number.
    static std::string InTable(const std::string& what)
    {
        const std::size_t colon = what.find(": ");
        Cellar::SqlText select = "SELECT ", between = "";
        for (std::size_t at = colon + 2, end; at < what.size(); at = end + 2, between = ", ") {
            end = std::min(what.find(", ", at), what.size());
            select += between + Cellar::SqlText::Identifier(what.substr(at, end - at));
        }
        std::istringstream rows(Rows(select + " FROM " + Cellar::SqlText::Identifier(what.substr(0, colon)), "\1"));
        std::map<std::string, int> counts;
        for (std::string row; std::getline(rows, row, '\1');)
            ++counts[row];
        std::string text;
        for (const auto& [row, count] : counts)
            text += row + (count > 1 ? " (" + std::to_string(count) + " times)\n" : "\n");
        return text;
    }

private:
    /// Rows that statements put there with ids of their own: new ones stand behind them on a server, too.
    static void PutIdsBehind(std::string_view statements)
    {
        constexpr std::string_view kOwnIds = " (lID";
        if (!IsOnServer())
            return;
        const Quarry::CIgnoreDirectSQL quiet;
        for (std::size_t at = 0; (at = statements.find(kOwnIds, at)) != statements.npos; ++at) {
            const std::size_t word = statements.rfind(' ', at - 1) + 1;
            const Quarry::Table* const table = Brix::FindTable(statements.substr(word, at - word));
            if (!table)
                continue;
            const Cellar::Dialect& dialect = Quarry::GetConnection().GetDialect();
            Quarry::GetConnection().Script(table->GetCounted() ? dialect.MoveSequence(table->sqlName, "lID", 0)
                                                               : dialect.MoveIdentity(table->sqlName, "lID", 0));
        }
    }
    /// As a copy of one that is made once for each server, which takes a fifth of the time.
    static void MakeOnServer(const char* name)
    {
        constexpr char kTemplate[] = "empty_practice";
        const auto isThere = [&] {
            return !Cellar::CConnection::Open(OnServer("postgres"))
                        ->Queryf("SELECT 1 FROM pg_database WHERE datname = %s", kTemplate)
                        .rows.empty();
        };
        if (!isThere()) {
            const std::string made = "made" + std::to_string(std::random_device{}());
            ExecuteOnServer("CREATE DATABASE " + made);
            Brix::CreateSchema(*Cellar::CConnection::Open(OnServer(made)));
            try {
                ExecuteOnServer("ALTER DATABASE " + made + " RENAME TO " + kTemplate);
            } catch (const Cellar::DatabaseError&) { // another test was first
                ExecuteOnServer("DROP DATABASE " + made);
            }
        }
        ConnectionTextOf(name, kTemplate);
    }
    static std::string Hex(const Cellar::Bytes& bytes)
    {
        std::string text;
        for (const std::uint8_t byte : bytes)
            text.append({Afx::kHexDigits[byte / 16], Afx::kHexDigits[byte % 16]});
        return text;
    }
    static std::string Show(const std::string& column, const Cellar::Value& value)
    {
        if (column.starts_with("vb"))
            return value.IsNull() ? "-" : Hex(Cellar::ToBytes(value));
        const CString text = column.starts_with("amt") ? Cellar::ToAmount(value).Format() : Cellar::ToText(value);
        return text.IsEmpty() ? "-" : text.Str();
    }
};

/// Base of fixtures whose bodies run on a practice of either database.
class OnPractice : public OnDatabase, protected Practice
{};

/// Adds a row to the table of the record class; `fill` sets its values. Answers its id.
template<class Record, class Fill>
long Add(Fill fill)
{
    Record rows;
    rows.AddNew();
    fill(rows);
    rows.Update();
    return rows.GetID();
}

/// Adds clients who can be fetched for, in one transaction. Answers the id of the last.
inline long AddClients(int count)
{
    Quarry::CTransaction transaction(Cellar::Intent::Write);
    long last = 0;
    for (int number = 1; number <= count; ++number) {
        CString text;
        text.Format("AA%06dA", 100000 + number);
        last = Add<Brix::CClient>([&](Brix::CClient& client) {
            client.SetCode(text);
            client.SetName(text);
            client.SetNINumber(text);
            client.SetUTR("2234567890");
        });
    }
    transaction.Commit();
    return last;
}

} // namespace Test
