#include "Afx/text/Utf8.h"

namespace Afx
{
namespace
{

/// The length of the UTF-8 character at the start of `bytes`, which are not empty; 0 when it is none.
std::size_t CharacterLength(std::string_view bytes) noexcept
{
    const auto at = [&](std::size_t i) { return static_cast<unsigned char>(bytes[i]); };
    const unsigned lead = at(0);
    if (lead < 0x80)
        return 1;
    const std::size_t length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
    if (lead < 0xC2 || lead > 0xF4 || bytes.size() < length)
        return 0;
    for (std::size_t i = 1; i < length; ++i)
        if (!ContinuesCharacter(bytes[i]))
            return 0;
    const unsigned second = at(1);
    const bool isOverlong = (lead == 0xE0 && second < 0xA0) || (lead == 0xF0 && second < 0x90);
    const bool isSurrogate = lead == 0xED && second > 0x9F;
    const bool isBeyondUnicode = lead == 0xF4 && second > 0x8F;
    return isOverlong || isSurrogate || isBeyondUnicode ? 0 : length;
}

/// Windows-1252 from 0x80 to 0x9F; its five unused bytes are the control characters of the same number.
constexpr unsigned short kWindows1252[] = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178,
};
static_assert(std::size(kWindows1252) == 32);

/// The characters that embed, override or isolate a direction of writing: what follows is shown in another order.
bool TurnsText(unsigned character) noexcept
{
    return (character >= 0x202A && character <= 0x202E) || (character >= 0x2066 && character <= 0x2069);
}

} // namespace

void AppendUtf8(std::string& out, unsigned character)
{
    const bool isSurrogate = character >= 0xD800 && character <= 0xDFFF;
    if (isSurrogate || character > 0x10FFFF)
        return;
    if (character < 0x80) {
        out += static_cast<char>(character);
        return;
    }
    const int following = character < 0x800 ? 1 : character < 0x10000 ? 2 : 3;
    constexpr unsigned kLeads[] = {0, 0xC0, 0xE0, 0xF0};
    out += static_cast<char>(kLeads[following] | character >> 6 * following);
    for (int i = following - 1; i >= 0; --i)
        out += static_cast<char>(0x80 | (character >> 6 * i & 0x3F));
}

unsigned TakeCharacter(std::string_view& text) noexcept
{
    const std::size_t length = CharacterLength(text);
    auto character = static_cast<unsigned>(static_cast<unsigned char>(text[0]));
    if (length > 1)
        character &= 0x7Fu >> length;
    for (std::size_t i = 1; i < length; ++i)
        character = character << 6 | (static_cast<unsigned char>(text[i]) & 0x3F);
    text.remove_prefix(length ? length : 1);
    return character;
}

bool IsUtf8(std::string_view bytes) noexcept
{
    while (!bytes.empty()) {
        const std::size_t length = CharacterLength(bytes);
        if (length == 0)
            return false;
        bytes.remove_prefix(length);
    }
    return true;
}

std::string_view CutUtf8(std::string_view text, std::size_t most) noexcept
{
    if (text.size() <= most)
        return text;
    while (most > 0 && ContinuesCharacter(text[most]))
        --most;
    return text.substr(0, most);
}

std::string ToUtf8(std::string_view bytes)
{
    if (IsUtf8(bytes))
        return std::string(bytes);
    std::string out;
    out.reserve(bytes.size() + bytes.size() / 8);
    for (const char c : bytes) {
        const auto byte = static_cast<unsigned char>(c);
        AppendUtf8(out, byte >= 0x80 && byte < 0xA0 ? kWindows1252[byte - 0x80] : byte);
    }
    return out;
}

bool SteersTerminal(unsigned character) noexcept
{
    return character < ' ' || (character >= 0x7F && character < 0xA0) || TurnsText(character);
}

std::string ToPrintable(std::string_view bytes, bool keepLines)
{
    const std::string text = ToUtf8(bytes);
    std::string shown;
    shown.reserve(text.size());
    for (std::string_view left = text; !left.empty();) {
        const char* const begin = left.data();
        const unsigned character = TakeCharacter(left);
        if (!SteersTerminal(character) || (character == '\n' && keepLines))
            shown.append(begin, left.data());
        else if (!TurnsText(character))
            shown += ' ';
    }
    return shown;
}

} // namespace Afx
