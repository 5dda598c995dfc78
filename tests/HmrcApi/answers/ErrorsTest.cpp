#include "HmrcApi/answers/Errors.h"

#include <gtest/gtest.h>

#include "Afx/Clock.h"
#include "Afx/MessageBox.h"
#include "HmrcApi/answers/AnswerTable.h"
#include "support/Case.h"
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

TEST(ReadErrorBody, ReadsEveryKindOfBody)
{
    // out: code|message|path
    const char* const unreadable = "HTTP_502|HMRC answered with HTTP status 502|";
    const ::Test::Case<const char*, const char*> rows[] = {
        {R"({"code":"NINO_INVALID","message":"It is invalid"})", "NINO_INVALID|It is invalid|", "one error"},
        {R"({"code":"BAD","message":"No","errors":[{"code":"X","message":"1","path":"/a"},{"code":"Y","message":"2"}]})",
         "BAD|No: 1 (X, /a); 2 (Y)|/a", "a list"},
        {R"({"error":"invalid_grant","error_description":"is invalid"})", "INVALID_GRANT|is invalid|", "OAuth"},
        {R"({"code":"ODD","message":"for AA 000001 A"})", "ODD|for [masked]|", "a number in it"},
        {"<html>Bad gateway</html>", unreadable, "HTML"},
        {"[1]", unreadable, "JSON of another shape"},
        {R"({"code":7})", unreadable, "a code that is no text"},
    };
    for (const auto& row : rows) {
        const ErrorBody body = ReadErrorBody({HttpAnswer::Outcome::Answered, 502, {}, {}, row.in, {}});
        EXPECT_EQ(body.code + '|' + body.message + '|' + body.path, row.out) << row.why;
    }
}

TEST(RetryWait, GrowsAndHonoursRetryAfterWithinAMinute)
{
    Afx::Clock::Set([] { return Afx::ToUnixMilliseconds({2024, 3, 1, 12, 0, 0, 0}); });
    const std::tuple<unsigned, const char*, unsigned, unsigned, const char*> rows[] = {
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
    for (const auto& [done, retryAfter, least, most, why] : rows) {
        const unsigned wait = RetryWait(done, retryAfter);
        EXPECT_TRUE(wait >= least && wait <= most) << wait << ": " << why;
    }
}
