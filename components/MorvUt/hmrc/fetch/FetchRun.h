#pragma once

// A run over all clients of a year, which the next one goes on with when it did not come to its end.

#include <vector>

#include "Afx/time/DateTime.h"
#include "MorvUt/Export.h"
#include "Quarry/Keys.h"

namespace HmrcApi
{

/// While a run has not come to its end the practice knows when it began (table MTDFetchRun), so that one that was
/// killed or given up need not ask HMRC twice about the same clients. That is remembered for twelve hours, an evening
/// and its night, and forgotten at the end. Moments are local times of the workstation.
class MORVUT_API FetchRun
{
public:
    /// Begins a run, or goes on with the one that has not ended unless `isNew`. Throws Cellar::DatabaseError.
    FetchRun(short year, bool isNew); // real tax year

    bool IsGoneOnWith() const noexcept { return m_isGoneOnWith; }
    const COleDateTime& GetBegan() const noexcept { return m_began; }
    /// The clients about whom HMRC has answered everything since it began, on whichever workstation. Throws
    /// Cellar::DatabaseError.
    std::vector<ClientId> ListDone() const;
    /// Nobody is left. Throws Cellar::DatabaseError.
    void End();

private:
    short m_year;
    COleDateTime m_began;
    bool m_isGoneOnWith = false;
};

} // namespace HmrcApi
