#pragma once

// The program's application object and its profile.

#include "Afx/Export.h"
#include "Afx/text/CString.h"

/// The host program's application. One at most in a process; the constructor registers it.
/// The profile is the settings file ($MORVUT_SETTINGS, else $XDG_CONFIG_HOME/morvut/settings.ini, else
/// ~/.config/morvut/settings.ini), the registry on Windows; section and value names ignore case.
class AFX_API CWinApp
{
public:
    CWinApp();
    CWinApp(const CWinApp&) = delete;
    CWinApp& operator=(const CWinApp&) = delete;
    virtual ~CWinApp();

    virtual int GetProfileInt(const char* section, const char* name, int defaultValue);
    virtual bool WriteProfileInt(const char* section, const char* name, int value);
    virtual CString GetProfileString(const char* section, const char* name, const char* defaultValue = "");
    virtual bool WriteProfileString(const char* section, const char* name, const char* value);
    /// Called when another user has logged in. The default does nothing.
    virtual void OnUserChanged() {}
};

/// The application object; null in a process without one.
AFX_API CWinApp* AfxGetApp() noexcept;
