#pragma once

// A web server on one loopback address that no caller can hold up.

#include <atomic>
#include <thread>

#include <httplib.h>

namespace HmrcApi
{

/// The library's server counts its time-outs anew with every byte and serves a fixed number of connections at once: one
/// that sends a byte now and then would hold its thread, and the server's end, for ever, and a few would keep everybody
/// else out. Here a request is read within five seconds, and an answer taken within five, each connection has a thread
/// of its own, and the end waits for none of them (a handler that waits must be told by its owner). Handlers and
/// settings are the library's.
class LoopbackServer : public httplib::Server
{
public:
    LoopbackServer();
    ~LoopbackServer() override;

    /// The port that is had from now on, 0 being any; 0 when it cannot be had, errno then tells why.
    int Bind(const char* host, int port);
    /// Serves on the port from a thread of its own.
    void Start();
    /// Ends within a moment; for derived classes whose handlers need them.
    void End();

private:
    bool process_and_close_socket(socket_t socket) override;

    std::thread m_thread;
    bool m_isBound = false;
    std::atomic<bool> m_ending{false}, m_ended{false};
};

} // namespace HmrcApi
