#include "Cellar/BufferedRowList.h"

#include <algorithm>

#include "Afx/text/TextFold.h"

namespace Cellar
{
namespace
{

[[noreturn]] void Refuse(std::string why)
{
    throw DatabaseError(DatabaseError::Category::Other, "", std::move(why), "");
}

} // namespace

const Value& CBufferedRowList::Get(std::string_view column) const
{
    const auto& columns = m_set.columns;
    auto found = std::find(columns.begin(), columns.end(), column); // mostly as the statement spells it
    if (found == columns.end())
        found = std::find_if(columns.begin(), columns.end(),
                             [&](const std::string& name) { return Afx::EqualNoCase(name, column); });
    if (found != columns.end())
        return Get(static_cast<int>(found - columns.begin()));
    Refuse("the result has no column '" + std::string(column) + "'");
}

const Value& CBufferedRowList::Get(int position) const
{
    if (IsEOL())
        Refuse("a column was read past the last row");
    const std::vector<Value>& row = m_set.rows[m_at];
    if (position < 0 || static_cast<std::size_t>(position) >= row.size())
        Refuse("the result has no column at position " + std::to_string(position));
    return row[static_cast<std::size_t>(position)];
}

} // namespace Cellar
