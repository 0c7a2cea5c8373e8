// The common base of the framework's classes, with run-time class information.
#pragma once

#include "afx/Platform.h"

class CObject;

/// What is known of a class at run time; one constant object a class, obtained by RUNTIME_CLASS.
struct FRAMEWORK_API CRuntimeClass
{
    LPCSTR m_lpszClassName;
    int m_nObjectSize;
    UINT m_wSchema;                        ///< always 0xFFFF: the class cannot be serialised
    CObject* (*m_pfnCreateObject)();       ///< null for a class that is not created dynamically
    CRuntimeClass* (*m_pfnGetBaseClass)(); ///< null for CObject

    /// A new object of the class, which the caller deletes; null when the class has no DECLARE_DYNCREATE.
    CObject* CreateObject();
    /// Whether the class is `baseClass` or comes from it.
    BOOL IsDerivedFrom(const CRuntimeClass* baseClass) const;
};

/// The base of all framework classes. Objects are not copied unless a derived class says how.
class FRAMEWORK_API CObject
{
public:
    virtual CRuntimeClass* GetRuntimeClass() const;
    virtual ~CObject();
    /// Whether the object is of the given class or one derived from it.
    BOOL IsKindOf(const CRuntimeClass* runtimeClass) const;
    /// Checks the object's own state, in debug builds.
    virtual void AssertValid() const;
    static CRuntimeClass* GetThisClass();

    CObject(const CObject&) = delete;
    CObject& operator=(const CObject&) = delete;

protected:
    CObject();
};

#define RUNTIME_CLASS(class_name) (class_name::GetThisClass())

#define DECLARE_DYNAMIC(class_name)                                                                                    \
public:                                                                                                                \
    static CRuntimeClass* GetThisClass();                                                                              \
    CRuntimeClass* GetRuntimeClass() const override;

#define DECLARE_DYNCREATE(class_name)                                                                                  \
    DECLARE_DYNAMIC(class_name)                                                                                        \
    static CObject* CreateObject();

#define AFX_IMPLEMENT_RUNTIME_CLASS(class_name, base_class_name, create)                                               \
    CRuntimeClass* class_name::GetThisClass()                                                                          \
    {                                                                                                                  \
        static CRuntimeClass runtimeClass = {#class_name, static_cast<int>(sizeof(class_name)), 0xFFFF, create,        \
                                             &base_class_name::GetThisClass};                                          \
        return &runtimeClass;                                                                                          \
    }                                                                                                                  \
    CRuntimeClass* class_name::GetRuntimeClass() const                                                                 \
    {                                                                                                                  \
        return GetThisClass();                                                                                         \
    }

#define IMPLEMENT_DYNAMIC(class_name, base_class_name) AFX_IMPLEMENT_RUNTIME_CLASS(class_name, base_class_name, nullptr)

#define IMPLEMENT_DYNCREATE(class_name, base_class_name)                                                               \
    CObject* class_name::CreateObject()                                                                                \
    {                                                                                                                  \
        return new class_name;                                                                                         \
    }                                                                                                                  \
    AFX_IMPLEMENT_RUNTIME_CLASS(class_name, base_class_name, &class_name::CreateObject)

/// The object as a pointer to `class_name`, null when it is of another class.
#define DYNAMIC_DOWNCAST(class_name, object)                                                                           \
    (static_cast<class_name*>(AfxDynamicDownCast(RUNTIME_CLASS(class_name), object)))
FRAMEWORK_API CObject* AfxDynamicDownCast(CRuntimeClass* runtimeClass, CObject* object);
