#pragma once

// A result whose rows were all read at once.

#include <utility>

#include "Cellar/Connection.h"
#include "Cellar/Export.h"

namespace Cellar
{

/// All rows of a SELECT. Stands on the first row, if any. Columns are found by name without regard to case, or by
/// position from 0. Reading an unknown column, or past the end, throws DatabaseError (Other).
class CELLAR_API CBufferedRowList : public RowReader<CBufferedRowList>
{
public:
    CBufferedRowList() = default;
    explicit CBufferedRowList(RowSet rows) : m_set(std::move(rows)) {}
    template<class... Args>
    CBufferedRowList(CConnection& connection, const SqlText& statement, const Args&... args)
        : m_set(connection.Queryf(statement, args...))
    {}

    bool MoveFirst() noexcept // false when there is no row
    {
        m_at = 0;
        return !IsEOL();
    }
    bool MoveNext() noexcept
    {
        if (!IsEOL())
            ++m_at;
        return !IsEOL();
    }
    bool IsEOL() const noexcept { return m_at >= m_set.rows.size(); }
    int GetCount() const noexcept { return static_cast<int>(m_set.rows.size()); }

    const Value& Get(std::string_view column) const;
    const Value& Get(int position) const;

private:
    RowSet m_set;
    std::size_t m_at = 0;
};

} // namespace Cellar
