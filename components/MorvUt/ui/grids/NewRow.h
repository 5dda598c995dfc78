#pragma once

// When a grid that is filled row by row offers a blank row for the next entry.

#include <span>
#include <string_view>

#include "MorvUt/Export.h"

// What a column's flags say of the test for a new row, and of the new row. Each of the first two leaves the column out.
inline constexpr unsigned kColumnNotTested = 0x01, kColumnNotTestedEither = 0x80;
inline constexpr unsigned kColumnRequired = 0x02;  // must be filled before a new row is offered
inline constexpr unsigned kColumnAutomatic = 0x20; // begins as an automatic amount that is null

struct NewRowCell
{
    unsigned flags; // of its column
    bool isReadOnly;
    bool isAmount;
    std::string_view text; // as it is shown
};

struct NewRowGrid
{
    bool isEnabled;
    bool isInsertable;
    unsigned long rows;
    unsigned long maximumRows;
};

/// Whether `text`, shown in a cell for an amount, is an automatic amount: it begins with A in either case, behind white
/// space at most.
MORVUT_API bool IsAutomaticAmount(std::string_view text) noexcept;

/// Whether a row is to be added. `lastRow` is looked at when there are rows: its columns that are tested and cells that
/// can be written. Automatic amounts count for nothing. None is added behind a row with an empty cell in a column that
/// must be filled, nor behind one in which nothing was filled; a row in which nothing can be is followed by another.
MORVUT_API bool IsNewRowDue(const NewRowGrid& grid, std::span<const NewRowCell> lastRow) noexcept;
