#include "HmrcApi/AnswerTable.h"

#include "Afx/Text.h"
#include "HmrcApi/Fakes.h"

using namespace HmrcApi;
using Outcome = HttpAnswer::Outcome;

namespace
{

class TestPaye : public CPaye
{
public:
    TestPaye(CAuthorisation& authorisation, ITransport& transport) : CPaye(authorisation), m_transport(transport) {}

protected:
    std::unique_ptr<ITransport> RestFactory() override
    {
        return std::make_unique<Fakes::BorrowedTransport>(m_transport);
    }

private:
    ITransport& m_transport;
};

std::string Body(const char* code) { return std::string(R"({"code":")") + code + R"(","message":"HMRC's text"})"; }

class Fetch : public Fakes::Plumbing
{
protected:
    Fetch() { EXPECT_TRUE(authorisation->LoadTokens()); }

    /// Code and status of the error; "none" when there is none.
    std::string Run()
    {
        try {
            TestPaye(*authorisation, api).GetPaye("AA 00 00 01 A", 2018, &logger);
        } catch (const HmrcApiErrorException& error) {
            message = error.GetText();
            return error.GetCode() + (error.GetStatus().empty() ? "" : ' ' + error.GetStatus());
        }
        return "none";
    }

    static std::string HeaderOf(const HttpRequest& request, std::string_view name)
    {
        for (const auto& [key, value] : request.headers)
            if (key == name)
                return value;
        return {};
    }

    Fakes::FakeTransport api;
    std::string message;
};

} // namespace

// What a server can be made to answer, the fetch from a sandbox shows; here stands the rest.
TEST_F(Fetch, DecidesTheRarerAnswersByTheTable)
{
    const struct
    {
        Outcome outcome;
        int status;
        std::string body;
        std::size_t requests, tokenRequests;
        const char* entry;
    } rows[] = {
        {Outcome::Answered, 200, std::string(40, '['), 1, 0, "ANSWER_MALFORMED 200"},
        {Outcome::Answered, 204, "", 1, 0, "HTTP_204 204"},
        {Outcome::Answered, 307, "", 1, 0, "HTTP_307 307"},
        {Outcome::Answered, 401, Body("INVALID_CREDENTIALS"), 2, 1, "INVALID_CREDENTIALS 401"}, // still, when refreshed
        {Outcome::Answered, 401, "<html>", 1, 0, "HTTP_401 401"},
        {Outcome::Answered, 429, "<html>", 4, 0, "HTTP_429 429"},
        {Outcome::Answered, 500, Body("INTERNAL_SERVER_ERROR"), 2, 0, "INTERNAL_SERVER_ERROR 500"},
        {Outcome::Answered, 504, "", 4, 0, "HTTP_504 504"},
        {Outcome::Cancelled, 0, "", 1, 0, "CANCELLED"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(std::to_string(row.status) + ' ' + row.body + " -> " + row.entry);
        api.answers.clear();
        api.requests.clear();
        tokenEndpoint->requests.clear();
        slept = 0;
        HttpAnswer answer;
        answer.outcome = row.outcome;
        answer.status = row.status;
        answer.body = row.body;
        api.answers.push_back(answer);
        EXPECT_EQ(Run(), row.entry);
        EXPECT_EQ(api.requests.size(), row.requests);
        EXPECT_EQ(tokenEndpoint->requests.size(), row.tokenRequests);
        const std::size_t repeats = row.requests - 1 - row.tokenRequests;
        const unsigned least[] = {0, 500, 1500, 3500};
        EXPECT_GE(slept, least[repeats]);
        EXPECT_LE(slept, least[repeats] * 5 / 4);
    }
}

TEST_F(Fetch, TellsNobodyTheTokenThatAnAnswerRepeats)
{
    const struct
    {
        std::string body;
        const char* why;
    } rows[] = {
        {R"({"code":"C","message":"no access-1 here"})", "in the message"},
        {R"({"code":"access-1","message":"m"})", "in the code"},
        {R"({"code":"C","message":"m","errors":[{"code":"access-1","message":"access-1","path":"/access-1"}]})",
         "listed"},
        {std::string(3996, 'x') + "access-1", "where the log cuts the body"},
        {std::string(3999, 'x') + "\xC3\xA9", "a character where the log cuts the body"},
        {"\xFF\xFE access-1", "no UTF-8"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.why);
        logger.text.clear();
        api.answers.clear();
        api.Add(400, row.body);
        const std::string told = Run() + message + logger.text;
        EXPECT_TRUE(Afx::IsUtf8(told));
        EXPECT_EQ(told.find("access-1"), std::string::npos) << told;
        EXPECT_EQ(told.find("xacc"), std::string::npos) << "a part of the token";
    }
}

TEST_F(Fetch, RefreshesAnExpiredTokenOnceAndRepeatsWithTheNewOne)
{
    api.Add(401, Body("INVALID_CREDENTIALS"));
    api.Add(200, "{}");
    EXPECT_EQ(Run(), "none");
    ASSERT_EQ(api.requests.size(), 2u);
    EXPECT_EQ(HeaderOf(api.requests[0], "Authorization"), "Bearer access-1");
    EXPECT_EQ(HeaderOf(api.requests[1], "Authorization"), "Bearer access-2");
    EXPECT_EQ(StoredAccessToken(), "access-2");
    EXPECT_EQ(tokenEndpoint->requests.size(), 1u);
}

TEST_F(Fetch, SendsWhatTheInterfaceAsksFor)
{
    client->base = "http://127.0.0.1:1//";
    api.Add(200, "{}");
    EXPECT_EQ(Run(), "none");
    const HttpRequest request = api.requests.at(0);
    EXPECT_EQ(request.address, "http://127.0.0.1:1/individual-paye/nino/AA000001A/annual-summary/2017-18");
    EXPECT_EQ(HeaderOf(request, "Accept"), "application/vnd.hmrc.1.0+json");
    EXPECT_EQ(HeaderOf(request, "Gov-Client-Connection-Method"), "DESKTOP_APP_DIRECT");
    EXPECT_EQ(HeaderOf(request, "Gov-Client-Device-ID").size(), 36u);
    EXPECT_EQ(HeaderOf(request, "Gov-Client-Timezone").substr(0, 3), "UTC");
    EXPECT_EQ(HeaderOf(request, "Gov-Client-Timezone").size(), 9u);
    Run();
    EXPECT_EQ(HeaderOf(api.requests.at(1), "Gov-Client-Device-ID"), HeaderOf(request, "Gov-Client-Device-ID"))
        << "the device keeps its id";
}

TEST_F(Fetch, LogsEveryRequestWithoutNumberAndToken)
{
    api.Add(400, R"({"code":"NINO_INVALID","message":"aa000001a with access-1 is invalid"})");
    EXPECT_EQ(Run(), "NINO_INVALID 400");
    EXPECT_EQ(message, "[masked] with [masked] is invalid");
    EXPECT_NE(logger.text.find("Individual PAYE|GET /individual-paye/nino/*/annual-summary/2017-18|400 NINO_INVALID"),
              std::string::npos)
        << logger.text;
    for (const char* secret : {"AA000001A", "aa000001a", "access-1"})
        EXPECT_EQ(logger.text.find(secret), std::string::npos) << logger.text;
}

TEST_F(Fetch, LogsABodyOnlyWhenDebugLoggingIsOn)
{
    for (const bool isDebug : {false, true}) {
        logger.isDebug = isDebug;
        logger.text.clear();
        api.answers.clear();
        api.Add(200, R"({"unknown":"member"})");
        Run();
        EXPECT_EQ(logger.text.find("member") != std::string::npos, isDebug) << logger.text;
    }
}

namespace
{

/// Cancels when asked for the `countdown`th time.
class CancellingWindows : public Afx::HeadlessWindowSystem
{
public:
    explicit CancellingWindows(int countdown) : m_countdown(countdown) {}
    bool WaitCancelled() override { return --m_countdown == 0; }
    void ShowWait(const std::string& text) override { shown.push_back(text); }
    std::vector<std::string> shown;

private:
    int m_countdown;
};

} // namespace

TEST_F(Fetch, EndsWhenTheUserCancelsBetweenRequests)
{
    for (const int countdown : {1, 2, 4}) {
        SCOPED_TRACE(countdown);
        api.answers.clear();
        api.requests.clear();
        api.Add(503, Body("SERVER_ERROR"));
        auto before = Afx::WindowSystem::Install(std::make_unique<CancellingWindows>(countdown));
        EXPECT_EQ(Run(), "CANCELLED");
        const auto windows = Afx::WindowSystem::Install(std::move(before));
        EXPECT_EQ(api.requests.size(), countdown == 1 ? 0u : 1u);
        const auto& shown = dynamic_cast<CancellingWindows&>(*windows).shown;
        ASSERT_EQ(shown.size(), 2u);
        EXPECT_FALSE(shown[0].empty());
        EXPECT_TRUE(shown[1].empty()) << "the wait window is gone";
    }
}
