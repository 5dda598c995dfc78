#include "Afx/system/Computer.h"

#include <string>

#include "Afx/system/detail/SystemName.h"
#include "Afx/text/Utf8.h"

namespace Afx
{
namespace
{

constexpr std::size_t kLongestComputerName = 15; // as Windows names computers

/// What stands in for the system's answer; never destroyed.
CString& ChosenName()
{
    static auto& name = *new CString;
    return name;
}

std::string_view CutName(std::string_view name) noexcept
{
    name = name.substr(0, name.find('.'));
    return CutUtf8(name, kLongestComputerName);
}

} // namespace

CString GetComputerName()
{
    const std::string name = ChosenName().IsEmpty() ? Detail::SystemName() : ChosenName().Str();
    const std::string_view cut = CutName(name);
    return cut.empty() ? CString("Unknown") : CString(cut);
}

void SetComputerName(const CString& name) { ChosenName() = name; }

} // namespace Afx
