#pragma once

// Which schedule of the return is which of HMRC's staged items. Plain functions over what was read once.

#include <vector>

#include "MorvUt/Export.h"
#include "MorvUt/hmrc/schedules/ReturnYear.h"
#include "MorvUt/hmrc/staging/StagedYear.h"

namespace HmrcApi
{

inline constexpr int kNoSchedule = -1;

/// What one staged item has in the return.
struct Match
{
    enum class State
    {
        Ignored, // withdrawn, of an unknown kind, or its key stands twice
        Matched, // `schedule` is its own
        Shared, // another item of the same date or description comes first; `schedule` stands for both, if there is one
        /// HMRC has several items of a reference and the return one that does not say which, or the return has the sum
        /// of a kind whose items HMRC now sends one by one: `schedule`.
        Ambiguous,
        Total, // a sum of a kind of which the return has several schedules: `schedule` is the first of them
        New    // the return lacks it
    };
    State state = State::Ignored;
    int schedule = kNoSchedule;
};

/// For each staged employment: a schedule is known by its PAYE reference where HMRC has one employment of that, else by
/// reference and works number (several of those by start and figures, then in order). One that was made from HMRC's
/// records is also known by start or figures when HMRC has changed the works number. A typed schedule with the bare
/// reference, where HMRC has several, is nobody's: while it stands, none of that reference is new.
MORVUT_API std::vector<Match> MatchEmployments(const StagedYear& staged, const ReturnYear& own);

/// For each staged pension or benefit: private pensions like employments; benefits by type and date, one schedule for
/// those of a date; state pensions by description. A sum of a kind (staging/Summaries.h) is known by the type alone.
MORVUT_API std::vector<Match> MatchPensions(const StagedYear& staged, const ReturnYear& own);

} // namespace HmrcApi
