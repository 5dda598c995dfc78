#include "Fixture.h"

namespace Sandbox
{

class FaultsTest : public SandboxTest
{
protected:
    void SetUp() override
    {
        m_token = AccessToken();
        Send("POST", kPayeSupport);
        m_whole = Get(kPaye, m_token).body;
    }

    void Set(const std::string& fault) { ASSERT_EQ(Send("POST", "/sandbox/fault", fault).status, 200) << fault; }

    std::string m_token, m_whole;
};

TEST_F(FaultsTest, FaultsOfAPathPlayInOrderAndCountDown)
{
    Set(R"({"path":"/individual-paye","fault":"SERVER_ERROR","times":2,"retryAfter":1,"delayMs":5})");
    Set(R"({"path":"/individual-paye","fault":"HTML","status":503})");
    Set(R"({"path":"/individual-pay","fault":"EMPTY"})"); // whole segments only
    EXPECT_EQ(Get("/hello/user", m_token).status, 200) << "another path";
    for (int i = 0; i < 2; ++i) {
        const Answer answer = Get(kPaye, m_token);
        EXPECT_EQ(answer.code, "SERVER_ERROR");
        EXPECT_EQ(Header(answer, "Retry-After"), "1");
        EXPECT_EQ(answer.delay.count(), 5);
    }
    EXPECT_EQ(Get(kPaye, m_token).contentType, "text/html");
    EXPECT_EQ(Get(kPaye, m_token).status, 200);
}

TEST_F(FaultsTest, FaultWithoutCountFollowsThePlatformsChecksAndHoldsUntilCleared)
{
    Set(R"({"path":"/individual-paye","fault":"GATEWAY_TIMEOUT","times":0})");
    for (int i = 0; i < 5; ++i)
        EXPECT_EQ(Get(kPaye, m_token).status, 504);
    EXPECT_EQ(Get(kPaye, "unknown").code, "INVALID_CREDENTIALS");
    EXPECT_EQ(Get("/individual-paye/nino/x/annual-summary/y", m_token).code, "GATEWAY_TIMEOUT");
    Send("DELETE", "/sandbox/fault");
    EXPECT_EQ(Get(kPaye, m_token).status, 200);
}

TEST_F(FaultsTest, RedirectedRequestIsAnswered)
{
    Set(R"({"path":"/individual-paye","fault":"REDIRECT","times":0})");
    EXPECT_EQ(Header(Get(kPaye, m_token), "Location"), std::string(kPaye) + "?redirected=1");
    const Answer followed =
        m_service.Handle({"GET", kPaye, kVersion1, "Bearer " + m_token, "", "", {{"redirected", "1"}}, true});
    EXPECT_EQ(followed.body, m_whole);
}

} // namespace Sandbox
