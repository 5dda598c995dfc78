#pragma once

// Values of the application's settings key.

#include "Afx/text/CString.h"
#include "Shellkit/Export.h"

/// The suite that the library is part of, and its maker's key in the settings store.
inline constexpr char kProductName[] = "Corvane Pro";
inline constexpr char kMakersKey[] = "Software\\Velmara Open Systems";

/// One key of the settings store; value names ignore case. Without an argument the application's own key,
/// the product's below its maker's.
class SHELLKIT_API CRegistry
{
public:
    CRegistry();
    explicit CRegistry(const CString& key) : m_key(key) {}

    /// `defaultValue` when the value is absent or no number of 32 bits.
    int GetInt(const char* name, int defaultValue) const;
    /// Any number but 0, "true", "yes" and "on" are true; 0, "false", "no" and "off" are false; else `defaultValue`.
    bool GetBool(const char* name, bool defaultValue) const;
    CString GetString(const char* name, const char* defaultValue = "") const;
    /// False when the store cannot be written. A null text removes the value.
    bool SetInt(const char* name, int value);
    bool SetString(const char* name, const char* value);

private:
    CString m_key;
};
