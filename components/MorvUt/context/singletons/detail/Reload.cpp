#include "MorvUt/context/singletons/detail/Reload.h"

#include "MorvUt/context/singletons/ClientSingleton.h"
#include "MorvUt/context/singletons/OptionsSingleton.h"
#include "MorvUt/context/singletons/UserSingleton.h"
#include "MorvUt/context/singletons/YearSingleton.h"
#include "Quarry/Session.h"

void Context::Detail::EndCachesOnReload()
{
    [[maybe_unused]] static const int number = Quarry::AddRollbackListener([] {
        CClientSingleton::Destroy();
        CYearSingleton::Destroy();
        CUserSingleton::Destroy();
        COptionsSingleton::Destroy();
    });
}
