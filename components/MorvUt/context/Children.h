#pragma once

// Children and their parents: who was responsible for a child in a tax year, and what a child's schedule begins with.
//
// A child's parents are linked to it: clients of the practice by id, others by name. All functions read the saved links
// on the current connection and throw Cellar::DatabaseError. A `child` that stands on no row has no parents.

#include "Kiln/CAmt.h"
#include "MorvUt/Export.h"

namespace Brix
{
class CChild;
class CChildSchedule;
} // namespace Brix

/// How a child's allowance is given, as schedules store it.
enum ChildAllowance : short
{
    ChildAllowanceFull = 1,
    ChildAllowanceShared = 3,      // with the other parent
    ChildAllowanceApportioned = 4, // between several
};

/// Links of both kinds, whatever their dates.
MORVUT_API long GetNumParents(const Brix::CChild& child);
/// Links of both kinds that touch the tax year `year` (real): begun by 5 April of it, and not ended before 6 April of
/// the year before. A date that is null or cannot be read leaves its end open: a link from 1 May 2019 counts from 2020
/// on, one until 6 April 2019 up to 2020.
MORVUT_API int GetNumParentsResponsibleInYear(const Brix::CChild& child, int year);
/// The first linked client who is not `clientId`; -1 when there is none (the other parent may be no client).
MORVUT_API long GetOtherParentClientID(const Brix::CChild& child, long clientId);
/// The code (ChildAllowance) to begin with, by the parents responsible in the current tax year, whatever the
/// schedule's: full for none or one, apportioned for three and more. For two shared, unless the other one is no active
/// client and `amount` is not above zero (or not valid): full.
MORVUT_API short GetDefaultAllowance(const Brix::CChild& child, long clientId, Kiln::CAmt amount);
/// Sets what a schedule begins with on its current row; saving is the caller's. Its allowance is GetDefaultAllowance
/// for its child and client, and so is its allowance in the year when the child was born in the current tax year, from
/// 2003 on. The marker (bShared) is switched on, never off: for the full allowance, and with `markShared` when the
/// child has two parents and the first other client of them is `otherParentId`.
MORVUT_API void SetChildDefaults(Brix::CChildSchedule& schedule, Kiln::CAmt amount, long otherParentId,
                                 bool markShared);
