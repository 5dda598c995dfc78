#include "Cellar/BufferedRowList.h"

#include "Cellar/detail/Columns.h"

namespace Cellar
{

const Value& CBufferedRowList::Get(std::string_view column) const
{
    return Get(Detail::PositionOf(m_set.columns, column));
}

const Value& CBufferedRowList::Get(int position) const
{
    if (IsEOL())
        Detail::FailNoRow();
    return Detail::At(m_set.rows[m_at], position);
}

} // namespace Cellar
