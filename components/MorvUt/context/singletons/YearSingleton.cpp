#include "MorvUt/context/singletons/YearSingleton.h"

#include "Brix/Records.h"
#include "MorvUt/context/singletons/detail/Reload.h"

template class CSingleton<CYearSingletonData, CYearSingleton>;

CYearSingletonData::~CYearSingletonData() = default;

CYearSingletonData::CYearSingletonData(short realYear) : year(realYear), pfileValue(1)
{
    Brix::CPFile pfile;
    if (pfile.Open({{Brix::CPFile::kYear, realYear}}))
        pfileValue = pfile.GetValue();
}

CYearSingleton::CYearSingleton() { Context::Detail::EndCachesOnReload(); }

const CYearSingletonData& CYearSingleton::Load(short realYear)
{
    const CYearSingletonData read(realYear);
    return Instance().m_data = read;
}
