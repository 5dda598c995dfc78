#include "HmrcApi/transport/Transport.h"

#include <atomic>
#include <cstdlib>
#include <mutex>
#include <vector>

#include <openssl/pem.h>

#include "Afx/time/Clock.h"
#include "HmrcApi/answers/AnswerTable.h"
#include "HmrcApi/LocalServer.h"
#include "HmrcApi/transport/Pace.h"
#include "support/Test.h"

using namespace HmrcApi;
using Outcome = HttpAnswer::Outcome;

namespace
{

using httplib::Request, httplib::Response;

/// A server with every kind of answer, and the personal headers of each request that reached "/seen".
class Transport : public testing::Test
{
protected:
    Transport()
    {
        Serve("/json", [](auto&, auto& response) { response.set_content("{}", "Application/JSON; charset=utf-8"); });
        Serve("/busy", [](auto&, auto& response) {
            response.status = 429;
            response.set_header("Retry-After", " 7 ");
        });
        Serve("/slow", [](auto&, auto&) { std::this_thread::sleep_for(std::chrono::milliseconds(700)); });
        Serve("/large", [](auto& request, auto& response) {
            EXPECT_NE(request.get_header_value("Accept-Encoding").find("gzip"), std::string::npos);
            response.set_content(std::string(9u << 20, ' '), "application/json"); // some 9 kB compressed
        });
        Serve("/port", [](auto& request, auto& response) {
            response.set_content(std::to_string(request.remote_port), "text/plain");
        });
        const std::pair<const char*, std::string> redirects[] = {
            {"/loop", m_server.Address("/loop")}, {"/same", "/seen"},
            {"/other", m_other.Address("/seen")}, {"/refused", m_other.Address("/401")},
            {"/back", m_other.Address("/back")},  {"/outside", "http://hmrc.example/seen"},
            {"/file", "file:///etc/passwd"},      {"/moved", "/form"}};
        for (const auto& [from, to] : redirects)
            Serve(from, [to = to](auto&, auto& response) { response.set_redirect(to, 307); });
        m_server.Handlers().Post("/form", [](const Request& request, Response& response) {
            response.set_content(request.get_header_value("Content-Type") + '|' + request.body, "text/plain");
        });
        const auto seen = [this](const Request& request, Response&) {
            const std::lock_guard lock(m_mutex);
            m_seen.push_back(request.get_header_value("Authorization") + '|' + request.get_header_value("Accept") +
                             '|' + request.get_header_value("Gov-Client-User-IDs"));
        };
        m_other.Handlers().Get("/401", [](auto&, auto& response) { response.status = 401; });
        m_other.Handlers().Get(
            "/back", [this](auto&, auto& response) { response.set_redirect(m_server.Address("/seen"), 307); });
        m_other.Handlers().Get("/seen", seen);
        Serve("/seen", seen);
        m_server.Start();
        m_other.Start();
        for (const char* proxy : {"http_proxy", "all_proxy"}) // nobody listens there
            setenv(proxy, "http://127.0.0.1:1", 1);
    }
    ~Transport() override
    {
        for (const char* proxy : {"http_proxy", "all_proxy"})
            unsetenv(proxy);
    }

