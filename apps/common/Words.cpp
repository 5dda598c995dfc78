#include "common/Words.h"

#include "Afx/text/Utf8.h"

namespace Morv
{

std::string Money(const Kiln::CAmt& amount)
{
    if (!amount.IsValid())
        return "-";
    const std::int64_t value = amount.GetPence();
    const std::uint64_t size = value < 0 ? ~static_cast<std::uint64_t>(value) + 1 : static_cast<std::uint64_t>(value);
    std::string pounds = std::to_string(size / 100);
    for (std::size_t at = pounds.size(); at > 3;)
        pounds.insert(at -= 3, ",");
    const std::string pennies = std::to_string(size % 100);
    return (value < 0 ? "-£" : "£") + pounds + (pennies.size() == 1 ? ".0" : ".") + pennies;
}

std::string ShownDate(const Kiln::CDate& date) { return date.IsValid() ? date.Format("%d/%m/%Y").Str() : "-"; }

std::string OrDash(const std::string& text) { return text.empty() ? "-" : text; }

std::string Counted(int count, const std::string& one)
{
    return std::to_string(count) + ' ' + one + (count == 1 ? "" : "s");
}

std::string Printable(std::string_view text)
{
    std::string flat;
    for (const char c : text)
        if (c != '\n' || !flat.ends_with('\n')) // a paragraph's end is one blank
            flat += c;
    return Afx::ToPrintable(flat);
}

std::string Cut(std::string_view text, std::size_t most)
{
    const std::string whole = Printable(text);
    const std::string_view shown = Afx::CutUtf8(whole, most);
    return std::string(shown) + (shown.size() < whole.size() ? "…" : "");
}

std::string Shown(std::string_view text)
{
    constexpr std::size_t kMost = 500;
    return Cut(text, kMost);
}

bool HasControlCharacters(std::string_view text) { return Printable(text) != Afx::ToUtf8(text); }

std::string Quoted(std::string_view text)
{
    constexpr std::size_t kMost = 80;
    return '"' + Cut(text, kMost) + '"';
}

} // namespace Morv
