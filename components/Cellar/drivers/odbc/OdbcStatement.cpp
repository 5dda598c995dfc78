#include "Cellar/drivers/odbc/OdbcStatement.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "Afx/text/TextFold.h"
#include "Cellar/drivers/odbc/InsertShape.h"
#include "Cellar/drivers/odbc/WideText.h"

namespace Cellar::Odbc
{
namespace
{

constexpr std::size_t kFirstPart = 100, kMostRows = 5000; // of a result that is read in parts
constexpr std::size_t kPartBytes = 256 * 1024;

constexpr char kGuard[] = "guard";

} // namespace

OdbcStatement::OdbcStatement(std::shared_ptr<ServerSession> session, const PreparedText& prepared)
    : m_session(std::move(session)), m_text(prepared.text), m_parameters(prepared.placeholders)
{
    const ServerRules& rules = m_session->GetRules();
    const InsertShape shape = rules.failureEndsTransaction ? ShapeOf(m_text) : InsertShape::None;
    if (shape == InsertShape::OneRow && rules.unlessThere) {
        m_text += rules.unlessThere;
        m_guard = Guard::UnlessThere;
    } else if (shape == InsertShape::Query) {
        m_guard = Guard::Savepoint;
    }
}

OdbcStatement::~OdbcStatement()
{
    OdbcStatement::Close();
    for (StatementHandle* const each : {&m_statement, &m_declaration, &m_part})
        if (*each)
            m_session->Retire(std::move(*each));
}

void OdbcStatement::Prepare(StatementHandle& statement, const std::string& text) const
{
    statement = m_session->NewStatement();
    if (&statement == &m_part) // a copy that the server keeps: others may be sent while it is read
        SQLSetStmtAttr(statement.Get(), SQL_ATTR_CURSOR_TYPE, reinterpret_cast<SQLPOINTER>(SQLULEN{SQL_CURSOR_STATIC}),
                       0);
    std::u16string wide = ToWide(text);
    if (!IsDone(SQLPrepareW(statement.Get(), reinterpret_cast<SQLWCHAR*>(wide.data()),
                            static_cast<SQLINTEGER>(wide.size()))))
        m_session->Fail(statement.Get());
}

void OdbcStatement::Run(StatementHandle& statement, const std::string& text, std::span<const Value> values)
{
    m_session->BeforeRun(text);
    for (bool isAgain = false;; isAgain = true) {
        if (!statement)
            Prepare(statement, text);
        if (!m_parameters.Bind(statement.Get(), values))
            m_session->Fail(statement.Get());
        const SQLRETURN result = SQLExecute(statement.Get());
        if (IsDone(result) || result == SQL_NO_DATA)
            return;
        if (isAgain || !MustBePreparedAnew(statement.Get()))
            m_session->Fail(statement.Get());
        m_session->Retire(std::exchange(statement, StatementHandle()));
        m_columns = {};
    }
}

/// A table has changed since the server planned the statement.
bool OdbcStatement::MustBePreparedAnew(SQLHSTMT statement) const
{
    const Diagnosis diagnosis = Diagnose(SQL_HANDLE_STMT, statement);
    return !m_session->InTransaction() && diagnosis.state == "0A000" &&
           diagnosis.text.find("cached plan") != std::string::npos;
}

long OdbcStatement::Execute(std::span<const Value> values)
{
    const bool needsGuard = m_guard == Guard::Savepoint && m_session->InTransaction() && !m_session->HasFailed();
    const ServerRules& rules = m_session->GetRules();
    if (needsGuard)
        m_session->SendLater(std::string(rules.savepoint) + kGuard);
    try {
        Run(m_statement, m_text, values);
    } catch (const DatabaseError&) {
        if (needsGuard)
            m_session->GoBack(kGuard);
        throw;
    }
    if (needsGuard && rules.release)
        m_session->SendLater(std::string(rules.release) + kGuard);
    const SQLLEN changed = CountChanged();
    return static_cast<long>(std::clamp<SQLLEN>(changed, 0, std::numeric_limits<std::int32_t>::max()));
}

/// Throws when the row was there already.
SQLLEN OdbcStatement::CountChanged() const
{
    SQLSMALLINT columns = 0;
    SQLLEN changed = 0;
    if (IsDone(SQLNumResultCols(m_statement.Get(), &columns)) && columns == 0)
        SQLRowCount(m_statement.Get(), &changed);
    if (m_guard == Guard::UnlessThere && changed == 0)
        throw ErrorOf({"23505", 0, "the server has left the new row out"});
    return changed;
}

void OdbcStatement::Open(std::span<const Value> values, Reading reading)
{
    if (reading == Reading::InParts && m_session->GetRules().declaresCursors)
        return OpenCursor(values);
    m_isCopy = reading == Reading::InParts;
    StatementHandle& statement = m_isCopy ? m_part : m_statement;
    Run(statement, m_text, values);
    if (m_guard == Guard::UnlessThere)
        CountChanged();
    Describe(statement.Get());
}

SQLHSTMT OdbcStatement::Reads() const noexcept
{
    return m_isCopy || !m_cursor.empty() ? m_part.Get() : m_statement.Get();
}

void OdbcStatement::Describe(SQLHSTMT statement)
{
    if (!m_columns.AreKnown() && !m_columns.Describe(statement))
        m_session->Fail(statement);
}

/// Its rows outlast the transaction, as those of a result that was read whole.
void OdbcStatement::OpenCursor(std::span<const Value> values)
{
    const std::string name = "cursor" + std::to_string(reinterpret_cast<std::uintptr_t>(this));
    Run(m_declaration, "DECLARE " + name + " NO SCROLL CURSOR WITH HOLD FOR " + m_text, values);
    m_cursor = name;
    m_session->OpenedCursor(name);
    m_wanted = m_had = 0;
    FetchMore();
}

/// The next part of the result.
bool OdbcStatement::FetchMore()
{
    if (m_had < m_wanted)
        return false; // the last part was not full
    const std::size_t bytes = std::max<std::size_t>(m_columns.GetBytesRead(), 1);
    m_wanted = m_wanted == 0 ? kFirstPart : std::clamp<std::size_t>(m_wanted * kPartBytes / bytes, 1, kMostRows);
    m_columns.CountAnew();
    m_had = 0;
    if (!m_part)
        m_part = m_session->NewStatement();
    SQLFreeStmt(m_part.Get(), SQL_CLOSE);
    m_session->RunDirect(m_part.Get(), "FETCH " + std::to_string(m_wanted) + " FROM " + m_cursor);
    Describe(m_part.Get());
    return true;
}

bool OdbcStatement::Step()
{
    const SQLHSTMT statement = Reads();
    SQLRETURN result = SQLFetch(statement);
    if (result == SQL_NO_DATA && !m_cursor.empty() && FetchMore())
        result = SQLFetch(statement);
    if (result == SQL_NO_DATA)
        return false;
    if (!IsDone(result))
        m_session->Fail(statement);
    ++m_had;
    return true;
}

void OdbcStatement::Read(std::span<Value* const> row)
{
    const SQLHSTMT statement = Reads();
    int column = 0;
    for (Value* const value : row)
        if (!m_columns.Read(statement, column++, *value))
            m_session->Fail(statement);
}

void OdbcStatement::Close() noexcept
{
    for (const StatementHandle* const each : {&m_statement, &m_declaration, &m_part})
        if (*each)
            SQLFreeStmt(each->Get(), SQL_CLOSE);
    if (!m_cursor.empty())
        m_session->CloseCursor(std::exchange(m_cursor, {}));
    m_parameters.Forget();
}

} // namespace Cellar::Odbc
