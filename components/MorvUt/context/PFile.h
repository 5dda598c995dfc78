#pragma once

// The practice's reference data of a tax year.

#include "Brix/Records.h"
#include "MorvUt/Export.h"

/// The year's records, which may be none; the list stands on the first. `year` is a real tax year; with `relative` it
/// is one on which the calling thread's offset (CPFileYearOffsetter) is added first, in 16 bits.
/// Reads the current connection; throws Cellar::DatabaseError.
MORVUT_API Brix::CPFile GetPFileForYear(short year, bool relative);
/// The same for the year, or else for the nearest earlier one, back to 2021. The list may be empty.
MORVUT_API Brix::CPFile GetClosestPFileForYear(short year, bool relative);
