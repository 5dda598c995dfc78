#pragma once

// The layouts of the list of clients and of the roll-forward.

#include "Afx/windows/Layout.h"

inline constexpr unsigned IDC_CLIENTS_SEARCH = 20101, IDC_CLIENTS_COUNT = 20102, IDC_CLIENTS_YEAR = 20103,
                          IDC_CLIENTS_LIST = 20104, IDC_CLIENTS_MORE = 20105, IDC_CLIENTS_ROLL = 20106,
                          IDC_CLIENTS_HELP = 20107, IDC_CLIENTS_REFRESH = 20108;
inline constexpr unsigned IDC_ROLL_YEAR = 20121, IDC_ROLL_PREVIEW = 20122, IDC_ROLL_RUN = 20123, IDC_ROLL_DONE = 20124,
                          IDC_ROLL_REMAINING = 20125, IDC_ROLL_COMPLETION = 20126, IDC_ROLL_LIST = 20127,
                          IDC_ROLL_HELP = 20128;

inline constexpr Afx::LayoutRow kClientsRows[] = {
    {Afx::ControlKind::Label, 0, "&Search:", 0, 0},
    {Afx::ControlKind::Field, IDC_CLIENTS_SEARCH, "", 0, 1, 2, 0, 160},
    {Afx::ControlKind::Label, 0, "Tax &year:", 0, 3},
    {Afx::ControlKind::Combo, IDC_CLIENTS_YEAR, "", 0, 4, 2, 0, 70},
    {Afx::ControlKind::Label, 0, "&Clients:", 1, 0},
    {Afx::ControlKind::List, IDC_CLIENTS_LIST, "", 2, 0, 6, Afx::kSingleSelection, 440, 20},
    {Afx::ControlKind::Label, IDC_CLIENTS_COUNT, "", 1, 1, 5, 0, 300},
    {Afx::ControlKind::Default, 1, "&Open", 3, 0}, // IDOK
    {Afx::ControlKind::Push, IDC_CLIENTS_MORE, "Show &more", 3, 1},
    {Afx::ControlKind::Push, IDC_CLIENTS_REFRESH, "Re&fresh", 3, 2},
    {Afx::ControlKind::Push, IDC_CLIENTS_ROLL, "&Roll forward...", 3, 3},
    {Afx::ControlKind::Push, IDC_CLIENTS_HELP, "&Help", 3, 4},
    {Afx::ControlKind::Push, 2, "Close", 3, 5}, // IDCANCEL
};
inline constexpr Afx::DialogLayout kClientsLayout = Afx::LayoutOf("Clients", kClientsRows);

inline constexpr Afx::LayoutRow kRollForwardRows[] = {
    {Afx::ControlKind::Label, 0, "Into tax &year:", 0, 0},
    {Afx::ControlKind::Combo, IDC_ROLL_YEAR, "", 0, 1, 1, 0, 70},
    {Afx::ControlKind::Label, IDC_ROLL_DONE, "", 1, 0, 4, 0, 340, 2},
    {Afx::ControlKind::Label, IDC_ROLL_REMAINING, "", 2, 0, 4, 0, 340},
    {Afx::ControlKind::Label, IDC_ROLL_COMPLETION, "", 3, 0, 4, 0, 340},
    {Afx::ControlKind::Label, 0, "&Not carried forward:", 4, 0, 4},
    {Afx::ControlKind::List, IDC_ROLL_LIST, "", 5, 0, 4, 0, 340, 12},
    {Afx::ControlKind::Push, IDC_ROLL_PREVIEW, "&Preview", 6, 0},
    {Afx::ControlKind::Push, IDC_ROLL_RUN, "&Roll forward", 6, 1},
    {Afx::ControlKind::Push, IDC_ROLL_HELP, "&Help", 6, 2},
    {Afx::ControlKind::Push, 2, "Close", 6, 3}, // IDCANCEL
};
inline constexpr Afx::DialogLayout kRollForwardLayout = Afx::LayoutOf("Roll forward", kRollForwardRows);
