#pragma once

// The current tax year for callers that speak of `TaxYear`.

#include "MorvUt/Export.h"
#include "MorvUt/taxyear/TaxYear.h"

class MORVUT_API TaxYearHelpers
{
public:
    TaxYearHelpers& operator=(const TaxYearHelpers&) = default;
    TaxYearHelpers& operator=(TaxYearHelpers&&) = default;

    static TaxYear GetCurrentTaxYear();
    /// Also remembers it in the profile, when the user asked for that.
    static void SetCurrentTaxYear(const TaxYear& year);
    static TaxYear GetDefaultTaxYear() noexcept; // 2024
};
