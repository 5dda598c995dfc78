#pragma once

// The sample's users, roles and groups.

namespace Morv::Sample
{

/// One with all rights, one without those at HMRC, one with a role; `isBigPractice`: many more.
void AddUsers(bool isBigPractice);

/// Who does the work of the client of this number.
const char* AssignedTo(int number);

} // namespace Morv::Sample
