#include "Text.h"

namespace Sandbox
{

std::vector<std::string_view> Split(std::string_view text, char separator)
{
    std::vector<std::string_view> pieces;
    for (;;) {
        const auto at = text.find(separator);
        pieces.push_back(text.substr(0, at));
        if (at == std::string_view::npos)
            return pieces;
        text.remove_prefix(at + 1);
    }
}

bool IsBelow(std::string_view path, std::string_view start)
{
    if (!start.empty() && start.back() == '/')
        start.remove_suffix(1);
    return path.substr(0, start.size()) == start && (path.size() == start.size() || path[start.size()] == '/');
}

std::string PercentEncode(std::string_view text)
{
    constexpr std::string_view kUnreserved = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-._~";
    constexpr char kHex[] = "0123456789ABCDEF";
    std::string encoded;
    for (const char c : text) {
        if (kUnreserved.find(c) != std::string_view::npos) {
            encoded += c;
            continue;
        }
        const auto byte = static_cast<unsigned char>(c);
        encoded += '%';
        encoded += kHex[byte >> 4];
        encoded += kHex[byte & 15];
    }
    return encoded;
}

std::string HtmlEscape(std::string_view text)
{
    std::string escaped;
    for (const char c : text) {
        switch (c) {
        case '&':
            escaped += "&amp;";
            break;
        case '<':
            escaped += "&lt;";
            break;
        case '>':
            escaped += "&gt;";
            break;
        case '"':
            escaped += "&quot;";
            break;
        default:
            escaped += c;
        }
    }
    return escaped;
}

std::optional<std::string> Find(const Parameters& parameters, const std::string& name)
{
    const auto at = parameters.find(name);
    if (at == parameters.end() || at->second.empty())
        return std::nullopt;
    return at->second;
}

} // namespace Sandbox
