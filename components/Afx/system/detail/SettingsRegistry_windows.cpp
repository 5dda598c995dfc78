#include "Afx/system/detail/SettingsRegistry.h"

#include <limits>
#include <vector>

#include "Afx/Platform.h"
#include "Afx/text/WideText_windows.h"

namespace Afx::Detail
{
namespace
{

/// A section that is a key of its own stands as it is; profile sections stand together.
std::wstring KeyOf(std::string_view section)
{
    return (section.starts_with("Software\\") ? L"" : L"Software\\MorvUt\\") + Widen(section);
}

} // namespace

std::optional<CString> ReadRegistry(std::string_view section, std::string_view name)
{
    const std::wstring key = KeyOf(section), value = Widen(name);
    DWORD number = 0, size = sizeof number;
    if (RegGetValueW(HKEY_CURRENT_USER, key.c_str(), value.c_str(), RRF_RT_REG_DWORD, nullptr, &number, &size) ==
        ERROR_SUCCESS)
        return CString(std::to_string(static_cast<std::int32_t>(number)));
    size = 0;
    if (RegGetValueW(HKEY_CURRENT_USER, key.c_str(), value.c_str(), RRF_RT_REG_SZ, nullptr, nullptr, &size) !=
        ERROR_SUCCESS)
        return std::nullopt;
    std::vector<wchar_t> text(size / sizeof(wchar_t) + 1);
    size = static_cast<DWORD>(text.size() * sizeof(wchar_t));
    if (RegGetValueW(HKEY_CURRENT_USER, key.c_str(), value.c_str(), RRF_RT_REG_SZ, nullptr, text.data(), &size) !=
        ERROR_SUCCESS)
        return std::nullopt;
    return CString(Narrow(text.data()));
}

bool WriteRegistry(std::string_view section, std::string_view name, std::optional<std::string_view> value)
{
    const std::wstring key = KeyOf(section), valueName = Widen(name);
    if (!value) {
        const LSTATUS status = RegDeleteKeyValueW(HKEY_CURRENT_USER, key.c_str(), valueName.c_str());
        return status == ERROR_SUCCESS || status == ERROR_FILE_NOT_FOUND;
    }
    const std::wstring text = Widen(*value);
    const auto bytes = static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t));
    return RegSetKeyValueW(HKEY_CURRENT_USER, key.c_str(), valueName.c_str(), REG_SZ, text.c_str(), bytes) ==
           ERROR_SUCCESS;
}

} // namespace Afx::Detail
