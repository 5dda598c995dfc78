#pragma once

// The native window of a CWnd. The model is the truth and the peer its mirror: the model says which part of its state
// has changed, the peer says what the user has done, and a peer is never asked what the state is.

#include <string_view>

#include "Afx/Export.h"

class CWnd;

namespace Afx
{

/// Parts of a window's state; they add up.
enum class Part : unsigned
{
    Text = 1,
    Selection = 2,
    Enabled = 4,
    Visible = 8,
    Check = 16,
    Items = 32,
    Pages = 64,
    Cells = 128,
    Name = 256,
    Rect = 512,
    Focus = 1024,
    Widths = 2048, // of columns
    All = ~0u
};
constexpr Part operator|(Part a, Part b) noexcept
{
    return static_cast<Part>(static_cast<unsigned>(a) | static_cast<unsigned>(b));
}
constexpr bool Has(Part parts, Part one) noexcept
{
    return (static_cast<unsigned>(parts) & static_cast<unsigned>(one)) != 0;
}

class AFX_API WindowPeer
{
public:
    /// Hides at once; the native window goes when the running event has returned.
    virtual ~WindowPeer();
    /// Copies these parts from the model. What the native window says of that by itself is not reported.
    virtual void Show(Part parts) = 0;
    /// Grids: the cells that changed, both ends included.
    virtual void ShowCells(int firstRow, int firstColumn, int lastRow, int lastColumn);
};

/// What a user can do to a window. Native peers and scripts call these and nothing else. Each first moves the focus to
/// the window, so that the field before is left; if that field, or a message box, keeps the focus, nothing else happens
/// and the answer is false. A window that takes no input does nothing. The window may be gone when they return.
struct AFX_API UserActs
{
    static bool Focus(CWnd& window);
    /// The field holds `text` now, with the caret at byte `caret`: what was typed goes through OnChar, character by
    /// character, so that a field may refuse it.
    static bool Edit(CWnd& edit, std::string_view text, int caret);
    /// The user has selected from byte `start` to `end` in a field that has the focus, or moved the caret there.
    static void Select(CWnd& edit, int start, int end);
    /// Types one character (its Unicode number) at the caret; 8 is backspace.
    static bool Char(CWnd& window, unsigned character);
    /// A key (VK_...) with the modifiers held down (Afx::Modifier): Enter, Escape, Tab, F2, Ctrl+V ... True: the model
    /// has used it.
    static bool Key(CWnd& window, unsigned key, unsigned modifiers = 0);
    static bool Click(CWnd& button);
    static bool DoubleClick(CWnd& list, int row);
    /// An item of a combo, a row of a list (alone), a page of a sheet.
    static bool Choose(CWnd& list, int item);
    /// Adds a row to a list's selection, or takes it away.
    static bool Toggle(CWnd& list, int item);
    static bool Drop(CWnd& combo, bool open);
};

} // namespace Afx
