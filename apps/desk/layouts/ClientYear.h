#pragma once

// The layouts of a client's tax year: its return, HMRC's records, enquiries and the work tracker.

#include "Afx/windows/Layout.h"

inline constexpr unsigned IDC_RETURN_CLIENT = 20201, IDC_RETURN_STATUS = 20202, IDC_RETURN_SCHEDULES = 20203,
                          IDC_RETURN_OPEN = 20204, IDC_RETURN_KIND = 20205, IDC_RETURN_NEW = 20206,
                          IDC_RETURN_HELP = 20207;
inline constexpr unsigned IDC_HMRC_GATEWAY = 20221, IDC_HMRC_AUTHORISE = 20222, IDC_HMRC_FETCH = 20223,
                          IDC_HMRC_CREATE = 20224, IDC_HMRC_REVIEW = 20225, IDC_HMRC_RESULT = 20226,
                          IDC_HMRC_DIFFERENCES = 20227, IDC_HMRC_HELP = 20228;
inline constexpr unsigned IDC_YEAR_ENQUIRIES = 20241, IDC_YEAR_ENQUIRIES_EDIT = 20242, IDC_YEAR_ENQUIRIES_HELP = 20243;
inline constexpr unsigned IDC_YEAR_TRACKER = 20261, IDC_YEAR_TRACKER_HELP = 20262;

inline constexpr Afx::LayoutRow kReturnRows[] = {
    {Afx::ControlKind::Label, IDC_RETURN_CLIENT, "", 0, 0, 5, 0, 440},
    {Afx::ControlKind::Label, 0, "&Status:", 1, 0, 5},
    {Afx::ControlKind::Notes, IDC_RETURN_STATUS, "", 2, 0, 5, Afx::kReadOnlyField, 440, 4},
    {Afx::ControlKind::Label, 0, "S&chedules:", 3, 0, 5},
    {Afx::ControlKind::List, IDC_RETURN_SCHEDULES, "", 4, 0, 5, Afx::kSingleSelection, 440, 12},
    {Afx::ControlKind::Push, IDC_RETURN_OPEN, "&Open...", 5, 0},
    {Afx::ControlKind::Label, 0, "&Kind:", 5, 1},
    {Afx::ControlKind::Combo, IDC_RETURN_KIND, "", 5, 2, 1, 0, 130},
    {Afx::ControlKind::Push, IDC_RETURN_NEW, "&New...", 5, 3},
    {Afx::ControlKind::Push, IDC_RETURN_HELP, "&Help", 5, 4},
};
inline constexpr Afx::DialogLayout kReturnLayout = Afx::LayoutOf("Return", kReturnRows);

inline constexpr Afx::LayoutRow kHmrcRows[] = {
    {Afx::ControlKind::Label, 0, "&Government Gateway user ID:", 0, 0, 2},
    {Afx::ControlKind::EditCombo, IDC_HMRC_GATEWAY, "", 0, 2, 1, 0, 120},
    {Afx::ControlKind::Push, IDC_HMRC_AUTHORISE, "Gi&ve authority...", 0, 3},
    {Afx::ControlKind::Push, IDC_HMRC_FETCH, "&Fetch from HMRC", 1, 0},
    {Afx::ControlKind::Push, IDC_HMRC_CREATE, "&Create schedules", 1, 1},
    {Afx::ControlKind::Push, IDC_HMRC_REVIEW, "&Review differences...", 1, 2},
    {Afx::ControlKind::Push, IDC_HMRC_HELP, "&Help", 1, 3},
    {Afx::ControlKind::Label, 0, "Res&ult:", 2, 0, 4},
    {Afx::ControlKind::Notes, IDC_HMRC_RESULT, "", 3, 0, 4, Afx::kReadOnlyField, 440, 6},
    {Afx::ControlKind::Label, 0, "&Differences:", 4, 0, 4},
    {Afx::ControlKind::List, IDC_HMRC_DIFFERENCES, "", 5, 0, 4, Afx::kSingleSelection, 440, 8},
};
inline constexpr Afx::DialogLayout kHmrcLayout = Afx::LayoutOf("HMRC", kHmrcRows);

inline constexpr Afx::LayoutRow kYearEnquiriesRows[] = {
    {Afx::ControlKind::Label, 0, "&Enquiries of the tax year:", 0, 0, 2},
    {Afx::ControlKind::List, IDC_YEAR_ENQUIRIES, "", 1, 0, 2, Afx::kSingleSelection, 440, 16},
    {Afx::ControlKind::Push, IDC_YEAR_ENQUIRIES_EDIT, "&Work on them...", 2, 0},
    {Afx::ControlKind::Push, IDC_YEAR_ENQUIRIES_HELP, "&Help", 2, 1},
};
inline constexpr Afx::DialogLayout kYearEnquiriesLayout = Afx::LayoutOf("Enquiries", kYearEnquiriesRows);

inline constexpr Afx::LayoutRow kYearTrackerRows[] = {
    {Afx::ControlKind::Label, 0, "&Sources and their tasks:", 0, 0},
    {Afx::ControlKind::List, IDC_YEAR_TRACKER, "", 1, 0, 1, Afx::kSingleSelection, 440, 16},
    {Afx::ControlKind::Push, IDC_YEAR_TRACKER_HELP, "&Help", 2, 0},
};
inline constexpr Afx::DialogLayout kYearTrackerLayout = Afx::LayoutOf("Tracker", kYearTrackerRows);
