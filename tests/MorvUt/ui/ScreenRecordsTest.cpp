// What screens read of the practice: countries, banks, those among whom an amount is split.

#include <gtest/gtest.h>

#include "MorvUt/taxyear/CurrentTaxYear.h"
#include "MorvUt/ui/countries/CountryComboData.h"
#include "MorvUt/ui/grids/EntitiesOf.h"
#include "MorvUt/ui/lists/BankNames.h"
#include "support/Case.h"
#include "support/Practice.h"

namespace
{

using Kiln::CDate;
using Data = TXCountryComboData;

class ScreenRecords : public ::Test::OnPractice
{
protected:
    ScreenRecords() { In(2024); }
    ~ScreenRecords() override { CCurrentTaxYearSingleton::Destroy(); }

    static void AddCountries()
    {
        Sql("INSERT INTO BRIXCountry (lID, strName, strAbbr, strCurrency, strCurrencyAbbr, bEU, dtEUStart, "
            "nFirstYear, nLastYear) VALUES (1, 'Jersey', 'JEY', 'Pound', 'GBP', 0, NULL, NULL, NULL), "
            "(2, 'France', 'FRA', 'Euro', 'EUR', 1, '1958-01-01', NULL, NULL), "
            "(3, 'Croatia', 'HRV', 'Kuna', 'HRK', 1, NULL, NULL, 2023), "
            "(4, 'Croatia', 'HRV', 'Euro', 'EUR', 1, NULL, 2024, NULL), "
            "(5, '\xC3\x85land', 'ALA', 'Euro', 'EUR', 1, NULL, 2006, 2007), "
            "(6, 'France', 'FRX', 'Franc', 'FRF', 0, NULL, NULL, NULL)");
        Sql("INSERT INTO BRIXDTARate (lID, lCountryID, dtEffective, dblDividend, dblInterest, dblRoyalty) "
            "VALUES (1, 2, '2010-04-06', 15, 0, 5), (2, 2, '2007-04-05', 20, 10, 2.5), "
            "(3, 2, '2007-04-06', 17, 10, 2.5), (4, 2, NULL, 1, 1, 1), (5, 3, '1990-01-01', 12, 10, 10)");
    }
    static void In(int realYear) { SetCurrentTaxYear(static_cast<short>(realYear - 1991)); }
    static double Dividend(const char* abbr, const CDate& date = CDate())
    {
        double rate = -1;
        return Data::GetCountryAbbrDTADividendRate(abbr, date, rate) ? rate : -2;
    }
    static std::string NamesOf(const auto& list)
    {
        std::string names;
        for (const auto& entry : list)
            names += (names.empty() ? "" : ", ") + entry.name.Str();
        return names;
    }
    /// How many statements are sent when the rate is asked for.
    static int Sent(double expected)
    {
        int statements = 0;
        Quarry::GetConnection().OnSent([&](std::string_view) { ++statements; });
        EXPECT_EQ(Dividend("7"), expected);
        Quarry::GetConnection().OnSent(nullptr);
        return statements;
    }
};

ON_BOTH_DATABASES(ScreenRecords);

} // namespace

TEST_P(ScreenRecords, CountriesAreThoseOfTheYear)
{
    AddCountries();
    // year, there in it, there in the next
    const ::Test::Row<int, int, int> rows[] = {
        {2004, 0, 0, "none"}, {2005, 0, 1, "before its first"}, {2006, 1, 1, "its first"}, {2007, 1, 0, "its last"}};
    for (const auto& [year, isThere, isCarried, why] : rows) {
        In(year);
        EXPECT_EQ(Data::DoesCountryAbbrExist("ALA"), isThere) << why;
        EXPECT_EQ(Data::DoesCountryExistCI("\xC3\xA5LAND"), isThere) << "the house's folding";
        EXPECT_EQ(Data::CanCarryForwardCountry("ALA"), isCarried) << why;
        EXPECT_EQ(Data::CanCarryForwardCountry("\xC3\x85land"), isCarried) << why;
    }
    CString abbr, currency, currencyAbbr;
    for (const auto& [year, itsCurrency] : {std::pair(2023, "Kuna"), std::pair(2024, "Euro")}) {
        In(year);
        EXPECT_EQ(Data::GetCountryDataCI("CROATIA", abbr, currency, currencyAbbr), 1);
        EXPECT_EQ(currency, itsCurrency);
    }
    EXPECT_EQ(NamesOf(Data::GetCountries()), "Unassigned, Croatia, France, France, Jersey");
    int isEU = 0;
    CDate start, end(1, 1, 1);
    ASSERT_EQ(Data::GetCountryData("France", abbr, currency, currencyAbbr, &isEU, &start, &end), 1);
    EXPECT_TRUE(abbr == "FRA" && isEU == 1 && start == CDate(1958, 1, 1) && end.IsNull()) << "the first of two";
    for (const char* const known : {"JEY", "JSY", "jsy", "", static_cast<const char*>(nullptr)})
        EXPECT_EQ(Data::DoesCountryAbbrExist(known), 1) << known;
    EXPECT_FALSE(Data::DoesCountryAbbrExist("jey") || Data::DoesCountryExist("FRANCE") ||
                 Data::DoesCountryExist("Jersey", 1) || Data::DoesCurrencyAbbrExistCI("HRK") ||
                 Data::CanCarryForwardCountry("Unassigned") || Data::CanCarryForwardCountry(""));
    EXPECT_TRUE(Data::DoesCountryExistCI("fRANCE", 1) && Data::DoesCurrencyAbbrExistCI("gbp"));
}

