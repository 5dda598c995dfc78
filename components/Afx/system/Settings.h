#pragma once

// The settings store behind the profile and the registry values.

#include <optional>

#include "Afx/Export.h"
#include "Afx/text/CString.h"
#include "Afx/text/Numbers.h"

namespace Afx
{

/// Reads and writes one text value of a section; names ignore case. On Linux an INI file, written whole and put in
/// place by rename, so that a crash leaves the old or the new file; on Windows the registry under HKEY_CURRENT_USER.
class AFX_API Settings
{
public:
    static std::optional<CString> Read(const char* section, const char* name);
    /// False when the store cannot be written, and for a section or name that an INI file cannot hold. A null `value`
    /// removes the entry.
    static bool Write(const char* section, const char* name, const char* value);
    /// The whole number that a value is, as by ParseWhole; but blanks around it and a plus in front do not count, as
    /// users write the file by hand.
    template<class T>
    static std::optional<T> NumberIn(CString value)
    {
        std::string_view text = value.Trim().View();
        if (text.starts_with('+') && !text.starts_with("+-"))
            text.remove_prefix(1);
        return ParseWhole<T>(text);
    }
    /// The file in use; empty on Windows.
    static CString GetPath();
    /// Why the file in use gives nothing and is never written, to be said behind its path: "is not a file". Empty when
    /// it is read, and when there is none yet.
    static CString GetProblem();
    /// Uses this file from now on (tests); empty: the environment decides again.
    static void SetPath(const CString& path);
};

} // namespace Afx
