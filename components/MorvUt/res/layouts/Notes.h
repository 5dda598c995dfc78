#pragma once

// The layouts of the notes: their pages, and the row of the sheet that leads to them.

#include "Afx/windows/Layout.h"

inline constexpr unsigned IDC_NOTES_DESCRIPTION = 12301, IDC_NOTES_TEXT = 12302, IDC_AVOIDANCE_REFERENCE = 12311,
                          IDC_AVOIDANCE_HAS_YEAR = 12312, IDC_AVOIDANCE_CURRENT_YEAR = 12313,
                          IDC_AVOIDANCE_OTHER_YEAR = 12314, IDC_AVOIDANCE_YEAR = 12315, IDC_AVOIDANCE_NOTES = 12316;
inline constexpr unsigned IDC_STATUS_COMPLETED = 12201, IDC_STATUS_NOTES = 12202, IDC_STATUS_NOTES_LABEL = 12203,
                          IDC_STATUS_PARTNERSHIP = 12204;

inline constexpr Afx::LayoutRow kNotesPageRows[] = {
    {Afx::ControlKind::Label, IDC_NOTES_DESCRIPTION, "", 0, 0, 1, 0, 300, 3},
    {Afx::ControlKind::Notes, IDC_NOTES_TEXT, "", 1, 0, 1, 0, 300, 12},
};
inline constexpr Afx::DialogLayout kNotesPageLayout = Afx::LayoutOf("", kNotesPageRows);

inline constexpr Afx::LayoutRow kAvoidancePageRows[] = {
    {Afx::ControlKind::Label, 0, "Scheme &reference number:", 0, 0},
    {Afx::ControlKind::Field, IDC_AVOIDANCE_REFERENCE, "", 0, 1, 1, 0, 100},
    {Afx::ControlKind::CheckBox, IDC_AVOIDANCE_HAS_YEAR,
     "E&xpected advantage to the partners arises in tax year ended 5 April:", 1, 0, 3},
    {Afx::ControlKind::Radio, IDC_AVOIDANCE_CURRENT_YEAR, "", 2, 0},
    {Afx::ControlKind::Radio, IDC_AVOIDANCE_OTHER_YEAR, "&Other", 2, 1},
    {Afx::ControlKind::Field, IDC_AVOIDANCE_YEAR, "", 2, 2, 1, 0, 30},
    {Afx::ControlKind::Label, 0, "&Notes:", 3, 0},
    {Afx::ControlKind::Notes, IDC_AVOIDANCE_NOTES, "", 4, 0, 3, 0, 300, 6},
};
inline constexpr Afx::DialogLayout kAvoidancePageLayout = Afx::LayoutOf("", kAvoidancePageRows);

inline constexpr Afx::LayoutRow kNotesStatusRows[] = {
    {Afx::ControlKind::CheckBox, IDC_STATUS_COMPLETED, "&Completed", 0, 0},
    {Afx::ControlKind::Push, IDC_STATUS_NOTES, "&Notes...", 0, 1},
    {Afx::ControlKind::Label, IDC_STATUS_NOTES_LABEL, "", 0, 2, 1, 0, 120},
    {Afx::ControlKind::Field, IDC_STATUS_PARTNERSHIP, "", 0, 3, 1, Afx::kReadOnlyField, 120},
};
inline constexpr Afx::DialogLayout kNotesStatusLayout = Afx::LayoutOf("", kNotesStatusRows);
