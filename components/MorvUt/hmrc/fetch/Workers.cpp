#include "MorvUt/hmrc/fetch/Workers.h"

#include <chrono>
#include <exception>
#include <optional>
#include <utility>

#include "MorvUt/users/UserData.h"

namespace HmrcApi
{
namespace
{

using SteadyClock = std::chrono::steady_clock;

/// True once the user has cancelled for long enough. One for all threads.
class Patience
{
public:
    Patience(std::function<bool()> cancelled, unsigned milliseconds)
        : m_cancelled(std::move(cancelled)), m_length(milliseconds)
    {}
    bool IsOver()
    {
        const std::lock_guard lock(m_mutex);
        if (!m_since && m_cancelled && m_cancelled())
            m_since = SteadyClock::now();
        return m_since && SteadyClock::now() - *m_since >= m_length;
    }

private:
    std::mutex m_mutex;
    const std::function<bool()> m_cancelled;
    const std::chrono::milliseconds m_length;
    std::optional<SteadyClock::time_point> m_since;
};

} // namespace

Workers::Workers(std::function<bool()> cancelled, unsigned patience, bool isLive)
{
    const auto user = std::make_shared<Patience>(std::move(cancelled), patience);
    for (Worker& worker : m_workers) {
        worker.channel = std::make_shared<Channel>();
        worker.channel->SetUnattended([user] { return user->IsOver(); });
        worker.channel->SetUser(CUserData::m_strUser.Str());
        if (isLive)
            worker.channel->GetFraudHeaders();
    }
}

Workers::~Workers()
{
    const auto isIdle = [this] {
        const std::lock_guard lock(m_mutex);
        for (const Worker& worker : m_workers)
            if (worker.isAtWork)
                return false;
        return true;
    };
    for (DoWhatIsLeft(); !isIdle(); DoWhatIsLeft())
        Wait();
    {
        const std::lock_guard lock(m_mutex);
        m_isOver = true;
    }
    m_atWork.notify_all();
    for (Worker& worker : m_workers)
        if (worker.thread.joinable())
            worker.thread.join();
}

Workers::Worker* Workers::FindIdle()
{
    const std::lock_guard lock(m_mutex);
    for (Worker& worker : m_workers)
        if (!worker.isAtWork)
            return &worker;
    return nullptr;
}

const std::shared_ptr<Channel>& Workers::ChannelOf(const Worker& worker) const noexcept { return worker.channel; }

void Workers::Give(Worker& worker, std::function<void()> ask, std::function<void()> done)
{
    if (!worker.thread.joinable())
        worker.thread = std::thread([this, &worker] { Work(worker); });
    {
        const std::lock_guard lock(m_mutex);
        worker.isAtWork = true;
        worker.ask = std::move(ask);
        worker.done = std::move(done);
    }
    m_atWork.notify_all();
}

void Workers::Work(Worker& worker)
{
    for (std::unique_lock lock(m_mutex);;) {
        m_atWork.wait(lock, [&] { return worker.ask || m_isOver; });
        if (!worker.ask)
            return;
        const std::function<void()> ask = std::exchange(worker.ask, nullptr);
        lock.unlock();
        ask();
        Leave([this, &worker] {
            worker.done();
            const std::lock_guard idle(m_mutex);
            worker.isAtWork = false;
        });
        lock.lock();
    }
}

void Workers::Do(const std::function<void()>& work)
{
    if (std::this_thread::get_id() == m_own)
        return work();
    std::exception_ptr problem;
    bool isDone = false;
    Leave([&] {
        try {
            work();
        } catch (...) {
            problem = std::current_exception();
        }
        const std::lock_guard lock(m_mutex);
        isDone = true;
        m_atWork.notify_all();
    });
    std::unique_lock lock(m_mutex);
    m_atWork.wait(lock, [&] { return isDone; });
    if (problem)
        std::rethrow_exception(problem);
}

void Workers::Leave(std::function<void()> work)
{
    {
        const std::lock_guard lock(m_mutex);
        m_left.push_back(std::move(work));
    }
    m_atDesk.notify_one();
}

void Workers::DoWhatIsLeft()
{
    for (std::unique_lock lock(m_mutex); !m_left.empty(); lock.lock()) {
        const std::function<void()> work = std::move(m_left.front());
        m_left.pop_front();
        lock.unlock();
        work();
    }
}

void Workers::Wait()
{
    std::unique_lock lock(m_mutex);
    m_atDesk.wait(lock, [this] { return !m_left.empty(); });
}

} // namespace HmrcApi
