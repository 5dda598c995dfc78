#pragma once

// The schedules of a client's or a partnership's tax year: what there is, and the sheets that edit them.

#include <cstdint>
#include <vector>

#include "Kiln/CAmt.h"
#include "MorvUt/context/ClientView.h"

namespace Desk
{

/// Whose schedules, and of which real tax year.
struct ScheduleOwner
{
    ClientView client;
    short year = 0;
};

enum class ScheduleKind : std::uint8_t
{
    Employment,
    Pension, // or a benefit of the state
    Interest,
    ForeignDividend,
    ChangeOfBasis,
    InvestmentIncome // a partnership's
};
const char* NameOf(ScheduleKind kind) noexcept;
/// The kinds of which one can be added for this owner.
std::vector<ScheduleKind> NewKindsOf(const ScheduleOwner& owner);

struct ScheduleLine
{
    ScheduleKind kind;
    long id; // of its own table; of a change of basis: its tax form
    CString text, reference;
    Kiln::CAmt amount, tax;
};

/// In the order of the return. Throws Cellar::DatabaseError.
std::vector<ScheduleLine> ListSchedules(const ScheduleOwner& owner);

/// Opens the sheet of a schedule; `id` 0: of a new one. True when something was saved. One that somebody else has
/// deleted is told.
bool OpenSchedule(const ScheduleOwner& owner, ScheduleKind kind, long id);

} // namespace Desk
