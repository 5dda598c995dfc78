#include "Afx/system/detail/SystemName.h"

#include <unistd.h>

#include "Afx/text/Utf8.h"

namespace Afx::Detail
{

std::string SystemName()
{
    char name[256] = "";
    if (::gethostname(name, sizeof name - 1) != 0)
        return {};
    return ToUtf8(name);
}

std::filesystem::path ProgramPath()
{
    std::error_code error;
    return std::filesystem::read_symlink("/proc/self/exe", error);
}

} // namespace Afx::Detail
