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

std::vector<std::string_view> SplitNames(std::string_view names)
{
    std::vector<std::string_view> split;
    while (!names.empty()) {
        const std::size_t comma = std::min(names.find(','), names.size());
        split.push_back(names.substr(0, comma));
        names.remove_prefix(std::min(comma + 1, names.size()));
    }
    return split;
}

} // namespace Quarry
