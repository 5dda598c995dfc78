#include "HmrcApi/transport/detail/AddressText.h"

#include <algorithm>
#include <cstdio>

#ifdef _WIN32
#include "Afx/Platform.h" // before the system's own, which it keeps small

#include <winsock2.h>

#include <ws2tcpip.h>
#else
#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#endif

namespace HmrcApi::Detail
{

std::string IpText(const sockaddr& address)
{
    char text[INET6_ADDRSTRLEN] = "";
    if (address.sa_family == AF_INET)
        inet_ntop(AF_INET, &reinterpret_cast<const sockaddr_in&>(address).sin_addr, text, sizeof text);
    else if (address.sa_family == AF_INET6)
        inet_ntop(AF_INET6, &reinterpret_cast<const sockaddr_in6&>(address).sin6_addr, text, sizeof text);
    return text;
}

std::string MacText(std::span<const unsigned char> bytes)
{
    constexpr std::size_t kBytes = 6;
    if (bytes.size() != kBytes || std::all_of(bytes.begin(), bytes.end(), [](unsigned char byte) { return byte == 0; }))
        return {};
    std::string text;
    for (const unsigned char each : bytes) {
        char byte[4];
        std::snprintf(byte, sizeof byte, "%s%02x", text.empty() ? "" : ":", each);
        text += byte;
    }
    return text;
}

} // namespace HmrcApi::Detail
