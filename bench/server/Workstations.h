#pragma once

// Workstations that fetch for clients and make their schedules.

#include <span>
#include <string>
#include <vector>

#include "server/Proxy.h"

namespace Bench
{

/// Adds clients who have nothing yet to the practice that is open, and all that a fetch of an example needs. Their ids.
std::vector<long> FillPractice(int clients);

/// For one client, in the mean.
struct Spent
{
    double fetchTrips = 0, createTrips = 0; // 0 without a proxy
    double wall = 0, processor = 0;         // seconds, those of the workstation's process alone
};

/// So many clients come first and are not counted: statements are prepared by then.
inline constexpr std::size_t kWarmUp = 12;

/// One workstation, this process, for one client after the other. `proxy` counts its trips; null: nobody does.
Spent WorkAlone(const std::string& practice, std::span<const long> clients, const Proxy* proxy);

struct Together
{
    double clientsPerSecond = 0;
    double processor = 0; // seconds for a client, of the workstations' processes
};

/// As many processes at once, each with a connection and an equal share of the clients.
Together WorkTogether(const std::string& practice, std::span<const long> clients, int workstations);

/// Tells what is sent for the last of the clients, and how many trips it took.
void PrintStatements(const std::string& practice, std::span<const long> clients, const Proxy& proxy);

} // namespace Bench
