#include "HmrcApi/transport/detail/Machine.h"

#include <cstdlib>
#include <fstream>
#include <ifaddrs.h>
#include <memory>
#include <net/if.h>
#include <netpacket/packet.h>
#include <span>

#include "HmrcApi/transport/detail/AddressText.h"

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

/// Empty for an address of another family than a network card's.
std::span<const unsigned char> BytesOfCard(const sockaddr* address)
{
    const auto* const card = reinterpret_cast<const sockaddr_ll*>(address);
    return address->sa_family == AF_PACKET ? std::span(card->sll_addr, card->sll_halen)
                                           : std::span<const unsigned char>();
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
        if (std::string ip = IpText(*each->ifa_addr); !ip.empty())
            found.ip.push_back(std::move(ip));
        if (std::string mac = MacText(BytesOfCard(each->ifa_addr)); !mac.empty())
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
