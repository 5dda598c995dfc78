#include "Quarry/Table.h"

#include <algorithm>

#include "Afx/text/TextFold.h"

namespace Quarry
{

const Column* Table::Find(int ordinal) const noexcept
{
    // Most tables have no gaps before the column that is asked for.
    const auto guess = static_cast<std::size_t>(ordinal);
    if (ordinal >= 0 && guess < columns.size() && columns[guess].ordinal == ordinal)
        return &columns[guess];
    const auto found =
        std::find_if(columns.begin(), columns.end(), [&](const Column& c) { return c.ordinal == ordinal; });
    return found == columns.end() ? nullptr : &*found;
}

const Column* Table::Find(std::string_view name) const noexcept
{
    const auto found =
        std::find_if(columns.begin(), columns.end(), [&](const Column& c) { return Afx::EqualNoCase(c.name, name); });
    return found == columns.end() ? nullptr : &*found;
}

const Column* Table::GetCounted() const noexcept
{
    const Column* const column = Find(std::string_view(key));
    return *className && column && column->type == Cellar::ColumnType::Int ? column : nullptr;
}

} // namespace Quarry
