#include "MorvUt/ui/edits/TextLines.h"

#include <algorithm>
#include <limits>

#include "Afx/text/Utf8.h"

namespace
{

constexpr std::size_t kTabWidth = 8; // characters

int Product(std::size_t count, int each) noexcept
{
    const double product = static_cast<double>(count) * each; // exact up to 2^53
    constexpr int kMost = std::numeric_limits<int>::max();
    return product < kMost ? static_cast<int>(count) * each : kMost;
}

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

CSize MeasureText(std::string_view text, int characterWidth, int lineHeight)
{
    const std::vector<std::string> lines = TextLines(text);
    int longest = 0;
    for (const std::string& line : lines)
        longest = std::max(longest, Afx::CountCharacters(line));
    return {Product(static_cast<std::size_t>(longest), characterWidth), Product(lines.size(), lineHeight)};
}
