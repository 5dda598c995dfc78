#include <string>

#include "Afx/system/detail/IniText.h"
#include "Afx/text/TextFold.h"
#include "fuzz/Targets.h"

namespace Fuzz
{
namespace
{

using Afx::Detail::FindIniValue;
using Afx::Detail::SetIniValue;

/// The text up to the next bar, which goes with it.
std::string_view TakeField(std::string_view& rest) noexcept
{
    const std::size_t length = rest.find('|');
    const std::string_view field = rest.substr(0, length);
    rest.remove_prefix(length == std::string_view::npos ? rest.size() : length + 1);
    return field;
}

} // namespace

void IniText(std::string_view input)
{
    const std::string_view section = TakeField(input), name = TakeField(input), value = TakeField(input);
    const std::string_view text = input;
    const auto before = FindIniValue(text, section, name);
    if (!Afx::Detail::IsIniSection(section) || !Afx::Detail::IsIniName(name))
        return;

    constexpr char kSection[] = "Neighbour", kName[] = "Kept";
    const bool isNeighbour = Afx::EqualNoCase(section, kSection) && Afx::EqualNoCase(name, kName);
    const std::string beside = SetIniValue(text, kSection, kName, "as it was");
    Require(isNeighbour || FindIniValue(beside, section, name) == before, "another entry changes nothing");

    const std::string written = SetIniValue(beside, section, name, value);
    Require(FindIniValue(written, section, name) == value, "a value that is written is read");
    Require(isNeighbour || FindIniValue(written, kSection, kName) == "as it was", "other entries stay");
    // The line end put behind a stray carriage return makes a text of other line ends.
    Require(text.ends_with('\r') || SetIniValue(written, section, name, value) == written,
            "writing it again changes nothing");

    const std::string removed = SetIniValue(written, section, name, std::nullopt);
    Require(removed.size() < written.size(), "a removed entry is gone");
    if (!before && !isNeighbour)
        Require(!FindIniValue(removed, section, name), "nothing is left of an entry that was not there before");
    Require(isNeighbour || FindIniValue(removed, kSection, kName) == "as it was", "other entries stay");
}

} // namespace Fuzz
