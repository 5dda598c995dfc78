#include "MorvUt/context/singletons/OptionsSingleton.h"

#include "Brix/Records.h"
#include "MorvUt/context/singletons/detail/Reload.h"
#include "Quarry/Session.h"

template class CSingleton<COptionsSingletonData, COptionsSingleton>;

COptionsSingletonData::~COptionsSingletonData() = default;

COptionsSingleton::COptionsSingleton() { Context::Detail::EndCachesOnReload(); }

const COptionsSingletonData& COptionsSingleton::Load()
{
    COptionsSingletonData read;
    Brix::COptions options;
    if (Quarry::HasConnection() && options.Open()) {
        read.payeInterface = options.GetPAYEInterface();
        read.debugLogging = options.GetDebugLogging();
    }
    COptionsSingleton& singleton = Instance();
    singleton.m_data = read;
    singleton.m_isRead = true;
    return singleton.m_data;
}
