#include "Lattice/TabbedText.h"

namespace Lattice
{
namespace
{

std::string Quoted(const CString& text)
{
    const std::string& plain = text.Str();
    if (plain.find_first_of("\t\r\n") == plain.npos && !plain.starts_with('"'))
        return plain;
    std::string quoted = "\"";
    for (const char c : plain)
        quoted += c == '"' ? std::string("\"\"") : std::string(1, c);
    return quoted + '"';
}

/// Takes one cell off `text`, up to the tab or line end after it.
std::string TakeCell(std::string_view& text)
{
    std::string cell;
    if (text.starts_with('"')) {
        text.remove_prefix(1);
        while (!text.empty() && (text[0] != '"' || (text.size() > 1 && text[1] == '"'))) {
            cell += text[0];
            text.remove_prefix(text[0] == '"' ? 2 : 1);
        }
        if (!text.empty())
            text.remove_prefix(1);
    }
    const std::size_t end = std::min(text.find_first_of("\t\r\n"), text.size());
    cell += text.substr(0, end);
    text.remove_prefix(end);
    return cell;
}

} // namespace

std::string ToTabbedText(const TextBlock& block)
{
    std::string text;
    for (const auto& row : block) {
        for (std::size_t i = 0; i < row.size(); ++i)
            text += (i ? "\t" : "") + Quoted(row[i]);
        text += "\r\n";
    }
    return text;
}

TextBlock FromTabbedText(std::string_view text)
{
    TextBlock block;
    while (!text.empty()) {
        auto& row = block.emplace_back();
        row.emplace_back(TakeCell(text));
        while (text.starts_with('\t')) {
            text.remove_prefix(1);
            row.emplace_back(TakeCell(text));
        }
        if (text.starts_with('\r'))
            text.remove_prefix(1);
        if (text.starts_with('\n'))
            text.remove_prefix(1);
    }
    return block;
}

} // namespace Lattice
