#pragma once

// Statements, kept by the text that was written: translated and compiled once.

#include <functional>
#include <list>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>

#include "Cellar/detail/Driver.h"
#include "Cellar/RowSet.h"

namespace Cellar::Detail
{

struct Statement
{
    std::string tsql;
    PreparedText prepared;
    std::unique_ptr<CompiledStatement> compiled; // null until it is first run
    bool isInUse = false;
};

/// One use of a statement; at its end the engine's result is closed and the statement free for the next.
class UsedStatement
{
public:
    explicit UsedStatement(std::shared_ptr<Statement> statement) noexcept : m_statement(std::move(statement))
    {
        m_statement->isInUse = true;
    }
    UsedStatement(UsedStatement&&) noexcept = default;
    UsedStatement& operator=(UsedStatement&&) = delete;
    ~UsedStatement();

    void Compile(Driver& driver)
    {
        if (!m_statement->compiled)
            m_statement->compiled = driver.Compile(m_statement->prepared);
    }
    const PreparedText& GetPrepared() const noexcept { return m_statement->prepared; }
    std::string_view GetText() const noexcept { return m_statement->tsql; } // T-SQL
    CompiledStatement* operator->() const noexcept { return m_statement->compiled.get(); }
    RowSet ReadAll(std::span<const Value> values) const;
    /// The columns' names, after the first step.
    std::vector<std::string> ReadNames() const;

private:
    std::shared_ptr<Statement> m_statement;
};

/// The statements used last.
class Statements
{
public:
    explicit Statements(const Driver& driver) noexcept : m_driver(driver) {}

    /// Found, or translated. One that is in use already (a cursor walks over its rows) is made a second time.
    UsedStatement Use(std::string_view tsql)
    {
        return Use(tsql, [&] { return Translated(tsql); });
    }
    /// One that does what these do (Dialect::Together).
    UsedStatement UseTogether(std::span<const std::string> tsql);

private:
    using List = std::list<std::shared_ptr<Statement>>;
    UsedStatement Use(std::string_view text, const std::function<PreparedText()>& make);
    PreparedText Translated(std::string_view tsql) const { return m_driver.GetDialect().Translate(tsql); }

    const Driver& m_driver;
    List m_list;                                                   // the one used last in front
    std::unordered_map<std::string_view, List::iterator> m_byText; // views into the statements
};

} // namespace Cellar::Detail
