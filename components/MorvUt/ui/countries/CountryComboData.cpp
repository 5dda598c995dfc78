#include "MorvUt/ui/countries/CountryComboData.h"

#include <functional>
#include <map>
#include <set>
#include <string>
#include <string_view>

#include "Afx/text/TextFold.h"
#include "Brix/Records.h"
#include "MorvUt/res/Strings.h"
#include "MorvUt/taxyear/CurrentTaxYear.h"
#include "MorvUt/taxyear/DateRules.h"
#include "MorvUt/taxyear/Singleton.h"
#include "Quarry/Listeners.h"
#include "Quarry/Session.h"

namespace
{

using Kiln::CDate;

constexpr short kFirstYearOfRates = 2007; // real year
constexpr double kNoLimit = 100.0;        // per cent

using Countries = CArray<CCountryData>;
using CountryIndex = std::map<std::string, int, std::less<>>; // text, place in the array

/// What stands beside the array.
struct CountryCacheData
{
    virtual ~CountryCacheData() = default;
    CountryCacheData() = default;
    CountryCacheData(const CountryCacheData&) = default;
    CountryCacheData& operator=(const CountryCacheData&) = default;
    CountryCacheData(CountryCacheData&&) = default;
    CountryCacheData& operator=(CountryCacheData&&) = default;

