#pragma once

// The layouts of the list of enquiries and of the dialog that edits one.

#include "Afx/windows/Layout.h"

inline constexpr unsigned IDC_ENQUIRIES_LIST = 13001, IDC_ENQUIRIES_NEW = 13002, IDC_ENQUIRIES_EDIT = 13003,
                          IDC_ENQUIRIES_DELETE = 13004, IDC_ENQUIRIES_HIDE_COMPLETED = 13005,
                          IDC_ENQUIRIES_ALL_YEARS = 13006;
inline constexpr unsigned IDC_ENQUIRY_DESCRIPTION = 13101, IDC_ENQUIRY_START = 13102, IDC_ENQUIRY_DUE = 13103,
                          IDC_ENQUIRY_HAS_REMINDER = 13104, IDC_ENQUIRY_REMINDER = 13105, IDC_ENQUIRY_RECEIVED = 13106,
                          IDC_ENQUIRY_RECEIVED_DATE = 13107, IDC_ENQUIRY_LINKED = 13108, IDC_ENQUIRY_SOURCE = 13109,
                          IDC_ENQUIRY_TASK = 13110, IDC_ENQUIRY_CARRY_FORWARD = 13111;

inline constexpr Afx::LayoutRow kEnquiriesRows[] = {
    {Afx::ControlKind::Custom, IDC_ENQUIRIES_LIST, "", 0, 0, 5, 0, 440, 16},
    {Afx::ControlKind::CheckBox, IDC_ENQUIRIES_HIDE_COMPLETED, "&Hide completed enquiries", 1, 0, 2},
    {Afx::ControlKind::CheckBox, IDC_ENQUIRIES_ALL_YEARS, "Show &all years", 1, 2, 3},
    {Afx::ControlKind::Push, IDC_ENQUIRIES_NEW, "&New...", 2, 0},
    {Afx::ControlKind::Push, IDC_ENQUIRIES_EDIT, "&Edit...", 2, 1},
    {Afx::ControlKind::Push, IDC_ENQUIRIES_DELETE, "&Delete", 2, 2},
    {Afx::ControlKind::Push, 2, "Close", 2, 4}, // IDCANCEL
};
inline constexpr Afx::DialogLayout kEnquiriesLayout = Afx::LayoutOf("Enquiries", kEnquiriesRows);

inline constexpr Afx::LayoutRow kEnquiryRows[] = {
    {Afx::ControlKind::Label, 0, "De&scription:", 0, 0},
    {Afx::ControlKind::Field, IDC_ENQUIRY_DESCRIPTION, "", 0, 1, 3, 0, 220},
    {Afx::ControlKind::Label, 0, "Da&te:", 1, 0},
    {Afx::ControlKind::Custom, IDC_ENQUIRY_START, "", 1, 1, 1, 0, 60},
    {Afx::ControlKind::Label, 0, "D&ue:", 2, 0},
    {Afx::ControlKind::Custom, IDC_ENQUIRY_DUE, "", 2, 1, 1, 0, 60},
    {Afx::ControlKind::CheckBox, IDC_ENQUIRY_HAS_REMINDER, "&Reminder", 3, 0},
    {Afx::ControlKind::Custom, IDC_ENQUIRY_REMINDER, "", 3, 1, 1, 0, 60},
    {Afx::ControlKind::CheckBox, IDC_ENQUIRY_RECEIVED, "Re&ceived", 4, 0},
    {Afx::ControlKind::Custom, IDC_ENQUIRY_RECEIVED_DATE, "", 4, 1, 1, 0, 60},
    {Afx::ControlKind::CheckBox, IDC_ENQUIRY_LINKED, "&Link to tracker", 5, 0, 2},
    {Afx::ControlKind::Label, 0, "S&ource:", 6, 0},
    {Afx::ControlKind::Combo, IDC_ENQUIRY_SOURCE, "", 6, 1, 3, 0, 220},
    {Afx::ControlKind::Label, 0, "Tas&k:", 7, 0},
    {Afx::ControlKind::Combo, IDC_ENQUIRY_TASK, "", 7, 1, 3, 0, 220},
    {Afx::ControlKind::CheckBox, IDC_ENQUIRY_CARRY_FORWARD, "Carry &forward to the next tax year", 8, 0, 3},
    {Afx::ControlKind::Default, 1, "OK", 9, 2},  // IDOK
    {Afx::ControlKind::Push, 2, "Cancel", 9, 3}, // IDCANCEL
};
inline constexpr Afx::DialogLayout kEnquiryLayout = Afx::LayoutOf("", kEnquiryRows);
