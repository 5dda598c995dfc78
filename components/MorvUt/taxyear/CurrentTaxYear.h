#pragma once

// The year of assessment that the user works in: one for the whole process, remembered between runs.

#include "MorvUt/Export.h"
#include "MorvUt/taxyear/Singleton.h"

/// The current tax year as a relative year (real year - 1991). The first call of the process establishes it: from the
/// profile ("Preferences", "LastYOA") when the user asked for that ("RememberYOA"), else the default year 2024.
MORVUT_API short GetCurrentTaxYear();
/// The same as a real year.
MORVUT_API short GetCurrentRealTaxYear();
/// Makes a relative year the current one, without a check of the range, and remembers it in the profile while
/// "RememberYOA" is on.
MORVUT_API void SetCurrentTaxYear(short relative);

/// What the process keeps of the current tax year.
class CCurrentTaxYearSingletonData
{
public:
    virtual ~CCurrentTaxYearSingletonData() = default;
    CCurrentTaxYearSingletonData() = default;
    CCurrentTaxYearSingletonData(const CCurrentTaxYearSingletonData&) = default;
    CCurrentTaxYearSingletonData& operator=(const CCurrentTaxYearSingletonData&) = default;

    short realYear = 0; // 0: not established
};

/// The store behind the functions above.
class CCurrentTaxYearSingleton : public CSingleton<CCurrentTaxYearSingletonData, CCurrentTaxYearSingleton>
{
public:
    short GetRealYear() const noexcept { return m_data.realYear; }
    void SetRealYear(short realYear) noexcept { m_data.realYear = realYear; }

private:
    friend class CSingleton<CCurrentTaxYearSingletonData, CCurrentTaxYearSingleton>;
    CCurrentTaxYearSingleton() = default;
};
