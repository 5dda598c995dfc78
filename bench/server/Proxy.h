#pragma once

// A network between workstations and a server, which takes its time.

#include <atomic>
#include <chrono>
#include <cstdint>
#include <thread>

namespace Bench
{

/// Stands on a port of its own and hands on what it gets, on the way to the server after `roundTrip`. Counts the round
/// trips: how often a client went on after the server had answered. Throws std::system_error.
class Proxy
{
public:
    Proxy(std::uint16_t serverPort, std::chrono::nanoseconds roundTrip);
    ~Proxy();
    Proxy(const Proxy&) = delete;
    Proxy& operator=(const Proxy&) = delete;

    std::uint16_t GetPort() const noexcept { return m_port; }
    std::int64_t GetRoundTrips() const noexcept { return m_roundTrips; }

private:
    void Run();

    std::uint16_t m_serverPort, m_port = 0;
    std::chrono::nanoseconds m_delay;
    int m_listener = -1;
    std::atomic<bool> m_isEnding{false};
    std::atomic<std::int64_t> m_roundTrips{0};
    std::thread m_thread;
};

} // namespace Bench
