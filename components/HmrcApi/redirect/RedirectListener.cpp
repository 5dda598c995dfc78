#include "HmrcApi/redirect/RedirectListener.h"

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <optional>

#include "HmrcApi/http/HttpModule.h"
#include "HmrcApi/redirect/RedirectQuery.h"
#include "HmrcApi/redirect/server/LoopbackServer.h"

namespace HmrcApi
{
namespace
{

constexpr char kPath[] = "/callback";
constexpr std::chrono::milliseconds kSlice{100};

std::string Page(const char* title, const char* text)
{
    return std::string("<!DOCTYPE html><html lang=\"en\"><head><meta charset=\"utf-8\"><title>") + title +
           "</title></head><body style=\"font-family: sans-serif; max-width: 40em; margin: 3em auto\"><h1>" + title +
           "</h1><p>" + text + "</p></body></html>";
}

/// One server on one address.
class Listener : public LoopbackServer
{
public:
    explicit Listener(Handler answer)
    {
        Get(kPath, std::move(answer));
        set_keep_alive_max_count(1);
        set_keep_alive_timeout(1); // browsers open connections that they never use
        set_payload_max_length(4096);
    }
};

bool HasIpv6() { return LoopbackServer().Bind("::1", 0) != 0; }

class RedirectListener : public IRedirectListener
{
public:
    explicit RedirectListener(std::string state) : m_state(std::move(state)) {}
    ~RedirectListener() override = default;

    bool Open(unsigned short port, bool needsIpv6)
    {
        m_port = port;
        if (!Add("127.0.0.1") || (needsIpv6 && !Add("::1"))) {
            m_listeners.clear();
            return false;
        }
        for (const auto& listener : m_listeners)
            listener->Start();
        return true;
    }

    unsigned short Port() const noexcept override { return m_port; }

    RedirectAnswer Wait(unsigned milliseconds, const std::function<bool()>& cancelled) override
    {
        const auto end = std::chrono::steady_clock::now() + std::chrono::milliseconds(milliseconds);
        std::unique_lock lock(m_mutex);
        while (!m_answer) {
            const auto now = std::chrono::steady_clock::now();
            if (now >= end)
                return {RedirectAnswer::Kind::TimedOut, {}, {}};
            m_arrived.wait_until(lock, std::min(now + kSlice, end));
            lock.unlock(); // the user's answer may take its time
            const bool isCancelled = cancelled && cancelled();
            lock.lock();
            if (isCancelled && !m_answer)
                return {RedirectAnswer::Kind::Cancelled, {}, {}};
        }
        return *m_answer;
    }

private:
    bool Add(const char* host)
    {
        auto listener = std::make_unique<Listener>(
            [this](const httplib::Request& request, httplib::Response& response) { Answer(request, response); });
        if (listener->Bind(host, m_port) == 0)
            return false;
        m_listeners.push_back(std::move(listener));
        return true;
    }

    void Answer(const httplib::Request& request, httplib::Response& response)
    {
        response.set_header("Cache-Control", "no-store");
        response.set_header("Referrer-Policy", "no-referrer"); // the address holds the code
        const std::size_t mark = request.target.find('?');
        const std::string query = mark == std::string::npos ? std::string() : request.target.substr(mark + 1);
        const std::optional<RedirectAnswer> answer = ReadRedirect(query, m_state);
        if (!answer) {
            response.status = 400;
            response.set_content(Page("Not expected", "This answer does not belong to the sign-in under way."),
                                 "text/html");
            return;
        }
        if (answer->kind == RedirectAnswer::Kind::Denied)
            response.set_content(Page("No authority given", "You may close this page and return to the program."),
                                 "text/html");
        else
            response.set_content(
                Page("Authority given", "HMRC has told the program. You may close this page and return to it."),
                "text/html");
        const std::lock_guard lock(m_mutex);
        if (!m_answer)
            m_answer = answer;
        m_arrived.notify_all();
    }

    const std::string m_state;
    unsigned short m_port = 0;
    std::mutex m_mutex;
    std::condition_variable m_arrived;
    std::optional<RedirectAnswer> m_answer;
    std::vector<std::unique_ptr<Listener>> m_listeners; // last, so that the threads end first
};

} // namespace

std::unique_ptr<IRedirectListener> OpenLoopbackListener(const std::vector<unsigned short>& ports,
                                                        const std::string& state)
{
    // Where the computer has IPv6, "localhost" may mean ::1 to the browser: the port must be ours on both.
    const bool needsIpv6 = HasIpv6();
    for (const unsigned short port : ports) {
        auto listener = std::make_unique<RedirectListener>(state);
        if (listener->Open(port, needsIpv6))
            return listener;
    }
    return nullptr;
}

} // namespace HmrcApi
