#pragma once

// Comparison without regard to case: one rule for CString, maps and tables.

#include <cstddef>
#include <string>
#include <string_view>

#include "Afx/Export.h"

namespace Afx
{
namespace Detail
{

/// EqualNoCase of two texts of one length.
AFX_API bool EqualFolded(const char* a, const char* b, std::size_t length) noexcept;

} // namespace Detail

/// Less than, equal to or greater than 0 as the texts compare after folding case. Folds ASCII, Latin-1 and Latin
/// Extended-A (all UTF-8); other characters compare by their bytes.
AFX_API int CompareNoCase(std::string_view a, std::string_view b) noexcept;
/// Whether that is 0. Folding keeps the length, so only texts of one length can be equal.
inline bool EqualNoCase(std::string_view a, std::string_view b) noexcept
{
    return a.size() == b.size() && Detail::EqualFolded(a.data(), b.data(), a.size());
}
/// `text` in lower, or upper, case by the same folding.
AFX_API std::string FoldLower(std::string_view text);
AFX_API std::string FoldUpper(std::string_view text);

/// Orders the keys of a map without regard to case.
struct LessNoCase
{
    using is_transparent = void;
    bool operator()(std::string_view a, std::string_view b) const noexcept { return CompareNoCase(a, b) < 0; }
};

} // namespace Afx
