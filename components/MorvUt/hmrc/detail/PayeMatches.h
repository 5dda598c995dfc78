#pragma once

// Which schedule of the return is which of HMRC's staged items.

#include <map>
#include <string>
#include <vector>

#include "MorvUt/hmrc/detail/YearRecords.h"
#include "MorvUt/hmrc/fetch/PayePrepop.h"

namespace HmrcApi
{

inline constexpr int kNoSchedule = -1;
inline constexpr int kStatePensionType = 1060; // of mapPSBTypes

/// What people call a kind of staged pension or benefit.
const char* PsbName(long mtdType) noexcept;

/// The employments that HMRC sends, each key once and in the order of the keys, beside the return's in their order.
struct EmploymentMatches
{
    EmploymentMatches(ClientId client, short year);
    /// The schedule of a staged row, or kNoSchedule.
    std::vector<int> scheduleOf;

    RowsUnder<Brix::CMTD_Employments> staged;
    RowsUnder<Brix::CNewEmploy> schedules;
};

/// The pensions and benefits that HMRC sends, by date, beside the return's in their order.
struct PsbMatches
{
    PsbMatches(ClientId client, short year);
    /// The schedule that a staged row has for itself, or kNoSchedule: one schedule is one item's.
    std::vector<int> scheduleOf;
    /// The return has no such schedule, and this is the first of the staged rows that would make it: a pension's
    /// reference, a benefit's date and a state pension's description make one schedule each.
    std::vector<bool> isNew;
    /// The return has no such schedule, but this is not the first: no schedule is made for it.
    std::vector<bool> isRepeated;

    RowsUnder<Brix::CMTD_PensionStateBenefits> staged;
    RowsUnder<Brix::CPensionStateBenefits> schedules;
};

/// An amount of benefits under one code; null when none of them has an amount.
struct BenefitTotal
{
    Kiln::CAmt amount;
    bool isEstimate = false; // one of them is a forecast

    void Add(const Kiln::CAmt& more, bool isMoreEstimate);
};
/// By code of mapNewEmployBenefitsGrid: of a CMTD_Employments row (withdrawn ones left out), and of a CNewEmploy row.
std::map<int, BenefitTotal> StagedBenefits(long employmentsId);
std::map<int, BenefitTotal> ScheduleBenefits(long newEmployId);

} // namespace HmrcApi
