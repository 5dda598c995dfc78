#pragma once

// Connections to a server on this computer that never finish a request.

#include <thread>
#include <vector>

#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

namespace Test
{

/// `count` connections that send a byte each four times a second while it lives.
class DrippingCallers
{
public:
    DrippingCallers(int port, int count)
    {
        const sockaddr_in address{AF_INET, htons(static_cast<std::uint16_t>(port)), {htonl(INADDR_LOOPBACK)}, {}};
        std::vector<int> sockets(static_cast<std::size_t>(count));
        for (int& each : sockets) {
            each = socket(AF_INET, SOCK_STREAM, 0);
            connect(each, reinterpret_cast<const sockaddr*>(&address), sizeof address);
        }
        m_thread = std::jthread([sockets](const std::stop_token& end) {
            for (; !end.stop_requested(); usleep(250'000))
                for (const int each : sockets)
                    send(each, "G", 1, MSG_NOSIGNAL);
            for (const int each : sockets)
                close(each);
        });
    }

private:
    std::jthread m_thread;
};

} // namespace Test
