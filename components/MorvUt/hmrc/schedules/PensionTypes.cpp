#include "MorvUt/hmrc/schedules/PensionTypes.h"

#include "MorvUt/hmrc/staging/Summaries.h"

namespace HmrcApi
{
namespace
{

constexpr PensionSchedule kSchedules[] = {
    {kStatePension, 200, kStatePensionType, nullptr, "State pension"},
    {kPrivatePension, 200, 1050, nullptr, "Private pension"},
    {kJobseekersAllowance, 300, 1090, "", "Jobseeker's Allowance"},
    {kIncapacityBenefit, 300, 1140, "Taxable Incapacity Benefit", "Incapacity Benefit"},
    {kEmploymentAndSupportAllowance, 300, 1140, "Employment and Support Allowance", "Employment and Support Allowance"},
};

struct TypePair
{
    long type;
    long kind;
};
// Which schedules of the return may be which of HMRC's items.
constexpr TypePair kMatchingTypes[] = {
    {1040, kPrivatePension},
    {1050, kPrivatePension},
    {1090, kJobseekersAllowance},
    {1140, kIncapacityBenefit},
    {1140, kEmploymentAndSupportAllowance},
};

} // namespace

const PensionSchedule* ScheduleOf(int kind) noexcept
{
    for (const PensionSchedule& schedule : kSchedules)
        if (schedule.kind == kind)
            return &schedule;
    return nullptr;
}

const char* NameOf(const StagedPension& item) noexcept
{
    const PensionSchedule* const schedule = ScheduleOf(item.kind);
    return schedule && SummaryOf(item) == Summary::None ? schedule->name : item.reference.c_str();
}

bool IsPrivatePensionKind(long kind) noexcept { return kind == kPrivatePension; }
bool IsStateBenefitKind(long kind) noexcept
{
    return kind >= kJobseekersAllowance && kind <= kEmploymentAndSupportAllowance;
}
bool IsStatePensionKind(long kind) noexcept { return kind == kStatePension; }

bool IsScheduleOfKind(long type, long kind) noexcept
{
    for (const TypePair& pair : kMatchingTypes)
        if (pair.type == type && pair.kind == kind)
            return true;
    return false;
}

bool IsPrivatePensionType(long type) noexcept { return IsScheduleOfKind(type, kPrivatePension); }

bool IsMadeOfSum(const ReturnPension& own)
{
    if (!own.isFromHmrc || !own.reference.IsEmpty() || !own.payer.IsEmpty() || own.start.IsValid())
        return false;
    if (IsScheduleOfKind(own.type, kJobseekersAllowance)) // its schedules have no description
        return own.description.IsEmpty();
    for (const Summary summary : {Summary::OtherPensions, Summary::IncapacityBenefit})
        if (own.description == WordsOf(summary).text && IsScheduleOfKind(own.type, WordsOf(summary).kind))
            return true;
    return false;
}

} // namespace HmrcApi
