#include "HmrcApi/redirect/server/LoopbackServer.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <optional>
#include <system_error>

#include "HmrcApi/redirect/server/Sockets.h"

namespace HmrcApi
{
namespace
{

using Clock = std::chrono::steady_clock;
using Detail::Direction;

constexpr std::chrono::seconds kRequestTime{5}, kAnswerTime{5};
constexpr std::chrono::milliseconds kSlice{50}; // how soon the end is noticed
constexpr int kQueue = 128;                     // connections; the library's five make a burst wait for a second
constexpr int kMostThreads = 200;

/// Only SO_REUSEADDR: with SO_REUSEPORT a second program could listen on the same port.
void ReuseAddress(socket_t socket)
{
    const int yes = 1;
    setsockopt(socket, SOL_SOCKET, SO_REUSEADDR, reinterpret_cast<const char*>(&yes), sizeof yes);
}

/// A thread for each connection, since idle ones hold theirs.
class ThreadForEach : public httplib::TaskQueue
{
public:
    void enqueue(std::function<void()> serve) override
    {
        {
            std::unique_lock lock(m_count->mutex);
            m_count->fewer.wait(lock, [this] { return m_count->running < kMostThreads; });
            ++m_count->running;
        }
        const auto run = [serve = std::move(serve), count = m_count] {
            serve();
            const std::lock_guard lock(count->mutex);
            --count->running;
            count->fewer.notify_all();
        };
        try {
            std::thread(run).detach();
        } catch (const std::system_error&) {
            run(); // no more threads
        }
    }
    void shutdown() override
    {
        std::unique_lock lock(m_count->mutex);
        m_count->fewer.wait(lock, [this] { return m_count->running == 0; });
    }

private:
    struct Count
    {
        std::mutex mutex;
        std::condition_variable fewer;
        int running = 0;
    };
    std::shared_ptr<Count> m_count = std::make_shared<Count>(); // outlives the last thread's last step
};

/// A connection whose requests and answers have an end.
class TimedStream : public httplib::Stream
{
public:
    TimedStream(socket_t socket, const std::atomic<bool>& ending) noexcept : m_socket(socket), m_ending(ending) {}

    /// Waits for the next request; its time begins with its first byte.
    bool Await(std::chrono::seconds idle)
    {
        const bool isThere = m_begin < m_end || Wait(Direction::Read, Clock::now() + idle);
        m_readEnd = Clock::now() + kRequestTime;
        return isThere;
    }

    bool is_readable() const override { return m_begin < m_end || Wait(Direction::Read, m_readEnd); }
    bool is_writable() const override { return Wait(Direction::Write, WriteEnd()); }
    ssize_t read(char* bytes, std::size_t size) override
    {
        m_writeEnd.reset(); // what is written behind this is another answer
        if (m_begin == m_end) {
            if (!Wait(Direction::Read, m_readEnd))
                return -1;
            const auto got = ::recv(m_socket, m_buffer.data(), m_buffer.size(), 0);
            if (got <= 0)
                return static_cast<ssize_t>(got);
            m_begin = 0;
            m_end = static_cast<std::size_t>(got);
        }
        const std::size_t taken = std::min(size, m_end - m_begin);
        std::copy_n(m_buffer.data() + m_begin, taken, bytes);
        m_begin += taken;
        return static_cast<ssize_t>(taken);
    }
    ssize_t write(const char* bytes, std::size_t size) override
    {
        constexpr std::size_t kMost = 1 << 20; // of one call
        if (!Wait(Direction::Write, WriteEnd()))
            return -1;
        return static_cast<ssize_t>(::send(m_socket, bytes, std::min(size, kMost), Detail::kSendFlags));
    }
    // Nobody asks: all of them are on this computer.
    void get_remote_ip_and_port(std::string&, int&) const override {}
    void get_local_ip_and_port(std::string&, int&) const override {}
    socket_t socket() const override { return m_socket; }

private:
    /// Counted from the answer's first byte: the handler takes what time it needs.
    Clock::time_point WriteEnd() const
    {
        if (!m_writeEnd)
            m_writeEnd = Clock::now() + kAnswerTime;
        return *m_writeEnd;
    }
    /// Once the server ends nothing more is read, and written is only what goes out at once: the page that tells the
    /// user of his success is still given, and a caller who does not read holds nobody up.
    bool Wait(Direction direction, Clock::time_point end) const
    {
        for (;;) {
            const bool isEnding = m_ending;
            if (isEnding && direction == Direction::Read)
                return false;
            const auto left = isEnding ? std::chrono::milliseconds(0)
                                       : std::chrono::ceil<std::chrono::milliseconds>(end - Clock::now());
            const int ready = Detail::Poll(m_socket, direction, static_cast<int>(std::clamp(left, {}, kSlice).count()));
            if (ready > 0)
                return true;
            if ((ready < 0 && errno != EINTR) || left.count() <= 0)
                return false;
        }
    }

    socket_t m_socket;
    const std::atomic<bool>& m_ending;
    Clock::time_point m_readEnd;
    mutable std::optional<Clock::time_point> m_writeEnd;
    std::array<char, 4096> m_buffer;
    std::size_t m_begin = 0, m_end = 0; // of what is in the buffer
};

} // namespace

LoopbackServer::LoopbackServer()
{
    set_socket_options(ReuseAddress);
    new_task_queue = [] { return new ThreadForEach; };
}

LoopbackServer::~LoopbackServer() { End(); }

int LoopbackServer::Bind(const char* host, int port)
{
    errno = 0;
    const int bound = port == 0 ? bind_to_any_port(host) : bind_to_port(host, port) ? port : 0;
    m_isBound = bound > 0;
    return m_isBound ? bound : 0;
}

void LoopbackServer::Start()
{
    ::listen(svr_sock_, kQueue);
    m_thread = std::thread([this] {
        listen_after_bind();
        m_ended = true;
    });
}

void LoopbackServer::End()
{
    if (!m_isBound)
        return;
    if (!m_thread.joinable())
        Start(); // only a server that has run gives its port back
    m_ending = true;
    while (!is_running() && !m_ended) // a stop before that would be lost
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    stop();
    m_thread.join();
    m_isBound = false;
}

bool LoopbackServer::process_and_close_socket(socket_t socket)
{
    TimedStream stream(socket, m_ending);
    bool done = false, isClosed = false;
    for (std::size_t left = keep_alive_max_count_; left > 0 && !isClosed; --left) {
        if (!stream.Await(std::chrono::seconds(keep_alive_timeout_sec_)))
            break;
        done = process_request(stream, left == 1, isClosed, nullptr);
        if (!done)
            break;
    }
    Detail::Close(socket);
    return done;
}

} // namespace HmrcApi
