#include "MorvUt/taxyear/TaxYear.h"

short GetMinRealTaxYear() noexcept { return kFirstRealTaxYear; }
short GetMaxRealTaxYear() noexcept { return kLastRealTaxYear; }
short GetMaxTaxYear() noexcept { return ToRelativeTaxYear(kLastRealTaxYear); }
short GetNumTaxYears() noexcept { return kLastRealTaxYear - kFirstRealTaxYear + 1; }
short GetDefaultRealTaxYear() noexcept { return kDefaultRealTaxYear; }

short ConvertRealToRelativeTaxYear(short real) noexcept { return ToRelativeTaxYear(real); }
short ConvertRelativeToRealTaxYear(short relative) noexcept { return ToRealTaxYear(relative); }
