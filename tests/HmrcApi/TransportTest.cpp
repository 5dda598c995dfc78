#include "HmrcApi/transport/Transport.h"

#include <atomic>
#include <cstdlib>
#include <mutex>
#include <vector>

#include <gtest/gtest.h>

#include "Afx/Clock.h"
#include "HmrcApi/LocalServer.h"
#include "HmrcApi/transport/Pace.h"

using namespace HmrcApi;
using Outcome = HttpAnswer::Outcome;

namespace
{

/// A server with every kind of answer, and the Authorization header of each request that reached "/seen".
class Transport : public testing::Test
{
protected:
    Transport()
    {
        auto& handlers = m_server.Handlers();
        const auto answer = [](int status, const char* body, const char* type) {
            return [=](const httplib::Request&, httplib::Response& response) {
                response.status = status;
                response.set_content(body, type);
            };
        };
        handlers.Get("/json", answer(200, "{}", "Application/JSON; charset=utf-8"));
        handlers.Get("/busy", [](const httplib::Request&, httplib::Response& response) {
            response.status = 429;
            response.set_header("Retry-After", " 7 ");
        });
        handlers.Get("/slow", [](const httplib::Request&, httplib::Response& response) {
            std::this_thread::sleep_for(std::chrono::milliseconds(700));
            response.set_content("{}", "application/json");
        });
        handlers.Get("/short", [](const httplib::Request&, httplib::Response& response) {
            response.set_content_provider(1000, "application/json", [](size_t, size_t, httplib::DataSink& sink) {
                sink.write("{\"a\":", 5);
                return false; // closes the connection
            });
        });
        handlers.Get("/large", [](const httplib::Request& request, httplib::Response& response) {
            EXPECT_NE(request.get_header_value("Accept-Encoding").find("gzip"), std::string::npos);
            response.set_content(std::string(9u << 20, ' '), "application/json"); // some 9 kB compressed
        });
        handlers.Get("/exact", [](const httplib::Request&, httplib::Response& response) {
            response.set_content(std::string(1u << 20, ' '), "application/json");
        });
        handlers.Get("/port", [](const httplib::Request& request, httplib::Response& response) {
            response.set_content(std::to_string(request.remote_port), "text/plain");
        });
        handlers.Get("/loop", Redirect(m_server.Address("/loop")));
        handlers.Get("/same", Redirect("/seen"));
        handlers.Get("/other", Redirect(m_other.Address("/seen")));
        handlers.Get("/outside", Redirect("http://hmrc.example/seen"));
        handlers.Get("/file", Redirect("file:///etc/passwd"));
        handlers.Post("/form", [](const httplib::Request& request, httplib::Response& response) {
            response.set_content(request.get_header_value("Content-Type") + '|' + request.body, "text/plain");
        });
        handlers.Post("/moved", Redirect("/form"));
        for (Fakes::LocalServer* server : {&m_server, &m_other})
            server->Handlers().Get("/seen", [this](const httplib::Request& request, httplib::Response& response) {
                const std::lock_guard lock(m_mutex);
                m_seen.push_back(request.get_header_value("Authorization") + '|' + request.get_header_value("Accept") +
                                 '|' + request.get_header_value("Gov-Client-User-IDs"));
                response.set_content("{}", "application/json");
            });
        m_server.Start();
        m_other.Start();
    }

    static std::function<void(const httplib::Request&, httplib::Response&)> Redirect(std::string to)
    {
        return [to](const httplib::Request&, httplib::Response& response) { response.set_redirect(to, 307); };
    }

    HttpRequest To(const std::string& path) const
    {
        HttpRequest request;
        request.address = m_server.Address(path);
        request.headers = {{"Accept", "application/vnd.hmrc.1.0+json"},
                           {"Authorization", "Bearer t"},
                           {"Gov-Client-User-IDs", "os=anne"}};
        request.totalMilliseconds = 5000;
        return request;
    }
    HttpAnswer Get(const std::string& path) { return m_transport->Send(To(path)); }

    std::mutex m_mutex;
    std::vector<std::string> m_seen;
    Fakes::LocalServer m_other, m_server;
    std::unique_ptr<ITransport> m_transport = MakeHttpTransport();
};

} // namespace

