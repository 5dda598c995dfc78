#pragma once

// The allowance that a source of income carries from year to year.

#include "Kiln/CAmt.h"
#include "MorvUt/Export.h"

/// The schedule that holds a source. Any other number is taken as SchedTypePartnership.
enum SchedType : int
{
    SchedTypeInterest = 0,      // UK interest
    SchedTypeJointInterest = 1, // the client's share of joint interest
    SchedTypeForeign = 2,       // other foreign income
    SchedTypePartnership = 3,   // accrued income of a partnership
};

/// What is left of a source's accrued allowance at the end of the tax year `year` (real): what was brought forward plus
/// the year's addition, less the income and the year's deduction; never below zero. £0 + £500 - £300 is £200, and
/// nothing with an income of £800. Where the figure brought forward was not entered it is what was left a year earlier,
/// back to a year without return or source; nothing is left of 2001/02 (2002) and earlier years.
///
/// The source is the first row of the year's return with exactly this name (null: empty) and these flags: the first is
/// on when stored as 1, the second when not 0; a partnership's has none. Joint interest needs a joint row, which holds
/// the figures. Its income is
/// - of interest: the row's, or the sum of its lines for the types 1100 and 1110, but not below zero;
/// - of foreign income: the sum of its lines, whatever its sign;
/// - of a partnership's row of kind 0: that of the first interest row of this name, of kind 1: the client's shares of
///   the partnership's untaxed investment income in the accounting periods that end in the tax year; else none.
/// An amount that is null, or cannot be read, is zero (brought forward: not entered); beyond 64 bits nothing is left.
///
/// Every thread remembers what it worked out for the last client, or two (with a spouse), until a record that such a
/// figure is made from is changed on any thread of this process, a transaction is rolled back, another practice is
/// opened, or the current tax year changes. Who learns of changes by other programs calls
/// ClearAccruedAllowanceBFWDCache. Reads the current connection (up to four statements for each year that is not
/// remembered, and one for each interest row that fits but has no joint row); throws Cellar::DatabaseError.
MORVUT_API Kiln::CAmt GetAccruedAllowanceBFWD(long clientId, SchedType type, const char* name, bool flagA, bool flagB,
                                              short year);
/// Makes the calling thread forget.
MORVUT_API void ClearAccruedAllowanceBFWDCache();
