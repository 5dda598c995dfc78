#include "Afx/time/Clock.h"
#include "Afx/windows/MessageBox.h"
#include "HmrcApi/answers/AnswerTable.h"
#include "HmrcApi/answers/Errors.h"
#include "HmrcApi/answers/Mask.h"
#include "HmrcApi/answers/Retry.h"
#include "support/Test.h"

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

TEST(ActionFor, IsDecidedByCauseCodeAndStatus)
{
    const std::tuple<const char*, const char*, const char*, const char*> rows[] = {
        // code, status, cause, part of the sentence
        {"NO_CREDENTIALS", "", "", "Authorise"},
        {"NO_CREDENTIALS", "", "WRONG_SERVICE", "for this service"},
        {"NO_CREDENTIALS", "", "NO_CONNECTION", "internet connection"},
        {"NO_CREDENTIALS", "", "INVALID_GRANT", "Authorise"},
        {"NO_CREDENTIALS", "", "REFRESH_BUSY", "has finished"},
        {"NO_CREDENTIALS", "", "TOKENS_UNREADABLE", "with the key"},
        {"NO_CREDENTIALS", "", "NO_PRACTICE_KEY", "key file"},
        {"NO_CREDENTIALS", "", "NO_CREDENTIALS_FILE", "supplier"},
        {"NO_CREDENTIALS", "", "CANCELLED", "Start again"},
        {"NO_CREDENTIALS", "", "HTTP_503", "in a few minutes"},
        {"NO_CREDENTIALS", "", "NO_CREDENTIALS", "Authorise"},
        {"RESOURCE_FORBIDDEN", "403", "PAYE", "nPAYEInterface to 0"},
        {"MATCHING_RESOURCE_NOT_FOUND", "404", "Employments", "nPAYEInterface to 1"},
        {"RESOURCE_FORBIDDEN", "403", "National Insurance", "supplier"},
        {"CHANGED_BY_ANOTHER_USER", "", "", "Fetch again"},
        {"UNSAVED_CHANGES", "", "", "Save or cancel"},
        {"REDIRECTED", "401", "", "sign in"},
        {"HTTP_408", "408", "", "Try again later"},
        {"HTTP_401", "401", "", "Authorise"},
        {"NEW_CODE", "401", "", "Authorise"},
        {"ANSWER_MALFORMED", "200", "/employments", "Report"},
        {"ANSWER_MALFORMED", "200", "Content-Type", "sign in"},
        {"SERVER_ERROR", "503", "Retry-After", "the time that"},
        {"HTTP_418", "418", "", "Report"},
    };
    for (const auto& [code, status, cause, part] : rows)
        EXPECT_NE(ActionFor(code, status, cause).find(part), std::string::npos)
            << code << ' ' << cause << ": " << ActionFor(code, status, cause);
}

