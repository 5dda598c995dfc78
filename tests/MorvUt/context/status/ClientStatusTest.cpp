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

using StatusOfClients = ::Test::StatusTest;
ON_BOTH_DATABASES(StatusOfClients);
using StatusOfClientsInAFile = ::Test::StatusTest;
ON_EMBEDDED(StatusOfClientsInAFile);

} // namespace

TEST_P(StatusOfClients, IsToldByTheirRows)
{
    for (const auto& [statements, isPartnership, year, yes, why] :
         ::Test::Table<const char*, bool, short, const char*>("MorvUt/context/status/ClientStatus.tsv"))
        EXPECT_EQ(Yes(StatusWith(statements, isPartnership, year)), yes) << why;
}

TEST_P(StatusOfClientsInAFile, WhichMayHoldWhatIsNoDate)
{
    for (const auto& [statements, year, why] :
         ::Test::Table<const char*, short>("MorvUt/context/status/ClientStatus.tsv"))
        EXPECT_EQ(Yes(StatusWith(statements, false, year)), "") << why;
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
