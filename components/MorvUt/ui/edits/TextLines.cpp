#include "MorvUt/ui/edits/TextLines.h"

#include "Afx/text/Utf8.h"

namespace
{

constexpr std::size_t kTabWidth = 8; // characters

} // namespace

std::vector<std::string> TextLines(std::string_view text)
{
    std::vector<std::string> lines(1);
    std::size_t column = 0; // in characters
    for (const char c : text) {
        if (c == '\n') {
            lines.emplace_back();
            column = 0;
        } else if (c == '\t') {
            const std::size_t blanks = kTabWidth - column % kTabWidth;
            lines.back().append(blanks, ' ');
            column += blanks;
        } else if (c != '\r') {
            lines.back() += c;
            column += Afx::ContinuesCharacter(c) ? 0 : 1;
        }
    }
    return lines;
}
