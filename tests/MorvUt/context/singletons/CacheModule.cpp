// A module of a program, built twice, so that each has its own code of the caches.

#include "MorvUt/context/singletons/ClientSingleton.h"

#define EXPORTED extern "C" __attribute__((visibility("default")))

struct OwnData
{
    virtual ~OwnData() = default;
};
class OwnCache : public CSingleton<OwnData, OwnCache>
{};

EXPORTED const void* Own() { return &OwnCache::Instance(); }
EXPORTED int HasOwn() { return OwnCache::Loaded(); }
EXPORTED void EndOwn() { OwnCache::Destroy(); }
EXPORTED const void* Client() { return &CClientSingleton::Data(1, 0, 2024); }
EXPORTED void EndClient() { CClientSingleton::Destroy(); }
