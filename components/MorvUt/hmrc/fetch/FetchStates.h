#pragma once

// What a fetch says about each group of HMRC's records, and how much of them the return holds.

#include <string>

#include "Afx/text/CString.h"
#include "HmrcApi/answers/Errors.h"
#include "Kiln/CDate.h"
#include "MorvUt/Export.h"
#include "MorvUt/hmrc/schedules/ReturnYear.h"
#include "MorvUt/hmrc/staging/StagedYear.h"

namespace HmrcApi
{

enum class GroupState
{
    Unknown,       // not asked, or the group failed
    There,         // HMRC sent records
    NotReconciled, // HMRC has none yet
    Gone,          // HMRC had some and has them no more
    NotRegistered  // HMRC has none, though the year should be reconciled
};

/// "unknown", "there", "notReconciled", "gone", "notRegistered": for programs.
MORVUT_API const char* NameOf(GroupState state) noexcept;

struct FetchedGroup
{
    std::string name; // as in the error handler: "PAYE", "National Insurance", "Employments"
    GroupState state = GroupState::Unknown;

    /// Why there are no records, for people; empty where there are some, and where nobody knows.
    MORVUT_API CString WhyNothing() const;
};

/// The state of a group of which HMRC says that it holds nothing. `hasStaged`: the year has rows of an earlier fetch,
/// so HMRC had reconciled it. Before 1 December after the year a return that is finalised decides nothing: HMRC may not
/// have reconciled the year yet.
MORVUT_API GroupState StateOfNothing(short year, bool hasStaged, bool isFinalised, const Kiln::CDate& today);

/// HMRC's items of a year, those left out that it has withdrawn.
struct ItemCounts
{
    int items = 0;       // employments and their benefits, pensions, allowances
    int inReturn = 0;    // employments and pensions that have a schedule,
    int notInReturn = 0; // and those for which one can be made
};
MORVUT_API ItemCounts CountItems(const StagedYear& staged, const ReturnYear& own);
/// How many an answer has, in the terms of the staging rows.
MORVUT_API int CountSent(const StagedYear& answer);

/// Only another workstation or program was in the way, which is done in a moment: there are errors, and each says so.
MORVUT_API bool IsBusy(const CAPIErrorHandler& errors);
/// The same of one error.
MORVUT_API bool IsBusy(const std::string& code) noexcept;
/// No request got an answer: every error says that nobody was reached. A group without errors was answered.
MORVUT_API bool IsUnreachable(const CAPIErrorHandler& errors);
/// The same of one error; `status`: of HTTP, empty when there was none.
MORVUT_API bool IsUnreachable(const std::string& code, const std::string& status) noexcept;

} // namespace HmrcApi
