#include "MorvUt/context/status/ClientStatus.h"

#include "Brix/Records.h"
#include "MorvUt/context/status/StatusView.h"
#include "StatusTest.h"

namespace
{

/// The names of the questions whose answer is yes.
std::string Yes(const ClientStatus& status)
{
    std::string names;
    for (std::size_t i = 0; i < kStatusQuestions; ++i)
        if (const auto question = static_cast<StatusQuestion>(i); status.Is(question))
            names += (names.empty() ? "" : " ") + std::string(NameOf(question));
    return names;
}

/// Client 1 or partnership 1 of the practice with this beside its defaults; nothing of it stays.
ClientStatus StatusWith(const char* statements, bool isPartnership, short year)
{
    const Quarry::CTransaction undone;
    ::Test::Practice::Script("INSERT INTO BRIXClient (lID) VALUES (1); INSERT INTO BRIXPartnership (lID) VALUES (1);");
    ::Test::Practice::Script(statements);
    return StatusOf(1, isPartnership, year);
}

#define CLIENT(columns) "UPDATE BRIXClient SET " columns ";"
#define FORM(year, columns, values)                                                                                    \
    "INSERT INTO BRIXTaxForm (lID, lClientID, nYear, " columns ") VALUES (" #year ", 1, " #year ", " values ");"
#define PERIOD(start, end)                                                                                             \
    "INSERT INTO BRIXClientPeriodsInactivity (lClientID, dtStart, dtEnd) VALUES (1, " start ", " end ");"
#define INFO(form, status, allowance)                                                                                  \
    "INSERT INTO BRIXOtherReturnInfo (lTaxFormID, lClientID, nYear, nTaxPayerStatus, bTradingAllowance) VALUES (" form \
    ", 1, " form ", " status ", " allowance ");"
#define SUBMISSION(year, status)                                                                                       \
    "INSERT INTO BRIXFBISubmissions (lClientID, nYear, nStatus) VALUES (1, " year ", " status ");"

using StatusOfClients = ::Test::StatusTest;
ON_BOTH_DATABASES(StatusOfClients);
using StatusOfClientsInAFile = ::Test::StatusTest;
ON_EMBEDDED(StatusOfClientsInAFile);

} // namespace

TEST_P(StatusOfClients, OfClients)
{
    const ::Test::Row<const char*, short, const char*> rows[] = {
        {"", 2020, "", "a client without anything"},
        {CLIENT("dtDeath = '2022-04-05'"), 2020, "deadOrDormant inactive", "died before the current tax year"},
        {CLIENT("dtDeath = '2022-04-05'"), 1995, "deadOrDormant inactive", "while still alive: all the same"},
        {CLIENT("dtDeath = '2022-04-05'"), 2040, "deadOrDormant inactive", "after it"},
        {CLIENT("dtDeath = '2022-04-06'"), 2024, "", "on its first day"},
        {CLIENT("dtDeath = '2001-01-01', bTrust = 1"), 2020, "trust actualTrust", "a trust does not die"},
        {CLIENT("bActive = 0"), 2020, "inactive", "no longer a client"},
        {CLIENT("bActive = 0") FORM(2020, "bDormant", "0"), 2020, "", "but has a return"},
        {CLIENT("bActive = 0") FORM(2019, "bDormant", "0"), 2020, "inactive", "of another year"},
        {FORM(2020, "bDormant", "1"), 2020, "deadOrDormant inactive dormant", "dormant"},
        {FORM(2020, "bDormant", "1"), 2021, "", "in that year only"},
        {"DELETE FROM BRIXClient;" FORM(2020, "bDormant", "1"), 2020, "deadOrDormant inactive dormant", "no client"},
        {FORM(2020, "dtFinalised", "'2020-05-01'"), 2020, "finalised", "finalised"},
        {CLIENT("strEntityType = 'eSTATE', bTrust = 1"), 2020, "trust estate", "an estate is kept as a trust"},
        {CLIENT("strEntityType = 'Estate'"), 2020, "", "without the flag it is none"},
        {CLIENT("strEntityType = 'Estates', bTrust = 1"), 2020, "trust actualTrust", "another type"},
        {CLIENT("bTrustOption = 1, nTrustKind = 2, dtDeath = '2001-01-01'") FORM(2020, "bDormant", "0")
             INFO("2020", "0", "1"),
         2020, "deadOrDormant inactive actualTrust tradingAllowance", "by its option only: dies, and claims"},
        {CLIENT("bTrustOption = 1, nTrustKind = NULL"), 2020, "actualTrust", "of no kind"},
        {CLIENT("bTrustOption = 1, nTrustKind = 1"), 2020, "", "of kind 1"},
        {CLIENT("bTrustOption = 0, nTrustKind = 2"), 2020, "", "the kind alone"},
        {FORM(2018, "bDormant", "0") INFO("2018", "1", "1"), 2018, "scottish tradingAllowance", "the first year"},
        {FORM(2017, "bDormant", "0") INFO("2017", "1", "1"), 2017, "", "the year before"},
        {FORM(2020, "bDormant", "0") INFO("2020", "2", "0") INFO("2020", "1", "1"), 2020, "", "Welsh; the first row"},
        {CLIENT("bTrust = 1") FORM(2020, "bDormant", "0") INFO("2020", "1", "1"), 2020, "trust actualTrust scottish",
         "no allowance for a trust"},
        {SUBMISSION("2008", "1") SUBMISSION("2008", "2"), 2008, "amending", "the first year, a later row"},
        {SUBMISSION("2007", "2"), 2007, "", "the year before"},
        {SUBMISSION("2019", "2") SUBMISSION("2020", "3"), 2020, "", "another year, another status"},
    };
    for (const auto& [statements, year, yes, why] : rows)
        EXPECT_EQ(Yes(StatusWith(statements, false, year)), yes) << why;
}

