#pragma once

// The practice's options that the HMRC client reads, from the record itself each time. Without a connection or a
// record, as if each were 0. They throw Cellar::DatabaseError.

#include "MorvUt/Export.h"

namespace HmrcApi
{

struct PracticeOptions
{
    bool usesPayeInterface = false;  // the practice fetches through the single PAYE interface
    bool isRetrievalEnabled = false; // retrieval from HMRC is switched on
    int debugLevel = 0;              // greater than 0: the plumbing logs what it sends and receives
    int logDays = 0;                 // how long lines of the log are kept; 0: for ever
};

/// All of them in one read.
MORVUT_API PracticeOptions ReadPracticeOptions();

inline int GetDebugLevel() { return ReadPracticeOptions().debugLevel; }

} // namespace HmrcApi
