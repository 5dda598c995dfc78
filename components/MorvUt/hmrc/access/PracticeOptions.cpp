#include "MorvUt/hmrc/access/PracticeOptions.h"

#include "Brix/Records.h"
#include "Quarry/Session.h"

namespace HmrcApi
{

PracticeOptions ReadPracticeOptions()
{
    Brix::COptions options;
    if (!Quarry::HasConnection() || !options.Open())
        return {};
    return {options.GetPAYEInterface() == 1, options.GetHMRCRetrieval(), options.GetDebugLogging(),
            options.GetHMRCLogDays()};
}

} // namespace HmrcApi
