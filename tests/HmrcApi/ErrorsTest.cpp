#include "HmrcApi/Errors.h"

#include <gtest/gtest.h>

#include "Afx/Clock.h"
#include "Afx/MessageBox.h"
#include "HmrcApi/AnswerTable.h"
#include "support/TestSupport.h"

using namespace HmrcApi;

TEST(CAPIErrorHandler, ShowsOneBoxWithAHeadingForEachGroupThatHasErrors)
{
    CAPIErrorHandler handler;
    handler.AddGroup("PAYE");
    handler.AddGroup("Quiet");
    handler.DisplayErrors();
    EXPECT_TRUE(::Test::Windows().Messages().empty()) << "nothing to show";
    handler.AddError("National Insurance", {"NO_CONNECTION", "HMRC cannot be reached", "", ""});
    handler.AddError("PAYE", {"A", "first", "", "400"});
    handler.AddError("PAYE", {"B", "second", "", "400"});
    EXPECT_EQ(handler.GetErrorCount(), 3);
    ::Test::Windows().Answer(IDOK);
    handler.DisplayErrors();
    ASSERT_EQ(::Test::Windows().Messages().size(), 1u);
    EXPECT_EQ(::Test::Windows().Messages()[0].text,
              "PAYE\nfirst (A)\nsecond (B)\n\nNational Insurance\nHMRC cannot be reached (NO_CONNECTION)");
}

TEST(ActionFor, AlwaysSaysSomething)
{
    EXPECT_NE(ActionFor("INVALID_GRANT", "400").find("Authorise"), std::string::npos);
    EXPECT_EQ(ActionFor("HTTP_502", "502"), ActionFor("SERVER_ERROR", "503")) << "by status when the code is unknown";
    EXPECT_FALSE(ActionFor("", "").empty());
}

TEST(ReadErrorBody, ReadsEveryKindOfBody)
{
    const struct
    {
        const char* body;
        const char* code;
        const char* message;
        const char* path;
        const char* why;
    } rows[] = {
        {R"({"code":"NINO_INVALID","message":"The provided NINO is invalid"})", "NINO_INVALID",
         "The provided NINO is invalid", "", "one error"},
        {R"({"code":"BAD","message":"Bad request","errors":[{"code":"X","message":"one","path":"/a"},{"code":"Y","message":"two","path":"/b"}]})",
         "BAD", "Bad request: one (X, /a); two (Y, /b)", "/a", "a list"},
        {R"({"error":"invalid_grant","error_description":"code_verifier is invalid"})", "INVALID_GRANT",
         "code_verifier is invalid", "", "OAuth"},
        {R"({"code":"ODD","message":"no data for AA 000001 A"})", "ODD", "no data for [masked]", "", "a number in it"},
        {"<html>Bad gateway</html>", "HTTP_502", "HMRC answered with HTTP status 502", "", "HTML"},
        {"[1]", "HTTP_502", "HMRC answered with HTTP status 502", "", "JSON of another shape"},
        {R"({"code":7})", "HTTP_502", "HMRC answered with HTTP status 502", "", "a code that is no text"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.why);
        HttpAnswer answer;
        answer.outcome = HttpAnswer::Outcome::Answered;
        answer.status = 502;
        answer.body = row.body;
        const ErrorBody body = ReadErrorBody(answer);
        EXPECT_EQ(body.code, row.code);
        EXPECT_EQ(body.message, row.message);
        EXPECT_EQ(body.path, row.path);
    }
}

TEST(RetryWait, GrowsAndHonoursRetryAfterWithinAMinute)
{
    Afx::Clock::Set([] { return Afx::ToUnixMilliseconds({2024, 3, 1, 12, 0, 0, 0}); });
    const struct
    {
        unsigned done;
        std::string retryAfter;
        unsigned least, most;
        const char* why;
    } rows[] = {
        {1, "", 500, 625, "first"},
        {3, "", 2000, 2500, "third"},
        {1, "5", 5000, 5000, "seconds"},
        {3, "1", 2000, 2500, "ours is longer"},
        {1, "99999999999999999999", 60000, 60000, "beyond any number"},
        {1, "soon", 500, 625, "no number"},
        {1, "Fri, 01 Mar 2024 12:00:07 GMT", 7000, 7000, "a date"},
        {1, "Wed, 21 Oct 2015 07:28:00 GMT", 500, 625, "a past date"},
        {1, "Wed, 21 Xxx 2035 07:28:00 GMT", 500, 625, "no date"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.why);
        const unsigned wait = RetryWait(row.done, row.retryAfter);
        EXPECT_GE(wait, row.least);
        EXPECT_LE(wait, row.most);
    }
}
