#pragma once

// Text in UTF-8: whether it is, made so, cut and taken apart by characters.

#include <string>
#include <string_view>

#include "Afx/Export.h"

namespace Afx
{

/// Valid UTF-8 stays, anything else is read as Windows-1252 and returned in UTF-8.
AFX_API std::string ToUtf8(std::string_view bytes);
AFX_API bool IsUtf8(std::string_view bytes) noexcept;
/// What a terminal obeys instead of showing it: a control character (below U+0020, U+007F to U+009F), or one that turns
/// the direction of what follows (U+202A to U+202E, U+2066 to U+2069).
AFX_API bool SteersTerminal(unsigned character) noexcept;
/// ToUtf8 with a blank for each control character and without those that turn text, so that a terminal shows it as it
/// is. `keepLines`: line feeds stay.
AFX_API std::string ToPrintable(std::string_view bytes, bool keepLines = false);
/// The first `most` bytes of a UTF-8 text, or a few less: never a part of a character.
AFX_API std::string_view CutUtf8(std::string_view text, std::size_t most) noexcept;
/// Appends the character of this Unicode number in UTF-8; nothing when there is no such character.
AFX_API void AppendUtf8(std::string& out, unsigned character);
/// Whether a byte of UTF-8 text goes on with the character before it.
constexpr bool ContinuesCharacter(char byte) noexcept { return (byte & 0xC0) == 0x80; }
/// Characters of a UTF-8 text, as its reader counts them.
constexpr int CountCharacters(std::string_view text) noexcept
{
    int count = 0;
    for (const char byte : text)
        count += !ContinuesCharacter(byte);
    return count;
}
/// Takes the first character off `text`, which is not empty, and gives its Unicode number; a byte that begins no UTF-8
/// character gives its own.
AFX_API unsigned TakeCharacter(std::string_view& text) noexcept;

} // namespace Afx
