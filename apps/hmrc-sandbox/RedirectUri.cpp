#include "RedirectUri.h"

#include <algorithm>
#include <charconv>
#include <string>

namespace Sandbox
{

namespace
{

constexpr std::string_view kDigits = "0123456789";
constexpr std::string_view kHostLetters = "abcdefghijklmnopqrstuvwxyz0123456789-.";

bool StartsWith(std::string_view text, std::string_view start) { return text.substr(0, start.size()) == start; }

bool IsPort(std::string_view text)
{
    unsigned port = 0;
    const auto end = text.data() + text.size();
    const auto read = std::from_chars(text.data(), end, port);
    return read.ec == std::errc() && read.ptr == end && port >= 1 && port <= 65535;
}

/// A DNS name; its last label holds more than digits, which an IPv4 address' does not.
bool IsDnsName(std::string_view host)
{
    if (host.empty() || host.find_first_not_of(kHostLetters) != std::string_view::npos)
        return false;
    const auto label = host.substr(host.find_last_of('.') + 1); // the whole host when there is no dot
    return label.find_first_not_of(kDigits) != std::string_view::npos;
}

} // namespace

bool IsRedirectUri(std::string_view uri)
{
    if (uri == kOutOfBand || uri == kOutOfBandAuto)
        return true;
    if (uri.find('#') != std::string_view::npos ||
        std::any_of(uri.begin(), uri.end(), [](char c) { return c <= ' ' || c == '\x7f'; }))
        return false;
    const bool secure = StartsWith(uri, "https://");
    if (!secure && !StartsWith(uri, "http://"))
        return false;
    const auto rest = uri.substr(secure ? 8 : 7);
    const auto authority = rest.substr(0, rest.find_first_of("/?"));
    const auto colon = authority.find(':');
    std::string host(authority.substr(0, colon));
    std::transform(host.begin(), host.end(), host.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
    if (colon != std::string_view::npos && !IsPort(authority.substr(colon + 1)))
        return false;
    return secure ? IsDnsName(host) : host == "localhost";
}

} // namespace Sandbox
