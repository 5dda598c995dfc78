#pragma once

// A web server of the test's own on this computer.

#include <chrono>
#include <memory>
#include <string>
#include <thread>

#include <httplib.h>

namespace HmrcApi::Fakes
{

class LocalServer
{
public:
    /// On a port that was free a moment ago; 0: any.
    explicit LocalServer(int port = 0, const char* host = "127.0.0.1",
                         std::unique_ptr<httplib::Server> server = std::make_unique<httplib::Server>())
        : m_server(std::move(server)),
          m_port(port > 0 && m_server->bind_to_port(host, port) ? port : m_server->bind_to_any_port(host))
    {
        m_server->set_keep_alive_timeout(1);
        m_server->set_keep_alive_max_count(1000); // the library would hang up after the fifth request
    }
    ~LocalServer()
    {
        if (!m_thread.joinable())
            return;
        m_server->stop();
        m_thread.join();
    }

    /// To add handlers, before Start.
    httplib::Server& Handlers() noexcept { return *m_server; }
    void Start()
    {
        m_thread = std::thread([this] { m_server->listen_after_bind(); });
        while (!m_server->is_running())
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    unsigned short Port() const noexcept { return static_cast<unsigned short>(m_port > 0 ? m_port : 0); }
    std::string Address(const std::string& path) const { return "http://127.0.0.1:" + std::to_string(m_port) + path; }

private:
    std::unique_ptr<httplib::Server> m_server;
    int m_port;
    std::thread m_thread;
};

} // namespace HmrcApi::Fakes