    void Serve(const char* path, std::function<void(const Request&, Response&)> answer)
    {
        m_server.Handlers().Get(path, answer);
        m_server.Handlers().Post(path, answer);
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
    Outcome OutcomeOf(const HttpRequest& request) { return m_transport->Send(request).outcome; }

    std::mutex m_mutex;
    std::vector<std::string> m_seen;
    Fakes::LocalServer m_other, m_server;
    const std::string m_port = std::to_string(m_server.Port());
    std::unique_ptr<ITransport> m_transport = MakeHttpTransport();
};

} // namespace

TEST_F(Transport, AnswersWithStatusTypeAndBodyOverOneConnection)
{
    HttpAnswer answer = Get("/json");
    EXPECT_EQ(answer.outcome, Outcome::Answered);
    EXPECT_EQ(answer.status, 200);
    EXPECT_EQ(answer.contentType, "application/json");
    EXPECT_EQ(answer.body, "{}");
    const std::string port = Get("/port").body;
    answer = Get("/busy");
    EXPECT_EQ(answer.status, 429);
    EXPECT_EQ(answer.retryAfter, "7");
    EXPECT_EQ(Get("/json").retryAfter, "") << "nothing is left of the answer before";
    EXPECT_EQ(Get("/port").body, port);
}

// What is dropped, late or not reached at all, the fetch from a sandbox shows.
TEST_F(Transport, CanBeCancelledAndBoundsTheBodyAfterDecompression)
{
    HttpRequest request = To("/slow");
    request.cancelled = [] { return true; };
    EXPECT_EQ(OutcomeOf(request), Outcome::Cancelled);
    request = To("/large");
    EXPECT_EQ(OutcomeOf(request), Outcome::TooLarge);
    request.bodyLimit = 9u << 20;
    EXPECT_EQ(OutcomeOf(request), Outcome::Answered);
    request.bodyLimit -= 1;
    EXPECT_EQ(OutcomeOf(request), Outcome::TooLarge);
    EXPECT_EQ(Get("/json").outcome, Outcome::Answered) << "the transport is good for the next request";
}

TEST_F(Transport, KeepsWhatIsPersonalFromAnotherHost)
{
    EXPECT_EQ(Get("/same").status, 200);
    EXPECT_EQ(Get("/other").status, 200);
    EXPECT_EQ(m_seen, (std::vector<std::string>{"Bearer t|application/vnd.hmrc.1.0+json|os=anne",
                                                "|application/vnd.hmrc.1.0+json|"}));
    EXPECT_TRUE(Get("/back").isElsewhere) << "another host chose what is asked";
    EXPECT_EQ(m_seen.back(), m_seen[1]);
}

TEST_F(Transport, FollowsOnlyThreeRedirectsAndNoneAway)
{
    EXPECT_EQ(Get("/loop").status, 307);
    for (const char* away : {"/outside", "/file"}) { // plain HTTP stays on this computer
        EXPECT_EQ(Get(away).status, 307) << away;
        EXPECT_TRUE(Get(away).isElsewhere) << away;
    }
    EXPECT_EQ(RuleFor(Get("/refused"), "INVALID_CREDENTIALS").entry, "REDIRECTED") << "not HMRC's word";
    HttpRequest request;
    for (const char* address : {"http://api.service.hmrc.gov.uk/", "ftp://127.0.0.1/", "file:///etc/passwd", "", "x"}) {
        request.address = address;
        EXPECT_EQ(OutcomeOf(request), Outcome::NoConnection) << address;
    }
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

// "hmrc.localhost" is this computer to the HTTP library, and another host to everybody else.
TEST_F(Transport, GoesThroughTheProxyToOtherHostsAloneAndTellsItNothing)
{
    Fakes::LocalServer proxy;
    std::vector<std::string> asked;
    proxy.Handlers().set_pre_routing_handler([&](const Request& request, Response& response) {
        asked.push_back(request.method + ' ' + request.target);
        for (const char* name : {"Authorization", "Accept", "Gov-Client-User-IDs"})
            EXPECT_FALSE(request.has_header(name)) << name;
        response.status = 403;
        return httplib::Server::HandlerResponse::Handled;
    });
    proxy.Start();
    const std::string dead = "http://127.0.0.1:1", there = proxy.Address(""), host = "hmrc.localhost:" + m_port;
    const ::Test::Row<std::string, std::string, bool> rows[] = {
        {"", there, true, "of the environment"},
        {there, dead, true, "the setting goes before"},
        {"None", there, false, "without any"},
        {dead, there, false, "nobody is asked in its place"},
    };
    for (const auto& [setting, environment, isAsked, why] : rows) {
        setenv("https_proxy", environment.c_str(), 1);
        asked.clear();
        HttpRequest request = To("/seen");
        request.address = "https://" + host + "/seen";
        const HttpSettings settings{{}, setting};
        EXPECT_EQ(MakeHttpTransport(settings)->Send(request).outcome, Outcome::NoConnection) << why;
        EXPECT_EQ(asked, isAsked ? std::vector{"CONNECT " + host} : std::vector<std::string>()) << why;
        EXPECT_EQ(MakeHttpTransport(settings)->Send(To("/json")).status, 200) << "loopback, " << why;
    }
    unsetenv("https_proxy");
    EXPECT_EQ(ProxyInUse({{}, "http://anna:p@ss@proxy:3128/"}), "http://proxy:3128/");
}

namespace
{

/// A key and a certificate of `name`, by the authority; without one by itself.
struct Identity
{
    explicit Identity(const char* name, const Identity* authority = nullptr)
    {
        const Identity& issuer = authority ? *authority : *this;
        X509_gmtime_adj(X509_getm_notBefore(certificate.get()), -3600);
        X509_gmtime_adj(X509_getm_notAfter(certificate.get()), 3600);
        X509_set_pubkey(certificate.get(), key.get());
        X509_NAME_add_entry_by_txt(X509_get_subject_name(certificate.get()), "CN", MBSTRING_ASC,
                                   reinterpret_cast<const unsigned char*>(name), -1, -1, 0);
        X509_set_issuer_name(certificate.get(), X509_get_subject_name(issuer.certificate.get()));
        EXPECT_GT(X509_sign(certificate.get(), issuer.key.get(), EVP_sha256()), 0);
    }

    std::unique_ptr<EVP_PKEY, decltype(&EVP_PKEY_free)> key{EVP_EC_gen("P-256"), &EVP_PKEY_free};
    std::unique_ptr<X509, decltype(&X509_free)> certificate{X509_new(), &X509_free};
};

} // namespace

TEST(TransportSecurity, TakesACertificateOfThatHostByAnAuthorityItTrusts)
{
    const Identity authority("An authority of the test's own"), stranger("Another");
    const std::string trusted = ::Test::TempDir() + "/authorities.pem";
    const std::unique_ptr<BIO, decltype(&BIO_free)> file(BIO_new_file(trusted.c_str(), "w"), &BIO_free);
    ASSERT_TRUE(PEM_write_bio_X509(file.get(), authority.certificate.get()) == 1 && BIO_flush(file.get()) == 1);
    const std::tuple<const char*, const Identity*, std::string, Outcome, const char*> rows[] = {
        {"localhost", &authority, trusted, Outcome::Answered, "as it should be"},
        {"hmrc.example", &authority, trusted, Outcome::NoConnection, "of another host"},
        {"localhost", &stranger, trusted, Outcome::NoConnection, "by nobody known"},
        {"localhost", nullptr, trusted, Outcome::NoConnection, "by itself"},
        {"localhost", &authority, "", Outcome::NoConnection, "the system does not know the test's authority"},
    };
    for (const auto& [name, issuer, authorities, outcome, why] : rows) {
        const Identity own(name, issuer);
        Fakes::LocalServer server(0, "127.0.0.1",
                                  std::make_unique<httplib::SSLServer>(own.certificate.get(), own.key.get()));
        std::atomic<int> requests = 0;
        server.Handlers().Get("/", [&](const Request&, Response&) { ++requests; });
        server.Start();
        HttpRequest request;
        request.address = "https://localhost:" + std::to_string(server.Port()) + '/';
        const HttpAnswer answer = MakeHttpTransport({authorities, {}})->Send(request);
        EXPECT_EQ(answer.outcome, outcome) << why;
        EXPECT_EQ(answer.problem.find("certificate") == std::string::npos, outcome == Outcome::Answered) << why;
        EXPECT_EQ(requests, outcome == Outcome::Answered ? 1 : 0) << why;
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
    for (const char* address :
         {"http://127.0.0.1.evil.example/", "http://localhost.evil.example/", "http://127.0.0.1@evil.example/",
          "http://evil.example#@127.0.0.1/", "http://evil.example\\@127.0.0.1/", "http://127.0.0.256/", "http://127.1/",
          "http://127.0.0.1.1/", "http://127.0.0.1:80:x/", "http://[::1/", "http://[::2]/", "http://128.0.0.1/",
          "ftp://127.0.0.1/", "127.0.0.1", ""})
        EXPECT_FALSE(IsLoopbackAddress(address)) << address;
    for (const char* port : {"0", "65536", "99999999999", "x", "+1", ""})
        EXPECT_FALSE(IsLoopbackAddress(std::string("http://127.0.0.1:") + port)) << port;
}

TEST(SharedTurns, AreTwoInEachSecondThatIsTaken)
{
    std::int64_t now = 5'000'000'000'000, free = now; // nobody has the time from then on
    Afx::Clock::Set([&] { return now; });
    Afx::Clock::SetSleep([&](unsigned milliseconds) { now += milliseconds; });
    std::string turns;
    const auto take = [&] {
        EXPECT_TRUE(TakeTurn({}, 60'000));
        turns += std::to_string(now - 5'000'000'000'000) + ' ';
    };
    {
        const SharedTurns shared([&] {
            const std::int64_t turn = std::max(now, free);
            free = turn + 1000;
            return turn - now;
        });
        take();
        take();
        free += 2000; // another program's
        take();
        EXPECT_FALSE(TakeTurn({}, 499)) << "longer than the request may take";
        now += 700; // what is left of the second is less than a turn
        take();
        now += 300;
        take();
        now -= 3'600'000; // the clock is set back, and the source's with it
        free = now;
        take();
    }
    take();
    EXPECT_EQ(turns, "0 500 3000 3700 4000 -3596000 -3595500 ");
}

TEST(TakeTurn, LetsTwoRequestsASecondThrough)
{
    std::int64_t now = 5'000'000'000'000;
    Afx::Clock::Set([&] { return now; });
    Afx::Clock::SetSleep([&](unsigned milliseconds) { now += milliseconds; });
    for (int i = 0; i < 5; ++i)
        EXPECT_TRUE(TakeTurn({}, 60'000));
    EXPECT_EQ(now, 5'000'000'002'000) << "the first at once";
    now = 4'999'996'400'000; // the clock is set back an hour
    EXPECT_TRUE(TakeTurn({}, 60'000));
    EXPECT_EQ(now, 4'999'996'400'000);
    EXPECT_FALSE(TakeTurn({}, 499)) << "longer than the request may take";
    EXPECT_EQ(now, 4'999'996'400'000);
    EXPECT_TRUE(TakeTurn({}, 500)) << "the turn was not taken";
    EXPECT_FALSE(TakeTurn([] { return true; }, 60'000)) << "cancelled";
}
