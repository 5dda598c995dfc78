#pragma once

// What people call HMRC's items and the schedules made from them: one name for one item in both lists.

#include "Afx/text/CString.h"
#include "Kiln/CDate.h"
#include "MorvUt/Export.h"
#include "MorvUt/hmrc/schedules/ReturnYear.h"
#include "MorvUt/hmrc/staging/StagedYear.h"

namespace HmrcApi
{

/// HMRC's words for its types: "Car Fuel Benefit" for CarFuelBenefit; a type that is not known as HMRC sent it.
MORVUT_API CString DisplayName(const StagedBenefit& benefit);
MORVUT_API CString DisplayName(const StagedAllowance& allowance);
/// The payer, else the description that its schedule has, else the kind.
MORVUT_API CString DisplayName(const StagedPension& pension);
/// Empty where the stored text is the item's name (state pensions, unknown kinds).
MORVUT_API CString DisplayReference(const StagedPension& pension);

/// The key of its code in mapNewEmployBenefitsGrid, "empB_CarBenefit"; the number where the table has none.
MORVUT_API CString KeyOf(const ReturnBenefit& benefit);
/// The name of its code; without one the key.
MORVUT_API CString DisplayName(const ReturnBenefit& benefit);
/// The payer, else its own description, else the name of its type.
MORVUT_API CString DisplayName(const ReturnPension& pension);

/// What follows an amount that is a forecast.
inline constexpr char kForecastMark[] = " (forecast)";

/// False while Class 1 earnings of 0.00 may mean that HMRC has not reconciled the year: until the end of August after
/// it. `year`: real tax year.
MORVUT_API bool IsClass1Final(const StagedNationalInsurance& insurance, short year, const Kiln::CDate& today);

} // namespace HmrcApi
