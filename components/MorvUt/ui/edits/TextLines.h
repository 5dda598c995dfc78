#pragma once

// Texts of several lines, and the room that they take.

#include <string>
#include <string_view>
#include <vector>

#include "Afx/windows/Geometry.h"
#include "MorvUt/Export.h"

/// The lines as they are drawn: ended by line feeds, without carriage returns, tabs filled up with blanks to the next
/// column that 8 divides. An empty text is one empty line; a line feed at the end begins another.
MORVUT_API std::vector<std::string> TextLines(std::string_view text);

/// The room of TextLines in characters of one width, in the unit of both measures: the longest line's characters, and
/// the height of all lines. Too much of either is the greatest int.
MORVUT_API CSize MeasureText(std::string_view text, int characterWidth, int lineHeight);
