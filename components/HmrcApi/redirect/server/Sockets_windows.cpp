#include "HmrcApi/redirect/server/Sockets.h"

namespace HmrcApi::Detail
{

const int kSendFlags = 0;

int Poll(socket_t socket, Direction direction, int milliseconds)
{
    pollfd file{socket, static_cast<short>(direction == Direction::Read ? POLLIN : POLLOUT), 0};
    return WSAPoll(&file, 1, milliseconds);
}

void Close(socket_t socket)
{
    ::shutdown(socket, SD_BOTH);
    ::closesocket(socket);
}

} // namespace HmrcApi::Detail
