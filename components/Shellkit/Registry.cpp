#include "Shellkit/Registry.h"

#include <cstdint>

#include "Afx/system/Settings.h"
#include "Afx/text/TextFold.h"

namespace
{

struct Word
{
    const char* text;
    bool value;
};
constexpr Word kWords[] = {{"true", true},   {"yes", true}, {"on", true},
                           {"false", false}, {"no", false}, {"off", false}};

} // namespace

CRegistry::CRegistry() : m_key(CString(kMakersKey) + "\\" + kProductName) {}

int CRegistry::GetInt(const char* name, int defaultValue) const
{
    const auto text = Afx::Settings::Read(m_key, name);
    return text ? Afx::Settings::NumberIn<int>(*text).value_or(defaultValue) : defaultValue;
}

bool CRegistry::GetBool(const char* name, bool defaultValue) const
{
    auto text = Afx::Settings::Read(m_key, name);
    if (!text)
        return defaultValue;
    if (const auto number = Afx::Settings::NumberIn<std::int64_t>(*text))
        return *number != 0;
    text->Trim();
    for (const Word& word : kWords) {
        if (Afx::EqualNoCase(text->View(), word.text))
            return word.value;
    }
    return defaultValue;
}

CString CRegistry::GetString(const char* name, const char* defaultValue) const
{
    return Afx::Settings::Read(m_key, name).value_or(defaultValue);
}

bool CRegistry::SetInt(const char* name, int value) { return SetString(name, std::to_string(value).c_str()); }

bool CRegistry::SetString(const char* name, const char* value) { return Afx::Settings::Write(m_key, name, value); }
