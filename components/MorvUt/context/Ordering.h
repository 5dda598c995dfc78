#pragma once

// Ordering numbers for new rows.
//
// The rows of an ordered list (employments, payments of a plan) have numbers that fix their place on screens and
// printed forms. A new row gets one more than the highest number under its owner, and 1 when it is the first: behind 1,
// 2 and 7 comes 8. Gaps are not filled. A row without a number counts as 0; 2,147,483,647 is given again and again.
//
// `owner` stands on the owner's row (std::logic_error where it stands on none). Only saved rows count. Each question is
// one statement on the current connection that gives one row, however long the list is; throws Cellar::DatabaseError.

#include "MorvUt/Export.h"

namespace Brix
{
class CCGT;
class CEmployUKIncome;
class CJointIncomeSourceTaxYear;
class CNewInterest;
class CPensionStateBenefits;
class CPlan;
class CTaxForm;
} // namespace Brix

MORVUT_API long GetCGTAcqOrderingNumber(const Brix::CCGT& owner);
MORVUT_API long GetEmployUKImcomeDetailsOrderingNumber(const Brix::CEmployUKIncome& owner); // the published spelling
MORVUT_API int GetNewEmployOrderingNumber(const Brix::CTaxForm& owner);
MORVUT_API int GetNewInterestJointIncomeOrderingNumber(const Brix::CJointIncomeSourceTaxYear& owner);
MORVUT_API int GetNewInterestOrderingNumber(const Brix::CTaxForm& owner);
MORVUT_API long GetNewInterestPaymentOrderingNumber(const Brix::CNewInterest& owner);
MORVUT_API int GetNewInterestUTOrderingNumber(const Brix::CTaxForm& owner);
MORVUT_API int GetOtherOutgoingsOrderingNumber(const Brix::CTaxForm& owner);
MORVUT_API long GetPensionContributionPaymentOrderingNumber(const Brix::CPlan& owner);
MORVUT_API int GetPensionContributionsOrderingNumber(const Brix::CTaxForm& owner);
MORVUT_API long GetPensionStateBenefitDetailsOrderingNumber(const Brix::CPensionStateBenefits& owner);
MORVUT_API int GetPensionStateBenefitsOrderingNumber(const Brix::CTaxForm& owner);
MORVUT_API int GetPropertyOrderingNumber(const Brix::CTaxForm& owner);
