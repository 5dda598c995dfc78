#include "Afx/system/detail/SystemName.h"

#include <iterator>

#include "Afx/Platform.h"
#include "Afx/text/Utf8.h"

namespace Afx::Detail
{

std::string SystemName()
{
    char name[256];
    DWORD size = sizeof name;
    return GetComputerNameExA(ComputerNameNetBIOS, name, &size) ? ToUtf8({name, size}) : std::string();
}

std::filesystem::path ProgramPath()
{
    wchar_t path[32768];
    const DWORD length = GetModuleFileNameW(nullptr, path, static_cast<DWORD>(std::size(path)));
    return std::filesystem::path(std::wstring_view(path, length));
}

} // namespace Afx::Detail
