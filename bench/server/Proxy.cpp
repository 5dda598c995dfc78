#include "server/Proxy.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <deque>
#include <memory>
#include <string>
#include <system_error>
#include <vector>

namespace Bench
{
namespace
{

using Clock = std::chrono::steady_clock;

sockaddr_in Loopback(std::uint16_t port)
{
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(port);
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    return address;
}

[[noreturn]] void ThrowSystem(const char* what) { throw std::system_error(errno, std::generic_category(), what); }

void SendAtOnce(int socket)
{
    const int yes = 1;
    ::setsockopt(socket, IPPROTO_TCP, TCP_NODELAY, &yes, sizeof yes);
}

/// One direction of one connection: what was read waits until it is due.
struct Way
{
    struct Part
    {
        Clock::time_point due;
        std::string bytes;
    };
    int from, to;
    std::deque<Part> waiting;

    /// False at the end of the connection.
    bool Read(std::chrono::nanoseconds delay)
    {
        char buffer[65536];
        const ssize_t size = ::recv(from, buffer, sizeof buffer, MSG_DONTWAIT);
        if (size > 0)
            waiting.push_back({Clock::now() + delay, std::string(buffer, static_cast<std::size_t>(size))});
        return size > 0 || (size < 0 && (errno == EAGAIN || errno == EINTR));
    }
    bool SendWhatIsDue(Clock::time_point now)
    {
        for (; !waiting.empty() && waiting.front().due <= now; waiting.pop_front()) {
            const std::string& bytes = waiting.front().bytes;
            for (std::size_t sent = 0; sent < bytes.size();) {
                const ssize_t size = ::send(to, bytes.data() + sent, bytes.size() - sent, MSG_NOSIGNAL);
                if (size <= 0)
                    return false;
                sent += static_cast<std::size_t>(size);
            }
        }
        return true;
    }
};

/// A workstation's connection.
struct Line
{
    Line(int client, int server) : up{client, server, {}}, down{server, client, {}} {}
    Line(const Line&) = delete;
    Line& operator=(const Line&) = delete;
    ~Line()
    {
        ::close(up.from);
        ::close(up.to);
    }
    Way up, down;
    bool hasAnswered = true; // the server was the last to speak
};

std::unique_ptr<Line> Accept(int listener, std::uint16_t serverPort)
{
    const int client = ::accept4(listener, nullptr, nullptr, SOCK_CLOEXEC);
    const int server = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    auto line = std::make_unique<Line>(client, server);
    const sockaddr_in address = Loopback(serverPort);
    if (client < 0 || ::connect(server, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0)
        return nullptr;
    SendAtOnce(client);
    SendAtOnce(server);
    return line;
}

} // namespace

Proxy::Proxy(std::uint16_t serverPort, std::chrono::nanoseconds roundTrip)
    : m_serverPort(serverPort), m_delay(roundTrip), m_listener(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0))
{
    sockaddr_in address = Loopback(0);
    socklen_t size = sizeof address;
    auto* const any = reinterpret_cast<sockaddr*>(&address);
    if (::bind(m_listener, any, size) != 0 || ::listen(m_listener, 64) != 0 ||
        ::getsockname(m_listener, any, &size) != 0)
        ThrowSystem("a port of the loopback");
    m_port = ntohs(address.sin_port);
    m_thread = std::thread([this] { Run(); });
}

Proxy::~Proxy()
{
    m_isEnding = true;
    m_thread.join();
    ::close(m_listener);
}

void Proxy::Run()
{
    ::prctl(PR_SET_TIMERSLACK, 1UL); // waits end when they should, not 50 microseconds later
    std::vector<std::unique_ptr<Line>> lines;
    std::vector<pollfd> polled;
    while (!m_isEnding) {
        auto wake = Clock::now() + std::chrono::milliseconds(50);
        polled.assign(1, {m_listener, POLLIN, 0});
        for (const auto& line : lines)
            for (const Way* const way : {&line->up, &line->down}) {
                polled.push_back({way->from, POLLIN, 0});
                if (!way->waiting.empty())
                    wake = std::min(wake, way->waiting.front().due);
            }
        const auto wait = std::max(wake - Clock::now(), Clock::duration::zero());
        const timespec time{wait / std::chrono::seconds(1), (wait % std::chrono::seconds(1)).count()};
        ::ppoll(polled.data(), polled.size(), &time, nullptr);
        std::size_t at = 1;
        for (auto& line : lines) {
            bool isOpen = true;
            if (polled[at++].revents != 0) {
                isOpen = line->up.Read(m_delay);
                m_roundTrips += isOpen && line->hasAnswered;
                line->hasAnswered = false;
            }
            if (polled[at++].revents != 0) {
                isOpen = line->down.Read({}) && isOpen; // at once: one wait a trip wakes this thread less often
                line->hasAnswered = true;
            }
            const auto now = Clock::now();
            if (!line->up.SendWhatIsDue(now) || !line->down.SendWhatIsDue(now) || !isOpen)
                line.reset();
        }
        std::erase(lines, nullptr);
        if (polled[0].revents != 0)
            if (auto line = Accept(m_listener, m_serverPort))
                lines.push_back(std::move(line));
    }
}

} // namespace Bench
