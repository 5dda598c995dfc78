#pragma once

// What the process keeps of the practice's options.

#include "MorvUt/Export.h"
#include "MorvUt/taxyear/Singleton.h"

/// Both are 0 while no practice is open, and in one without an options record.
class MORVUT_API COptionsSingletonData
{
public:
    virtual ~COptionsSingletonData();
    COptionsSingletonData() = default;
    COptionsSingletonData(const COptionsSingletonData&) = default;
    COptionsSingletonData& operator=(const COptionsSingletonData&) = default;

    int payeInterface = 0; // 1: the single PAYE interface
    int debugLogging = 0;
};

class COptionsSingleton;
extern template class MORVUT_API CSingleton<COptionsSingletonData, COptionsSingleton>;

/// The cache. It goes when a transaction is rolled back and when another practice is opened; the record is not watched.
class MORVUT_API COptionsSingleton : public CSingleton<COptionsSingletonData, COptionsSingleton>
{
public:
    /// The reference holds until the singleton ends. Throws Cellar::DatabaseError.
    static const COptionsSingletonData& Data()
    {
        const COptionsSingleton& singleton = Instance();
        return singleton.m_isRead ? singleton.m_data : Load();
    }

private:
    friend class CSingleton<COptionsSingletonData, COptionsSingleton>;
    COptionsSingleton();
    static const COptionsSingletonData& Load();

    bool m_isRead = false;
};
