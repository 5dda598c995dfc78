#pragma once

// The layout of the dialog that shows HMRC's figures beside the return's.

#include "Afx/windows/Layout.h"

inline constexpr unsigned IDC_DIFFERENCES_MESSAGE = 1375, IDC_DIFFERENCES_GRID = 1376, IDC_DIFFERENCES_ACCEPT = 1377,
                          IDC_DIFFERENCES_REJECT = 1378, IDC_DIFFERENCES_SKIP = 1379;

inline constexpr Afx::LayoutRow kDifferencesRows[] = {
    {Afx::ControlKind::Label, IDC_DIFFERENCES_MESSAGE, "", 0, 0, 3, 0, 320, 2},
    {Afx::ControlKind::Custom, IDC_DIFFERENCES_GRID, "", 1, 0, 3, 0, 380, 12},
    {Afx::ControlKind::Push, IDC_DIFFERENCES_ACCEPT, "&Accept", 2, 0},
    {Afx::ControlKind::Push, IDC_DIFFERENCES_REJECT, "&Reject", 2, 1},
    {Afx::ControlKind::Push, IDC_DIFFERENCES_SKIP, "&Skip", 2, 2},
};
inline constexpr Afx::DialogLayout kDifferencesLayout = Afx::LayoutOf("", kDifferencesRows);
