#pragma once

// The practice's countries as screens of foreign income need them: names, currencies, and the rates of double taxation
// agreements that limit the credit for foreign tax.

#include "Afx/text/Collections.h"
#include "Afx/text/CString.h"
#include "Kiln/CDate.h"
#include "MorvUt/Export.h"

/// One country. Rates are per cent: 15.0 means 15 %.
struct CCountryData
{
    struct DTARate
    {
        Kiln::CDate effective; // from that day on
        double dividend = 0.0;
        double interest = 0.0;
        double royalty = 0.0;
    };

    CString name;
    CString abbreviation;
    CString currency;
    CString currencyAbbreviation;
    int isEU = 0;               // not 0: a member
    Kiln::CDate euStart, euEnd; // of the membership; null: open
    CArray<DTARate> dtaRates;   // by their dates, ascending
};

/// The countries of the current tax year, read when they are first asked for: two statements, whatever their number.
/// They are read anew when the current year is another, when one of their records changes, after a rollback, and in
/// another practice. Entry 0 is "Unassigned", without abbreviation, currency and rates; it is all there is while no
/// practice is open.
///
/// Of two countries of one name (or abbreviation) the first is found. Names and abbreviations are compared to the
/// letter, except by the functions on CI. Every abbreviation may be an older one: GSY in any case is GGY, JSY is JEY.
/// A null text is the empty one, which is the abbreviation of "Unassigned". What is asked about a country that there is
/// not returns 0 and leaves the references as they were. All throw Cellar::DatabaseError. For the user-interface
/// thread.
class MORVUT_API TXCountryComboData
{
public:
    /// Entries in the order of their names, "Unassigned" in front, until they are read anew.
    static const CArray<CCountryData>& GetCountries();

    /// With `euOnly` not 0 members of the EU alone exist.
    static int DoesCountryExist(const char* name, int euOnly = 0);
    static int DoesCountryExistCI(const char* name, int euOnly = 0);
    static int DoesCountryAbbrExist(const char* abbr);
    static int DoesCurrencyAbbrExistCI(const char* currencyAbbr);

    /// 1 when there is the country. Membership of the EU and its dates are told where a place for them is given.
    static int GetCountryData(const char* name, CString& abbr, CString& currency, CString& currencyAbbr,
                              int* isEU = nullptr, Kiln::CDate* euStart = nullptr, Kiln::CDate* euEnd = nullptr);
    static int GetCountryDataCI(const char* name, CString& abbr, CString& currency, CString& currencyAbbr,
                                int* isEU = nullptr, Kiln::CDate* euStart = nullptr, Kiln::CDate* euEnd = nullptr);

    /// The rates in force on `date`, per cent; 1 when there is the country. 100.0, no limit, for a country without
    /// rates, before the first of them takes effect, and in tax years before 2006/07. A date that is not valid means
    /// the last day of the current tax year; rates of later years are not known.
    static int GetCountryAbbrDTARates(const char* abbr, Kiln::CDate date, double& dividend, double& interest,
                                      double& royalty);
    static int GetCountryAbbrDTADividendRate(const char* abbr, Kiln::CDate date, double& dividend);
    static int GetCountryAbbrDTAInterestRate(const char* abbr, Kiln::CDate date, double& interest);
    static int GetCountryAbbrDTARoyaltyRate(const char* abbr, Kiln::CDate date, double& royalty);
    /// How many sets of rates a country has had; -1 when there is no such country.
    static int GetCountryAbbrNumberOfDTAs(const char* abbr);

    /// Not 0 when what a schedule holds, a country's name or abbreviation, is a country of the year after the current
    /// one, too. "Unassigned" is not carried forward.
    static int CanCarryForwardCountry(const char* country);

protected:
    /// Reads the countries of the current tax year now. When that fails, what was read before stays.
    static void LoadCountryList();
    /// The abbreviation that is in use today.
    static CString UpdateCountryAbbr(const char* abbr);

    static CArray<CCountryData>& s_arrCountries;
};
