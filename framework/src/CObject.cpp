// Run-time class information.
#include "afx/CObject.h"

CObject* CRuntimeClass::CreateObject()
{
    return m_pfnCreateObject ? m_pfnCreateObject() : nullptr;
}

BOOL CRuntimeClass::IsDerivedFrom(const CRuntimeClass* baseClass) const
{
    for (const CRuntimeClass* each = this; each; each = each->m_pfnGetBaseClass ? each->m_pfnGetBaseClass() : nullptr)
    {
        if (each == baseClass)
            return TRUE;
    }
    return FALSE;
}

CObject::CObject() = default;
CObject::~CObject() = default;

CRuntimeClass* CObject::GetThisClass()
{
    static CRuntimeClass runtimeClass = {"CObject", static_cast<int>(sizeof(CObject)), 0xFFFF, nullptr, nullptr};
    return &runtimeClass;
}

CRuntimeClass* CObject::GetRuntimeClass() const
{
    return GetThisClass();
}

BOOL CObject::IsKindOf(const CRuntimeClass* runtimeClass) const
{
    return GetRuntimeClass()->IsDerivedFrom(runtimeClass);
}

void CObject::AssertValid() const
{
    // a bare object has no state to check
}

CObject* AfxDynamicDownCast(CRuntimeClass* runtimeClass, CObject* object)
{
    return object && object->IsKindOf(runtimeClass) ? object : nullptr;
}
