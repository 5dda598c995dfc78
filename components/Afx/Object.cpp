#include "Afx/Object.h"

const CRuntimeClass CObject::classCObject{"CObject", nullptr, nullptr};

CObject::~CObject() = default;

const CRuntimeClass* CObject::GetRuntimeClass() const { return RUNTIME_CLASS(CObject); }

bool CObject::IsKindOf(const CRuntimeClass* runtimeClass) const noexcept
{
    return GetRuntimeClass()->IsDerivedFrom(runtimeClass);
}

bool CRuntimeClass::IsDerivedFrom(const CRuntimeClass* base) const noexcept
{
    for (const CRuntimeClass* at = this; at; at = at->m_pBaseClass)
        if (at == base)
            return true;
    return false;
}
