#include "MorvUt/hmrc/staging/Summaries.h"

namespace HmrcApi
{
namespace
{

constexpr SummaryWords kSummaries[] = {
    {Summary::OtherPensions, kPrivatePension, "Pensions and retirement annuities", nullptr},
    {Summary::IncapacityBenefit, kIncapacityBenefit, "Incapacity Benefit and Employment and Support Allowance",
     nullptr},
    {Summary::JobseekersAllowance, kJobseekersAllowance, "Jobseeker's Allowance", nullptr},
    {Summary::IncomeSupportScheme, kUnknownBenefit, "Self-Employment Income Support Scheme",
     "it belongs to the self-employment or partnership that it was claimed for"},
    {Summary::TaxRefunded, kUnknownBenefit, "Income Tax refunded or set off",
     "it belongs in the main return's box for tax that HMRC or Jobcentre Plus refunded or set off"},
};

} // namespace

const SummaryWords& WordsOf(Summary summary) noexcept
{
    for (const SummaryWords& words : kSummaries)
        if (words.summary == summary)
            return words;
    return kSummaries[0];
}

Summary SummaryOf(const StagedPension& item) noexcept
{
    if (!item.payer.empty() || !item.worksNumber.empty() || item.date.IsValid() || item.end.IsValid())
        return Summary::None;
    for (const SummaryWords& words : kSummaries)
        if (words.kind == item.kind && words.text == item.reference)
            return words.summary;
    return Summary::None;
}

} // namespace HmrcApi
