#include "Afx/system/Settings.h"

#include <cstdlib>

#include "Afx/system/detail/SettingsFile.h"
#ifdef _WIN32
#include "Afx/system/detail/SettingsRegistry.h"
#endif

namespace
{

/// The file that tests, or a program's options, chose; never destroyed.
CString& ChosenPath()
{
    static auto& path = *new CString;
    return path;
}

#ifndef _WIN32
CString Environment(const char* name)
{
    const char* const value = std::getenv(name);
    return CString(value);
}

CString PathByEnvironment()
{
    if (CString path = Environment("MORVUT_SETTINGS"); !path.IsEmpty())
        return path;
    // A relative XDG path is to be ignored, says its standard.
    if (const CString folder = Environment("XDG_CONFIG_HOME"); folder.GetAt(0) == '/')
        return folder + "/morvut/settings.ini";
    const CString home = Environment("HOME");
    return home.IsEmpty() ? CString() : home + "/.config/morvut/settings.ini";
}
#endif

} // namespace

namespace Afx
{

CString Settings::GetPath()
{
    if (!ChosenPath().IsEmpty())
        return ChosenPath();
#ifdef _WIN32
    return {};
#else
    return PathByEnvironment();
#endif
}

CString Settings::GetProblem() { return CString(Detail::SettingsFileProblem(GetPath().Str())); }

void Settings::SetPath(const CString& path) { ChosenPath() = path; }

std::optional<CString> Settings::Read(const char* section, const char* name)
{
    const CString path = GetPath();
    const std::string_view sectionText = section ? section : "", nameText = name ? name : "";
    if (nameText.empty())
        return std::nullopt; // a line "=value" is nobody's
#ifdef _WIN32
    if (path.IsEmpty())
        return Detail::ReadRegistry(sectionText, nameText);
#endif
    return Detail::ReadSettingsFile(path.Str(), sectionText, nameText);
}

bool Settings::Write(const char* section, const char* name, const char* value)
{
    const CString path = GetPath();
    const std::string_view sectionText = section ? section : "", nameText = name ? name : "";
    const auto valueText = value ? std::optional<std::string_view>(value) : std::nullopt;
#ifdef _WIN32
    if (path.IsEmpty())
        return Detail::WriteRegistry(sectionText, nameText, valueText);
#endif
    return Detail::WriteSettingsFile(path.Str(), sectionText, nameText, valueText);
}

} // namespace Afx