    short year = 0; // real; 0: nothing was read
    CountryIndex byName, byAbbreviation;
    std::set<std::string, std::less<>> ofNextYear; // names and abbreviations
};

/// Never destroyed: the static member refers to it.
Countries& TheCountries()
{
    static auto& countries = *new Countries;
    return countries;
}

/// It ends when what was read may be wrong.
class CountryCache : public CSingleton<CountryCacheData, CountryCache>
{
public:
    CountryCacheData& Data() noexcept { return m_data; }
    void AddListeners() override
    {
        for (const int table : {Brix::CCountry::kTableNumber, Brix::CDTARate::kTableNumber}) {
            Quarry::AddDataChangedListenerForInsert(table, "BRIX", &OnChanged);
            Quarry::AddDataChangedListenerForUpdate(table, "BRIX", &OnChanged);
            Quarry::AddDataChangedListenerForDelete(table, "BRIX", &OnChanged);
        }
    }
    void RemoveListeners() override
    {
        for (const int table : {Brix::CCountry::kTableNumber, Brix::CDTARate::kTableNumber}) {
            Quarry::RemoveDataChangedListenerForInsert(table, "BRIX", &OnChanged);
            Quarry::RemoveDataChangedListenerForUpdate(table, "BRIX", &OnChanged);
            Quarry::RemoveDataChangedListenerForDelete(table, "BRIX", &OnChanged);
        }
    }
    ~CountryCache() override { TheCountries().RemoveAll(); }

private:
    friend class CSingleton<CountryCacheData, CountryCache>;
    CountryCache() { [[maybe_unused]] static const int number = Quarry::AddRollbackListener(&CountryCache::Destroy); }
    static void OnChanged(const Quarry::DataChange&) { Destroy(); }
};

const char* OrEmpty(const char* text) noexcept { return text ? text : ""; }

/// Whether the current row is a country of the real tax year. A first or last year that is missing leaves that end
/// open.
bool IsCountryOf(const Brix::CCountry& country, int year)
{
    const short first = country.GetFirstYear(), last = country.GetLastYear();
    return (first == 0 || year >= first) && (last == 0 || year <= last);
}

CCountryData CountryOf(const Brix::CCountry& country)
{
    CCountryData data;
    data.name = country.GetName();
    data.abbreviation = country.GetAbbr();
    data.currency = country.GetCurrency();
    data.currencyAbbreviation = country.GetCurrencyAbbr();
    data.isEU = country.GetEU() ? 1 : 0;
    data.euStart = country.GetEUStart();
    data.euEnd = country.GetEUEnd();
    return data;
}

using RatesByCountry = std::map<long, CArray<CCountryData::DTARate>>; // by the country's id

RatesByCountry ReadRates(short year)
{
    RatesByCountry rates;
    if (year < kFirstYearOfRates)
        return rates;
    const CDate yearEnd = GetTaxYearEnd(year);
    Brix::CDTARate rate;
    for (rate.Open({}, {{Brix::CDTARate::kEffective}}); !rate.IsEOL(); rate.MoveNext())
        if (const CDate effective = rate.GetEffective(); effective.IsNotLaterDay(yearEnd))
            rates[rate.GetCountryID()].Add({effective, rate.GetDividend(), rate.GetInterest(), rate.GetRoyalty()});
    return rates;
}

/// Enters an entry under its texts, where no earlier one stands.
void Enter(const CCountryData& country, int place, CountryCacheData& cache)
{
    cache.byName.emplace(country.name.Str(), place);
    cache.byAbbreviation.emplace(country.abbreviation.Str(), place);
}

void NoteForNextYear(const CCountryData& country, CountryCacheData& cache)
{
    if (country.name != LibraryText(IDS_COUNTRY_UNASSIGNED))
        for (const CString& text : {country.name, country.abbreviation})
            if (!text.IsEmpty())
                cache.ofNextYear.insert(text.Str());
}

void ReadCountries(Countries& countries, CountryCacheData& cache)
{
    RatesByCountry rates = ReadRates(cache.year);
    Brix::CCountry country;
    for (country.Open({}, {{Brix::CCountry::kName}}); !country.IsEOL(); country.MoveNext()) {
        CCountryData data = CountryOf(country);
        if (IsCountryOf(country, cache.year + 1))
            NoteForNextYear(data, cache);
        if (!IsCountryOf(country, cache.year))
            continue;
        data.dtaRates = std::move(rates[country.GetID()]);
        Enter(data, countries.Add(data), cache);
    }
}

/// The cache, and with it the array, as they hold for the current tax year.
template<class Load>
const CountryCacheData& Current(Load load)
{
    if (CountryCache::Instance().Data().year != GetCurrentRealTaxYear())
        load();
    return CountryCache::Instance().Data();
}

const CCountryData* At(const CountryIndex& index, std::string_view text)
{
    const auto found = index.find(text);
    return found == index.end() ? nullptr : &TheCountries()[found->second];
}

/// The first country whose text is that one in any case.
const CCountryData* FindNoCase(CString CCountryData::*member, const char* text)
{
    for (const CCountryData& country : TheCountries())
        if (Afx::EqualNoCase((country.*member).View(), OrEmpty(text)))
            return &country;
    return nullptr;
}

int Exists(const CCountryData* country, int euOnly = 0) noexcept
{
    return country && (euOnly == 0 || country->isEU != 0) ? 1 : 0;
}

template<class Value>
void Tell(Value* place, const Value& value)
{
    if (place)
        *place = value;
}

int Fill(const CCountryData* country, CString& abbr, CString& currency, CString& currencyAbbr, int* isEU,
         CDate* euStart, CDate* euEnd)
{
    if (!country)
        return 0;
    abbr = country->abbreviation;
    currency = country->currency;
    currencyAbbr = country->currencyAbbreviation;
    Tell(isEU, country->isEU);
    Tell(euStart, country->euStart);
    Tell(euEnd, country->euEnd);
    return 1;
}

/// The rates in force on that day: those that took effect last.
CCountryData::DTARate RatesOn(const CCountryData& country, const CDate& date)
{
    CCountryData::DTARate inForce{{}, kNoLimit, kNoLimit, kNoLimit};
    for (const CCountryData::DTARate& rate : country.dtaRates)
        if (rate.effective.IsNotLaterDay(date))
            inForce = rate;
    return inForce;
}

} // namespace

CArray<CCountryData>& TXCountryComboData::s_arrCountries = TheCountries();

void TXCountryComboData::LoadCountryList()
{
    Countries countries;
    CountryCacheData cache;
    CCountryData unassigned;
    unassigned.name = LibraryText(IDS_COUNTRY_UNASSIGNED);
    Enter(unassigned, countries.Add(unassigned), cache);
    cache.year = GetCurrentRealTaxYear();
    if (Quarry::HasConnection())
        ReadCountries(countries, cache);
    CountryCache::Instance().Data() = std::move(cache);
    s_arrCountries = std::move(countries);
}