TEST(Mask, HidesNumbersTokensAndSecretsInEveryForm)
{
    const ::Test::Case<const char*, const char*> rows[] = {
        {"for AA000001A.", "for [masked].", "plain"},
        {"AA 00 00 01 A", "[masked]", "in pairs"},
        {"A A 0 0 0 0 0 1 A", "[masked]", "spaced out"},
        {"nino=AA+00+00+01+A&x=1", "nino=[masked]&x=1", "as a form writes it"},
        {"/nino/%41%41000001%41/x", "/nino/[masked]/x", "percent-encoded letters"},
        {"AA\xC2\xA0\x30\x30\x30\x30\x30\x31\x41", "[masked]", "a no-break space"},
        {"AA000001", "[masked]", "without its suffix"},
        {"AA000001 and more", "[masked] and more", "a word behind it is no suffix"},
        {"\"nino\":\"AA000001A\"", "\"nino\":\"[masked]\"", "in JSON"},
        {"Authorization: Bearer abc.def-1", "Authorization: Bearer [masked]", "header"},
        {"sent bearer xyz1 end", "sent bearer [masked] end", "bearer in a text"},
        {R"({"access_token":"a\"b","scope":"s"})", R"({"access_token":"[masked]","scope":"s"})", "escaped quote"},
        {R"({ "refresh_token" : "abc" })", R"({ "refresh_token" : "[masked]" })", "blanks round the colon"},
        {"g=x&client_secret=s3&refresh_token=r1", "g=x&client_secret=[masked]&refresh_token=[masked]", "form"},
        {"?code=123&state=s", "?code=[masked]&state=s", "redirect query"},
        {"error from the-token-itself", "error from [masked]", "a secret that the caller knows"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(Mask(row.in, {"the-token-itself", ""}), row.out) << row.why;
}

TEST(Mask, LeavesOtherTextAlone)
{
    for (const char* text :
         {"", "401 INVALID_CREDENTIALS, 76 bytes", "2018-04-05", "{\"code\":\"NOT_FOUND\"}", "123/AB456",
          "UTR 2234567890", "Bearer token is missing or not authorized", "AB1234567", "XAA000001A", "AA00001A",
          "100% of 5", "%4", "GET /individual-paye/nino/*/annual-summary/2017-18"})
        EXPECT_EQ(Mask(text), text);
}

TEST(RetryWait, GrowsAndHonoursRetryAfterUpToAMinute)
{
    Afx::Clock::Set([] { return Afx::ToUnixMilliseconds({2024, 3, 1, 12, 0, 0, 0}); });
    const ::Test::Row<unsigned, const char*, unsigned, unsigned> rows[] = {
        // most 0: no further try
        {1, "", 500, 625, "first"},
        {3, "", 2000, 2500, "third"},
        {1, "5", 5000, 5000, "seconds"},
        {3, "1", 2000, 2500, "ours is longer"},
        {1, "60", 60000, 60000, "the longest"},
        {1, "61", 0, 0, "too long"},
        {1, "99999999999999999999", 0, 0, "beyond any number"},
        {1, "soon", 500, 625, "no number"},
        {1, "-70", 500, 625, "negative"},
        {1, "70 s", 500, 625, "a unit"},
        {1, "Fri, 01 Mar 2024 12:00:07 GMT", 7000, 7000, "a date"},
        {1, "Fri, 01 Mar 2024 12:01:00 GMT", 60000, 60000, "the longest date"},
        {1, "Fri, 01 Mar 2024 12:01:01 GMT", 0, 0, "a date too far"},
        {1, "Wed, 21 Oct 2015 07:28:00 GMT", 500, 625, "a past date"},
        {1, "Wed, 21 Xxx 2035 07:28:00 GMT", 500, 625, "no month"},
        {1, "Wed, 21 Oct 2035 27:28:00 GMT", 500, 625, "no hour"},
        {1, "Wed, 21-Oct-2035 07:28:00 GMT", 500, 625, "another form"},
    };
    for (const auto& [done, retryAfter, least, most, why] : rows) {
        const unsigned wait = RetryWait(done, retryAfter).value_or(0);
        EXPECT_TRUE(wait >= least && wait <= most) << wait << ": " << why;
        EXPECT_EQ(TryAgainText(retryAfter).empty(), most > 0) << why;
    }
    const std::pair<const char*, const char*> asked[] = {
        {"3541", "after %02d:%02d"}, {"86341", "after %02d:%02d"}, {"86400", "after %02d:%02d on %02d/%02d/%04d"}};
    for (const auto& [seconds, form] : asked) {
        const std::int64_t minutes = (std::stoll(seconds) + 59) / 60;
        const auto when = Afx::FromUnixMilliseconds(Afx::ToUnixMilliseconds(Afx::Clock::Local()) + minutes * 60'000);
        char text[64];
        std::snprintf(text, sizeof text, form, when.hour, when.minute, when.day, when.month, when.year);
        EXPECT_EQ(TryAgainText(seconds), text) << "local time, in whole minutes";
    }
}
