#pragma once

// Bounded copies into callers' buffers, and small text helpers that know no locale.

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "Afx/CString.h"
#include "Afx/Export.h"

namespace Afx
{

/// Copies `text` and its end mark into `buffer` of `size` bytes. Too small a buffer is refused, not truncated:
/// `buffer[0]` becomes 0 and CInvalidArgException is thrown; a null buffer or size 0 throws without writing.
AFX_API void BoundedCopy(char* buffer, unsigned size, std::string_view text);
/// The same with a text formatted as by `CString::Format`.
template<class... Args>
void BoundedFormat(char* buffer, unsigned size, const char* format, const Args&... args)
{
    CString text;
    text.Format(format, args...);
    BoundedCopy(buffer, size, text.View());
}

/// 64-bit `atoi`: blanks, a sign, digits; stops at the first other character; 0 when there is no digit; saturates.
/// Null reads as the empty text.
AFX_API std::int64_t AtoI64(const char* text) noexcept;

struct LocalTime; // Afx/Clock.h

/// A date and time by a strftime-like pattern with English names: %d %m %y %Y %b %B %H %M %S %X %#d %#m %%. Any other
/// placeholder stays as it is; a month outside 1 to 12 has no name.
AFX_API CString FormatTime(const LocalTime& time, std::string_view pattern);

/// Valid UTF-8 stays, anything else is read as Windows-1252 and returned in UTF-8.
AFX_API std::string ToUtf8(std::string_view bytes);
AFX_API bool IsUtf8(std::string_view bytes) noexcept;
/// ToUtf8 with a blank for each control character (below U+0020, U+007F to U+009F), so that a terminal shows the text
/// and does not obey it. `keepLines`: line feeds stay.
AFX_API std::string ToPrintable(std::string_view bytes, bool keepLines = false);
/// The first `most` bytes of a UTF-8 text, or a few less: never a part of a character.
AFX_API std::string_view CutUtf8(std::string_view text, std::size_t most) noexcept;
/// Appends the character of this Unicode number in UTF-8; nothing when there is no such character.
AFX_API void AppendUtf8(std::string& out, unsigned character);
/// Takes the first character off `text`, which is not empty, and gives its Unicode number; a byte that begins no UTF-8
/// character gives its own.
AFX_API unsigned TakeCharacter(std::string_view& text) noexcept;

} // namespace Afx
