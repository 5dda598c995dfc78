#pragma once

// What the system says of this machine and of who is signed in to it.

#include <string>
#include <vector>

namespace HmrcApi::Detail
{

/// Each empty when the system does not tell.
struct Machine
{
    std::string system, version; // "Linux", "6.1.0"
    std::string maker, model;
};
Machine ReadMachine();

/// Of this machine in its networks, the loopback interface left out; a network card has one MAC address and any number
/// of others.
struct NetworkAddresses
{
    std::vector<std::string> ip;  // "10.1.2.3", "fe80::1"
    std::vector<std::string> mac; // "ea:43:1a:5d:21:45"
};
NetworkAddresses ReadNetworkAddresses();

/// The name of the system's user; empty when it is not known.
std::string SystemUser();

} // namespace HmrcApi::Detail
