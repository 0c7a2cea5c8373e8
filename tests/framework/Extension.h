// An extension module of the tests: a class with run-time information, and a function that throws what it is told.
#pragma once

#include <afx.h>

class AFX_EXT_CLASS CTestException : public CException
{
    DECLARE_DYNAMIC(CTestException)
public:
    CTestException();
    ~CTestException() override;
    static int Living();
};

enum class Thrown
{
    Own,
    Memory,
    File,
    NotSupported
};
AFX_EXT_API void ThrowFromExtension(Thrown what);
/// Changes its copy of a text, and answers another one by value.
AFX_EXT_API CString PassThrough(CString text);