TEST_F(Transport, AnswersWithStatusTypeAndBody)
{
    HttpAnswer answer = Get("/json");
    EXPECT_EQ(answer.outcome, Outcome::Answered);
    EXPECT_EQ(answer.status, 200);
    EXPECT_EQ(answer.contentType, "application/json");
    EXPECT_EQ(answer.body, "{}");
    answer = Get("/busy");
    EXPECT_EQ(answer.status, 429);
    EXPECT_EQ(answer.retryAfter, "7");
    EXPECT_EQ(Get("/json").retryAfter, "") << "nothing is left of the answer before";
}

TEST_F(Transport, TellsWhatWentWrong)
{
    EXPECT_EQ(Get("/short").outcome, Outcome::Incomplete);
    EXPECT_EQ(Get("/short").body, "") << "a part is no answer";
    EXPECT_EQ(Get("/large").outcome, Outcome::TooLarge);
    HttpRequest request = To("/slow");
    request.totalMilliseconds = 150;
    EXPECT_EQ(m_transport->Send(request).outcome, Outcome::TimedOut);
    request = To("/slow");
    request.cancelled = [] { return true; };
    EXPECT_EQ(m_transport->Send(request).outcome, Outcome::Cancelled);
    std::string nobody;
    {
        Fakes::LocalServer gone;
        gone.Start();
        nobody = gone.Address("/");
    }
    request = To("/json");
    request.address = nobody;
    const HttpAnswer answer = m_transport->Send(request);
    EXPECT_EQ(answer.outcome, Outcome::NoConnection);
    EXPECT_FALSE(answer.problem.empty());
    EXPECT_EQ(Get("/json").outcome, Outcome::Answered) << "the transport is good for the next request";
}

TEST_F(Transport, BoundsTheBodyAfterDecompression)
{
    HttpRequest request = To("/exact");
    request.bodyLimit = 1u << 20;
    EXPECT_EQ(m_transport->Send(request).outcome, Outcome::Answered);
    request.bodyLimit -= 1;
    EXPECT_EQ(m_transport->Send(request).outcome, Outcome::TooLarge);
}

TEST_F(Transport, KeepsWhatIsPersonalFromAnotherHost)
{
    EXPECT_EQ(Get("/same").status, 200);
    EXPECT_EQ(Get("/other").status, 200);
    ASSERT_EQ(m_seen.size(), 2u);
    EXPECT_EQ(m_seen[0], "Bearer t|application/vnd.hmrc.1.0+json|os=anne");
    EXPECT_EQ(m_seen[1], "|application/vnd.hmrc.1.0+json|");
}

TEST_F(Transport, FollowsOnlyThreeRedirectsAndNoneAway)
{
    EXPECT_EQ(Get("/loop").status, 307);
    EXPECT_EQ(Get("/outside").outcome, Outcome::NoConnection) << "plain HTTP stays on this computer";
    EXPECT_EQ(Get("/file").outcome, Outcome::NoConnection);
}

TEST_F(Transport, PostsAFormAndFollowsNoRedirectWithIt)
{
    HttpRequest request = To("/form");
    request.method = "POST";
    request.headers = {{"Content-Type", "application/x-www-form-urlencoded"}};
    request.body = "a=1&b=2";
    EXPECT_EQ(m_transport->Send(request).body, "application/x-www-form-urlencoded|a=1&b=2");
    request.address = m_server.Address("/moved");
    EXPECT_EQ(m_transport->Send(request).status, 307);
    EXPECT_EQ(Get("/json").status, 200) << "the next request is a GET again";
}

TEST_F(Transport, KeepsItsConnection)
{
    const std::string port = Get("/port").body;
    EXPECT_FALSE(port.empty());
    EXPECT_EQ(Get("/port").body, port);
}

TEST_F(Transport, ReachesThisComputerWithoutTheProxy)
{
    setenv("http_proxy", "http://127.0.0.1:1", 1);
    setenv("all_proxy", "http://127.0.0.1:1", 1);
    EXPECT_EQ(Get("/json").status, 200);
    unsetenv("http_proxy");
    unsetenv("all_proxy");
}

