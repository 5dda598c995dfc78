#pragma once

// The review of HMRC's figures: a person accepts, rejects or skips each difference, and the decision is on record.

#include <cstdint>
#include <string>

#include "Afx/text/CString.h"
#include "MorvUt/Export.h"
#include "MorvUt/hmrc/review/Differences.h"
#include "MorvUt/taxyear/TaxYear.h"
#include "Quarry/Keys.h"

namespace HmrcApi
{

enum class Decision : std::uint8_t
{
    Accept, // HMRC's figures replace the schedule's
    Reject, // not offered again until HMRC's figures change
    Skip    // decided another time
};

/// Why the user may not decide so: the right to save the return is asked first, then that to accept or to reject.
/// Empty when they may; skipping needs no right.
MORVUT_API CString WhyMayNot(Decision decision);

/// Writes to the audit (Trailmark) that the user has decided so, in the current real tax year: on which item, on which
/// figures of HMRC's and of the return's. Throws Cellar::DatabaseError.
MORVUT_API void AuditDecision(ClientId client, Decision decision, const CString& item, const CString& hmrc,
                              const CString& ofReturn);

struct ReviewResult
{
    enum class Outcome : std::uint8_t
    {
        Done,
        Refused,   // by a right, or the return may not be changed
        Gone,      // there is no such difference: somebody has decided on it, or HMRC's figures or the return changed
        Changed,   // it is there, but its figures are not those of the hash
        NoSchedule // accepting: no single schedule of the return is HMRC's item
    };
    Outcome outcome = Outcome::Done;
    CString message;       // for people; empty when done
    Difference difference; // as it was before, with its new state; empty when gone
};

/// Decides on one difference of the client's year. In one transaction, whose lock is taken before anything is read: the
/// audit (Trailmark) first, then the schedule (accepting) and the staged rows. Skipping writes nothing. `hash`: of the
/// figures that the person saw (Difference::Hash); empty: whatever they are now. No message is shown. Throws
/// Cellar::DatabaseError, and Quarry::ChangedByAnotherUser when a screen had the rows open; nothing is written then.
MORVUT_API ReviewResult Decide(ClientId client, TaxYear taxYear, std::int64_t number, Decision decision,
                               const std::string& hash = {});
/// The same in the caller's transaction, begun with the intent to write, in which the audit stands already. The caller
/// commits when it is done, and otherwise rolls back.
MORVUT_API ReviewResult ApplyDecision(ClientId client, TaxYear taxYear, std::int64_t number, Decision decision,
                                      const std::string& hash);

} // namespace HmrcApi
