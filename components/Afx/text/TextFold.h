#pragma once

// Comparison without regard to case: one rule for CString, maps and tables.

#include <string>
#include <string_view>

#include "Afx/Export.h"

namespace Afx
{

/// Less than, equal to or greater than 0 as the texts compare after folding case. Folds ASCII, Latin-1 and Latin
/// Extended-A (all UTF-8); other characters compare by their bytes.
AFX_API int CompareNoCase(std::string_view a, std::string_view b) noexcept;
inline bool EqualNoCase(std::string_view a, std::string_view b) noexcept { return CompareNoCase(a, b) == 0; }
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
