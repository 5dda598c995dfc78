#pragma once

// Connections to a server on this computer that never finish a request.

#include <atomic>
#include <chrono>
#include <csignal>
#include <thread>
#include <vector>

#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

namespace Test
{

/// `count` connections that send a byte each four times a second until the server hangs up, while it lives.
class DrippingCallers
{
public:
    DrippingCallers(int port, int count)
    {
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_port = htons(static_cast<std::uint16_t>(port));
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        for (int i = 0; i < count; ++i) {
            m_sockets.push_back(socket(AF_INET, SOCK_STREAM, 0));
            connect(m_sockets.back(), reinterpret_cast<const sockaddr*>(&address), sizeof address);
            send(m_sockets.back(), "G", 1, MSG_NOSIGNAL);
        }
        m_left = count;
        m_thread = std::thread([this] { Drip(); });
    }
    ~DrippingCallers()
    {
        m_ending = true;
        m_thread.join();
        for (const int each : m_sockets)
            close(each);
    }
    /// Those that the server still listens to.
    int Left() const noexcept { return m_left; }

private:
    void Drip()
    {
        while (!m_ending) {
            std::this_thread::sleep_for(std::chrono::milliseconds(250));
            int left = 0;
            for (const int each : m_sockets)
                left += send(each, "E", 1, MSG_NOSIGNAL) == 1 ? 1 : 0;
            m_left = left;
        }
    }

    std::vector<int> m_sockets;
    std::atomic<int> m_left{0};
    std::atomic<bool> m_ending{false};
    std::thread m_thread;
};

} // namespace Test
