#pragma once

// What can be done with HMRC's PAYE records of a client's year once they are staged: no request, no tokens, no network.

#include "MorvUt/Export.h"

namespace HmrcApi
{

/// For one client and one real tax year, which whoever made the object has chosen. Needs an open practice; the records
/// are those of the last fetch, read anew by each call. All throw Cellar::DatabaseError.
///
/// An item is new when the return has no schedule that is it (hmrc/schedules/Matching.h). Items that HMRC has withdrawn
/// or whose kind is not known are never new.
class MORVUT_API IPrepopPAYE
{
public:
    /// HMRC has an employment that the return lacks; or allowances with a value, for a return without any employment.
    /// Reads only; another user may make the schedules before CreateNewSchedules does.
    virtual bool DoNewEmploymentsExist() = 0;
    /// HMRC has a private pension, a taxable benefit, or a state pension or lump sum that the return lacks. Reads only.
    virtual bool DoNewPensionStateBenefitsExist() = 0;
    /// Makes a schedule of the return for each new item, in one transaction that takes its lock before it reads: all or
    /// nothing, and two at once make them once. Schedules that are there stay as they are, so a second call makes
    /// nothing. A client without a tax form for the year gets one with the first schedule. No right is asked for, and
    /// whether the return is finalised is not looked at: HmrcApi::CreateFromHmrc does both.
    virtual void CreateNewSchedules() = 0;
    virtual ~IPrepopPAYE(); // behind the three, whose slots other modules know
};

} // namespace HmrcApi
