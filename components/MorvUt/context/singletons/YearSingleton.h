#pragma once

// What the process keeps of the reference data of the year that it works on.

#include "MorvUt/Export.h"
#include "MorvUt/taxyear/PFileYearOffsetter.h"
#include "MorvUt/taxyear/Singleton.h"

class MORVUT_API CYearSingletonData
{
public:
    virtual ~CYearSingletonData();
    /// Nothing is held.
    CYearSingletonData() = default;
    /// Reads the current connection; throws Cellar::DatabaseError.
    explicit CYearSingletonData(short realYear);
    CYearSingletonData(const CYearSingletonData&) = default;
    CYearSingletonData& operator=(const CYearSingletonData&) = default;

    short year = 0;     // real, the thread's offset added
    int pfileValue = 0; // of the year's PFile record; 1 when it has none
};

class CYearSingleton;
extern template class MORVUT_API CSingleton<CYearSingletonData, CYearSingleton>;

/// The cache. It goes when a transaction is rolled back and when another practice is opened; no record is watched.
class MORVUT_API CYearSingleton : public CSingleton<CYearSingletonData, CYearSingleton>
{
public:
    /// Of the real tax year `year`, on which the calling thread's offset (CPFileYearOffsetter) is added first, in 16
    /// bits. The reference holds until another year is asked for or the singleton ends. Throws Cellar::DatabaseError.
    static const CYearSingletonData& Data(short year)
    {
        const auto realYear = static_cast<short>(year + GetPFileYearOffset());
        const CYearSingletonData& held = Instance().m_data;
        return held.year == realYear ? held : Load(realYear);
    }

private:
    friend class CSingleton<CYearSingletonData, CYearSingleton>;
    CYearSingleton();
    static const CYearSingletonData& Load(short realYear);
};
