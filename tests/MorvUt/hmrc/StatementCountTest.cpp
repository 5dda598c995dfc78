#include "MorvUt/hmrc/StatementCount.h"

#include "MorvUt/hmrc/HmrcTest.h"
#include "MorvUt/taxyear/CurrentTaxYear.h"

namespace
{

class StatementCount : public HmrcTest
{
protected:
    StatementCount() { SetCurrentTaxYear(kYear - 1991); }
};

} // namespace

TEST_F(StatementCount, IsSmallAndTheSameWhoeverElseIsThere)
{
    const auto kEverything = HmrcApi::IEndpointOverride::Everything;
    const std::vector<int> alone = CountStatements(m_client, kGateway, kEverything);
    Quarry::SetConnection(Open("full.db"));
    Brix::CreateSchema(Quarry::GetConnection());
    Fill();
    ::Test::AddClients(1000);
    EXPECT_EQ(CountStatements(m_client, kGateway, kEverything), alone);
}
