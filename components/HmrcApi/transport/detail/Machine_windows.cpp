#include "HmrcApi/transport/detail/Machine.h"

#include <cstdlib>

namespace HmrcApi::Detail
{

Machine ReadMachine() { return {}; } // not read yet

NetworkAddresses ReadNetworkAddresses() { return {}; } // not read yet

std::string SystemUser()
{
    const char* const name = std::getenv("USERNAME");
    return name ? name : "";
}

} // namespace HmrcApi::Detail
