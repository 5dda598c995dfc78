#include "HmrcApi/redirect/server/Sockets.h"

#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

namespace HmrcApi::Detail
{

const int kSendFlags = MSG_NOSIGNAL | MSG_DONTWAIT;

int Poll(socket_t socket, Direction direction, int milliseconds)
{
    pollfd file{socket, static_cast<short>(direction == Direction::Read ? POLLIN : POLLOUT), 0};
    return ::poll(&file, 1, milliseconds);
}

void Close(socket_t socket)
{
    ::shutdown(socket, SHUT_RDWR);
    ::close(socket);
}

} // namespace HmrcApi::Detail
