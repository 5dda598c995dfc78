#pragma once

// What the system says of this machine and of who is signed in to it.

#include <string>

namespace HmrcApi::Detail
{

/// Each empty when the system does not tell.
struct Machine
{
    std::string system, version; // "Linux", "6.1.0"
    std::string maker, model;
};
Machine ReadMachine();

/// The name of the system's user; empty when it is not known.
std::string SystemUser();

} // namespace HmrcApi::Detail
