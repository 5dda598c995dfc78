#include "MorvUt/hmrc/detail/PayeMatches.h"

#include <set>

#include "MorvUt/hmrc/detail/BenefitCodes.h"
#include "MorvUt/hmrc/detail/StagingKeys.h"

namespace HmrcApi
{
namespace
{

using Brix::CMTD_Employments;
using Brix::CMTD_PensionStateBenefits;
using Brix::CNewEmploy;
using Brix::CPensionStateBenefits;

/// Of several schedules that answer to the key, the one with the works number.
int FindSchedule(RowsUnder<CNewEmploy>& schedules, const std::vector<std::string>& keys, const std::string& key,
                 const CString& worksNumber)
{
    int found = kNoSchedule;
    for (int row = 0; row < schedules.GetCount(); ++row) {
        if (keys[static_cast<std::size_t>(row)] != key)
            continue;
        if (schedules[row].GetWorksNumber() == worksNumber)
            return row;
        if (found == kNoSchedule)
            found = row;
    }
    return found;
}

/// The state pension and its lump sum are known by their description, everything else by the stated rule.
bool IsScheduleOf(CPensionStateBenefits& schedule, CMTD_PensionStateBenefits& staged)
{
    if (staged.GetMTDType() == CPAYEPrepop::MTD_None)
        return schedule.GetType() == kStatePensionType && schedule.GetDescription() == staged.GetReference();
    return CPAYEPrepop::PSBMatchesMTDPSB(schedule, staged);
}

/// Staged rows with the same text make one schedule.
std::string ScheduleText(const CMTD_PensionStateBenefits& staged)
{
    const long type = staged.GetMTDType();
    if (type == CPAYEPrepop::MTD_None)
        return "description " + staged.GetReference().Str();
    if (CPAYEPrepop::IsPrivatePension(type))
        return "pension " + staged.GetReference().Str();
    const char* const schedule = type == CPAYEPrepop::MTD_JobseekersAllowance ? "1090 " : "1140 ";
    return schedule + staged.GetStart().FormatIso().Str();
}

bool IsSent(const CMTD_PensionStateBenefits& staged)
{
    const long type = staged.GetMTDType();
    const bool isKnown = type == CPAYEPrepop::MTD_None || CPAYEPrepop::IsPrivatePension(type) ||
                         CPAYEPrepop::IsTaxableSocialSecurityBenefit(type);
    return isKnown && !staged.GetWithdrawn();
}

} // namespace

const char* PsbName(long mtdType) noexcept
{
    switch (mtdType) {
    case CPAYEPrepop::MTD_PrivatePension:
        return "Private pension";
    case CPAYEPrepop::MTD_JobseekersAllowance:
        return "Jobseeker's Allowance";
    case CPAYEPrepop::MTD_IncapacityBenefit:
        return "Incapacity Benefit";
    case CPAYEPrepop::MTD_EmploymentAndSupportAllowance:
        return "Employment and Support Allowance";
    default:
        return "State pension";
    }
}

EmploymentMatches::EmploymentMatches(ClientId client, short year)
    : staged(StagedYearIds(client, year), CMTD_Employments::kMTD_TaxYearID, {{CMTD_Employments::kKey}}),
      schedules(TaxFormIds(client, year), CNewEmploy::kTaxFormID, {{CNewEmploy::kOrdering}})
{
    std::set<std::string> keys;
    for (int row = 0; row < staged.GetCount(); ++row)
        keys.insert(staged[row].GetKey().Str());
    std::vector<PayeIdentity> identities;
    identities.reserve(static_cast<std::size_t>(schedules.GetCount()));
    for (int row = 0; row < schedules.GetCount(); ++row)
        identities.push_back({schedules[row].GetPAYEReference().Str(), schedules[row].GetWorksNumber().Str()});
    const std::vector<std::string> scheduleKeys = ScheduleKeys(identities, keys);

    std::set<std::string> seen;
    staged.Filter(
        [&](CMTD_Employments& list) { return !list.GetWithdrawn() && seen.insert(list.GetKey().Str()).second; });
    for (int row = 0; row < staged.GetCount(); ++row)
        scheduleOf.push_back(
            FindSchedule(schedules, scheduleKeys, staged[row].GetKey().Str(), staged[row].GetWorksNumber()));
}

PsbMatches::PsbMatches(ClientId client, short year)
    : staged(StagedYearIds(client, year), CMTD_PensionStateBenefits::kMTD_TaxYearID,
             {{CMTD_PensionStateBenefits::kStart}}),
      schedules(TaxFormIds(client, year), CPensionStateBenefits::kTaxFormID, {{CPensionStateBenefits::kOrdering}})
{
    staged.Filter(&IsSent);
    std::set<std::string> made;
    std::set<int> taken;
    for (int item = 0; item < staged.GetCount(); ++item) {
        CMTD_PensionStateBenefits& row = staged[item];
        int own = kNoSchedule;
        bool isThere = false;
        for (int schedule = 0; schedule < schedules.GetCount() && own == kNoSchedule; ++schedule) {
            if (!IsScheduleOf(schedules[schedule], row))
                continue;
            isThere = true;
            if (taken.insert(schedule).second)
                own = schedule;
        }
        const bool isFirst = !isThere && made.insert(ScheduleText(row)).second;
        scheduleOf.push_back(own);
        isNew.push_back(isFirst);
        isRepeated.push_back(!isThere && !isFirst);
    }
}

void BenefitTotal::Add(const Kiln::CAmt& more, bool isMoreEstimate)
{
    if (more.IsValid())
        amount = amount.IsValid() ? amount + more : more;
    isEstimate = isEstimate || isMoreEstimate;
}

std::map<int, BenefitTotal> StagedBenefits(long employmentsId)
{
    using List = Brix::CMTD_EmploymentsCompanyBenefits;
    std::map<int, BenefitTotal> totals;
    List list;
    list.Open({{List::kMTD_EmploymentsID, employmentsId}});
    for (; !list.IsEOL(); list.MoveNext())
        if (!list.GetWithdrawn())
            totals[BenefitCode(list.GetBenefitType())].Add(list.GetAmount(), list.GetForecast());
    return totals;
}

std::map<int, BenefitTotal> ScheduleBenefits(long newEmployId)
{
    using List = Brix::CNewEmployBenefits;
    std::map<int, BenefitTotal> totals;
    List list;
    list.Open({{List::kNewEmployID, newEmployId}});
    for (; !list.IsEOL(); list.MoveNext())
        totals[list.GetType()].Add(list.GetBenefit(), list.GetEstimate());
    return totals;
}

} // namespace HmrcApi
