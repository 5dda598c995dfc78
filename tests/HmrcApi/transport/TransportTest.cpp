#include "HmrcApi/transport/Transport.h"

#include <atomic>
#include <cstdlib>
#include <map>
#include <mutex>
#include <set>
#include <sstream>
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

/// Two hosts on this computer, which answer as they are told and keep what they saw.
class Transport : public testing::Test
{
protected:
    struct Served
    {
        int status = 404;
        std::string header, value, body;
        unsigned delay = 0; // milliseconds
    };

    Transport()
    {
        for (const auto& [name, server] : {std::pair("SELF", &m_self), {"OTHER", &m_other}}) {
            const auto answer = [this, host = std::string(name)](const Request& request, Response& response) {
                Answer(host, request, response);
            };
            server->Handlers().Get("/.*", answer).Post("/.*", answer);
            server->Start();
        }
        for (const char* proxy : {"http_proxy", "all_proxy"}) // nobody listens there
            setenv(proxy, "http://127.0.0.1:1", 1);
    }
    ~Transport() override
    {
        for (const char* proxy : {"http_proxy", "all_proxy"})
            unsetenv(proxy);
    }

    /// "serve HOST/PATH STATUS [HEADER: VALUE]", "get ADDRESS", "post ADDRESS BODY", "connections" that SELF has seen;
    /// SELF and OTHER stand for the hosts' addresses.
    std::string Run(const std::string& command)
    {
        std::istringstream words(command);
        std::string verb, address, rest;
        std::getline(words >> verb >> address >> std::ws, rest);
        rest = Named(rest);
        if (verb == "serve") {
            const std::size_t header = rest.find(' ') + 1, colon = rest.find(": ");
            m_served[address] = {std::stoi(rest), colon == rest.npos ? "" : rest.substr(header, colon - header),
                                 colon == rest.npos ? "" : rest.substr(colon + 2), "{}"};
            return {};
        }
        if (verb == "connections")
            return std::to_string(m_ports.size()) + '\n';
        HttpRequest request = To(Named(address));
        if (verb == "post") {
            request.method = "POST";
            request.body = rest;
            request.headers.emplace_back("Content-Type", "application/x-www-form-urlencoded");
        }
        return Told(m_transport->Send(request));
    }
    HttpRequest To(const std::string& address) const
    {
        HttpRequest request;
        request.address = address;
        request.headers = {{"Accept", "application/vnd.hmrc.1.0+json"},
                           {"Authorization", "Bearer t"},
                           {"Gov-Client-User-IDs", "os=anne"}};
        request.totalMilliseconds = 5000;
        return request;
    }
    Outcome OutcomeOf(const HttpRequest& request) { return m_transport->Send(request).outcome; }

    std::mutex m_mutex;
    std::map<std::string, Served> m_served;
    std::string m_seen;
    std::set<int> m_ports;
    Fakes::LocalServer m_other, m_self;
    std::unique_ptr<ITransport> m_transport = MakeHttpTransport();

private:
    void Answer(const std::string& host, const Request& request, Response& response)
    {
        const std::lock_guard lock(m_mutex);
        m_seen += "  " + host + ' ' + request.method + ' ' + request.path + ' ' + request.body;
        for (const char* header : {"Authorization", "Accept", "Gov-Client-User-IDs", "Content-Type", "Accept-Encoding"})
            m_seen += '|' + request.get_header_value(header);
        m_seen += '\n';
        if (host == "SELF")
            m_ports.insert(request.remote_port);
        const Served& served = m_served[host + request.path];
        std::this_thread::sleep_for(std::chrono::milliseconds(served.delay));
        response.status = served.status;
        const bool isType = served.header == "Content-Type";
        response.set_content(served.body, isType ? served.value : "application/json");
        if (!isType && !served.header.empty())
            response.set_header(served.header, served.value);
    }

    std::string Told(const HttpAnswer& answer)
    {
        constexpr const char* kOutcomes[] = {"answered", "no connection", "incomplete", "timed out"};
        const std::lock_guard lock(m_mutex);
        std::string told = kOutcomes[static_cast<int>(answer.outcome)] + (' ' + std::to_string(answer.status));
        if (!answer.contentType.empty())
            told += ' ' + answer.contentType + ' ' + answer.body;
        if (!answer.retryAfter.empty())
            told += ", retry after " + answer.retryAfter;
        if (answer.isElsewhere)
            told += ", elsewhere: " + std::string(RuleFor(answer, "INVALID_CREDENTIALS").entry);
        return told + '\n' + std::exchange(m_seen, {});
    }
    std::string Named(const std::string& text) const
    {
        return ::Test::ReplacedAll(::Test::ReplacedAll(text, "SELF", m_self.Address("")), "OTHER", m_other.Address(""));
    }
};

} // namespace

TEST_F(Transport, SendsNothingPersonalToAnotherHost)
{
    ::Test::ExpectTranscript("HmrcApi/transport/redirects.txt",
                             [this](const std::string& command) { return Run(command); });
}

// What is dropped, late or not reached at all, the fetch from a sandbox shows.
TEST_F(Transport, CanBeCancelledAndBoundsTheBodyAfterDecompression)
{
    m_served["SELF/slow"] = {200, {}, {}, {}, 700};
    m_served["SELF/large"] = {200, {}, {}, std::string(9u << 20, ' ')}; // some 9 kB compressed
    HttpRequest request = To(m_self.Address("/slow"));
    request.cancelled = [] { return true; };
    EXPECT_EQ(OutcomeOf(request), Outcome::Cancelled);
    request = To(m_self.Address("/large"));
    EXPECT_EQ(OutcomeOf(request), Outcome::TooLarge);
    request.bodyLimit = 9u << 20;
    EXPECT_EQ(OutcomeOf(request), Outcome::Answered);
    request.bodyLimit -= 1;
    EXPECT_EQ(OutcomeOf(request), Outcome::TooLarge);
    EXPECT_EQ(OutcomeOf(To(m_self.Address("/json"))), Outcome::Answered)
        << "the transport is good for the next request";
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
    const std::string dead = "http://127.0.0.1:1", there = proxy.Address(""),
                      host = "hmrc.localhost:" + std::to_string(m_self.Port());
    const ::Test::Row<std::string, std::string, bool> rows[] = {
        {"", there, true, "of the environment"},
        {there, dead, true, "the setting goes before"},
        {"None", there, false, "without any"},
        {dead, there, false, "nobody is asked in its place"},
    };
    for (const auto& [setting, environment, isAsked, why] : rows) {
        setenv("https_proxy", environment.c_str(), 1);
        asked.clear();
        const HttpSettings settings{{}, setting};
        EXPECT_EQ(MakeHttpTransport(settings)->Send(To("https://" + host + "/seen")).outcome, Outcome::NoConnection)
            << why;
        EXPECT_EQ(asked, isAsked ? std::vector{"CONNECT " + host} : std::vector<std::string>()) << why;
        EXPECT_EQ(MakeHttpTransport(settings)->Send(To(m_self.Address("/"))).status, 404) << "loopback, " << why;
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
    for (const auto& [address, isLoopback, why] : ::Test::Table<const char*, bool>("HmrcApi/transport/Addresses.tsv"))
        EXPECT_EQ(IsLoopbackAddress(address), isLoopback) << address;
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
