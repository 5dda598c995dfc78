#pragma once

// Threads that wait for HMRC, and the desk at which the thread that made them does their work with the practice.

#include <array>
#include <condition_variable>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <thread>

#include "HmrcApi/transport/Channel.h"
#include "MorvUt/hmrc/fetch/Desk.h"

namespace HmrcApi
{

/// Each thread has a way out of its own, and so one connection and one request in flight. All but Do and Leave is for
/// the thread that made the object.
class Workers : public Desk
{
public:
    struct Worker
    {
        std::thread thread;
        std::shared_ptr<Channel> channel;
        std::function<void()> ask; // given, and not taken up yet
        std::function<void()> done;
        bool isAtWork = false; // until the desk has done what follows
    };

    /// `cancelled` ends requests and waits once it has been true for `patience` milliseconds; may be empty. `isLive`:
    /// HMRC is asked, so that what describes this computer is collected now.
    Workers(std::function<bool()> cancelled, unsigned patience, bool isLive);
    /// Waits for who is at work, doing what is left at the desk.
    ~Workers() override;
    Workers(const Workers&) = delete;
    Workers& operator=(const Workers&) = delete;

    /// Null when all are at work.
    Worker* FindIdle();
    const std::shared_ptr<Channel>& ChannelOf(const Worker& worker) const noexcept;
    /// `ask` happens on the worker's thread, which begins with the first, and throws nothing; then `done` at the desk.
    /// Throws std::system_error when the system has no thread to give.
    void Give(Worker& worker, std::function<void()> ask, std::function<void()> done);

    void Do(const std::function<void()>& work) override;
    void Leave(std::function<void()> work) override;
    void DoWhatIsLeft();
    void Wait(); // until something is left at the desk

private:
    static constexpr std::size_t kMost = 4; // requests in flight

    void Work(Worker& worker);

    std::mutex m_mutex; // of what follows, and of the workers' functions
    std::condition_variable m_atDesk, m_atWork;
    std::deque<std::function<void()>> m_left;
    bool m_isOver = false;
    const std::thread::id m_own = std::this_thread::get_id();
    std::array<Worker, kMost> m_workers;
};

} // namespace HmrcApi
