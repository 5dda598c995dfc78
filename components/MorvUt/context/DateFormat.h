#pragma once

// The order of day and month in typed dates, by the practice's option.

#include "MorvUt/Export.h"

/// From now on dates are typed in the order of the practice's option nDateFormat, which is an index of
/// arrDateFormatStrings (any other number, and no options record: day first). For a program that has opened a practice;
/// later changes of the option, rolled back ones included, apply at once, and so does the option of another practice
/// that is opened. Calling it again reads the option again.
/// Throws Cellar::DatabaseError.
MORVUT_API void FollowDateFormat();
