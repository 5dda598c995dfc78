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

// Whether two texts of one length, a word at least, are equal but for the case of ASCII letters. The last word may
// overlap the one before.
template<class Word_t>
bool EqualWords(const char* a, const char* b, std::size_t length) noexcept
{
    const auto isEqual = [a, b](std::size_t at) {
        Word_t wordA, wordB;
        std::memcpy(&wordA, a + at, sizeof wordA);
        std::memcpy(&wordB, b + at, sizeof wordB);
        return LowerAscii(wordA) == LowerAscii(wordB);
    };
    const std::size_t last = length - sizeof(Word_t);
    for (std::size_t i = 0; i < last; i += sizeof(Word_t))
        if (!isEqual(i))
            return false;
    return isEqual(last);
}

bool EqualAscii(const char* a, const char* b, std::size_t length) noexcept
{
    if (length >= kWordSize)
        return EqualWords<Word>(a, b, length);
    return length >= sizeof(std::uint32_t) ? EqualWords<std::uint32_t>(a, b, length) : std::memcmp(a, b, length) == 0;
}

// A key that is looked for. The keys of a table often begin with the same three letters and have the same length, so
// the first eight characters are compared at once before anything else.
class WantedKey
{
public:
    explicit WantedKey(const char* text) noexcept : m_text(text)
    {
        if (HasWord(text)) {
            m_word = WordAt(text);
            m_isWordAscii = (m_word & Each(0x80)) == 0;
        }
    }

    // Afx::EqualNoCase(key, wanted).
    bool Equals(const char* key) const noexcept
    {
        if (!m_isWordAscii)
            return EqualsAny(key);
        if (!HasWordAlike(key) || ((WordAt(key) ^ m_word) & Each(0xDF)) != 0)
            return false; // LookAlike of eight; what is ASCII equals nothing else
        if (key[kWordSize] == '\0' || m_text[kWordSize] == '\0') // the usual length: no more to look at
            return key[kWordSize] == m_text[kWordSize] && LowerAscii(WordAt(key)) == LowerAscii(m_word);
        return EqualsAny(key);
    }

private:
    // Whether there are so many characters; reads none behind the end mark.
    static bool HasWord(const char* text) noexcept
    {
        return text[0] && text[1] && text[2] && text[3] && text[4] && text[5] && text[6] && text[7];
    }

    // HasWord of a key that may be equal: the fourth character, the first that differs in most tables, decides early.
    bool HasWordAlike(const char* key) const noexcept
    {
        return key[0] && key[1] && key[2] && LookAlike(key[3], m_text[3]) && key[3] && key[4] && key[5] && key[6] &&
               key[7];
    }

    // Equals for any. Most keys part at the first letter, the length (folding keeps it) or the last letter.
    bool EqualsAny(const char* key) const noexcept
    {
        if (*key == '\0' || *m_text == '\0')
            return *key == *m_text;
        if (!LookAlike(*key, *m_text))
            return false;
        const std::size_t length = std::strlen(key);
        if (length != std::strlen(m_text) || !LookAlike(key[length - 1], m_text[length - 1]))
            return false;
        return EqualAscii(key, m_text, length) || Afx::EqualNoCase({key, length}, {m_text, length});
    }

    const char* m_text;
    Word m_word = 0;            // the first eight characters
    bool m_isWordAscii = false; // there are so many, all of them ASCII
};

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

// Called for every row that is exchanged: the scan is one loop without calls, but for the row that is like the key.
[[gnu::flatten]] int GetMapIndexFromShortName(const TypeMapping* table, const char* key, int* index) noexcept
{
    if (!key || !index)
        return kNotFound;
    return Answer(FindRow(table, &TypeMapping::shortName,
                          [wanted = WantedKey(key)](const TypeMapping& row) { return wanted.Equals(row.shortName); }),
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
