// Scope, base addresses, credentials and the log.

#include "Afx/system/Computer.h"
#include "MorvUt/hmrc/access/ClientData.h"
#include "MorvUt/hmrc/access/LogKeeping.h"
#include "MorvUt/hmrc/access/LogReader.h"
#include "MorvUt/hmrc/access/PracticeOptions.h"
#include "MorvUt/hmrc/access/Scope.h"
#include "MorvUt/hmrc/HmrcTest.h"
#include "Shellkit/Registry.h"

using HmrcApi::CClientData;
using HmrcScope = HmrcTest;
ON_BOTH_DATABASES(HmrcScope);
using HmrcLogger = HmrcTest;
ON_BOTH_DATABASES(HmrcLogger);

TEST_P(HmrcScope, FollowsTheInterfaceAndTheDiagnosis)
{
    const std::string paye = "read:marriage-allowance read:national-insurance read:individual-paye";
    const std::string four = "read:marriage-allowance read:national-insurance read:individual-benefits "
                             "read:individual-employment read:individual-income read:individual-tax";
    // nPAYEInterface, diagnosis, scope
    const ::Test::Row<int, bool, std::string> rows[] = {
        {1, false, paye, "single interface"},        {0, false, four, "individual interfaces"},
        {2, false, four, "anything but 1"},          {1, true, paye + " hello", "diagnosis"},
        {0, true, four + " hello", "seven entries"},
    };
    for (const auto& [interface, hello, scope, why] : rows) {
        Sql("UPDATE BRIXOptions SET nPAYEInterface = %d", interface);
        CRegistry().SetInt("DbgHMRCEnableHelloScope", hello ? 1 : 0);
        EXPECT_EQ(HmrcApi::CScope().GetScope(), scope) << why;
    }
    Sql("DELETE FROM BRIXOptions");
    EXPECT_EQ(HmrcApi::CScope().GetScope(), four + " hello") << "no options record";
}

TEST(HmrcClientData, SelectsTheServicesByTheSettingOrALoopbackServerOnRequest)
{
    const std::string production = "https://api.service.hmrc.gov.uk/", test = "https://test-api.service.hmrc.gov.uk/";
    // the setting, the loopback address, the base
    const ::Test::Row<const char*, std::string, std::string> rows[] = {
        {nullptr, "", production, "nothing set"},
        {"1", "", production, "production"},
        {"2", "", test, "test"},
        {"3", "", production, "unknown"},
        {"two", "", production, "no number"},
        {"2", "http://127.0.0.1:8080", "http://127.0.0.1:8080/", "loopback, which goes before the setting"},
        {"1", "http://localhost:1/", "http://localhost:1/", "by name"},
        {"1", "http://[::1]:8080", "http://[::1]:8080/", "IPv6"},
        {"1", "http://127.0.0.1.example.com/", production, "a host that begins like one"},
    };
    for (const auto& [setting, loopback, base, why] : rows) {
        SCOPED_TRACE(why);
        const bool isSandbox = base != production && base != test;
        CRegistry().SetString("HMRCEndPoint", setting);
        ASSERT_TRUE(CClientData::SetLoopbackOverride({}));
        EXPECT_EQ(CClientData::SetLoopbackOverride(loopback), isSandbox || loopback.empty());
        CClientData data;
        EXPECT_EQ(data.GetAuthenticationEndpoint(), base);
        EXPECT_EQ(data.GetAPIEndpoint(), base);
        EXPECT_EQ(data.GetId() == "morvut-sandbox", isSandbox);
        EXPECT_EQ(data.GetSecret() == "morvut-sandbox-secret", isSandbox);
    }
    CClientData::SetLoopbackOverride({});
}

TEST_P(HmrcLogger, WritesOneLineWithItsChain)
{
    Afx::SetComputerName("DESK1");
    HmrcApi::Logger log, other;
    other.SetChainId(log.GetChainId());
    log.Log("Request", "PAYE", "GET /x", "200 'OK'", "detail; DROP TABLE MTDLog");
    EXPECT_EQ(Query("SELECT strUserID, strWorkstation, strEvent, strInterface, strRequest, strResponse, strDetail, "
                    "strSessionID, strChainID FROM MTDLog"),
              "ANNA|DESK1|Request|PAYE|GET /x|200 'OK'|detail; DROP TABLE MTDLog|" +
                  CApplicationSessionId::GetSessionId() + '|' + other.GetChainIdString());
}

