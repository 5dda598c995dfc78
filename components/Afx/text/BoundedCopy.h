#pragma once

// Bounded copies into callers' buffers.

#include <string_view>

#include "Afx/Export.h"
#include "Afx/text/CString.h"

namespace Afx
{

/// Copies `text` and its end mark into `buffer` of `size` bytes. Too small a buffer is refused, not truncated:
/// `buffer[0]` becomes 0 and CInvalidArgException is thrown; a null buffer or size 0 throws without writing.
AFX_API void BoundedCopy(char* buffer, unsigned size, std::string_view text);
/// The same with a text formatted as by `CString::Format`.
template<class... Args>
void BoundedFormat(char* buffer, unsigned size, FormatString<std::type_identity_t<Args>...> format, const Args&... args)
{
    CString text;
    text.Format(format, args...);
    BoundedCopy(buffer, size, text.View());
}

} // namespace Afx
