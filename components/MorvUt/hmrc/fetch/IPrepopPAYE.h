#pragma once

#include "MorvUt/Export.h"

namespace HmrcApi
{

/// What can be done with the staged records of a client's year, without a request.
class MORVUT_API IPrepopPAYE
{
public:
    /// HMRC has an employment that the return lacks (or only allowances, for a return without employments).
    virtual bool DoNewEmploymentsExist() = 0;
    virtual bool DoNewPensionStateBenefitsExist() = 0;
    /// Makes a schedule of the return for each of HMRC's items that has none, in one transaction; schedules that are
    /// there stay as they are. A client without a tax form for the year gets one.
    virtual void CreateNewSchedules() = 0;
    virtual ~IPrepopPAYE(); // behind the three, whose slots other modules know
};

} // namespace HmrcApi
