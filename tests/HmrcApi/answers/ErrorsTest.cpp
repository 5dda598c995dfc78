#include "HmrcApi/answers/Errors.h"

#include "Afx/windows/MessageBox.h"
#include "HmrcApi/answers/AnswerTable.h"
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
