#include "Cellar/detail/Columns.h"

#include <algorithm>

#include "Afx/text/TextFold.h"
#include "Cellar/DatabaseError.h"

namespace Cellar::Detail
{
namespace
{

[[noreturn]] void RefuseColumn(std::string why)
{
    throw DatabaseError(DatabaseError::Category::Other, "", std::move(why), "");
}

} // namespace

int PositionOf(const std::vector<std::string>& columns, std::string_view name)
{
    auto found = std::find(columns.begin(), columns.end(), name); // mostly as the statement spells it
    if (found == columns.end())
        found = std::find_if(columns.begin(), columns.end(),
                             [&](const std::string& column) { return Afx::EqualNoCase(column, name); });
    if (found == columns.end())
        RefuseColumn("the result has no column '" + std::string(name) + "'");
    return static_cast<int>(found - columns.begin());
}

const Value& At(const std::vector<Value>& row, int position)
{
    if (position < 0 || static_cast<std::size_t>(position) >= row.size())
        RefuseColumn("the result has no column at position " + std::to_string(position));
    return row[static_cast<std::size_t>(position)];
}

void FailNoRow() { RefuseColumn("a column was read where there is no row"); }

} // namespace Cellar::Detail
