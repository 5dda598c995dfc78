#pragma once

// Dialog layouts: tables from which the controls of a dialog are made and placed.

#include <cstddef>
#include <vector>

#include "Afx/Export.h"
#include "Afx/windows/Geometry.h"

class CWnd;

namespace Afx
{

enum class ControlKind
{
    Label, // static text
    Field,
    Notes, // a field of several lines
    Push,
    Default, // the button that Enter presses
    CheckBox,
    Radio,
    OwnerDrawn,
    Combo,     // choosing only
    EditCombo, // any text
    List,
    Custom // made by the dialog itself beforehand, or by SubclassDlgItem
};

/// Flags of a row; they add up.
enum LayoutFlag : unsigned
{
    kReadOnlyField = 1,
    kDisabledControl = 2,
    kHiddenControl = 4,
    kSingleSelection = 8,
    kPasswordField = 16
};

/// One control. The order of the rows is the tab order.
struct LayoutRow
{
    ControlKind kind;
    unsigned id;
    const char* text; // UTF-8
    int row, column;  // of the grid that the dialog is laid out in, from 0
    int span = 1;     // columns
    unsigned flags = 0;
    int width = 0; // dialog units; 0: what the text, or the kind, needs
    int lines = 1; // of text, for notes, lists and labels
};

struct DialogLayout
{
    const char* title;
    const LayoutRow* rows;
    std::size_t count;
};

template<std::size_t N>
constexpr DialogLayout LayoutOf(const char* title, const LayoutRow (&rows)[N]) noexcept
{
    return {title, rows, N};
}

/// A row and the control that stands there.
struct PlacedControl
{
    const LayoutRow* row;
    CWnd* control;
};

/// The controls of `window` that the layout names, in its order. Rows of which the window has no control are left out.
AFX_API std::vector<PlacedControl> ControlsOf(const CWnd& window, const DialogLayout& layout);
/// Makes the controls of a layout that `window` has not got yet, in their order; the window owns them.
AFX_API void MakeControls(CWnd& window, const DialogLayout& layout);
/// Places the controls in dialog units, 7 from the edges and from each other; gives the size that all need.
AFX_API CSize Arrange(CWnd& window, const DialogLayout& layout);

} // namespace Afx
