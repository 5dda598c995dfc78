#pragma once

// What tells HMRC's employments and pensions apart, and which schedule of the return is which of them.

#include <set>
#include <string>
#include <vector>

#include "MorvUt/Export.h"

namespace HmrcApi
{

/// A PAYE reference and the works number that tells two periods with one employer apart (may be empty).
struct PayeIdentity
{
    std::string reference;
    std::string worksNumber;

    friend bool operator==(const PayeIdentity&, const PayeIdentity&) = default;
};

/// The keys of one answer's items, in its order: the reference; where the answer holds that more than once, the
/// reference, a blank and the works number, or "#2", "#3" ... for those without one. No two are equal.
MORVUT_API std::vector<std::string> StagingKeys(const std::vector<PayeIdentity>& items);

/// A key for an item whose own was given to another: reference, blank, works number, as it stands when `taken` lacks
/// it.
std::string SpareKey(const PayeIdentity& item, const std::set<std::string>& taken);

/// The keys that schedules of the return answer to, in their order. `keys`: those of the year's staging rows, withdrawn
/// ones included. A schedule answers to its reference and works number where that is a key (the second schedule
/// without a works number to "#3", and so on), else to its reference.
MORVUT_API std::vector<std::string> ScheduleKeys(const std::vector<PayeIdentity>& schedules,
                                                 const std::set<std::string>& keys);

} // namespace HmrcApi
