#pragma once

// The layouts of opening a practice and of signing in.

#include "Afx/windows/Layout.h"

inline constexpr unsigned IDC_OPEN_PRACTICE = 20001, IDC_OPEN_HELP = 20002;
inline constexpr unsigned IDC_SIGN_IN_USER = 20011, IDC_SIGN_IN_PASSWORD = 20012, IDC_SIGN_IN_AGAIN = 20013,
                          IDC_SIGN_IN_NOTE = 20014;

inline constexpr Afx::LayoutRow kOpenPracticeRows[] = {
    {Afx::ControlKind::Label, 0, "&Practice (a file, or a server's connection text):", 0, 0, 3},
    {Afx::ControlKind::Field, IDC_OPEN_PRACTICE, "", 1, 0, 3, 0, 300},
    {Afx::ControlKind::Push, IDC_OPEN_HELP, "&Help", 2, 0},
    {Afx::ControlKind::Default, 1, "Open", 2, 1}, // IDOK
    {Afx::ControlKind::Push, 2, "Cancel", 2, 2},  // IDCANCEL
};
inline constexpr Afx::DialogLayout kOpenPracticeLayout = Afx::LayoutOf("Open a practice", kOpenPracticeRows);

inline constexpr Afx::LayoutRow kSignInRows[] = {
    {Afx::ControlKind::Label, 0, "&User:", 0, 0},
    {Afx::ControlKind::Combo, IDC_SIGN_IN_USER, "", 0, 1, 2, 0, 180},
    {Afx::ControlKind::Label, IDC_SIGN_IN_NOTE, "", 1, 0, 3, 0, 260, 2},
    {Afx::ControlKind::Label, 0, "&Password:", 2, 0},
    {Afx::ControlKind::Field, IDC_SIGN_IN_PASSWORD, "", 2, 1, 2, Afx::kPasswordField, 180},
    {Afx::ControlKind::Label, 0, "Password &again:", 3, 0, 1, Afx::kHiddenControl},
    {Afx::ControlKind::Field, IDC_SIGN_IN_AGAIN, "", 3, 1, 2, Afx::kPasswordField | Afx::kHiddenControl, 180},
    {Afx::ControlKind::Default, 1, "Sign in", 4, 1}, // IDOK
    {Afx::ControlKind::Push, 2, "Cancel", 4, 2},     // IDCANCEL
};
inline constexpr Afx::DialogLayout kSignInLayout = Afx::LayoutOf("Sign in", kSignInRows);
