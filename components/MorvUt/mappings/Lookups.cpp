#include <cstdint>
#include <cstring>
#include <string_view>

#include "Afx/TextFold.h"
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

using Word = std::uint64_t; // eight characters
constexpr std::size_t kWordSize = sizeof(Word);
constexpr Word Each(unsigned char byte) { return byte * Word{0x0101010101010101}; }

// ASCII capitals made small, eight at a time: in a byte below 0x80, adding 0x80 - 'A' sets the top bit from 'A' on,
// adding 0x7F - 'Z' only after 'Z'. The distance to the small letter, 0x20, is the top bit moved by two.
constexpr Word LowerAscii(Word word)
{
    const Word low = word & Each(0x7F);
    const Word capitals = ((low + Each(0x80 - 'A')) ^ (low + Each(0x7F - 'Z'))) & ~word & Each(0x80);
    return word | capitals >> 2;
}
static_assert(LowerAscii(Each('A')) == Each('a') && LowerAscii(Each('Z')) == Each('z'));
static_assert(LowerAscii(Each('@')) == Each('@') && LowerAscii(Each('[')) == Each('[') &&
              LowerAscii(Each(0xC1)) == Each(0xC1));

Word WordAt(const char* text) noexcept
{
    Word word;
    std::memcpy(&word, text, kWordSize);
    return word;
}

// Whether two characters may be the same letter: their bits are those of one ASCII letter, whatever its case, or one of
// them is not ASCII.
bool LookAlike(char a, char b) noexcept { return ((a ^ b) & 0xDF) == 0 || ((a | b) & 0x80) != 0; }

// Whether two texts of one length are equal but for the case of ASCII letters. The last word may overlap the one
// before.
bool EqualAscii(const char* a, const char* b, std::size_t length) noexcept
{
    if (length < kWordSize)
        return std::memcmp(a, b, length) == 0;
    const std::size_t last = length - kWordSize;
    for (std::size_t i = 0; i < last; i += kWordSize)
        if (LowerAscii(WordAt(a + i)) != LowerAscii(WordAt(b + i)))
            return false;
    return LowerAscii(WordAt(a + last)) == LowerAscii(WordAt(b + last));
}

// Afx::EqualNoCase(key, wanted). Most keys part at the first letter, the length (folding keeps it) or the last letter;
// the keys of one table often begin alike.
bool EqualKeys(const char* key, std::string_view wanted) noexcept
{
    if (*key == '\0' || wanted.empty())
        return *key == '\0' && wanted.empty();
    if (!LookAlike(*key, wanted.front()))
        return false;
    const std::size_t length = std::strlen(key);
    if (length != wanted.size() || !LookAlike(key[length - 1], wanted.back()))
        return false;
    return EqualAscii(key, wanted.data(), length) || Afx::EqualNoCase({key, length}, wanted);
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
    if (!key || !index)
        return kNotFound;
    return Answer(
        FindRow(table, &TypeMapping::shortName,
                [wanted = std::string_view(key)](const TypeMapping& row) { return EqualKeys(row.shortName, wanted); }),
        &TypeMapping::index, index);
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
