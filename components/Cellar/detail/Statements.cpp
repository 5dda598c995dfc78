#include "Cellar/detail/Statements.h"

#include <utility>
#include <vector>

namespace Cellar::Detail
{
namespace
{

/// Statements are written in the program and thus few; those with numbers put in are not.
constexpr std::size_t kKept = 256;

/// Where to read a row to.
std::vector<Value*> Places(std::vector<Value>& row)
{
    std::vector<Value*> places;
    places.reserve(row.size());
    for (Value& value : row)
        places.push_back(&value);
    return places;
}

} // namespace

UsedStatement::~UsedStatement()
{
    if (!m_statement)
        return;
    if (m_statement->compiled)
        m_statement->compiled->Close();
    m_statement->isInUse = false;
}

std::vector<std::string> UsedStatement::ReadNames() const
{
    CompiledStatement& compiled = *m_statement->compiled;
    const int columns = compiled.GetColumnCount();
    std::vector<std::string> names;
    names.reserve(static_cast<std::size_t>(columns));
    for (int column = 0; column < columns; ++column)
        names.push_back(compiled.GetColumnName(column));
    return names;
}

RowSet UsedStatement::ReadAll(std::span<const Value> values) const
{
    CompiledStatement& compiled = *m_statement->compiled;
    compiled.Open(values, Reading::Whole);
    RowSet set;
    bool more = compiled.Step(); // before the columns are read: the engine may prepare the statement anew
    set.columns = ReadNames();
    for (; more; more = compiled.Step()) {
        std::vector<Value>& row = set.rows.emplace_back(set.columns.size());
        compiled.Read(Places(row));
    }
    return set;
}

UsedStatement Statements::Use(std::string_view text, const std::function<PreparedText()>& make)
{
    const auto madeNow = [&] {
        auto statement = std::make_shared<Statement>();
        statement->tsql = text;
        statement->prepared = make();
        return statement;
    };
    if (const auto found = m_byText.find(text); found != m_byText.end()) {
        m_list.splice(m_list.begin(), m_list, found->second);
        std::shared_ptr<Statement>& statement = m_list.front();
        return UsedStatement(statement->isInUse ? madeNow() : statement);
    }
    std::shared_ptr<Statement> statement = madeNow();
    if (m_list.size() >= kKept) {
        m_byText.erase(m_list.back()->tsql);
        m_list.pop_back();
    }
    m_list.push_front(statement);
    m_byText.emplace(statement->tsql, m_list.begin());
    return UsedStatement(std::move(statement));
}

UsedStatement Statements::UseTogether(std::span<const std::string> tsql)
{
    std::string text;
    for (const std::string& each : tsql)
        text += (text.empty() ? "" : "; ") + each;
    return Use(text, [&] {
        std::vector<PreparedText> prepared;
        for (const std::string& each : tsql)
            prepared.push_back(Translated(each));
        return m_driver.GetDialect().Together(prepared);
    });
}

} // namespace Cellar::Detail
