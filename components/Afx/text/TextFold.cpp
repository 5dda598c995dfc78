#include "Afx/text/TextFold.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>

#include "Afx/text/Ascii.h"
#include "Afx/text/Utf8.h"

// Every letter that folds is one byte (ASCII) or two (U+00C0 to U+017F, lead bytes C3 to C5), and so is its other case:
// folding never changes the length, and the order is that of the folded bytes. A broken sequence is left as it is.

namespace Afx
{
namespace
{

constexpr unsigned kFirstLead = 0xC3, kLastLead = 0xC5;

/// A run of capitals: each folds to itself plus `distance`. With step 2 capitals and small letters alternate.
struct Run
{
    unsigned first, last, distance, step;
};
constexpr Run kRuns[] = {
    {0xC0, 0xD6, 32, 1},  {0xD8, 0xDE, 32, 1},  // 0xD7 is the multiplication sign
    {0x100, 0x12E, 1, 2}, {0x132, 0x136, 1, 2}, // 0x130 and 0x131 are the Turkish letters i: no pair of each other
    {0x139, 0x147, 1, 2}, {0x14A, 0x176, 1, 2}, {0x179, 0x17D, 1, 2},
};
constexpr unsigned kCapitalYDiaeresis = 0x178, kSmallYDiaeresis = 0xFF;

constexpr unsigned kFirstFolded = 0xC0, kPastFolded = 0x180;
using FoldTable = std::array<unsigned short, kPastFolded - kFirstFolded>;

constexpr FoldTable MakeFoldTable(bool toLower)
{
    FoldTable table{};
    for (unsigned c = kFirstFolded; c < kPastFolded; ++c)
        table[c - kFirstFolded] = static_cast<unsigned short>(c);
    const auto pair = [&](unsigned capital, unsigned small) {
        table[(toLower ? capital : small) - kFirstFolded] = static_cast<unsigned short>(toLower ? small : capital);
    };
    for (const Run& run : kRuns)
        for (unsigned c = run.first; c <= run.last; c += run.step)
            pair(c, c + run.distance);
    pair(kCapitalYDiaeresis, kSmallYDiaeresis);
    return table;
}
constexpr FoldTable kLower = MakeFoldTable(true), kUpper = MakeFoldTable(false);

/// One or two bytes of a text after folding.
struct Unit
{
    unsigned char bytes[2];
    bool isPair;
};

Unit FoldAt(std::string_view text, std::size_t at, const FoldTable& table) noexcept
{
    const auto lead = static_cast<unsigned char>(text[at]);
    if (lead < kFirstLead || lead > kLastLead || at + 1 == text.size())
        return {{lead, 0}, false};
    const char next = text[at + 1];
    if (!ContinuesCharacter(next))
        return {{lead, 0}, false};
    const unsigned folded = table[((lead & 0x1Fu) << 6 | (static_cast<unsigned char>(next) & 0x3Fu)) - kFirstFolded];
    return {{static_cast<unsigned char>(0xC0 | folded >> 6), static_cast<unsigned char>(0x80 | (folded & 0x3F))}, true};
}

std::string Fold(std::string_view text, const FoldTable& table, char firstAscii, char lastAscii)
{
    std::string folded(text);
    for (std::size_t i = 0; i < folded.size();) {
        char& c = folded[i];
        if (static_cast<unsigned char>(c) < 0x80) {
            if (c >= firstAscii && c <= lastAscii)
                c = static_cast<char>(c ^ 0x20);
            ++i;
            continue;
        }
        const Unit unit = FoldAt(text, i, table);
        c = static_cast<char>(unit.bytes[0]);
        if (unit.isPair)
            folded[i + 1] = static_cast<char>(unit.bytes[1]);
        i += unit.isPair ? 2 : 1;
    }
    return folded;
}

using Eight = std::uint64_t;
constexpr Eight Each(unsigned char byte) noexcept { return byte * Eight{0x0101'0101'0101'0101}; }

Eight LoadEight(const char* at) noexcept
{
    Eight bytes;
    std::memcpy(&bytes, at, sizeof bytes);
    return bytes;
}

/// Fewer than eight bytes, none outside them; those in the middle may be there twice.
Eight LoadFew(const char* at, std::size_t count) noexcept
{
    const auto byte = [at](std::size_t i) { return Eight{static_cast<unsigned char>(at[i])}; };
    if (count < 4)
        return count == 0 ? 0 : byte(0) | byte(count / 2) << 8 | byte(count - 1) << 16;
    std::uint32_t first, last;
    std::memcpy(&first, at, sizeof first);
    std::memcpy(&last, at + count - sizeof last, sizeof last);
    return first | Eight{last} << 32;
}

constexpr bool IsAscii(Eight bytes) noexcept { return (bytes & Each(0x80)) == 0; }

/// Eight bytes with the ASCII capitals among them made small. Adding to a byte below 0x80 sets its top bit from 'A' on,
/// or only behind 'Z'; the distance of the cases is that bit moved by two.
constexpr Eight LowerEight(Eight bytes) noexcept
{
    const Eight low = bytes & Each(0x7F);
    const Eight capitals = ((low + Each(0x80 - 'A')) ^ (low + Each(0x7F - 'Z'))) & ~bytes & Each(0x80);
    return bytes | capitals >> 2;
}
static_assert(LowerEight(Each('A')) == Each('a') && LowerEight(Each('Z')) == Each('z'));
static_assert(LowerEight(Each('@')) == Each('@') && LowerEight(Each('[')) == Each('[') &&
              LowerEight(Each(0xC1)) == Each(0xC1));

/// How many bytes from the start on are ASCII and equal in both, rounded down to eights.
std::size_t EqualAscii(std::string_view a, std::string_view b, std::size_t common) noexcept
{
    std::size_t i = 0;
    for (; common - i >= sizeof(Eight); i += sizeof(Eight)) {
        const Eight eightA = LoadEight(a.data() + i), eightB = LoadEight(b.data() + i);
        if (!IsAscii(eightA | eightB) || LowerEight(eightA) != LowerEight(eightB))
            break;
    }
    return i;
}

} // namespace

int CompareNoCase(std::string_view a, std::string_view b) noexcept
{
    const std::size_t common = std::min(a.size(), b.size());
    std::size_t i = EqualAscii(a, b, common);
    while (i < common) {
        const auto byteA = static_cast<unsigned char>(a[i]), byteB = static_cast<unsigned char>(b[i]);
        if ((byteA | byteB) < 0x80) {
            if (const int difference = LowerAscii(a[i]) - LowerAscii(b[i]))
                return difference;
            ++i;
            continue;
        }
        const Unit unitA = FoldAt(a, i, kLower), unitB = FoldAt(b, i, kLower);
        if (const int difference = unitA.bytes[0] - unitB.bytes[0])
            return difference;
        if (unitA.isPair != unitB.isPair) {
            // One text goes on with a continuation byte, the other does not: it ends, or its next byte decides.
            const std::string_view broken = unitA.isPair ? b : a;
            const int next = i + 1 < broken.size() ? static_cast<unsigned char>(broken[i + 1]) : -1;
            return unitA.isPair ? unitA.bytes[1] - next : next - unitB.bytes[1];
        }
        if (const int difference = unitA.bytes[1] - unitB.bytes[1])
            return difference;
        i += unitA.isPair ? 2 : 1;
    }
    return a.size() < b.size() ? -1 : a.size() > b.size();
}

bool Detail::EqualFolded(const char* a, const char* b, std::size_t length) noexcept
{
    // Most texts that differ do so in an ASCII letter, and are decided by one comparison of eight.
    const auto slowly = [=] { return CompareNoCase({a, length}, {b, length}) == 0; };
    if (length < sizeof(Eight)) {
        const Eight fewA = LoadFew(a, length), fewB = LoadFew(b, length);
        return LowerEight(fewA) == LowerEight(fewB) || (!IsAscii(fewA | fewB) && slowly());
    }
    const std::size_t last = length - sizeof(Eight); // may overlap the eight before
    for (std::size_t i = 0;; i = std::min(i + sizeof(Eight), last)) {
        const Eight eightA = LoadEight(a + i), eightB = LoadEight(b + i);
        if (LowerEight(eightA) != LowerEight(eightB))
            return !IsAscii(eightA | eightB) && slowly();
        if (i == last)
            return true;
    }
}

std::string FoldLower(std::string_view text) { return Fold(text, kLower, 'A', 'Z'); }
std::string FoldUpper(std::string_view text) { return Fold(text, kUpper, 'a', 'z'); }

} // namespace Afx
