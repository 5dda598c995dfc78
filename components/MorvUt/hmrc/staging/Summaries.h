#pragma once

// Sums of a year for all payers of a kind, which is all that the individual interfaces say of pensions and benefits.

#include <cstdint>

#include "MorvUt/hmrc/staging/StagedYear.h"

namespace HmrcApi
{

enum class Summary : std::uint8_t
{
    None, // an item of one payer
    OtherPensions,
    IncapacityBenefit, // Employment and Support Allowance in the same figure
    JobseekersAllowance,
    IncomeSupportScheme, // of the self-employed
    TaxRefunded
};

/// How a sum is staged: without payer, works number and date, HMRC's meaning in words as the reference.
struct SummaryWords
{
    Summary summary;
    int kind; // StagedKind; kUnknownBenefit where no schedule is made
    const char* text;
    const char* advice; // of one that becomes no schedule: where it belongs; null otherwise
};
const SummaryWords& WordsOf(Summary summary) noexcept; // not of None

/// Which sum a staged item is.
Summary SummaryOf(const StagedPension& item) noexcept;

/// HMRC's number of a company benefit that is such a sum: the eight of the benefits interface.
inline bool IsBenefitSum(int number) noexcept { return number >= 1009 && number <= 1016; }

} // namespace HmrcApi