TEST_P(StatusOfClients, OfPeriodsOfInactivity)
{
    const ::Test::Row<const char*, short, bool> rows[] = {
        {PERIOD("'2019-04-06'", "'2020-04-05'"), 2020, true, "the year to the day"},
        {PERIOD("'2019-04-06'", "'2020-04-05'"), 2019, false, "the year before"},
        {PERIOD("'2019-04-06'", "'2020-04-05'"), 2021, false, "the year after"},
        {PERIOD("'2019-04-07'", "'2020-04-05'"), 2020, false, "begins a day late"},
        {PERIOD("'2019-04-07'", "NULL"), 2020, false, "the same, open"},
        {PERIOD("'2019-04-06'", "'2020-04-04'"), 2020, false, "ends a day early"},
        {PERIOD("'2015-01-01'", "NULL"), 2016, true, "open end"},
        {PERIOD("'2015-01-01'", "NULL"), 2015, false, "but not the year it begins in"},
        {PERIOD("NULL", "'2020-04-05'"), 1992, true, "open beginning"},
        {PERIOD("NULL", "NULL"), 2020, false, "both null"},
        {PERIOD("NULL", "NULL") PERIOD("'2019-05-01'", "NULL") PERIOD("'2019-01-01'", "NULL"), 2020, true, "any row"},
    };
    for (const auto& [statements, year, isCovered, why] : rows)
        EXPECT_EQ(Yes(StatusWith(statements, false, year)), isCovered ? "deadOrDormant inactive" : "") << why;
}

TEST_P(StatusOfClientsInAFile, WhichMayHoldWhatIsNoDate)
{
    const ::Test::Row<const char*, short> rows[] = {
        {CLIENT("dtDeath = '1800-02-30'"), 2024, "no such day"},
        {FORM(2020, "dtFinalised", "'soon'"), 2020, "no date"},
        {PERIOD("'then'", "NULL"), 2020, "not valid"},
    };
    for (const auto& [statements, year, why] : rows)
        EXPECT_EQ(Yes(StatusWith(statements, false, year)), "") << why;
}

TEST_P(StatusOfClients, OfPartnerships)
{
    const ::Test::Row<const char*, const char*> rows[] = {
        {"UPDATE BRIXPartnership SET dtCessation = '2022-04-05'", "deadOrDormant inactive", "ceased"},
        {"UPDATE BRIXPartnership SET dtCessation = '2022-04-06'", "", "this year"},
        {"UPDATE BRIXPartnership SET bActive = 0", "inactive", "not active"},
        {"UPDATE BRIXPartnership SET bLLP = 1", "llp", "LLP"},
        {"UPDATE BRIXPartnership SET bActive = 0; INSERT INTO BRIXPartnershipTaxForm (lpClientID, nYear, dtFinalised) "
         "VALUES (1, 2020, '2021-01-31')",
         "inactive finalised", "a return changes nothing"},
        {"INSERT INTO BRIXPartnershipTaxForm (lpClientID, nYear, bDormant) VALUES (1, 2020, 1)",
         "deadOrDormant inactive dormant", "dormant"},
        {"INSERT INTO BRIXPartnershipPeriodsInactivity (lpClientID, dtStart) VALUES (1, '2019-04-06')",
         "deadOrDormant inactive", "a period"},
        {"INSERT INTO BRIXPartnershipFBISubmissions (lpClientID, nYear, nStatus) VALUES (1, 2020, 2)", "amending",
         "accepted"},
        {CLIENT("bTrust = 1, dtDeath = '2001-01-01'") FORM(2020, "bDormant", "1") SUBMISSION("2020", "2"), "",
         "the client of that id is another"},
    };
    for (const auto& [statements, yes, why] : rows)
        EXPECT_EQ(Yes(StatusWith(statements, true, 2020)), yes) << why;
}

TEST(TaxPayerStatus, IsAsStored)
{
    EXPECT_TRUE(GetTaxPayerStatusUK() == 0 && IsTaxPayerStatusScottish(1) && IsTaxPayerStatusWelsh(2));
    EXPECT_FALSE(IsTaxPayerStatusScottish(GetTaxPayerStatusWelsh()) || IsTaxPayerStatusWelsh(3));
}

TEST_P(StatusOfClients, OfNobodyAsksNoDatabase)
{
    Quarry::SetConnection(nullptr);
    EXPECT_EQ(IsClientATrust(ClientId(), true), 0);
    EXPECT_EQ(IsClientAnEstate(0), 0);
    EXPECT_EQ(IsActualTrustClient(0), 0);
    EXPECT_EQ(IsPartnershipAnLLP(0), 0);
    EXPECT_FALSE(ClaimTradingAllowance(1, 2017)) << "no return of that year tells";
    Brix::CTaxForm none;
    EXPECT_FALSE(IsScottishTaxPayer(none));
    Quarry::SetConnection(Open());
    CCurrentTaxYearSingleton::Destroy();
    EXPECT_EQ(IsClientATrust(ClientId(1), true) + IsPartnershipAnLLP(1) + IsTaxReturnFinalisedForYear(1, 2020), 0);
    EXPECT_EQ(CCurrentTaxYearSingleton::Loaded(), 0) << "the current year is nobody's business yet";
}
