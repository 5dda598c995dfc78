#include "ReferenceData.h"

#include <initializer_list>

#include "Rows.h"

namespace Morv::Sample
{

namespace
{

using Kiln::CAmt;
using Kiln::CDate;

/// Per cent; a dividend below 0 stands for no agreement.
struct Rates
{
    double dividend = -1, interest = 0, royalty = 0;
};

struct Country
{
    const char* name;
    const char* abbreviation;
    const char* currency;
    const char* currencyAbbreviation;
    CDate joinedEU = {}, leftEU = {};
    Rates rates = {};
    short firstYear = 0, lastYear = 0; // 0: open
};

/// One of each sort: members of the EU and others, with an agreement, with none, with an older abbreviation, with a
/// currency that changed.
const std::initializer_list<Country>& Countries()
{
    static const CDate first(1958, 1, 1), second(1973, 1, 1);
    static const std::initializer_list<Country> countries{
        {"Australia", "AUS", "Australian dollar", "AUD", {}, {}, {15, 10, 5}},
        {"Brazil", "BRA", "Brazilian real", "BRL"},
        {"Croatia", "HRV", "Kuna", "HRK", CDate(2013, 7, 1), {}, {10, 5, 5}, 0, 2023},
        {"Croatia", "HRV", "Euro", "EUR", CDate(2013, 7, 1), {}, {10, 5, 5}, 2024},
        {"France", "FRA", "Euro", "EUR", first, {}, {15, 0, 0}},
        {"Germany", "DEU", "Euro", "EUR", first, {}, {15, 0, 0}},
        {"Guernsey", "GGY", "Pound sterling", "GBP"},
        {"Ireland", "IRL", "Euro", "EUR", second, {}, {15, 0, 0}},
        {"Italy", "ITA", "Euro", "EUR", first, {}, {15, 10, 8}},
        {"Jersey", "JEY", "Pound sterling", "GBP"},
        {"Serbia and Montenegro", "SCG", "Serbian dinar", "CSD", {}, {}, {15, 10, 10}, 0, 2007},
        {"Switzerland", "CHE", "Swiss franc", "CHF", {}, {}, {15, 0, 0}},
        {"United States", "USA", "US dollar", "USD", {}, {}, {15, 0, 0}},
    };
    return countries;
}

void AddRates(long country, const CDate& effective, const Rates& rates)
{
    Add<Brix::CDTARate>([&](Brix::CDTARate& row) {
        row.SetCountryID(country);
        row.SetEffective(effective);
        row.SetDividend(rates.dividend);
        row.SetInterest(rates.interest);
        row.SetRoyalty(rates.royalty);
    });
}

} // namespace

void AddReferenceYears()
{
    const CAmt now = CAmt::FromPence(85'000'00), before = CAmt::FromPence(15'000'00);
    for (int year = 2014; year <= 2021; ++year)
        Add<Brix::CPFile>([&](Brix::CPFile& row) {
            row.SetYear(static_cast<short>(year));
            row.SetTurnoverSole(now);
            row.SetTurnoverSoleOld(before);
            row.SetTurnoverPartnership(now);
            row.SetTurnoverPartnershipOld(before);
        });
}

void AddCountries()
{
    for (const Country& country : Countries()) {
        const long id = Add<Brix::CCountry>([&](Brix::CCountry& row) {
            row.SetName(country.name);
            row.SetAbbr(country.abbreviation);
            row.SetCurrency(country.currency);
            row.SetCurrencyAbbr(country.currencyAbbreviation);
            row.SetEU(country.joinedEU.IsValid());
            row.SetEUStart(country.joinedEU);
            row.SetEUEnd(country.leftEU);
            if (country.firstYear != 0)
                row.SetFirstYear(country.firstYear);
            if (country.lastYear != 0)
                row.SetLastYear(country.lastYear);
        });
        if (country.rates.dividend >= 0) {
            AddRates(id, CDate(1976, 4, 6), {country.rates.dividend + 10, country.rates.interest + 5, 10});
            AddRates(id, CDate(2005, 4, 6), country.rates);
        }
    }
}

void AddBanks()
{
    for (const char* const name :
         {"Aldgate Savings Bank", "Bramley Building Society", "Northern & Border Bank", "Pennine Building Society"})
        Add<Brix::CBank>([&](Brix::CBank& bank) { bank.SetName(name); });
}

} // namespace Morv::Sample
