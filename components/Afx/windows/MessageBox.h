#pragma once

// Message boxes, shown by the window system that is installed.

#include "Afx/Export.h"
#include "Afx/Platform.h"

#ifndef _WIN32
inline constexpr unsigned MB_OK = 0x0, MB_OKCANCEL = 0x1, MB_YESNO = 0x4, MB_ICONWARNING = 0x30,
                          MB_ICONEXCLAMATION = 0x30, MB_DEFBUTTON2 = 0x100;
inline constexpr int IDOK = 1, IDCANCEL = 2, IDYES = 6, IDNO = 7;
#endif

/// Shows `text` and waits for the answer: IDOK, IDCANCEL, IDYES or IDNO as `style` offers.
AFX_API int AfxMessageBox(const char* text, unsigned style = MB_OK);
/// The same with a string resource of the current module.
AFX_API int AfxMessageBox(unsigned textId, unsigned style = MB_OK);
