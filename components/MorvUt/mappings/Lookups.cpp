#include "MorvUt/mappings/TypeMappings.h"

#include <string_view>

#include "Afx/TextFold.h"

namespace
{

// The first row for which `matches` holds; null when there is none.
template<class Matches>
const TypeMapping* FindRow(const TypeMapping* table, Matches matches) noexcept
{
    if (table)
        for (; table->shortName; ++table)
            if (matches(*table))
                return table;
    return nullptr;
}

} // namespace

unsigned GetMapCount(const TypeMapping* table) noexcept
{
    unsigned count = 0;
    FindRow(table, [&count](const TypeMapping&) { return ++count == 0; });
    return count;
}

int GetMapIndexFromShortName(const TypeMapping* table, const char* key, int* index) noexcept
{
    if (!key || !index)
        return 0;
    const std::string_view wanted = key;
    const TypeMapping* row =
        FindRow(table, [wanted](const TypeMapping& r) { return Afx::EqualNoCase(r.shortName, wanted); });
    if (row)
        *index = row->index;
    return row ? 1 : 0;
}

int GetMapIndexFromLongName(const TypeMapping* table, const char* name, int* index) noexcept
{
    if (!name || !index)
        return 0;
    const std::string_view wanted = name;
    const TypeMapping* row = FindRow(table, [wanted](const TypeMapping& r) { return wanted == r.longName; });
    if (row)
        *index = row->index;
    return row ? 1 : 0;
}

int GetMapShortNameFromIndex(const TypeMapping* table, const char** key, int index) noexcept
{
    const TypeMapping* row = key ? FindRow(table, [index](const TypeMapping& r) { return r.index == index; }) : nullptr;
    if (row)
        *key = row->shortName;
    return row ? 1 : 0;
}

int GetMapLongNameFromIndex(const TypeMapping* table, const char** name, int index) noexcept
{
    const TypeMapping* row =
        name ? FindRow(table, [index](const TypeMapping& r) { return r.index == index; }) : nullptr;
    if (row)
        *name = row->longName;
    return row ? 1 : 0;
}
