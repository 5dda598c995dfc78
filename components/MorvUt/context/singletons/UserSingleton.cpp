#include "MorvUt/context/singletons/UserSingleton.h"

#include "Brix/Records.h"
#include "MorvUt/context/singletons/detail/Reload.h"

template class CSingleton<CUserSingletonData, CUserSingleton>;

CUserSingletonData::~CUserSingletonData() = default;

CUserSingletonData::CUserSingletonData(const char* name) : userName(name)
{
    // Compared here: the embedded database knows the two cases of a letter for ASCII only.
    Brix::CUser user;
    user.Open();
    while (!user.IsEOL() && user.GetUserID().CompareNoCase(userName) != 0)
        user.MoveNext();
    if (!user.IsEOL()) {
        userText = user.GetFullName();
        userValue = user.GetUserValue();
    }
}

CUserSingleton::CUserSingleton() { Context::Detail::EndCachesOnReload(); }

const CUserSingletonData& CUserSingleton::Data(const char* userName)
{
    const CUserSingletonData& held = Instance().m_data;
    if (held.userName.CompareNoCase(userName ? userName : "") == 0)
        return held;
    const CUserSingletonData read(userName);
    return Instance().m_data = read;
}
