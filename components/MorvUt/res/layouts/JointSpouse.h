#pragma once

// The layout of the panel for income that is shared with a spouse.

#include "Afx/windows/Layout.h"

inline constexpr unsigned IDC_JOINT_BOX = 12548, IDC_JOINT_SHARE = 12549, IDC_JOINT_VIEW = 12550,
                          IDC_JOINT_REASON = 12551;

inline constexpr Afx::LayoutRow kJointSpouseRows[] = {
    {Afx::ControlKind::CheckBox, IDC_JOINT_BOX, "&Joint with spouse", 0, 0},
    {Afx::ControlKind::Label, 0, "Client's &share (%):", 0, 1},
    {Afx::ControlKind::Field, IDC_JOINT_SHARE, "", 0, 2, 1, 0, 50},
    {Afx::ControlKind::Label, 0, "&View:", 0, 3},
    {Afx::ControlKind::Combo, IDC_JOINT_VIEW, "", 0, 4, 1, 0, 80},
    {Afx::ControlKind::Label, IDC_JOINT_REASON, "", 1, 0, 5, Afx::kHiddenControl, 300},
};
inline constexpr Afx::DialogLayout kJointSpouseLayout = Afx::LayoutOf("", kJointSpouseRows);
