#include "HmrcApi/transport/Uri.h"

#include <algorithm>

#include "Afx/text/Ascii.h"

namespace HmrcApi
{
namespace
{

bool IsUnreserved(char c) noexcept
{
    return Afx::IsLetter(c) || Afx::IsDigit(c) || c == '-' || c == '.' || c == '_' || c == '~';
}

void AppendDigits(std::string& text, int value, int count)
{
    if (count > 1)
        AppendDigits(text, value / 10, count - 1);
    text += static_cast<char>('0' + value % 10);
}

} // namespace

std::string PercentEncode(std::string_view text)
{
    std::string encoded;
    encoded.reserve(text.size());
    for (const char c : text) {
        if (IsUnreserved(c)) {
            encoded += c;
            continue;
        }
        const auto byte = static_cast<unsigned char>(c);
        encoded += '%';
        encoded += Afx::kCapitalHexDigits[byte >> 4];
        encoded += Afx::kCapitalHexDigits[byte & 15];
    }
    return encoded;
}

std::string EncodeForm(const FormFields& fields)
{
    std::string form;
    for (const auto& [name, value] : fields) {
        if (!form.empty())
            form += '&';
        form += PercentEncode(name);
        form += '=';
        form += PercentEncode(value);
    }
    return form;
}

std::optional<std::string> DecodeFormText(std::string_view text)
{
    std::string decoded;
    decoded.reserve(text.size());
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (text[at] != '%') {
            decoded += text[at] == '+' ? ' ' : text[at];
            continue;
        }
        const int high = at + 2 < text.size() ? Afx::HexValue(text[at + 1]) : -1;
        const int low = high >= 0 ? Afx::HexValue(text[at + 2]) : -1;
        if (low < 0)
            return std::nullopt;
        decoded += static_cast<char>(high * 16 + low);
        at += 2;
    }
    return decoded;
}

std::string JoinAddress(std::string_view base, std::string_view path)
{
    while (!base.empty() && base.back() == '/')
        base.remove_suffix(1);
    while (!path.empty() && path.front() == '/')
        path.remove_prefix(1);
    return std::string(base) + '/' + std::string(path);
}

std::string IdentifierSegment(std::string_view identifier)
{
    std::string plain;
    for (const char c : identifier)
        if (c != ' ' && c != '\t')
            plain += Afx::UpperAscii(c);
    const auto isPlain = [](char c) { return Afx::IsLetter(c) || Afx::IsDigit(c); };
    return std::all_of(plain.begin(), plain.end(), isPlain) ? plain : std::string();
}

std::string TaxYearText(short year)
{
    if (year < 1 || year > 9999)
        return {};
    std::string text;
    AppendDigits(text, year - 1, 4);
    text += '-';
    AppendDigits(text, year % 100, 2);
    return text;
}

} // namespace HmrcApi
