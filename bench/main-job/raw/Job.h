#pragma once

// One client's main job as a program without this library would do it: structs, functions and the engine's own C
// interface. It sends the statements that ours sends, in the same transactions, and leaves the same rows. What ours
// does besides it does not know: items that are there already, withdrawn ones, notes, listeners.

#include <string>

#include "main-job/raw/Database.h"

namespace Raw
{

/// Reads HMRC's answer, stages it, makes its schedules and compares both, for a client who has nothing yet. Throws
/// std::runtime_error when he has, or when a figure differs afterwards.
void DoJob(Database& database, long client, int year, const std::string& answer);

} // namespace Raw
