#pragma once

// What systems call differently of the same sockets.

#include <httplib.h>

namespace HmrcApi::Detail
{

extern const int kSendFlags; // no signal for a caller that is gone, no waiting
enum class Direction
{
    Read,
    Write
};
/// Waits until the socket is ready, at most so long. More than 0: it is; 0: not in that time; less: errno tells.
int Poll(socket_t socket, Direction direction, int milliseconds);
void Close(socket_t socket);

} // namespace HmrcApi::Detail
