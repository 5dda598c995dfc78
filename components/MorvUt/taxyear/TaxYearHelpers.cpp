#include "MorvUt/taxyear/TaxYearHelpers.h"

#include "MorvUt/taxyear/CurrentTaxYear.h"

TaxYear TaxYearHelpers::GetCurrentTaxYear() { return TaxYear(GetCurrentRealTaxYear()); }

void TaxYearHelpers::SetCurrentTaxYear(const TaxYear& year) { ::SetCurrentTaxYear(year.GetRelativeTaxYear()); }

TaxYear TaxYearHelpers::GetDefaultTaxYear() noexcept { return TaxYear(GetDefaultRealTaxYear()); }
