#include "HmrcApi/answers/Mask.h"

#include <array>
#include <cstdint>
#include <optional>
#include <vector>

#include "Afx/text/Ascii.h"

namespace HmrcApi
{
namespace
{

constexpr std::string_view kMasked = "[masked]";

/// A name in front of a value that nobody may see.
constexpr std::array<std::string_view, 8> kSecretNames{
    "access_token", "refresh_token", "client_secret", "code_verifier", "authorization", "password", "secret", "code="};

bool IsAlnum(char c) noexcept { return Afx::IsDigit(c) || Afx::IsLetter(c); }

/// Blanks, also as a form writes them, and the two bytes of the no-break space.
bool IsFormBlank(char c) noexcept { return c == ' ' || c == '\t' || c == '+' || c == '\xC2' || c == '\xA0'; }

/// Byte for byte, so that positions fit both texts.
std::string AsciiLower(std::string_view text)
{
    std::string lower(text);
    for (char& c : lower)
        c = Afx::LowerAscii(c);
    return lower;
}

std::string ReplaceAll(std::string text, std::string_view secret)
{
    for (std::size_t at = text.find(secret); at != std::string::npos; at = text.find(secret, at + kMasked.size()))
        text.replace(at, secret.size(), kMasked);
    return text;
}

/// The end of the value that begins at `at`: the closing quote, or the end of the word.
std::size_t ValueEnd(std::string_view text, std::size_t at, bool isQuoted) noexcept
{
    while (at < text.size()) {
        const char c = text[at];
        if (isQuoted && c == '\\' && at + 1 < text.size())
            ++at;
        else if (isQuoted ? c == '"' : (c == '&' || c == '"' || c == ',' || c == ';' || c == ' ' || c < ' '))
            break;
        ++at;
    }
    return at;
}

/// Where the value behind a secret name begins: past quotes, blanks, ':' and '='.
std::size_t ValueStart(std::string_view text, std::size_t at, bool& isQuoted) noexcept
{
    const std::size_t start = at;
    isQuoted = false;
    bool hasSeparator = at > 0 && text[at - 1] == '=';
    while (at < text.size() && (text[at] == '"' || text[at] == ' ' || text[at] == ':' || text[at] == '=')) {
        const bool isSeparator = text[at] == ':' || text[at] == '=';
        if (text[at] == '"')
            isQuoted = hasSeparator; // the first quote closes the name, the one behind ':' opens the value
        hasSeparator = hasSeparator || isSeparator;
        ++at;
        if (isQuoted)
            break;
    }
    return hasSeparator ? at : start;
}

std::string MaskNamed(std::string text, std::string_view name)
{
    std::string lower = AsciiLower(text);
    for (std::size_t at = lower.find(name); at != std::string::npos; at = lower.find(name, at)) {
        bool isQuoted = false;
        at += name.size();
        std::size_t start = ValueStart(text, at, isQuoted);
        const std::size_t scheme = lower.compare(start, 7, "bearer ") == 0 ? 7 : 0;
        start += scheme;
        const std::size_t end = ValueEnd(text, start, isQuoted);
        if (start == at && name.back() != '=')
            continue; // the word alone, without a value
        if (start == end)
            continue;
        text.replace(start, end - start, kMasked);
        lower.replace(start, end - start, kMasked);
        at = start + kMasked.size();
    }
    return text;
}

/// Letters alone, and fewer than any token has.
bool IsPlainWord(std::string_view word) noexcept
{
    constexpr std::size_t kShortestToken = 16;
    for (const char c : word)
        if (!Afx::IsLetter(c))
            return false;
    return word.size() < kShortestToken;
}

std::string MaskBearer(std::string text)
{
    std::string lower = AsciiLower(text);
    constexpr std::string_view kBearer = "bearer ";
    for (std::size_t at = lower.find(kBearer); at != std::string::npos; at = lower.find(kBearer, at)) {
        at += kBearer.size();
        const std::size_t end = ValueEnd(text, at, false);
        if (IsPlainWord(std::string_view(lower).substr(at, end - at)))
            continue; // "Bearer token is missing"
        text.replace(at, end - at, kMasked);
        lower.replace(at, end - at, kMasked);
    }
    return text;
}

/// A character as written: itself, or %XX.
struct Unit
{
    char c;
    std::size_t begin, end;
};

std::vector<Unit> Units(std::string_view text)
{
    std::vector<Unit> units;
    units.reserve(text.size());
    for (std::size_t at = 0; at < text.size();) {
        const int high = text[at] == '%' && at + 2 < text.size() ? Afx::HexValue(text[at + 1]) : -1;
        const int low = high >= 0 ? Afx::HexValue(text[at + 2]) : -1;
        const std::size_t end = low >= 0 ? at + 3 : at + 1;
        units.push_back({low >= 0 ? static_cast<char>(high * 16 + low) : text[at], at, end});
        at = end;
    }
    return units;
}

/// The index behind a National Insurance number that begins at `first`; nothing when none does.
std::optional<std::size_t> NumberEnd(const std::vector<Unit>& units, std::size_t first) noexcept
{
    const auto skipBlanks = [&](std::size_t at) {
        while (at < units.size() && IsFormBlank(units[at].c))
            ++at;
        return at;
    };
    const auto isWordEnd = [&](std::size_t at) { return at >= units.size() || !IsAlnum(units[at].c); };

    if (first > 0 && IsAlnum(units[first - 1].c))
        return std::nullopt;
    std::size_t at = first;
    for (int place = 0; place < 8; ++place) {
        at = place > 0 ? skipBlanks(at) : at;
        if (at >= units.size() || !(place < 2 ? Afx::IsLetter(units[at].c) : Afx::IsDigit(units[at].c)))
            return std::nullopt;
        ++at;
    }
    const std::size_t suffix = skipBlanks(at);
    const char letter = suffix < units.size() ? Afx::LowerAscii(units[suffix].c) : '\0';
    if (letter >= 'a' && letter <= 'd' && isWordEnd(suffix + 1))
        return suffix + 1;
    return isWordEnd(at) ? std::optional(at) : std::nullopt;
}

std::string MaskNumbers(std::string_view text)
{
    const std::vector<Unit> units = Units(text);
    std::string masked;
    masked.reserve(text.size());
    for (std::size_t i = 0; i < units.size();) {
        if (const std::optional<std::size_t> end = Afx::IsLetter(units[i].c) ? NumberEnd(units, i) : std::nullopt) {
            masked += kMasked;
            i = *end;
            continue;
        }
        masked.append(text, units[i].begin, units[i].end - units[i].begin);
        ++i;
    }
    return masked;
}

} // namespace

std::string Mask(std::string_view text, std::initializer_list<std::string_view> secrets)
{
    std::string masked(text);
    for (const std::string_view secret : secrets)
        if (!secret.empty())
            masked = ReplaceAll(std::move(masked), secret);
    for (const std::string_view name : kSecretNames)
        masked = MaskNamed(std::move(masked), name);
    return MaskNumbers(MaskBearer(std::move(masked)));
}

} // namespace HmrcApi
