#include "MorvUt/context/AccruedAllowance.h"

#include <thread>

#include "MorvUt/taxyear/CurrentTaxYear.h"
#include "Shellkit/NamedItems.h"
#include "support/Practice.h"

namespace
{

class AccruedAllowance : public ::Test::OnPractice
{
protected:
    ~AccruedAllowance() override { CCurrentTaxYearSingleton::Destroy(); }

    /// A return with an interest row "Bank" of an addition of 500 and an income of 300.
    static void AddYear(int year, Cellar::Value broughtForward = nullptr, long client = 1)
    {
        Sql("INSERT INTO BRIXTaxForm (lClientID, nYear) VALUES (%ld, %d)", client, year);
        Sql("INSERT INTO BRIXNewInterest (lTaxFormID, strName, amtBFWD, amtAddition, amtIncome) "
            "SELECT MAX(lID), 'Bank', %ld, 500, 300 FROM BRIXTaxForm",
            broughtForward);
    }
    /// In what the database's own statements count: ten-thousandths of a pound, or pounds.
    static std::int64_t Ask(short year, long client = 1, int type = 0, const char* name = "Bank", bool flagA = false,
                            bool flagB = false)
    {
        return GetAccruedAllowanceBFWD(client, static_cast<SchedType>(type), name, flagA, flagB, year).GetValue() *
               ::Test::UnitsOfAPound() / 10'000;
    }
    /// The statements that asking takes.
    static int Statements(short year, long client = 1)
    {
        int statements = 0;
        Quarry::GetConnection().OnSent([&](std::string_view) { ++statements; });
        Ask(year, client);
        Quarry::GetConnection().OnSent(nullptr);
        return statements;
    }
};

ON_BOTH_DATABASES(AccruedAllowance);

} // namespace

TEST_P(AccruedAllowance, IsWalkedBackToWhereItWasEntered)
{
    for (const int year : {2001, 2002, 2003, 2004, 2021, 2022})
        AddYear(year);
    AddYear(2020, 1000);
    AddYear(2023, 50);
    // 2003 takes nothing from 2002, and 2024 has no return
    for (const auto& [year, left] :
         {std::pair(2022, 1600), {2020, 1200}, {2023, 250}, {2003, 200}, {2004, 400}, {2024, 0}})
        EXPECT_EQ(Ask(static_cast<short>(year)), left) << year;
    Quarry::SetConnection(nullptr);
    EXPECT_EQ(Ask(2002), 0) << "and no practice is open";
}

TEST_P(AccruedAllowance, IsMadeOfTheSourcesFigures)
{
    for (const auto& [rows, why] : ::Test::Table<std::string>("MorvUt/context/AccruedAllowanceRows.tsv"))
        Script(::Test::ReplacedAll("INSERT INTO BRIX" + rows, "MOST",
                                   ::Test::IsOnServer() ? "922337203685477.5807" : "9223372036854775807"));
    for (const auto& [type, name, flagA, flagB, left, why] :
         ::Test::Table<int, const char*, bool, bool, int>("MorvUt/context/AccruedAllowance.tsv"))
        EXPECT_EQ(Ask(2024, 1, type, name, flagA, flagB), left) << why;
}

TEST_P(AccruedAllowance, IsRememberedForTwoClientsOfAThread)
{
    for (const long client : {1, 2, 3})
        for (const int year : {2022, 2023, 2024})
            AddYear(year, nullptr, client);
    EXPECT_EQ(Statements(2023, 1), 5) << "two years of two statements, and a year without return";
    EXPECT_EQ(Statements(2022, 1), 0) << "on the way";
    EXPECT_EQ(Statements(2024, 1), 2) << "one more year";
    // two clients in turns, and a third one, for whom both are forgotten
    for (const auto& [client, count] : {std::pair(2, 7), {1, 0}, {2, 0}, {3, 7}, {1, 7}, {3, 0}, {2, 7}, {3, 7}})
        EXPECT_EQ(Statements(2024, client), count) << client;
    SetCurrentTaxYear(10);
    EXPECT_GT(Statements(2024, 3), 0) << "another current year";
    ClearAccruedAllowanceBFWDCache();
    EXPECT_GT(Statements(2024, 3), 0) << "cleared";

    const auto elsewhere = [](auto action) { std::thread(action).join(); };
    for (int i = 0; i < 2; ++i)
        elsewhere([] { EXPECT_GT(Statements(2024, 3), 0) << "a new thread remembers nothing"; });
    elsewhere(&ClearAccruedAllowanceBFWDCache);
    EXPECT_EQ(Statements(2024, 3), 0) << "and clears nothing of others";
    elsewhere([] { ::Test::Add<Brix::CTaxForm>([](Brix::CTaxForm&) {}); });
    EXPECT_GT(Statements(2024, 3), 0) << "but its change is noticed by all";
    Shellkit::Shutdown();
    EXPECT_GT(Statements(2024, 3), 0) << "after a shut-down";
}

TEST_P(AccruedAllowance, IsReadAnewWhenItsSourcesChange)
{
    AddYear(2024, 0);
    EXPECT_EQ(Ask(2024), 200);
    Quarry::BeginTransaction();
    Sql("UPDATE BRIXNewInterest SET amtBFWD = 5");
    EXPECT_EQ(Ask(2024), 205);
    Quarry::Rollback();
    EXPECT_EQ(Ask(2024), 200) << "rolled back";
    const Practice another("another.db");
    EXPECT_EQ(Ask(2024), 0) << "another practice";
    for (const char* const table :
         {"TaxForm", "NewInterest", "NewInterestGrid", "NewInterestJoint", "NewInterestJointGrid", "OtherForeignIncome",
          "OtherForeignIncomeGrid", "PartnershipAccruedIncome", "BTaxProprietor", "BTaxAccountingPeriod",
          "BTaxNoTaxInvestmentIncome", "BTaxNoTaxInvestmentIncomeSplit"}) {
        Quarry::CDataList row(*Brix::FindTable(std::string("BRIX") + table));
        for (const char* const event : {"insert", "update", "delete"}) {
            *event == 'i' ? row.AddNew() : row.Set(1, 4711); // some parent
            *event == 'd' ? row.Delete() : row.Update();
            EXPECT_GT(Statements(2024), 0) << event << ' ' << table;
            EXPECT_EQ(Statements(2024), 0) << event << ' ' << table;
        }
    }
}
