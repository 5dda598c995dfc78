#pragma once

// The command "create the schedules that the return lacks".

#include "MorvUt/Export.h"
#include "MorvUt/hmrc/schedules/NewSchedules.h"
#include "MorvUt/hmrc/schedules/ReturnYear.h"
#include "MorvUt/taxyear/TaxYear.h"
#include "Quarry/Keys.h"

namespace HmrcApi
{

struct CreateResult
{
    bool ok = false;          // false: refused, and nothing was written
    CString message;          // what was shown when it was refused
    CreatedSchedules created; // with what people must know of HMRC's figures, each time
};

/// Makes the schedules that the return of the year lacks, in one transaction that takes its lock before it reads: two
/// at once make them once. Refused, with the texts of the rights, without the right to save the return, for a client
/// that is read-only and for a return that is finalised. Throws Cellar::DatabaseError.
MORVUT_API CreateResult CreateFromHmrc(ClientId client, TaxYear taxYear);

} // namespace HmrcApi
