#include "Cellar/drivers/odbc/WideText.h"

#include "Afx/text/Utf8.h"

namespace Cellar::Odbc
{
namespace
{

constexpr unsigned kPairs = 0x10000, kHigh = 0xD800, kLow = 0xDC00, kEnd = 0xE000, kReplacement = 0xFFFD;

void Append(std::u16string& out, unsigned character)
{
    if (character < kPairs) {
        out += static_cast<char16_t>(character);
        return;
    }
    out += static_cast<char16_t>(kHigh + ((character - kPairs) >> 10));
    out += static_cast<char16_t>(kLow + ((character - kPairs) & 0x3FF));
}

} // namespace

std::u16string ToWide(std::string_view utf8)
{
    std::u16string wide;
    wide.reserve(utf8.size());
    std::size_t plain = 0;
    while (plain < utf8.size() && static_cast<unsigned char>(utf8[plain]) < 0x80)
        wide += static_cast<char16_t>(utf8[plain++]);
    if (plain == utf8.size())
        return wide;
    const std::string rest = Afx::ToUtf8(utf8.substr(plain));
    for (std::string_view left = rest; !left.empty();)
        Append(wide, Afx::TakeCharacter(left));
    return wide;
}

void AppendUtf8(std::string& out, std::u16string_view wide)
{
    for (std::size_t i = 0; i < wide.size(); ++i) {
        const unsigned unit = wide[i];
        if (unit < 0x80) {
            out += static_cast<char>(unit);
        } else if (unit < kHigh || unit >= kEnd) {
            Afx::AppendUtf8(out, unit);
        } else if (unit < kLow && i + 1 < wide.size() && wide[i + 1] >= kLow && wide[i + 1] < kEnd) {
            Afx::AppendUtf8(out, kPairs + ((unit - kHigh) << 10) + (wide[++i] - kLow));
        } else {
            Afx::AppendUtf8(out, kReplacement);
        }
    }
}

} // namespace Cellar::Odbc
