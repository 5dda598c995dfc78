#pragma once

// The rows of a result one after the other.

#include <memory>
#include <span>
#include <string_view>
#include <vector>

#include "Cellar/Connection.h"
#include "Cellar/Export.h"

namespace Cellar
{

/// Walks forward over the rows of a SELECT, of which it holds one, however many there are. Stands before the first.
/// Columns are named as in CBufferedRowList; reading an unknown one, or where there is no row, throws DatabaseError
/// (Other).
///
/// What it reads is one state of the data: what this connection writes meanwhile may or may not be seen, what others
/// write is not. Until its end is reached, or the cursor is, the engine keeps that state: so walk quickly, without
/// waiting for a user. It keeps a connection that is closed meanwhile open for itself.
class CELLAR_API CRowCursor : public RowReader<CRowCursor>
{
public:
    CRowCursor(CConnection& connection, const SqlText& statement, std::vector<Value> values,
               Reading reading = Reading::InParts);
    template<class... Args>
    CRowCursor(CConnection& connection, const SqlText& statement, const Args&... args)
        : CRowCursor(connection, statement, std::vector<Value>{Value(args)...})
    {}
    ~CRowCursor();
    CRowCursor(CRowCursor&& other) noexcept;
    CRowCursor& operator=(CRowCursor&& other) noexcept;

    /// Goes to the next row; false at the end, and then again.
    bool Next();
    const Value& Get(std::string_view column) const;
    const Value& Get(int position) const;

    /// Puts the current row's first columns where the pointers lead. Throws as Get, which may come before it, but not
    /// behind it.
    void ReadInto(std::span<Value* const> row);

private:
    struct Walk;
    Walk& OnRow() const;
    std::unique_ptr<Walk> m_walk;
};

} // namespace Cellar
