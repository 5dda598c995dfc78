#pragma once

// HMRC's pace, as far as the runs over all clients of one practice share it.

#include <cstdint>

#include "MorvUt/Export.h"

namespace HmrcApi
{

/// Takes the next second that no other run has, from the practice's row of MTDPace, by the database's clock. Answers in
/// how many milliseconds it begins; 0: now. The row is written aside, so that others see it at once. Throws
/// Cellar::DatabaseError.
MORVUT_API std::int64_t TakeSharedSecond();

} // namespace HmrcApi
