#pragma once

// What the program remembers for each of the practice's users: widths of columns and the page shown last. It stands in
// the profile, section "Desk USER".

#include "Afx/windows/ListCtrl.h"
#include "Lattice/Grid.h"

namespace Desk
{

/// Columns as this user left them, where they are remembered and as many.
void RestoreWidths(CListCtrl& list, const char* name);
void KeepWidths(const CListCtrl& list, const char* name);
void RestoreWidths(Lattice::CGrid& grid, const char* name);
void KeepWidths(const Lattice::CGrid& grid, const char* name);

/// From 0; 0 when none is remembered.
int LastPage(const char* name);
void KeepPage(const char* name, int page);

} // namespace Desk
