#include "HmrcApi/transport/Channel.h"

#include <set>

#include "HmrcApi/Fakes.h"
#include "HmrcApi/LocalServer.h"

using namespace HmrcApi;

namespace
{

/// HMRC on this computer, which counts requests and the connections they came by.
class Connections : public Fakes::Plumbing
{
protected:
    Connections() { Restart(); }

    /// Closes every connection; the next server has the same port.
    void Restart()
    {
        const int port = m_server ? m_server->Port() : 0;
        m_server.reset();
        m_server = std::make_unique<Fakes::LocalServer>(port);
        const auto answer = [this](const httplib::Request& request, httplib::Response& response) {
            m_ports.insert(request.remote_port);
            response.set_content(R"({"employments":[],"class1":{},"refresh_token":"r","access_token":"a)" +
                                     std::to_string(++m_requests) + "\"}",
                                 "application/json");
        };
        m_server->Handlers().Get("/.*", answer).Post("/.*", answer);
        m_server->Start();
        client->base = m_server->Address("/");
        SetService(m_server->Address(""));
    }
    std::unique_ptr<CAuthorisation> Authorised()
    {
        auto one = MakeAuthorisation();
        one->SetChannel(m_channel);
        EXPECT_TRUE(one->LoadTokens());
        return one;
    }

    std::shared_ptr<Channel> m_channel = std::make_shared<Channel>();
    std::unique_ptr<Fakes::LocalServer> m_server;
    std::set<int> m_ports; // one a connection
    int m_requests = 0;
};

} // namespace

TEST_F(Connections, AreOneForAllRequestsAndAuthorisationsOfAChannel)
{
    for (int i = 0; i < 5; ++i) {
        const auto one = Authorised();
        EXPECT_TRUE(one->RefreshTokens(nullptr));
        CPaye(*one).GetPaye("AA000001A", 2018, nullptr);
        CNationalInsurance(*one).GetNationalInsurance("2234567890", 2018, nullptr);
        CPaye(*one).GetPaye("AA000002A", 2018, nullptr);
    }
    EXPECT_EQ(m_requests, 20);
    EXPECT_EQ(m_ports.size(), 1u);
}

TEST_F(Connections, AreOpenedAgainWhenTheServerHasClosedThem)
{
    const auto one = Authorised();
    CPaye paye(*one);
    for (int i = 1; i <= 2; ++i) {
        paye.GetPaye("AA000001A", 2018, nullptr);
        Restart();
        EXPECT_TRUE(one->RefreshTokens(nullptr)) << one->GetLastError().text;
        Restart();
    }
    EXPECT_NO_THROW(paye.GetPaye("AA000001A", 2018, nullptr));
    EXPECT_EQ(m_requests, 5) << "none was sent twice";
    EXPECT_EQ(slept, 0u) << "none was tried again";
}
