#pragma once

// Connections to a server on this computer that never finish a request.

#include <atomic>
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
    DrippingCallers(int port, int count) : m_sockets(static_cast<std::size_t>(count))
    {
        const sockaddr_in address{AF_INET, htons(static_cast<std::uint16_t>(port)), {htonl(INADDR_LOOPBACK)}, {}};
        for (int& each : m_sockets) {
            each = socket(AF_INET, SOCK_STREAM, 0);
            connect(each, reinterpret_cast<const sockaddr*>(&address), sizeof address);
        }
        m_thread = std::thread([this] {
            for (; !m_ending; usleep(250'000))
                for (const int each : m_sockets)
                    send(each, "G", 1, MSG_NOSIGNAL);
        });
    }
    ~DrippingCallers()
    {
        m_ending = true;
        m_thread.join();
        for (const int each : m_sockets)
            close(each);
    }

private:
    std::vector<int> m_sockets;
    std::atomic<bool> m_ending{false};
    std::thread m_thread;
};

} // namespace Test
