#include "HmrcApi/Host.h"

namespace HmrcApi
{

// Here, so that each type's information stands in one place and a cast from another module finds it.
IAuthorisationStore::~IAuthorisationStore() = default;
IGrantStore::~IGrantStore() = default;
IScope::~IScope() = default;
IClientData::~IClientData() = default;
IChainLogger::~IChainLogger() = default;
IEndpointOverride::~IEndpointOverride() = default;

} // namespace HmrcApi