CString TXCountryComboData::UpdateCountryAbbr(const char* abbr)
{
    constexpr std::string_view kRenamed[][2] = {{"GSY", "GGY"}, {"JSY", "JEY"}};
    for (const auto& [before, now] : kRenamed)
        if (Afx::EqualNoCase(OrEmpty(abbr), before))
            return CString(now);
    return CString(OrEmpty(abbr));
}

const CArray<CCountryData>& TXCountryComboData::GetCountries()
{
    Current(&LoadCountryList);
    return s_arrCountries;
}

int TXCountryComboData::DoesCountryExist(const char* name, int euOnly)
{
    return Exists(At(Current(&LoadCountryList).byName, OrEmpty(name)), euOnly);
}

int TXCountryComboData::DoesCountryExistCI(const char* name, int euOnly)
{
    Current(&LoadCountryList);
    return Exists(FindNoCase(&CCountryData::name, name), euOnly);
}

int TXCountryComboData::DoesCountryAbbrExist(const char* abbr)
{
    return Exists(At(Current(&LoadCountryList).byAbbreviation, UpdateCountryAbbr(abbr).View()));
}

int TXCountryComboData::DoesCurrencyAbbrExistCI(const char* currencyAbbr)
{
    Current(&LoadCountryList);
    return Exists(FindNoCase(&CCountryData::currencyAbbreviation, currencyAbbr));
}

int TXCountryComboData::GetCountryData(const char* name, CString& abbr, CString& currency, CString& currencyAbbr,
                                       int* isEU, CDate* euStart, CDate* euEnd)
{
    const CCountryData* const country = At(Current(&LoadCountryList).byName, OrEmpty(name));
    return Fill(country, abbr, currency, currencyAbbr, isEU, euStart, euEnd);
}

int TXCountryComboData::GetCountryDataCI(const char* name, CString& abbr, CString& currency, CString& currencyAbbr,
                                         int* isEU, CDate* euStart, CDate* euEnd)
{
    Current(&LoadCountryList);
    return Fill(FindNoCase(&CCountryData::name, name), abbr, currency, currencyAbbr, isEU, euStart, euEnd);
}

int TXCountryComboData::GetCountryAbbrDTARates(const char* abbr, CDate date, double& dividend, double& interest,
                                               double& royalty)
{
    const CountryCacheData& cache = Current(&LoadCountryList);
    const CCountryData* const country = At(cache.byAbbreviation, UpdateCountryAbbr(abbr).View());
    if (!country)
        return 0;
    const CCountryData::DTARate rates = RatesOn(*country, date.IsValid() ? date : GetTaxYearEnd(cache.year));
    dividend = rates.dividend;
    interest = rates.interest;
    royalty = rates.royalty;
    return 1;
}

int TXCountryComboData::GetCountryAbbrDTADividendRate(const char* abbr, CDate date, double& dividend)
{
    double interest = 0, royalty = 0;
    return GetCountryAbbrDTARates(abbr, date, dividend, interest, royalty);
}

int TXCountryComboData::GetCountryAbbrDTAInterestRate(const char* abbr, CDate date, double& interest)
{
    double dividend = 0, royalty = 0;
    return GetCountryAbbrDTARates(abbr, date, dividend, interest, royalty);
}

int TXCountryComboData::GetCountryAbbrDTARoyaltyRate(const char* abbr, CDate date, double& royalty)
{
    double dividend = 0, interest = 0;
    return GetCountryAbbrDTARates(abbr, date, dividend, interest, royalty);
}

int TXCountryComboData::GetCountryAbbrNumberOfDTAs(const char* abbr)
{
    const CCountryData* const country = At(Current(&LoadCountryList).byAbbreviation, UpdateCountryAbbr(abbr).View());
    return country ? country->dtaRates.GetSize() : -1;
}

int TXCountryComboData::CanCarryForwardCountry(const char* country)
{
    const auto& ofNextYear = Current(&LoadCountryList).ofNextYear;
    const auto isThere = [&](std::string_view text) { return ofNextYear.find(text) != ofNextYear.end(); };
    return isThere(OrEmpty(country)) || isThere(UpdateCountryAbbr(country).View()) ? 1 : 0;
}
