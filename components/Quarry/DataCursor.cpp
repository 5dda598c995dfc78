#include "Quarry/DataCursor.h"

#include <utility>

#include "Cellar/RowCursor.h"
#include "Quarry/detail/RowPlaces.h"
#include "Quarry/detail/Selection.h"
#include "Quarry/Session.h"

namespace Quarry
{

struct CDataCursor::Walk
{
    Walk(Cellar::CConnection& connection, const Table& table, const Detail::Selection& selection)
        : cursor(connection, selection.GetStatement(), selection.GetValues()), places(table, selection.GetPositions())
    {}

    Cellar::CRowCursor cursor;
    Detail::RowPlaces places;
};

CDataCursor::CDataCursor(const Table& table, std::initializer_list<Where> where, std::initializer_list<Sort> sort,
                         const Take& take)
    : CDataCursor(GetConnection(), table, where, sort, take)
{}

CDataCursor::CDataCursor(Cellar::CConnection& connection, const Table& table, std::initializer_list<Where> where,
                         std::initializer_list<Sort> sort, const Take& take)
    : m_list(table)
{
    Detail::Selection selection(table);
    selection.Read(where, sort, take, false, connection.GetDialect());
    m_walk = std::make_unique<Walk>(connection, table, selection);
}

CDataCursor::~CDataCursor() = default;
CDataCursor::CDataCursor(CDataCursor&& other) noexcept = default;
CDataCursor& CDataCursor::operator=(CDataCursor&& other) noexcept = default;

bool CDataCursor::Next() { return NextInto(m_list); }

bool CDataCursor::NextInto(CDataList& list)
{
    if (!m_walk->cursor.Next()) {
        list.m_rows.clear();
        list.m_at = 0;
        return false;
    }
    if (list.m_rows.empty())
        list.m_rows.push_back({Row(list.GetTable()), {}, false, true});
    m_walk->places.Read(m_walk->cursor, list.m_rows.front().row.m_values);
    return true;
}

} // namespace Quarry
