#pragma once

// The log of what passed between the practice and HMRC, as it may be shown.

#include <string>
#include <vector>

#include "Afx/time/DateTime.h"
#include "MorvUt/Export.h"

namespace HmrcApi
{

/// Masked, also where another program wrote the line; ids of sessions and chains as they are.
struct LogLine
{
    COleDateTime when;
    std::string user, workstation, session, chain, event, interface, request, response, detail;
};

/// The lines in the order written; with `chain` those of one chain of events. Throws Cellar::DatabaseError.
MORVUT_API std::vector<LogLine> ReadLog(const std::string& chain = {});

} // namespace HmrcApi
