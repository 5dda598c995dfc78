#include "MorvUt/hmrc/access/PracticeOptions.h"

#include "Brix/Records.h"
#include "Quarry/Session.h"

namespace HmrcApi
{
namespace
{

template<class T>
T ReadOption(T (Brix::COptions::*get)() const)
{
    Brix::COptions options;
    return Quarry::HasConnection() && options.Open() ? (options.*get)() : T();
}

} // namespace

bool UsesPayeInterface() { return ReadOption(&Brix::COptions::GetPAYEInterface) == 1; }
bool IsRetrievalEnabled() { return ReadOption(&Brix::COptions::GetHMRCRetrieval); }
int GetDebugLevel() { return ReadOption(&Brix::COptions::GetDebugLogging); }

} // namespace HmrcApi
