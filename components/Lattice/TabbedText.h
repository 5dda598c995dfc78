#pragma once

// Blocks of cells on the clipboard: lines of texts with tabs between them, as spreadsheets exchange them.

#include <string>
#include <string_view>
#include <vector>

#include "Afx/text/CString.h"
#include "Lattice/Export.h"

namespace Lattice
{

using TextBlock = std::vector<std::vector<CString>>; // rows of cells

/// A text with a tab, a line end or a quote at its start stands in quotes, which are doubled inside it.
LATTICE_API std::string ToTabbedText(const TextBlock& block);
/// The block of a text; the line end after the last line may be missing. Lines end with LF or CR LF.
LATTICE_API TextBlock FromTabbedText(std::string_view text);

} // namespace Lattice
