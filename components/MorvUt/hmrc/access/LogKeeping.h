#pragma once

// How long the lines of HMRC's log are kept.

#include "Afx/time/DateTime.h"
#include "MorvUt/Export.h"

namespace HmrcApi
{

/// Removes lines that were logged more than `days` days before `now` (local time, as the log's own), the oldest first
/// and at most a thousand at once; how many. Never a younger line, nor one whose time is not known; with 0 days none at
/// all. The audit of decisions is another table and stays whole. Aside from open transactions. Throws
/// Cellar::DatabaseError.
MORVUT_API int ThinLog(int days, const COleDateTime& now);

/// The same now, for a fetch: at its first of a day in a practice. A log that cannot be thinned is reported on standard
/// error and ends nothing.
void ThinLogOnceADay(int days);

} // namespace HmrcApi
