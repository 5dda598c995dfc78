#pragma once

// Run-time class information in the MFC manner.

#include "Afx/Export.h"

class CObject;

/// What a class says of itself: its name, its base, and how to make one (null: cannot be made by name).
struct AFX_API CRuntimeClass
{
    const char* m_lpszClassName;
    const CRuntimeClass* m_pBaseClass;
    CObject* (*m_pfnCreateObject)();

    bool IsDerivedFrom(const CRuntimeClass* base) const noexcept;
    CObject* CreateObject() const { return m_pfnCreateObject ? m_pfnCreateObject() : nullptr; }
};

class AFX_API CObject
{
public:
    static const CRuntimeClass classCObject;

    CObject() = default;
    CObject(const CObject&) = default;
    CObject& operator=(const CObject&) = default;
    virtual ~CObject();
    virtual const CRuntimeClass* GetRuntimeClass() const;
    bool IsKindOf(const CRuntimeClass* runtimeClass) const noexcept;
};

#define RUNTIME_CLASS(name) (&name::class##name)
#define DECLARE_DYNAMIC(name)                                                                                          \
public:                                                                                                                \
    static const CRuntimeClass class##name;                                                                            \
    const CRuntimeClass* GetRuntimeClass() const override;
#define DECLARE_DYNCREATE(name)                                                                                        \
    DECLARE_DYNAMIC(name)                                                                                              \
    static CObject* CreateObject();
#define IMPLEMENT_DYNAMIC(name, base)                                                                                  \
    const CRuntimeClass name::class##name                                                                              \
    {                                                                                                                  \
#name, RUNTIME_CLASS(base), nullptr                                                                            \
    };                                                                                                                 \
    const CRuntimeClass* name::GetRuntimeClass() const { return RUNTIME_CLASS(name); }
#define IMPLEMENT_DYNCREATE(name, base)                                                                                \
    CObject* name::CreateObject() { return new name; }                                                                 \
    const CRuntimeClass name::class##name                                                                              \
    {                                                                                                                  \
#name, RUNTIME_CLASS(base), &name::CreateObject                                                                \
    };                                                                                                                 \
    const CRuntimeClass* name::GetRuntimeClass() const { return RUNTIME_CLASS(name); }
