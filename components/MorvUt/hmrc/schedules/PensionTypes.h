#pragma once

// HMRC's pensions and state benefits in the terms of the return's schedules.

#include "MorvUt/hmrc/schedules/ReturnYear.h"
#include "MorvUt/hmrc/staging/StagedYear.h"

namespace HmrcApi
{

inline constexpr int kStatePensionType = 1060; // of mapPSBTypes

/// How a staged kind becomes a schedule: codes of mapPSBCategorys and mapPSBTypes.
struct PensionSchedule
{
    int kind;
    int section;
    int type;
    const char* description; // null: HMRC's own text
    const char* name;        // what people call the kind
};
/// Null for a kind that becomes none.
const PensionSchedule* ScheduleOf(int kind) noexcept;
/// What people call a kind of staged pension or benefit; of a sum its words, of an unknown one HMRC's own.
const char* NameOf(const StagedPension& item) noexcept;

// The three groups of kinds that become schedules. (Unknown ones are in none.)
bool IsPrivatePensionKind(long kind) noexcept;
bool IsStateBenefitKind(long kind) noexcept;
bool IsStatePensionKind(long kind) noexcept; // and its lump sum

/// Whether a schedule of this type may be an item of this kind. `type`: of mapPSBTypes. Never of a state pension, which
/// is known by its description.
bool IsScheduleOfKind(long type, long kind) noexcept;
bool IsPrivatePensionType(long type) noexcept;
/// The schedule was made of one of HMRC's sums (staging/Summaries.h), which has neither payer, reference nor date.
bool IsMadeOfSum(const ReturnPension& own);

} // namespace HmrcApi
