#include "common/CreateWords.h"

#include "common/Words.h"
#include "MorvUt/hmrc/staging/StagedYear.h"
#include "MorvUt/taxyear/YearTitles.h"

namespace Morv
{

namespace
{

bool IsNothingStaged(ClientId client, short year)
{
    const HmrcApi::StagedYear staged = HmrcApi::LoadStagedYear(client, year);
    return staged.employments.empty() && staged.pensions.empty() && staged.allowances.empty();
}

/// "2 employment schedules and 1 pension or benefit schedule"; empty when nothing was made.
std::string Made(const HmrcApi::CreatedSchedules& created)
{
    std::string text;
    if (created.employments > 0)
        text = Counted(created.employments, "employment schedule");
    if (created.pensionsAndBenefits > 0)
        text += (text.empty() ? "" : " and ") + Counted(created.pensionsAndBenefits, "pension or benefit schedule");
    return text;
}

} // namespace

std::string CreatedText(ClientId client, short year, const HmrcApi::CreatedSchedules& created)
{
    if (const std::string made = Made(created); !made.empty())
        return "Created " + made + '.';
    if (IsNothingStaged(client, year))
        return std::string("Nothing has been fetched from HMRC for ") + FormatYearString42Digit(year).Str() + '.';
    return "Nothing new was made.";
}

} // namespace Morv
