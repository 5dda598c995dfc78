#include "Afx/system/Application.h"

#include "Afx/system/Settings.h"

namespace
{

CWinApp* g_application = nullptr;

} // namespace

CWinApp::CWinApp() { g_application = this; }

CWinApp::~CWinApp()
{
    if (g_application == this)
        g_application = nullptr;
}

int CWinApp::GetProfileInt(const char* section, const char* name, int defaultValue)
{
    const std::optional<CString> text = Afx::Settings::Read(section, name);
    return text ? Afx::Settings::NumberIn<int>(*text).value_or(defaultValue) : defaultValue;
}

bool CWinApp::WriteProfileInt(const char* section, const char* name, int value)
{
    CString text;
    text.Format("%d", value);
    return Afx::Settings::Write(section, name, text);
}

CString CWinApp::GetProfileString(const char* section, const char* name, const char* defaultValue)
{
    return Afx::Settings::Read(section, name).value_or(CString(defaultValue));
}

bool CWinApp::WriteProfileString(const char* section, const char* name, const char* value)
{
    return Afx::Settings::Write(section, name, value);
}

CWinApp* AfxGetApp() noexcept { return g_application; }
