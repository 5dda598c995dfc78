// What screens read of the practice: countries, banks, those among whom an amount is split.

#include "MorvUt/taxyear/CurrentTaxYear.h"
#include "MorvUt/ui/countries/CountryComboData.h"
#include "MorvUt/ui/grids/EntitiesOf.h"
#include "MorvUt/ui/lists/BankNames.h"
#include "support/Practice.h"
#include "support/Story.h"

namespace
{

using Kiln::CDate;
using Data = TXCountryComboData;

class ScreenRecords : public ::Test::OnPractice, protected ::Test::Stories
{
protected:
    ScreenRecords()
    {
        In("2024");
        On("Sql", Script);
        On("In", In);
        const std::pair<const char*, int (*)(const char*)> questions[] = {
            {"Abbreviation", Data::DoesCountryAbbrExist},
            {"Currency in any case", Data::DoesCurrencyAbbrExistCI},
            {"Name", [](const char* name) { return Data::DoesCountryExist(name); }},
            {"Name in any case", [](const char* name) { return Data::DoesCountryExistCI(name); }},
            {"Name of the EU", [](const char* name) { return Data::DoesCountryExist(name, 1); }},
            {"Name of the EU in any case", [](const char* name) { return Data::DoesCountryExistCI(name, 1); }},
            {"In the next year, too:", Data::CanCarryForwardCountry},
            {"Sets of rates of", Data::GetCountryAbbrNumberOfDTAs},
        };
        for (const auto& [words, ask] : questions)
            Is(words, [ask = ask](const std::string& name) { return ask(name == "null" ? nullptr : name.c_str()); });
        On("Data of", [](const std::string& name) { return DataOf(name, Data::GetCountryData); });
        On("Data in any case of", [](const std::string& name) { return DataOf(name, Data::GetCountryDataCI); });
        Is("Rates of", RatesOf);
        On("Countries",
           [] { return Each(Data::GetCountries(), [](const CCountryData& country) { return country.name.Str(); }); });
        On("Partnership", [](const std::string& id) { return Told(EntitiesOf(PartnershipId(std::stoi(id)))); });
        On("Client", [](const std::string& id) { return Told(EntitiesOf(ClientId(std::stoi(id)))); });
        On("Joint source", [](const std::string& id) { return Told(EntitiesOfJointSource(std::stoi(id))); });
        Quarry::GetConnection().OnSent([this](std::string_view) { ++m_sent; });
        Is("Statements sent", [this] { return std::exchange(m_sent, 0); });
        On("The dividend of rate", [](const std::string& row, const std::string& percent) {
            Brix::CDTARate rates;
            rates.Open();
            rates.MoveTo(std::stoi(row) - 1);
            rates.SetDividend(std::stod(percent));
            rates.Update();
        });
        Is("Rates while it is deleted, of", RatesWhileDeleted);
        On("No practice is open", [] { Quarry::SetConnection(nullptr); });
        On("Banks", [] { return Each(BankNames(), [](const CString& name) { return name.Str(); }); });
    }
    ~ScreenRecords() override { CCurrentTaxYearSingleton::Destroy(); }

    static void In(const std::string& year) { SetCurrentTaxYear(static_cast<short>(std::stoi(year) - 1991)); }
    static std::string DataOf(const std::string& name, decltype(Data::GetCountryData) get)
    {
        CString abbr, currency, currencyAbbr;
        int isEU = 0;
        CDate start, end(1, 1, 1);
        EXPECT_EQ(get(name.c_str(), abbr, currency, currencyAbbr, &isEU, &start, &end), 1);
        return (abbr + ", " + currency + ", " + currencyAbbr + ", " + start.FormatIso() + ".." + end.FormatIso())
                   .Str() +
               (isEU ? ", EU" : "");
    }
    /// For dividends, interest and royalties: "FRA on 5/4/2010", late on that day.
    static std::string RatesOf(const std::string& country)
    {
        const std::size_t on = country.find(" on ");
        const std::string abbr = country.substr(0, on);
        CDate day;
        if (on != country.npos && day.ParseDate(country.c_str() + on + 4))
            day = CDate::FromOleDate(day.GetOleDate() + 0.99);
        double dividend = -1, interest = -1, royalty = -1;
        Data::GetCountryAbbrDTADividendRate(abbr.c_str(), day, dividend);
        Data::GetCountryAbbrDTAInterestRate(abbr.c_str(), day, interest);
        Data::GetCountryAbbrDTARoyaltyRate(abbr.c_str(), day, royalty);
        CString rates;
        rates.Format("%g, %g, %g", dividend, interest, royalty);
        return rates.Str();
    }
    template<class List, class Tell>
    static std::string Each(const List& list, Tell tell)
    {
        std::string all;
        for (const auto& one : list)
            all += tell(one) + '\n';
        return all;
    }
    static std::string Told(const CEntityArray& entities)
    {
        return Each(entities,
                    [](const CEntity& entity) { return std::to_string(entity.id) + ' ' + entity.name.Str(); });
    }
    static std::string RatesWhileDeleted(const std::string& country)
    {
        const Quarry::CTransaction rolledBack;
        Brix::CCountry countries;
        countries.Open();
        countries.MoveTo(std::stoi(country) - 1);
        countries.Delete();
        return RatesOf(country);
    }

    int m_sent = 0;
};

ON_BOTH_DATABASES(ScreenRecords);

constexpr char kStories[] = "MorvUt/ui/ScreenRecords.story";

} // namespace

TEST_P(ScreenRecords, CountriesAreThoseOfTheYearWithTheRatesOfTheirDay)
{
    Play(kStories, "Countries_are_those_of_the_year_with_the_rates_of_their_day");
}

TEST_P(ScreenRecords, EntitiesAndBanksAreInOrder) { Play(kStories, "Entities_and_banks_are_in_order"); }

TEST_P(ScreenRecords, CountriesAreReadInTwoStatementsUntilSomethingChanges)
{
    Play(kStories, "Countries_are_read_in_two_statements_until_something_changes");
}
