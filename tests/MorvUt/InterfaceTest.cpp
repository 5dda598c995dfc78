#include "MorvUt/MorvUt.h" // and nothing else of this house: a program needs no other header

#include <gtest/gtest.h>

#include <string>
#include <type_traits>

namespace Test
{
std::string TempDir(); // declared here: its header would bring others along
}

static_assert(std::is_abstract_v<SplitYear>); // what a client module derives from

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
    EXPECT_FALSE(HmrcApi::CAuthorisationStore("GATEWAY1").LoadTokens()) << "no such gateway id";
    EXPECT_EQ(GetTaxYear(Kiln::CDate(2024, 2, 29)), 2024);
    Quarry::SetConnection(nullptr);
}
