#pragma once

// The server on its port.

#include <condition_variable>
#include <memory>
#include <mutex>
#include <stdexcept>
#include <string>

#include "Service.h"

namespace Sandbox
{

/// The asked port cannot be listened on; the text says why and how to mend it.
class PortError : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

/// Serves on 127.0.0.1 and, where there is one, on [::1], from threads of its own. Never reachable from outside.
class Server
{
public:
    explicit Server(Options options = {});
    ~Server();
    Server(const Server&) = delete;
    Server& operator=(const Server&) = delete;

    /// Listens on `port`, 0 being a free one. Throws PortError.
    void Start(int port = 0);

    /// Ends within about a second, delayed answers included. Does nothing on a server that does not run.
    void Stop();

    /// The port that is listened on; 0 when the server does not run.
    int Port() const { return m_port; }

    /// "http://127.0.0.1:PORT"; the redirect addresses need "localhost" instead of the number.
    std::string Address() const { return "http://127.0.0.1:" + std::to_string(m_port); }

private:
    class Listener;

    bool TryStart(int port, bool withIpv6);
    void Wait(std::chrono::milliseconds delay);

    const std::chrono::milliseconds m_delay;
    Service m_service;
    int m_port = 0;
    std::mutex m_stopMutex;
    std::condition_variable m_stopped;
    bool m_stopping = false;
    std::unique_ptr<Listener> m_ipv4, m_ipv6;
};

} // namespace Sandbox
