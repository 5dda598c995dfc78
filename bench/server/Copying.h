#pragma once

// A practice on its way from a file to a server.

#include <cstdint>
#include <string>

#include "server/Server.h"

namespace Bench
{

struct Rate
{
    double rows = 0, wall = 0, processor = 0; // seconds of the program that copies
};

struct Copying
{
    Rate ours;     // read, written, read again on both sides and compared
    Rate bulkTool; // the same rows, written
};

/// Copies the embedded practice to the server, and then the same rows out of a file each, by the server's own tool.
/// The files are left in `folder`.
Copying MeasureCopying(const Server& server, const std::string& practice, const std::string& folder);

} // namespace Bench
