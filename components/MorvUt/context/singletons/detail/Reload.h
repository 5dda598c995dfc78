#pragma once

// What makes all caches of the practice read anew.

namespace Context::Detail
{

/// From now on the caches of client, year, user and options end when a transaction is rolled back, when a direct
/// statement changed the practice and when another practice is opened. Calling it again is nothing.
void EndCachesOnReload();

} // namespace Context::Detail
