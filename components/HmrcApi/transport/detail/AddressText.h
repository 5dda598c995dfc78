#pragma once

// A computer's addresses as HMRC wants to read them.

#include <span>
#include <string>

struct sockaddr;

namespace HmrcApi::Detail
{

/// "10.1.2.3", "fe80::1"; empty for another family of addresses.
std::string IpText(const sockaddr& address);
/// "ea:43:1a:5d:21:45"; empty for what is none, or nothing but zeros.
std::string MacText(std::span<const unsigned char> bytes);

} // namespace HmrcApi::Detail
