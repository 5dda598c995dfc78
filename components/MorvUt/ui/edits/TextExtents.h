#pragma once

// What texts measure on the screen, in pixels.

#include "Afx/windows/Drawing.h"
#include "MorvUt/Export.h"

class CWnd;

/// The room of a text of several lines, as TextLines cuts it, in the font that `dc` has selected, or in `font`. Without
/// a device context (null): in the headless system's font.
MORVUT_API CSize GetMultilineTextExtents(HDC dc, const CString& text, const CFont* font = nullptr);
/// The height of a line in the font of `window`, or in `font`.
MORVUT_API long GetTextHeight(const CWnd* window, CFont* font);
