#include <cstdint>
#include <cstring>

#include "Afx/text/TextFold.h"
#include "MorvUt/mappings/TypeMappings.h"

namespace
{

constexpr int kFound = 1, kNotFound = 0;

// The first row for which `matches` holds; null when there is none. The rows end where `text` is null.
template<class Matches>
const TypeMapping* FindRow(const TypeMapping* table, const char* TypeMapping::*text, Matches matches) noexcept
{
    if (table)
        for (; table->*text; ++table)
            if (matches(*table))
                return table;
    return nullptr;
}

template<class T>
int Answer(const TypeMapping* row, T TypeMapping::*member, T* output) noexcept
{
    if (!row)
        return kNotFound;
    *output = row->*member;
    return kFound;
}

const TypeMapping* FindKey(const TypeMapping* table, const char* key) noexcept
{
    const std::uint32_t mark = Detail::MarkOfKey(key);
    return FindRow(table, &TypeMapping::shortName, [=](const TypeMapping& row) {
        return (row.mark == mark || row.mark == 0) && Afx::EqualNoCase(row.shortName, key);
    });
}

const TypeMapping* FindCode(const TypeMapping* table, int index) noexcept
{
    return FindRow(table, &TypeMapping::shortName, [index](const TypeMapping& row) { return row.index == index; });
}

} // namespace

unsigned GetMapCount(const TypeMapping* table) noexcept
{
    unsigned count = 0;
    if (table)
        while (table[count].shortName)
            ++count;
    return count;
}

int GetMapIndexFromShortName(const TypeMapping* table, const char* key, int* index) noexcept
{
    return key && index ? Answer(FindKey(table, key), &TypeMapping::index, index) : kNotFound;
}

int GetMapIndexFromLongName(const TypeMapping* table, const char* name, int* index) noexcept
{
    if (!name || !index)
        return kNotFound;
    const auto* row = FindRow(table, &TypeMapping::longName, [name](const TypeMapping& r) {
        return *r.longName == *name && std::strcmp(r.longName, name) == 0;
    });
    return Answer(row, &TypeMapping::index, index);
}

int GetMapShortNameFromIndex(const TypeMapping* table, const char** key, int index) noexcept
{
    return key ? Answer(FindCode(table, index), &TypeMapping::shortName, key) : kNotFound;
}

int GetMapLongNameFromIndex(const TypeMapping* table, const char** name, int index) noexcept
{
    return name ? Answer(FindCode(table, index), &TypeMapping::longName, name) : kNotFound;
}
