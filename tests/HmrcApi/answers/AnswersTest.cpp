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
    for (const auto& [in, out, why] : ::Test::Table<const char*, const char*>("HmrcApi/answers/Answers.tsv")) {
        const ErrorBody body = ReadErrorBody({HttpAnswer::Outcome::Answered, 502, {}, {}, in, {}});
        EXPECT_EQ(body.code + '|' + body.message + '|' + body.path, out) << why;
    }
}

TEST(ActionFor, IsDecidedByCauseCodeAndStatus)
{
    for (const auto& [code, status, cause, part, why] :
         ::Test::Table<const char*, const char*, const char*, const char*>("HmrcApi/answers/Answers.tsv"))
        EXPECT_NE(ActionFor(code, status, cause).find(part), std::string::npos)
            << code << ' ' << cause << ": " << ActionFor(code, status, cause);
}

TEST(Mask, HidesNumbersTokensAndSecretsInEveryFormAndNothingElse)
{
    for (const auto& [in, out, why] : ::Test::Table<const char*, const char*>("HmrcApi/answers/Answers.tsv"))
        EXPECT_EQ(Mask(in, {"the-token-itself", ""}), out) << why;
}

TEST(RetryWait, GrowsAndHonoursRetryAfterUpToAMinute)
{
    Afx::Clock::Set([] { return Afx::ToUnixMilliseconds({2024, 3, 1, 12, 0, 0, 0}); });
    for (const auto& [done, retryAfter, least, most, why] :
         ::Test::Table<unsigned, const char*, unsigned, unsigned>("HmrcApi/answers/Answers.tsv")) {
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
