#include "Cellar/RowCursor.h"

#include <string>
#include <utility>

#include "Cellar/detail/Columns.h"
#include "Cellar/detail/ConnectionState.h"

namespace Cellar
{

struct CRowCursor::Walk
{
    Walk(std::shared_ptr<CConnection::State> of, std::string_view text, std::vector<Value> bound)
        : state(std::move(of)), values(std::move(bound)), statement(state->Ready(text, values))
    {}

    std::shared_ptr<CConnection::State> state; // first, so that it ends last
    std::vector<Value> values;
    Detail::UsedStatement statement;
    std::vector<std::string> columns; // known when a row was read
    std::vector<Value> row;
    std::vector<Value*> places; // in the row
    bool isOnRow = false;
    bool isRead = false;  // the row
    bool isGiven = false; // to somebody else
    bool isAtEnd = false;

    const std::vector<Value>& Row()
    {
        if (isGiven)
            throw DatabaseError(DatabaseError::Category::Other, "", "the row was read before", "");
        if (!isRead)
            state->Reporting(statement.GetText(), [&] { Read(); });
        isRead = true;
        return row;
    }

private:
    void Read()
    {
        if (places.empty()) {
            columns = statement.ReadNames();
            row.resize(columns.size());
            for (Value& value : row)
                places.push_back(&value);
        }
        statement->Read(places);
    }
};

CRowCursor::CRowCursor(CConnection& connection, const SqlText& statement, std::vector<Value> values, Reading reading)
{
    connection.m_state->Reporting(statement.View(), [&] {
        m_walk = std::make_unique<Walk>(connection.m_state, statement.View(), std::move(values));
        if (m_walk->statement.GetPrepared().effect != Effect::Read)
            throw DatabaseError(DatabaseError::Category::Syntax, "", "a cursor walks over a statement that reads", "");
        m_walk->statement->Open(m_walk->values, reading);
    });
}

CRowCursor::~CRowCursor() = default;
CRowCursor::CRowCursor(CRowCursor&& other) noexcept = default;
CRowCursor& CRowCursor::operator=(CRowCursor&& other) noexcept = default;

bool CRowCursor::Next()
{
    Walk& walk = *m_walk;
    walk.isOnRow = walk.isRead = walk.isGiven = false;
    if (walk.isAtEnd)
        return false;
    walk.isOnRow = walk.state->Reporting(walk.statement.GetText(), [&] { return walk.statement->Step(); });
    walk.isAtEnd = !walk.isOnRow;
    if (walk.isAtEnd)
        walk.statement->Close();
    return walk.isOnRow;
}

CRowCursor::Walk& CRowCursor::OnRow() const
{
    if (!m_walk->isOnRow)
        Detail::FailNoRow();
    return *m_walk;
}

void CRowCursor::ReadInto(std::span<Value* const> row)
{
    Walk& walk = OnRow();
    if (walk.isRead) { // some drivers give each value once
        for (std::size_t i = 0; i < row.size(); ++i)
            *row[i] = walk.row.at(i);
        return;
    }
    walk.isGiven = true;
    walk.state->Reporting(walk.statement.GetText(), [&] { walk.statement->Read(row); });
}

const Value& CRowCursor::Get(std::string_view column) const
{
    Walk& walk = OnRow();
    walk.Row(); // with its columns
    return Get(Detail::PositionOf(walk.columns, column));
}

const Value& CRowCursor::Get(int position) const { return Detail::At(OnRow().Row(), position); }

} // namespace Cellar
