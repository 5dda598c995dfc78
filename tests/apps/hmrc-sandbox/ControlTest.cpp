#include "Fixture.h"

namespace Sandbox
{

using ControlTest = SandboxTest;

TEST_F(ControlTest, PutAnswerIsServedByteForByte)
{
    const std::string token = AccessToken(), target = std::string("/sandbox/answer") + kPaye;
    Send("POST", kPayeSupport);
    const std::string primed = Get(kPaye, token).body;
    const std::string odd = "{ \"a\": 1.50,\n\xff\0 }";
    EXPECT_EQ(Send("PUT", target, odd).status, 200);
    EXPECT_EQ(Get(kPaye, token).body, odd);
    Send("DELETE", target);
    EXPECT_EQ(Get(kPaye, token).body, primed);
}

TEST_F(ControlTest, BadControlRequestsChangeNothingAndSayWhy)
{
    const std::string token = AccessToken();
    const char* const rows[][4] = {
        // the answer names the last
        {"POST", "/sandbox/fault", "{", "not JSON"},
        {"POST", "/sandbox/fault", "[]", "object"},
        {"POST", "/sandbox/fault", R"({"path":"x","fault":"HTML"})", "path"},
        {"POST", "/sandbox/fault", R"({"path":"/x","fault":"NOPE"})", "NOPE"},
        {"POST", "/sandbox/fault", R"({"path":"/x","fault":"HTML","time":2})", "time"},
        {"POST", "/sandbox/fault", R"({"path":"/x","fault":"HTML","times":99999999999999999999})", "times"},
        {"POST", "/sandbox/fault", R"({"path":"/x","fault":"HTML","times":18446744073709551615})", "times"},
        {"POST", "/sandbox/fault", R"({"path":"/x","fault":"HTML","delayMs":-1})", "delayMs"},
        {"POST", "/sandbox/token", R"({"expire":true,"authorise":"perhaps"})", "authorise"},
        {"POST", "/sandbox/token", R"({"expire":true,"dropScope":"read:all"})", "read:all"},
        {"PUT", "/sandbox/answer/individual-pay/x", "{}", "/individual-pay/x"},
        {"POST", "/sandbox/bogus", "{}", "/sandbox/requests"},
    };
    for (const auto& [method, path, body, says] : rows) {
        const Answer answer = Send(method, path, body);
        EXPECT_EQ(answer.status, 400) << body;
        EXPECT_NE(answer.body.find(says), std::string::npos) << answer.body;
    }
    EXPECT_EQ(Send("GET", "/sandbox/fault").body, "[]\n");
    EXPECT_EQ(Get("/hello/user", token).status, 200);
}

TEST_F(ControlTest, TokenSwitchesWork)
{
    const auto pair = Dialogue();
    const std::string access = pair["access_token"], refresh = pair["refresh_token"];
    const auto set = [&](const char* body) { ASSERT_EQ(Send("POST", "/sandbox/token", body).status, 200) << body; };

    set(R"({"refreshInProgress":true})");
    EXPECT_EQ(Token(RefreshForm(refresh)).code, "invalid_request");
    set(R"({"refreshInProgress":false,"refuseRefresh":true})");
    EXPECT_EQ(Token(RefreshForm(refresh)).code, "invalid_grant");
    set(R"({"refuseRefresh":false,"maySee":["2234567890"]})");
    EXPECT_EQ(Get(kPaye, access).code, "UNAUTHORIZED");
    EXPECT_EQ(Get(kNi, access).code, "NOT_FOUND");
    set(R"({"maySee":null,"dropScope":"read:individual-paye"})");
    EXPECT_EQ(Get(kPaye, access).code, "INVALID_SCOPE");
    set(R"({"expire":true,"lifetime":7})");
    EXPECT_EQ(Get(kNi, access).code, "INVALID_CREDENTIALS");
    const auto fresh = nlohmann::json::parse(Token(RefreshForm(refresh)).body);
    EXPECT_EQ(fresh["expires_in"], 7);
    EXPECT_EQ(Get(kPaye, fresh["access_token"]).code, "INVALID_SCOPE") << "the dropped scope stays away";
    set(R"({"revoke":true})");
    EXPECT_EQ(Get(kNi, fresh["access_token"]).code, "INVALID_CREDENTIALS");
    EXPECT_EQ(Token(RefreshForm(fresh["refresh_token"])).code, "invalid_grant");
}

TEST_F(ControlTest, ThrottleLetsThreeRequestsThroughInASecond)
{
    const std::string token = AccessToken();
    Send("POST", "/sandbox/throttle", R"({"on":true})");
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(Get("/hello/user", token).status, 200);
    EXPECT_EQ(Get("/hello/user", token).code, "MESSAGE_THROTTLED_OUT");
    m_time += std::chrono::milliseconds(999);
    EXPECT_EQ(Get("/hello/user", token).status, 429);
    m_time += std::chrono::milliseconds(1);
    EXPECT_EQ(Get("/hello/user", token).status, 200);
    Send("POST", "/sandbox/throttle", R"({"on":false})");
    for (int i = 0; i < 10; ++i)
        EXPECT_EQ(Get("/hello/user", token).status, 200);
}

TEST_F(ControlTest, RequestListCountsAndNeverShowsASecret)
{
    const auto pair = Dialogue();
    Get(kPaye, pair["access_token"]);
    Get(kPaye, "stolen-token");
    Token(With(RefreshForm(pair["refresh_token"]), "grant_type", "my-secret"));
    const std::string text = Send("GET", "/sandbox/requests").body;
    for (const std::string secret : {pair["access_token"], pair["refresh_token"], nlohmann::json(kClientSecret),
                                     nlohmann::json("stolen"), nlohmann::json("my-secret")})
        EXPECT_EQ(text.find(secret), std::string::npos);
    const auto list = nlohmann::json::parse(text);
    ASSERT_EQ(list.size(), 5U) << "control requests are not listed";
    EXPECT_EQ(list[1]["grant_type"], "authorization_code");
    EXPECT_EQ(list[2]["path"], kPaye);
    EXPECT_EQ(list[2]["authorised"], true);
    EXPECT_EQ(list[3]["authorised"], false);
    EXPECT_EQ(list[3]["code"], "INVALID_CREDENTIALS");
    Send("DELETE", "/sandbox/requests");
    EXPECT_EQ(Send("GET", "/sandbox/requests").body, "[]\n");
}

TEST_F(ControlTest, ResetPutsEverythingBack)
{
    const std::string before = Send("GET", "/sandbox/token").body, token = AccessToken();
    Send("POST", kPayeSupport);
    Send("POST", "/sandbox/fault", R"({"path":"/","fault":"HTML","times":0})");
    Send("POST", "/sandbox/token", R"({"authorise":"deny","lifetime":1,"refuseRefresh":true,"maySee":[]})");
    Send("POST", "/sandbox/reset");
    EXPECT_EQ(Send("GET", "/sandbox/requests").body, "[]\n");
    EXPECT_EQ(Send("GET", "/sandbox/token").body, before);
    EXPECT_EQ(Get(kPaye, token).code, "INVALID_CREDENTIALS");
    EXPECT_EQ(Get(kPaye, AccessToken()).code, "NOT_FOUND");
}

} // namespace Sandbox