TEST_P(ScreenRecords, CountriesHaveTheRatesOfTheirDay)
{
    AddCountries();
    // current year, country, date; dividend rate, number of sets
    const ::Test::Row<int, const char*, CDate, double, int> rows[] = {
        {2006, "FRA", {2007, 4, 5}, 100.0, 0, "none before 2007"},
        {2007, "FRA", {2007, 4, 4}, 100.0, 1, "before the first"},
        {2007, "FRA", {2010, 4, 6}, 20.0, 1, "a later year's is not known"},
        {2007, "FRA", {}, 20.0, 1, "the year's last day"},
        {2024, "FRA", CDate::FromOleDate(CDate(2010, 4, 5).GetOleDate() + 0.99), 17.0, 3, "whole days"},
        {2024, "FRA", CDate::Invalid(), 15.0, 3, "no date"},
        {2024, "HRV", {}, 100.0, 0, "the other year's row has them"},
        {2024, "XXX", {}, -2, -1, "no such country"},
    };
    for (const auto& [year, abbr, date, dividend, number, why] : rows) {
        In(year);
        EXPECT_EQ(Dividend(abbr, date), dividend) << why;
        EXPECT_EQ(Data::GetCountryAbbrNumberOfDTAs(abbr), number) << why;
    }
    double interest = -1, royalty = -1;
    EXPECT_TRUE(Data::GetCountryAbbrDTAInterestRate("FRA", {2009, 1, 1}, interest) && interest == 10);
    EXPECT_TRUE(Data::GetCountryAbbrDTARoyaltyRate("FRA", {2009, 1, 1}, royalty) && royalty == 2.5);
}

TEST_P(ScreenRecords, CountriesAreReadInTwoStatementsUntilSomethingChanges)
{
    Brix::CCountry countries;
    Brix::CDTARate rates;
    Quarry::CTransaction transaction(Cellar::Intent::Write);
    for (int i = 1; i <= 300; ++i) {
        countries.AddNew();
        countries.Set(0, i);
        countries.SetAbbr(std::to_string(i));
    }
    countries.UpdateAll();
    for (int i = 0; i < 2000; ++i) {
        rates.AddNew();
        rates.SetCountryID(i % 300 + 1);
        rates.SetEffective(CDate(2000 + i / 300, 1, 1));
        rates.SetDividend(i / 300);
    }
    rates.UpdateAll();
    transaction.Commit();
    EXPECT_EQ(Sent(6.0), 2);
    EXPECT_EQ(Sent(6.0), 0);
    In(2023);
    EXPECT_EQ(Sent(6.0), 2) << "another year";
    rates.MoveTo(1806); // the last one of country 7
    rates.SetDividend(2.5);
    rates.Update();
    EXPECT_EQ(Sent(2.5), 2) << "a changed record";
    {
        const Quarry::CTransaction rolledBack;
        countries.MoveTo(6);
        countries.Delete();
        EXPECT_EQ(Dividend("7"), -2);
    }
    EXPECT_EQ(Dividend("7"), 2.5) << "after a rollback";
    Quarry::SetConnection(nullptr);
    EXPECT_EQ(NamesOf(Data::GetCountries()), "Unassigned") << "no practice";
}

TEST_P(ScreenRecords, EntitiesAndBanksAreInOrder)
{
    Sql("INSERT INTO BRIXClient (lID, strName) VALUES (1, 'Zoe'), (2, 'adam'), (3, 'Bert'), (4, 'Zoe')");
    Sql("INSERT INTO BRIXPartnership (lID, strName) VALUES (1, 'Oak'), (2, 'ash')");
    Sql("INSERT INTO BRIXPartnershipClients (lID, lClientID, lpClientID) VALUES (1, 4, 1), (2, 1, 1), "
        "(3, 2, 1), (4, 3, 1), (5, 2, 1), (6, 99, 1), (7, 1, 2)");
    Sql("INSERT INTO BRIXJointIncomeSourceTaxYear (lID, lClientID, lSpouseID) VALUES (1, 1, 2), (2, 3, 99)");
    Sql("INSERT INTO BRIXBank (lID, strName) VALUES (1, 'Northern'), (2, NULL), (3, 'abbey')");
    const CEntityArray members = EntitiesOf(PartnershipId(1));
    EXPECT_EQ(NamesOf(members), "adam, Bert, Zoe, Zoe") << "each once, by name, one without a record left out";
    EXPECT_TRUE(members.Find(4, 0) == 3 && members.Find(4, 1) == -1) << "of one name by their ids";
    EXPECT_EQ(NamesOf(EntitiesOf(ClientId(1))), "Zoe, ash, Oak");
    EXPECT_EQ(NamesOf(EntitiesOfJointSource(1)), "Zoe, adam") << "the client first";
    EXPECT_EQ(NamesOf(EntitiesOfJointSource(2)) + NamesOf(EntitiesOfJointSource(3)), "Bert");
    EXPECT_EQ(BankNames(), (std::vector<CString>{"abbey", "Northern"}));
}
