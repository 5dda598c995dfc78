// Scope, base addresses, credentials and the log.

#include <optional>

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
    // nPAYEInterface, diagnosis, scope
    for (const auto& [interface, hello, scope, why] :
         ::Test::Table<std::optional<int>, bool, std::string>("MorvUt/hmrc/access/Settings.tsv")) {
        if (interface)
            Sql("UPDATE BRIXOptions SET nPAYEInterface = %d", *interface);
        else
            Sql("DELETE FROM BRIXOptions");
        CRegistry().SetInt("DbgHMRCEnableHelloScope", hello ? 1 : 0);
        EXPECT_EQ(HmrcApi::CScope().GetScope(), scope) << why;
    }
}

TEST(HmrcClientData, SelectsTheServicesByTheSettingOrALoopbackServerOnRequest)
{
    // the setting, the loopback address, the base
    for (const auto& [setting, loopback, base, why] :
         ::Test::Table<const char*, std::string, std::string>("MorvUt/hmrc/access/Settings.tsv")) {
        SCOPED_TRACE(why);
        const bool isSandbox = base.find("api.service.hmrc.gov.uk") == base.npos;
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
