#pragma once

// Whether what kept one client from being fetched will keep the others too.

#include "MorvUt/Export.h"
#include "MorvUt/hmrc/fetch/FetchData.h"

namespace HmrcApi
{

enum class Absence
{
    None,        // the client's own, or nothing
    Unreachable, // no request got an answer
    Overloaded,  // HMRC answers that it cannot serve now, however often it is asked
    Busy,        // another program writes to the practice
    Maintenance, // HMRC is closed for a while
    NoAuthority, // there is none from HMRC, or it has ended
    NotAllowed,  // the user may not, or the practice's option is off
    Unusable,    // the practice cannot be read or written
    Cancelled
};

MORVUT_API Absence AbsenceOf(const FetchResult& result);
/// As it stands before anything is staged.
MORVUT_API Absence AbsenceOf(FetchResult::Stopped stopped, const CAPIErrorHandler& errors);

/// "unreachable", "overloaded", "busy", "maintenance", "noAuthority", "notAllowed", "unusable", "cancelled": for
/// programs; empty for None.
MORVUT_API const char* NameOf(Absence absence) noexcept;
/// One such client says nothing yet: HMRC, or a practice that is busy, may be there for the next. The others are
/// certain at once.
MORVUT_API bool MayPass(Absence absence) noexcept;

/// Whether a run over many clients goes on: it ends at once by what is certain, after three clients in a row by what
/// may pass.
class MORVUT_API Patience
{
public:
    /// What came of the next client.
    void Add(Absence absence) noexcept;
    /// Why the run ends, and stays so; None: it goes on.
    Absence GetEnd() const noexcept { return m_end; }
    /// The last client met an absence.
    bool IsDoubtful() const noexcept { return m_inARow > 0; }

private:
    int m_inARow = 0;
    Absence m_end = Absence::None;
};

} // namespace HmrcApi