TEST(TransportSecurity, RefusesACertificateThatNobodySigned)
{
    const std::unique_ptr<EVP_PKEY, decltype(&EVP_PKEY_free)> key(EVP_EC_gen("P-256"), &EVP_PKEY_free);
    const std::unique_ptr<X509, decltype(&X509_free)> certificate(X509_new(), &X509_free);
    X509_gmtime_adj(X509_getm_notBefore(certificate.get()), -3600);
    X509_gmtime_adj(X509_getm_notAfter(certificate.get()), 3600);
    X509_set_pubkey(certificate.get(), key.get());
    X509_NAME* name = X509_get_subject_name(certificate.get());
    const auto host = reinterpret_cast<const unsigned char*>("localhost");
    X509_NAME_add_entry_by_txt(name, "CN", MBSTRING_ASC, host, -1, -1, 0);
    X509_set_issuer_name(certificate.get(), name);
    ASSERT_GT(X509_sign(certificate.get(), key.get(), EVP_sha256()), 0);

    httplib::SSLServer server(certificate.get(), key.get());
    std::atomic<int> requests = 0;
    server.Get("/", [&](const httplib::Request&, httplib::Response&) { ++requests; });
    const int port = server.bind_to_any_port("127.0.0.1");
    std::thread thread([&] { server.listen_after_bind(); });
    while (!server.is_running())
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    HttpRequest request;
    request.address = "https://localhost:" + std::to_string(port) + '/';
    const HttpAnswer answer = MakeHttpTransport()->Send(request);
    server.stop();
    thread.join();
    EXPECT_EQ(answer.outcome, Outcome::NoConnection);
    EXPECT_NE(answer.problem.find("certificate"), std::string::npos) << answer.problem;
    EXPECT_EQ(requests, 0);
}

TEST_F(Transport, DoesNotSendPlainHttpOutside)
{
    HttpRequest request;
    for (const char* address : {"http://api.service.hmrc.gov.uk/", "ftp://127.0.0.1/", "file:///etc/passwd", "", "x"}) {
        request.address = address;
        EXPECT_EQ(m_transport->Send(request).outcome, Outcome::NoConnection) << address;
    }
}

TEST(SetTimeouts, ShortensButNeverLifts)
{
    SetTimeouts({0, 70'000});
    EXPECT_EQ(HttpRequest().connectMilliseconds, 1u) << "0 would be no limit";
    EXPECT_EQ(HttpRequest().totalMilliseconds, 60'000u);
    SetTimeouts({});
    EXPECT_EQ(HttpRequest().connectMilliseconds, 10'000u);
}

TEST(IsLoopbackAddress, IsTrueOnlyForThisComputer)
{
    for (const char* address : {"http://127.0.0.1/", "HTTPS://127.255.0.9:8443/x", "http://localhost",
                                "http://LocalHost:1/?q", "http://[::1]:8080/x", "http://[::1]"})
        EXPECT_TRUE(IsLoopbackAddress(address)) << address;
    const char* const others[] = {"http://127.0.0.1.evil.example/",
                                  "http://localhost.evil.example/",
                                  "http://127.0.0.1@evil.example/",
                                  "http://evil.example#@127.0.0.1/",
                                  "http://evil.example\\@127.0.0.1/",
                                  "http://127.0.0.256/",
                                  "http://127.1/",
                                  "http://127.0.0.1.1/",
                                  "http://127.0.0.1:80:x/",
                                  "http://[::1/",
                                  "http://[::2]/",
                                  "http://128.0.0.1/",
                                  "ftp://127.0.0.1/",
                                  "127.0.0.1",
                                  ""};
    for (const char* address : others)
        EXPECT_FALSE(IsLoopbackAddress(address)) << address;
}

TEST(TakeTurn, LetsTwoRequestsASecondThrough)
{
    std::int64_t now = 5'000'000'000'000;
    Afx::Clock::Set([&] { return now; });
    Afx::Clock::SetSleep([&](unsigned milliseconds) { now += milliseconds; });
    const std::int64_t start = now;
    for (int i = 0; i < 5; ++i)
        EXPECT_TRUE(TakeTurn({}));
    EXPECT_EQ(now - start, 2000) << "the first at once";
    now -= 3'600'000; // the clock is set back an hour
    const std::int64_t later = now;
    EXPECT_TRUE(TakeTurn({}));
    EXPECT_EQ(now, later);
    EXPECT_FALSE(TakeTurn([] { return true; })) << "cancelled";
    Afx::Clock::Set({});
    Afx::Clock::SetSleep({});
}
