#pragma once

// The practice's options that the HMRC client reads, from the record itself each time. Without a connection or a
// record, as if each were 0. They throw Cellar::DatabaseError.

namespace HmrcApi
{

/// The practice fetches through the single PAYE interface.
bool UsesPayeInterface();
/// Retrieval from HMRC is switched on.
bool IsRetrievalEnabled();
/// Greater than 0: the plumbing logs what it sends and receives.
int GetDebugLevel();

} // namespace HmrcApi
