#include "hmrc-sandbox/Server.h"

#include <chrono>
#include <gtest/gtest.h>
#include <httplib.h>
#include <thread>

namespace Sandbox
{

namespace
{

const httplib::Headers kHello = {{"Accept", "application/vnd.hmrc.1.0+json"}};

class ServerTest : public testing::Test
{
protected:
    void SetUp() override { m_server.Start(); }

    httplib::Client Client()
    {
        httplib::Client client("127.0.0.1", m_server.Port());
        client.set_read_timeout(60); // half a megabyte of brackets takes a busy machine a while
        return client;
    }

    Server m_server;
};

} // namespace

TEST_F(ServerTest, TakesAnAnswerOfAnyLengthHoweverItIsLabelled)
{
    const std::string path = "/sandbox/answer/individual-paye/nino/AA000001A/annual-summary/2017-18";
    const std::string body = "{\"x\":\"" + std::string(100'000, 'x') + "\"}";
    for (const char* type : {"application/json", "application/x-www-form-urlencoded", "text/plain"}) {
        const auto answer = Client().Put(path.c_str(), body, type);
        EXPECT_TRUE(answer && answer->status == 200) << type;
    }
}

TEST_F(ServerTest, DelayedAnswerHoldsUpNeitherOthersNorTheEnd)
{
    Client().Post("/sandbox/fault", R"({"path":"/hello/world","fault":"SLOW","delayMs":60000})", "application/json");
    std::thread waiting([&] { Client().Get("/hello/world", kHello); });
    const auto list = [&] { return Client().Get("/sandbox/requests")->body; };
    for (int tries = 0; tries < 1000 && list().find("/hello/world") == std::string::npos; ++tries)
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    EXPECT_EQ(Client().Get("/hello/world", kHello)->status, 200);
    const auto start = std::chrono::steady_clock::now();
    m_server.Stop();
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(10));
    waiting.join();
}

TEST_F(ServerTest, SurvivesHostileRequests)
{
    httplib::Headers manyHeaders;
    for (int i = 0; i < 5000; ++i)
        manyHeaders.emplace("X-" + std::to_string(i), "y");
    Client().Get("/" + std::string(7000, 'a'));
    Client().Get("/" + std::string(100000, 'a'));
    Client().Get("/hello/world", httplib::Headers{{"Accept", std::string(1000000, 'x')}});
    Client().Get("/hello/world", manyHeaders);
    Client().Get("/%00%ff%0a/%zz?%=%");
    Client().Get("/hello/world", httplib::Headers{{"Range", "bytes=9-1,-,a-b"}});
    for (const std::string& body : {std::string(500000, '['), std::string("{\"\xff\":1}"), std::string("\0", 1)}) {
        const auto answer = Client().Post("/sandbox/fault", body, "application/json");
        EXPECT_TRUE(answer && answer->status == 400);
    }
    EXPECT_EQ(Client().Get("/hello/world", kHello)->status, 200);
}

} // namespace Sandbox
