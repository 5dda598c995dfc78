#include "HmrcApi/transport/Uri.h"

#include "HmrcApi/oauth/TokenRequest.h"
#include "support/Test.h"

using namespace HmrcApi;

TEST(TaxYearText, NamesBothCalendarYears)
{
    const ::Test::Case<short, const char*> rows[] = {
        {2018, "2017-18"}, {2000, "1999-00"}, {2001, "2000-01"}, {2100, "2099-00"}, {0, ""}, {-1, ""}, {10000, ""}};
    for (const auto& row : rows)
        EXPECT_EQ(TaxYearText(row.in), row.out) << row.in;
}

TEST(Addresses, KeepEachPartInItsPlace)
{
    EXPECT_EQ(IdentifierSegment(" aa 00 00 01 a "), "AA000001A");
    for (const char* identifier : {"", " ", "..", "AA00/1", "1?x", "1#x", "1%2F", "1.2", "1\r2", "\xC3\xA9"})
        EXPECT_EQ(IdentifierSegment(identifier), "") << "it would change the path: " << identifier;
    EXPECT_EQ(EncodeForm({{"a", "x y&z=1+1"}, {"b", ""}}), "a=x%20y%26z%3D1%2B1&b=");
    for (const char* base : {"https://host", "https://host/", "https://host//"})
        EXPECT_EQ(JoinAddress(base, "/a/b"), "https://host/a/b");
}

TEST(AuthoriseAddress, IsOnAnotherHostThanTheApi)
{
    EXPECT_EQ(AuthoriseAddress("https://api.service.hmrc.gov.uk/"), "https://www.tax.service.gov.uk/oauth/authorize");
    EXPECT_EQ(AuthoriseAddress("https://test-api.service.hmrc.gov.uk/"),
              "https://test-www.tax.service.gov.uk/oauth/authorize");
    EXPECT_EQ(AuthoriseAddress("http://127.0.0.1:8080/"), "http://127.0.0.1:8080/oauth/authorize");
}
