#include "Fixture.h"

#include <tuple>

namespace Sandbox
{

using ApiTest = SandboxTest;

TEST_F(ApiTest, ChecksInThePlatformsOrder)
{
    // Each request has the faults of the following rows too; the first one wins.
    const std::string good = AccessToken("read:individual-paye"), other = AccessToken("hello");
    const std::string badBoth = "/individual-paye/nino/QQ123456A/annual-summary/2017-19";
    const std::string badYear = "/individual-paye/nino/AA000001A/annual-summary/2017-19";
    const std::tuple<const char*, std::string, std::string, std::string, int, const char*> rows[] = {
        {"POST", "/individual-pay/nino/x", "", "", 404, "MATCHING_RESOURCE_NOT_FOUND"},
        {"POST", "/individual-paye/nino//annual-summary/2017-18", "", "", 404, "MATCHING_RESOURCE_NOT_FOUND"},
        {"POST", badBoth, "", "", 405, "METHOD_NOT_ALLOWED"},
        {"GET", badBoth, "", "", 406, "ACCEPT_HEADER_INVALID"},
        {"GET", badBoth, "application/json", "", 406, "ACCEPT_HEADER_INVALID"},
        {"GET", badBoth, "application/vnd.hmrc.1.1+json", "", 404, "MATCHING_RESOURCE_NOT_FOUND"},
        {"GET", badBoth, kVersion1, "", 401, "MISSING_CREDENTIALS"},
        {"GET", badBoth, kVersion1, "Basic eDp5", 401, "MISSING_CREDENTIALS"},
        {"GET", badBoth, kVersion1, "Bearer unknown", 401, "INVALID_CREDENTIALS"},
        {"GET", badBoth, kVersion1, "Bearer " + other, 403, "INVALID_SCOPE"},
        {"GET", badBoth, kVersion1, "Bearer " + good, 400, "NINO_INVALID"},
        {"GET", badYear, kVersion1, "bearer " + good, 400, "TAX_YEAR_INVALID"},
        {"GET", kPaye, kVersion1, "Bearer " + good, 404, "NOT_FOUND"},
    };
    for (const auto& [method, path, accept, authorization, status, code] : rows) {
        const Answer answer = m_service.Handle({method, path, accept, authorization, "", "", {}, false});
        EXPECT_EQ(answer.status, status) << code;
        EXPECT_EQ(nlohmann::json::parse(answer.body)["code"], code) << path;
        EXPECT_EQ(Header(answer, "WWW-Authenticate"),
                  status == 401 || status == 403 ? "Bearer realm=\"HMRC API Platform\"" : "");
    }
}

TEST_F(ApiTest, NationalInsuranceTakesAUtrAndTwoVersions)
{
    const std::string token = AccessToken();
    const Answer primed = Send("POST", kNiSupport, R"({"scenario":"HAPPY_PATH_2"})");
    EXPECT_EQ(primed.status, 201);
    EXPECT_EQ(nlohmann::json::parse(primed.body)["class2"]["totalDue"].dump(), "319.57");
    EXPECT_EQ(Get(kNi, token, "application/vnd.hmrc.1.1+json").body, primed.body);
    EXPECT_EQ(Get(kNi, token, "application/vnd.hmrc.1.0+json").status, 200);
    EXPECT_EQ(Get(kNi, token, "application/vnd.hmrc.1.2+json").code, "MATCHING_RESOURCE_NOT_FOUND");
    EXPECT_EQ(Get("/national-insurance/sa/1234567890/annual-summary/2017-18", token).code, "SA_UTR_INVALID");
}

TEST_F(ApiTest, PrimingGivesOnePersonAndYearItsFigures)
{
    const std::string token = AccessToken();
    const Answer primed = Send("POST", kPayeSupport, R"({"scenario":"PENSIONER"})");
    EXPECT_EQ(primed.status, 201);
    EXPECT_EQ(primed.body, "{}");
    EXPECT_NE(Get(kPaye, token).body.find("Pension Provider GHI"), std::string::npos);
    EXPECT_EQ(Get("/individual-paye/nino/AA000001A/annual-summary/2018-19", token).status, 404) << "another year";
    EXPECT_EQ(Get("/individual-paye/nino/AA000002A/annual-summary/2017-18", token).status, 404) << "another person";
}

TEST_F(ApiTest, PrimingRefusesWhatHmrcRefuses)
{
    const char* const rows[][3] = {
        {kPayeSupport, R"({"scenario":"NOBODY"})", "UNKNOWN_SCENARIO"},
        {kNiSupport, R"({"scenario":"EVERYTHING"})", "UNKNOWN_SCENARIO"},
        {kPayeSupport, R"({"scenario":1})", "BAD_REQUEST"},
        {kPayeSupport, "[", "BAD_REQUEST"},
        {"/individual-paye-test-support/paye/nino/QQ123456A/tax-year/2017-18", "{}", "NINO_INVALID"},
        {"/individual-paye-test-support/paye/nino/AA000001A/tax-year/2017-19", "{}", "TAX_YEAR_INVALID"},
        {"/individual-paye-test-support/nino/AA000001A/tax-year/2017-18", "{}", "MATCHING_RESOURCE_NOT_FOUND"},
    };
    for (const auto& [path, body, code] : rows)
        EXPECT_EQ(Send("POST", path, body).code, code) << path << ' ' << body;
}

} // namespace Sandbox
