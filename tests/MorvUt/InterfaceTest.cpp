#include "MorvUt/MorvUt.h" // and nothing else of this house: a program needs no other header

#include <gtest/gtest.h>

#include <memory>
#include <string>

namespace Test
{
std::string TempDir(); // declared here: its header would bring others along
}

namespace
{

/// What a client module brings.
class CalendarYear : public SplitYear
{
public:
    explicit CalendarYear(const Kiln::CDate& date) { Create(date); }
    Kiln::DatePeriod GetYearPeriod(short yearEnd) const override
    {
        return {Kiln::CDate(yearEnd, 1, 1), Kiln::CDate(yearEnd, 12, 31)};
    }
};

} // namespace

TEST(Interface, IsWholeInOneHeader)
{
    CWinApp app;
    EXPECT_EQ(CRegistry().GetInt("NobodySetThis", 5), 5);
    Quarry::SetConnection(
        Cellar::CConnection::Open(::Test::TempDir() + "/practice.db", Cellar::CConnection::Create::IfMissing));
    Brix::CreateSchema(Quarry::GetConnection());
    Brix::CClient client;
    client.AddNew();
    client.SetTrust(true);
    client.Update();
    EXPECT_EQ(IsClientATrust(ClientId(client.GetID()), false), 1);
    const auto store = std::make_shared<HmrcApi::CAuthorisationStore>("GATEWAY1");
    const HmrcApi::CAuthorisation authorisation(store, std::make_shared<HmrcApi::CScope>(),
                                                std::make_shared<HmrcApi::CClientData>());
    EXPECT_FALSE(store->LoadTokens()) << "no such gateway id";
    EXPECT_EQ(CalendarYear(Kiln::CDate(2024, 2, 29)).Format(), "2023/24");
    Quarry::SetConnection(nullptr);
}
