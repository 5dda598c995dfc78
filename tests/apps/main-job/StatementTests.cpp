// A fetch that asks the server sends few statements too, its log lines and the reading of the token included.

#include "apps/main-job/FetchTest.h"
#include "MorvUt/hmrc/StatementCount.h"

namespace
{

class LiveStatements : public FetchTest
{
protected:
    LiveStatements() : FetchTest("EVERYTHING") {}
};

} // namespace

TEST_F(LiveStatements, AreFew)
{
    ::Test::AddClients(1000);
    m_sandbox.Send("DELETE", "/sandbox/requests");
    CountStatements(m_client, kGateway, HmrcApi::IEndpointOverride::Live);
    const std::string requests = m_sandbox.Send("GET", "/sandbox/requests", "");
    EXPECT_NE(requests.find("/individual-paye/"), std::string::npos) << requests;
    EXPECT_EQ(requests.find("/oauth/token"), std::string::npos) << "the token was good: " << requests;

    m_sandbox.Send("POST", "/sandbox/token", R"({"expire": true})");
    const auto logLines = [] {
        return Quarry::GetConnection().Queryf("SELECT COUNT(*) FROM MTDLog").rows[0][0].integer;
    };
    const auto linesBefore = logLines();
    SentStatements sent;
    FetchStep(m_client, kGateway, HmrcApi::IEndpointOverride::Live);
    sent.Stop();
    EXPECT_EQ(sent.GetDurable(), logLines() - linesBefore + 1 + 4)
        << "the lock, the rehearsal, the tokens, the lock: " << sent.GetText();
}
