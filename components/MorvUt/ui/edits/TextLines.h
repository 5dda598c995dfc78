#pragma once

// Texts of several lines.

#include <string>
#include <string_view>
#include <vector>

#include "MorvUt/Export.h"

/// The lines as they are drawn: ended by line feeds, without carriage returns, tabs filled up with blanks to the next
/// column that 8 divides. An empty text is one empty line; a line feed at the end begins another.
MORVUT_API std::vector<std::string> TextLines(std::string_view text);