TEST_P(HmrcLogger, IsShownMaskedButForItsIds)
{
    const std::string chain = "AA000001-31C7-4876-AD4B-CC5672894DFC"; // looks like a National Insurance number
    Sql("INSERT INTO MTDLog (strChainID, strSessionID, strDetail) VALUES (%s, 'AA000001A', 'AA000001A')", chain);
    const auto lines = HmrcApi::ReadLog(chain);
    ASSERT_EQ(lines.size(), 1u);
    EXPECT_EQ(lines[0].chain, chain) << "or nobody could ask for it";
    EXPECT_EQ(lines[0].session + lines[0].detail, "[masked][masked]") << "by another program";
}

TEST_P(HmrcLogger, KeepsLinesAsLongAsThePracticeWants)
{
    const auto put = [](const Cellar::SqlText& when) {
        Sql("INSERT INTO MTDLog (strEvent, dtLogged) VALUES (" + when + ", " + when + ")");
    };
    put("'2030-01-01'"); // a clock that was wrong
    put("NULL");
    put("'2023-12-31 12:00:00.000'");
    put("'2024-01-01 12:00:00.000'");
    put("'2023-06-01'"); // by another program, out of order
    Sql("INSERT INTO MTDAudit (strAction, dtWritten) VALUES ('Accept', '2020-01-01')");
    const COleDateTime now(2024, 1, 31, 12, 0, 0);
    EXPECT_EQ(HmrcApi::ThinLog(0, now), 0);
    EXPECT_EQ(HmrcApi::ThinLog(31, now), 0) << "not older, to the second; what stands behind it waits";
    EXPECT_EQ(HmrcApi::ThinLog(30, now), 2);
    EXPECT_EQ(HmrcApi::ThinLog(29, now), 1);
    EXPECT_EQ(Query("SELECT COUNT(*), MIN(strEvent) FROM MTDLog"), "2|2030-01-01");
    EXPECT_EQ(Query("SELECT COUNT(*) FROM MTDAudit"), "1");

    put("'2020-01-01'");
    for (int twice = 0; twice < 11; ++twice)
        Sql("INSERT INTO MTDLog (dtLogged) SELECT dtLogged FROM MTDLog WHERE dtLogged < '2021-01-01'");
    EXPECT_EQ(HmrcApi::ThinLog(30, now), 1000) << "at once";
    EXPECT_EQ(HmrcApi::ThinLog(30, now), 1000);
    EXPECT_EQ(HmrcApi::ThinLog(30, now), 48);
}

TEST_P(HmrcLogger, ReadsTheLevelEachTimeUnlessItWasTold)
{
    HmrcApi::Logger log, told;
    told.SetDebugLevel(HmrcApi::ReadPracticeOptions().debugLevel);
    for (const int level : {0, 1, 2, -1}) {
        Sql("UPDATE BRIXOptions SET nDebugLogging = %d", level);
        EXPECT_EQ(log.IsDebugLogging(), level > 0) << level;
        EXPECT_FALSE(told.IsDebugLogging()) << level;
    }
}

TEST_P(HmrcLogger, OpensItsOwnConnectionWithoutACurrentOneAndNeverEndsARetrieval)
{
    const auto log = [] { HmrcApi::Logger().Log("Request", {}, {}, {}, "Bearer abcdefgh AA000001A"); };
    CRegistry().SetString("DataSource", ::Test::ConnectionTextOf("practice.db"));
    Quarry::SetConnection(nullptr);
    log();
    Quarry::SetConnection(Open());
    EXPECT_EQ(Query("SELECT strEvent FROM MTDLog"), "Request");
    Sql("DROP TABLE MTDLog");
    testing::internal::CaptureStderr();
    log();
    Quarry::SetConnection(nullptr);
    CRegistry().SetString("DataSource", "sqlite:/nowhere/AA000001A.db");
    EXPECT_NO_THROW(log());
    const std::string shown = testing::internal::GetCapturedStderr();
    EXPECT_NE(shown.find("HMRC log line not written"), std::string::npos);
    EXPECT_EQ(shown.find("EXEC"), std::string::npos) << "no statement";
    EXPECT_EQ(shown.find("abcdefgh"), std::string::npos);
    EXPECT_EQ(shown.find("AA000001A"), std::string::npos) << shown;
}
