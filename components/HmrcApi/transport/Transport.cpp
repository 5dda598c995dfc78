#include "HmrcApi/transport/Transport.h"

#include <algorithm>
#include <atomic>
#include <cstdint>
#include <cstdlib>
#include <optional>
#include <string_view>

#include "Afx/text/Ascii.h"
#include "Afx/text/Numbers.h"
#include "Afx/text/TextFold.h"
#include "Shellkit/Registry.h"

namespace HmrcApi
{
namespace
{

/// Four decimal numbers up to 255, the first 127.
bool IsLoopbackNumber(std::string_view host) noexcept
{
    if (!host.starts_with("127."))
        return false;
    int parts = 0;
    while (true) {
        int value = 0;
        std::size_t digits = 0;
        while (digits < host.size() && Afx::IsDigit(host[digits]) && digits < 4)
            value = value * 10 + (host[digits++] - '0');
        if (digits == 0 || digits > 3 || value > 255)
            return false;
        host.remove_prefix(digits);
        ++parts;
        if (host.empty())
            return parts == 4;
        if (host.front() != '.' || parts == 4)
            return false;
        host.remove_prefix(1);
    }
}

/// A colon and a number from 1 to 65535.
bool IsPort(std::string_view text) noexcept
{
    const auto port = text.starts_with(':') ? Afx::ParseWhole<std::uint16_t>(text.substr(1)) : std::nullopt;
    return port.value_or(0) != 0;
}

std::atomic<unsigned> g_connectMilliseconds{Timeouts().connectMilliseconds};
std::atomic<unsigned> g_totalMilliseconds{Timeouts().totalMilliseconds};

} // namespace

Timeouts GetTimeouts() noexcept { return {g_connectMilliseconds, g_totalMilliseconds}; }

void SetTimeouts(Timeouts timeouts) noexcept
{
    constexpr Timeouts kUsual;
    // The library takes 0 for "no limit".
    g_connectMilliseconds = std::clamp(timeouts.connectMilliseconds, 1u, kUsual.connectMilliseconds);
    g_totalMilliseconds = std::clamp(timeouts.totalMilliseconds, 1u, kUsual.totalMilliseconds);
}

ITransport::~ITransport() = default;

HttpSettings ReadHttpSettings()
{
    const CRegistry registry;
    return {registry.GetString("HMRCCertificates").Str(), registry.GetString("HMRCProxy").Str()};
}

std::string ProxyInUse(const HttpSettings& settings)
{
    std::string proxy = settings.proxy;
    for (const char* name : {"https_proxy", "HTTPS_PROXY", "all_proxy", "ALL_PROXY"}) // as the library looks for it
        if (const char* const value = proxy.empty() ? std::getenv(name) : nullptr)
            proxy = value;
    if (Afx::EqualNoCase(settings.proxy, kNoProxy))
        return {};
    const std::size_t scheme = proxy.find("://"), start = scheme == std::string::npos ? 0 : scheme + 3;
    if (const std::size_t user = proxy.rfind('@'); user != std::string::npos && user >= start)
        proxy.erase(start, user + 1 - start);
    return proxy;
}

bool IsLoopbackAddress(const std::string& address)
{
    std::string_view rest = address;
    const std::size_t colon = rest.find("://");
    if (colon == std::string_view::npos)
        return false;
    const std::string_view scheme = rest.substr(0, colon);
    if (!Afx::EqualNoCase(scheme, "http") && !Afx::EqualNoCase(scheme, "https"))
        return false;
    rest.remove_prefix(colon + 3);
    std::string_view host = rest.substr(0, rest.find_first_of("/?#"));
    // A user name, a backslash or a blank may mean another host to the next reader of this address.
    for (const char c : host)
        if (c == '@' || c == '\\' || c == '%' || static_cast<unsigned char>(c) <= ' ' ||
            static_cast<unsigned char>(c) >= 0x7F)
            return false;

    const std::size_t nameEnd = host.starts_with('[') ? host.find(']') : host.find(':');
    if (host.starts_with('[') && nameEnd == std::string_view::npos)
        return false;
    std::string_view port;
    if (nameEnd != std::string_view::npos) {
        port = host.substr(host.starts_with('[') ? nameEnd + 1 : nameEnd);
        host = host.starts_with('[') ? host.substr(0, nameEnd + 1) : host.substr(0, nameEnd);
    }
    if (!port.empty() && !IsPort(port))
        return false;
    return host == "[::1]" || Afx::EqualNoCase(host, "localhost") || IsLoopbackNumber(host);
}

bool IsLoopbackBase(const std::string& address)
{
    return IsLoopbackAddress(address) && address.find_first_of("?#") == std::string::npos;
}

} // namespace HmrcApi
