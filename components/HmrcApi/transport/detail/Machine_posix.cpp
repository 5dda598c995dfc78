#include "HmrcApi/transport/detail/Machine.h"

#include <algorithm>
#include <arpa/inet.h>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <ifaddrs.h>
#include <memory>
#include <net/if.h>
#include <netpacket/packet.h>

namespace HmrcApi::Detail
{
namespace
{

std::string FirstLine(const char* path)
{
    std::ifstream file(path);
    std::string line;
    std::getline(file, line);
    return line;
}

std::string IpText(const sockaddr* address)
{
    char text[INET6_ADDRSTRLEN] = "";
    if (address->sa_family == AF_INET)
        inet_ntop(AF_INET, &reinterpret_cast<const sockaddr_in*>(address)->sin_addr, text, sizeof text);
    else if (address->sa_family == AF_INET6)
        inet_ntop(AF_INET6, &reinterpret_cast<const sockaddr_in6*>(address)->sin6_addr, text, sizeof text);
    return text;
}

std::string MacText(const sockaddr* address)
{
    constexpr int kBytes = 6;
    const auto* const card = reinterpret_cast<const sockaddr_ll*>(address);
    if (address->sa_family != AF_PACKET || card->sll_halen != kBytes ||
        std::all_of(card->sll_addr, card->sll_addr + kBytes, [](unsigned char byte) { return byte == 0; }))
        return {};
    std::string text;
    for (int i = 0; i < kBytes; ++i) {
        char byte[4];
        std::snprintf(byte, sizeof byte, "%s%02x", i == 0 ? "" : ":", card->sll_addr[i]);
        text += byte;
    }
    return text;
}

} // namespace

Machine ReadMachine()
{
    return {"Linux", FirstLine("/proc/sys/kernel/osrelease"), FirstLine("/sys/class/dmi/id/sys_vendor"),
            FirstLine("/sys/class/dmi/id/product_name")};
}

NetworkAddresses ReadNetworkAddresses()
{
    NetworkAddresses found;
    ifaddrs* list = nullptr;
    if (getifaddrs(&list) != 0)
        return found;
    const std::unique_ptr<ifaddrs, decltype(&freeifaddrs)> owner(list, &freeifaddrs);
    for (const ifaddrs* each = list; each; each = each->ifa_next) {
        if (!each->ifa_addr || (each->ifa_flags & IFF_LOOPBACK) != 0)
            continue;
        if (std::string ip = IpText(each->ifa_addr); !ip.empty())
            found.ip.push_back(std::move(ip));
        if (std::string mac = MacText(each->ifa_addr); !mac.empty())
            found.mac.push_back(std::move(mac));
    }
    return found;
}

std::string SystemUser()
{
    const char* const name = std::getenv("USER");
    return name ? name : "";
}

} // namespace HmrcApi::Detail
