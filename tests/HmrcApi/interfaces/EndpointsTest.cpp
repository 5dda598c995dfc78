#include "HmrcApi/interfaces/Endpoints.h"

#include <time.h>

#include <cstdlib>

#include "Afx/text/Utf8.h"
#include "HmrcApi/Fakes.h"

using namespace HmrcApi;

namespace
{

constexpr char kNone[] = R"({"employments":[]})";

class Fetch : public Fakes::Plumbing
{
protected:
    Fetch() { EXPECT_TRUE(authorisation->LoadTokens()); }

    /// Code and status of the error; "none" when there is none.
    std::string Run(const std::string& number = "AA 00 00 01 A")
    {
        try {
            Fakes::Through<CPaye>(*authorisation, api).GetPaye(number, 2018, &logger);
        } catch (const HmrcApiErrorException& error) {
            message = error.GetText();
            return error.GetCode() + (error.GetStatus().empty() ? "" : ' ' + error.GetStatus());
        }
        return "none";
    }
    std::string Run(int status, const std::string& body)
    {
        logger.text.clear();
        api->Script({{status, body}});
        return Run();
    }
    std::string Header(std::size_t request, std::string_view name) const
    {
        for (const auto& [key, value] : api->requests.at(request).headers)
            if (key == name)
                return value;
        return {};
    }

    std::shared_ptr<Fakes::FakeTransport> api = std::make_shared<Fakes::FakeTransport>();
    std::string message;
};

struct CancellingWindows : Afx::HeadlessWindowSystem
{
    explicit CancellingWindows(int toGo) : countdown(toGo) {}
    bool WaitCancelled() override { return --countdown == 0; }
    void ShowWait(const std::string& text) override { shown.push_back(text); }
    int countdown; // cancels when asked for the last time
    std::vector<std::string> shown;
};

} // namespace

// What a server can be made to answer, the fetch from a sandbox shows; here stands the rest.
TEST_F(Fetch, RefusesANumberThatWouldChangeThePathBeforeAnythingIsSent)
{
    for (const char* number :
         {"", "   ", "../../hello", "AA000001A/x", "AA000001A?x", "AA000001A#", "AA%30", "AA\r\n"}) {
        EXPECT_EQ(Run(number), "NINO_INVALID") << number;
        EXPECT_NE(message.find("correct it"), std::string::npos);
    }
    EXPECT_TRUE(api->requests.empty());
}

TEST_F(Fetch, TakesJsonOnlyAndSaysWhenItIsAPage)
{
    for (const auto& [type, body, expected, why] :
         ::Test::Table<const char*, const char*, const char*>("HmrcApi/interfaces/Endpoints.tsv")) {
        api->Script({{200, body}});
        api->answers.front().contentType = type;
        const std::string result = Run();
        EXPECT_EQ(result + (result == "none" || message.find("a page") == message.npos ? "" : " a page"), expected)
            << why;
        EXPECT_EQ(api->requests.size(), 1u) << why;
    }
}

TEST_F(Fetch, TellsNobodyTheTokenThatAnAnswerRepeats)
{
    const std::pair<std::string, const char*> rows[] = {
        {R"({"code":"C","message":"no access-1 here"})", "in the message"},
        {R"({"code":"access-1","message":"m"})", "in the code"},
        {R"({"code":"C","errors":[{"code":"access-1","message":"access-1","path":"/access-1"}]})", "listed"},
        {std::string(3996, 'x') + "access-1", "where the log cuts the body"},
        {std::string(3999, 'x') + "\xC3\xA9", "a character where the log cuts the body"},
        {"\xFF\xFE access-1", "no UTF-8"},
    };
    for (const auto& [body, why] : rows) {
        SCOPED_TRACE(why);
        const std::string told = Run(400, body) + message + logger.text;
        EXPECT_TRUE(Afx::IsUtf8(told));
        Fakes::ExpectNone(told, {"access-1", "xacc"});
    }
}

TEST_F(Fetch, SendsWhatTheInterfaceAsksFor)
{
    client->base = "http://127.0.0.1:1//";
    EXPECT_EQ(Run(200, kNone), "none");
    EXPECT_EQ(api->requests.at(0).address, "http://127.0.0.1:1/individual-paye/nino/AA000001A/annual-summary/2017-18");
    EXPECT_EQ(Header(0, "Accept"), "application/vnd.hmrc.1.0+json");
    EXPECT_EQ(Header(0, "Authorization"), "Bearer access-1");
    EXPECT_EQ(Header(0, "Gov-Client-Connection-Method"), "DESKTOP_APP_DIRECT");
    EXPECT_EQ(Header(0, "Gov-Client-Device-ID").size(), 36u);
    Run();
    EXPECT_EQ(Header(1, "Gov-Client-Device-ID"), Header(0, "Gov-Client-Device-ID")) << "the device keeps its id";
}

TEST_F(Fetch, TellsTheZoneOfThisComputer)
{
    for (const auto& [zone, told] :
         {std::pair("UTC0", "UTC+00:00"), {"IST-5:30", "UTC+05:30"}, {"NST3:30", "UTC-03:30"}, {"EST5", "UTC-05:00"}}) {
        setenv("TZ", zone, 1);
        tzset();
        authorisation->SetChannel(std::make_shared<Channel>(tokenEndpoint)); // a channel tells it once
        Run(200, kNone);
        EXPECT_EQ(Header(0, "Gov-Client-Timezone"), told);
    }
    unsetenv("TZ");
    tzset();
}

TEST_F(Fetch, SendsAServiceNoTokenOfAnother)
{
    api->Script({{401, R"({"code":"INVALID_CREDENTIALS","message":"over"})"}});
    api->onSend = [this] {
        client->base = "http://127.0.0.1:2/";
        SetService("http://127.0.0.1:2"); // a consent there
        StoreElsewhere("access-of-2");
    };
    EXPECT_EQ(Run(), "WRONG_SERVICE");
    EXPECT_EQ(api->requests.size(), 1u);
}

TEST_F(Fetch, LogsEveryRequestWithoutNumberAndToken)
{
    EXPECT_EQ(Run(400, R"({"code":"NINO_INVALID","message":"aa000001a with access-1 is invalid"})"),
              "NINO_INVALID 400");
    EXPECT_EQ(message, "[masked] with [masked] is invalid");
    EXPECT_NE(logger.text.find("Individual PAYE|GET /individual-paye/nino/*/annual-summary/2017-18|400 NINO_INVALID"),
              std::string::npos)
        << logger.text;
    Fakes::ExpectNone(logger.text, {"AA000001A", "aa000001a", "access-1"});
    EXPECT_NE(logger.text.find("is invalid"), std::string::npos) << "the body, with debug logging";
    logger.isDebug = false;
    Run(200, R"({"unknown":"member"})");
    Fakes::ExpectNone(logger.text, {"member"});
}

TEST_F(Fetch, EndsWhenTheUserCancelsBetweenRequests)
{
    for (const int countdown : {1, 2, 4}) {
        SCOPED_TRACE(countdown);
        auto before = Afx::WindowSystem::Install(std::make_unique<CancellingWindows>(countdown));
        EXPECT_EQ(Run(503, ""), "CANCELLED");
        const auto windows = Afx::WindowSystem::Install(std::move(before));
        EXPECT_EQ(api->requests.size(), countdown == 1 ? 0u : 1u);
        const auto& shown = dynamic_cast<CancellingWindows&>(*windows).shown;
        ASSERT_EQ(shown.size(), 2u);
        EXPECT_FALSE(shown[0].empty());
        EXPECT_TRUE(shown[1].empty()) << "the wait window is gone";
    }
}
