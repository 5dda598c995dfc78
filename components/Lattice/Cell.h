#pragma once

// What a cell of a grid holds, how it is shown and how it is typed.

#include <cstdint>
#include <variant>
#include <vector>

#include "Kiln/CAmt.h"
#include "Kiln/CDate.h"
#include "Lattice/Export.h"

namespace Lattice
{

enum class Format : std::uint8_t
{
    Text,
    Amount,  // Kiln::CAmt
    Number,  // double
    Percent, // double, shown with 8 decimals and without a sign
    Date,
    CheckBox, // int, 0 or 1
    Combo     // int, the index of a choice
};

/// Nothing at all, or the value that the format says.
using Value = std::variant<std::monostate, CString, Kiln::CAmt, double, Kiln::CDate, int>;

struct LATTICE_API Cell
{
    Value value;
    Format format = Format::Text;
    bool readOnly = false;
    bool error = false;   // shown as "Error"
    bool isTotal = false; // a zero amount is shown as nothing
};

using Choices = std::vector<CString>;

/// The text that stands in the cell; `choices` are those of its column.
LATTICE_API CString Shown(const Cell& cell, const Choices& choices);
/// Whether nothing stands in it: no value, an empty text, an amount that is not valid and not automatic.
LATTICE_API bool IsEmpty(const Cell& cell);

/// What a typed or pasted text means in a cell: its value, or why it is none and how to mend it, for the user.
struct LATTICE_API Typed
{
    Value value;
    CString whyNot; // empty: `value` is what it means
};
LATTICE_API Typed Read(Format format, const CString& text, const Choices& choices);

} // namespace Lattice
