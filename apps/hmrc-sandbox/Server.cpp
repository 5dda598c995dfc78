#include "Server.h"

#include <cerrno>

#include "Afx/text/TextFold.h"
#include "Errors.h"
#include "HmrcApi/redirect/server/LoopbackServer.h"

namespace Sandbox
{

namespace
{

constexpr char kIpv4[] = "127.0.0.1";
constexpr char kIpv6[] = "::1";
constexpr int kTries = 20;                          // for a port that is free on both addresses
constexpr std::size_t kMostBody = 16 * 1024 * 1024; // of a request; answers set by hand may be too large on purpose
constexpr std::size_t kLongestPath = 2000;          // the route pattern below recurses once a character
constexpr char kAnyPath[] = R"([\s\S]*)";

Call ToCall(const httplib::Request& request)
{
    Call call;
    call.method = request.method;
    call.path = request.path;
    call.accept = request.get_header_value("Accept");
    call.authorization = request.get_header_value("Authorization");
    call.contentType = request.get_header_value("Content-Type");
    for (const auto& [name, value] : request.headers)
        if (std::string lower = Afx::FoldLower(name); lower.starts_with("gov-"))
            call.fraudHeaders.emplace(std::move(lower), value);
    call.body = request.body;
    call.parameters = {request.params.begin(), request.params.end()};
    call.hasQuery = request.target.find('?') != std::string::npos;
    return call;
}

/// The library takes no more than 8 KiB of a body that is called a form, as curl -d calls every body; read piece by
/// piece, a body is bounded by the payload's length alone.
httplib::Server::HandlerWithContentReader ReadingTheBody(httplib::Server::Handler handler)
{
    return [handler = std::move(handler)](const httplib::Request& request, httplib::Response& response,
                                          const httplib::ContentReader& read) {
        httplib::Request whole = request;
        const auto append = [&whole](const char* data, std::size_t size) {
            whole.body.append(data, size);
            return true;
        };
        if (read(append))
            handler(whole, response);
    };
}

/// Announces the whole body, sends half of it and gives up, whereupon the server closes the connection.
void SendHalf(const Answer& answer, httplib::Response& response)
{
    const std::string body = answer.body.size() < 2 ? std::string("{}") : answer.body;
    response.set_content_provider(body.size(), answer.contentType,
                                  [body](std::size_t offset, std::size_t, httplib::DataSink& sink) {
                                      return offset == 0 && sink.write(body.data(), body.size() / 2);
                                  });
}

void Send(const Answer& answer, httplib::Response& response)
{
    response.status = answer.status;
    for (const auto& [name, value] : answer.headers)
        response.set_header(name.c_str(), value);
    if (answer.dropped)
        SendHalf(answer, response);
    else
        response.set_content(answer.body, answer.contentType);
}

} // namespace

/// One address.
class Server::Listener : public HmrcApi::LoopbackServer
{
public:
    explicit Listener(Handler handler)
    {
        set_tcp_nodelay(true);
        set_keep_alive_max_count(10000);
        set_keep_alive_timeout(1);
        set_payload_max_length(kMostBody);
        set_pre_routing_handler([](const httplib::Request& request, httplib::Response& response) {
            if (request.path.size() <= kLongestPath)
                return HandlerResponse::Unhandled;
            Send(ErrorAnswer("MATCHING_RESOURCE_NOT_FOUND"), response);
            return HandlerResponse::Handled;
        });
        Get(kAnyPath, handler); // and HEAD
        Post(kAnyPath, handler);
        Put(kAnyPath, ReadingTheBody(handler));
        Patch(kAnyPath, handler);
        Delete(kAnyPath, handler);
        Options(kAnyPath, handler);
    }

    ~Listener() override { End(); }
};

Server::Server(Sandbox::Options options) : m_delay(options.delay), m_service(std::move(options)) {}

Server::~Server() { Stop(); }

void Server::Start(int port)
{
    Stop();
    {
        const std::lock_guard lock(m_stopMutex);
        m_stopping = false;
    }
    const bool withIpv6 = HmrcApi::LoopbackServer().Bind(kIpv6, 0) != 0;
    for (int tries = port == 0 ? kTries : 1; tries > 0; --tries)
        if (TryStart(port, withIpv6))
            return;
    if (port == 0)
        throw PortError("no free port on localhost; end a program that holds many connections and try again");
    const std::string where = "port " + std::to_string(port) + " on localhost ";
    throw PortError(where + (errno == EACCES ? "is not open to this user; choose one above 1023 with --port"
                                             : "is in use; choose another with --port, or leave --port out"));
}

bool Server::TryStart(int port, bool withIpv6)
{
    const auto handler = [this](const httplib::Request& request, httplib::Response& response) {
        const Answer answer = m_service.Handle(ToCall(request));
        Wait(answer.delay + (request.path.starts_with("/sandbox/") ? std::chrono::milliseconds(0) : m_delay));
        Send(answer, response);
    };
    auto ipv4 = std::make_unique<Listener>(handler);
    auto ipv6 = std::make_unique<Listener>(handler);
    const int bound = ipv4->Bind(kIpv4, port);
    if (bound == 0 || (withIpv6 && ipv6->Bind(kIpv6, bound) == 0)) {
        const int why = errno; // ending the listener may overwrite it
        ipv4.reset();
        errno = why;
        return false;
    }
    ipv4->Start();
    if (withIpv6)
        ipv6->Start();
    m_ipv4 = std::move(ipv4);
    m_ipv6 = std::move(ipv6);
    m_port = bound;
    return true;
}

void Server::Stop()
{
    {
        const std::lock_guard lock(m_stopMutex);
        m_stopping = true;
    }
    m_stopped.notify_all();
    m_ipv4.reset();
    m_ipv6.reset();
    m_port = 0;
}

void Server::Wait(std::chrono::milliseconds delay)
{
    if (delay.count() == 0)
        return;
    std::unique_lock lock(m_stopMutex);
    m_stopped.wait_for(lock, delay, [this] { return m_stopping; });
}

} // namespace Sandbox
