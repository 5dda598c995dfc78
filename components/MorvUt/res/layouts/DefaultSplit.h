#pragma once

// The layout of the page for a default split.

#include "Afx/windows/Layout.h"

inline constexpr unsigned IDC_DEFAULT_SPLIT_GRID = 12601, IDC_DEFAULT_SPLIT_REMAINING = 12602;

inline constexpr Afx::LayoutRow kDefaultSplitRows[] = {
    {Afx::ControlKind::Custom, IDC_DEFAULT_SPLIT_GRID, "", 0, 0, 1, 0, 240, 12},
    {Afx::ControlKind::Custom, IDC_DEFAULT_SPLIT_REMAINING, "", 1, 0, 1, 0, 240, 2},
};
inline constexpr Afx::DialogLayout kDefaultSplitLayout = Afx::LayoutOf("Default split", kDefaultSplitRows);
