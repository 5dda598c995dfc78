#include "HmrcApi/answers/Mask.h"

#include "support/Test.h"

using HmrcApi::Mask;

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
