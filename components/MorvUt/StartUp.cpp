#include "MorvUt/StartUp.h"

#include "Afx/windows/WindowSystem.h"
#include "MorvUt/users/UserData.h"
#include "Quarry/Listeners.h"
#include "Quarry/Session.h"
#include "Shellkit/NamedItems.h"

void MorvUtStartUp(const CString& applicationName, const CString& keyBase)
{
    CUserData::m_strApplicationName = applicationName;
    CUserData::m_strKeyBase = keyBase;
}

void MorvUtShutDown()
{
    Shellkit::Shutdown();
    Quarry::RemoveAllListeners();
    Quarry::SetConnection(nullptr);
    Afx::WindowSystem::Install(nullptr);
}
