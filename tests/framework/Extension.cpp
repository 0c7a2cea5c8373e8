#include "Extension.h"

IMPLEMENT_DYNAMIC(CTestException, CException)

static int LivingExceptions = 0;

CTestException::CTestException()
{
    ++LivingExceptions;
}

CTestException::~CTestException()
{
    --LivingExceptions;
}

int CTestException::Living()
{
    return LivingExceptions;
}

void ThrowFromExtension(Thrown what)
{
    switch (what)
    {
    case Thrown::Own:
        throw new CTestException;
    case Thrown::Memory:
        AfxThrowMemoryException();
    case Thrown::File:
        AfxThrowFileException(CFileException::diskFull, ERROR_DISK_FULL, "full.txt");
    case Thrown::NotSupported:
        AfxThrowNotSupportedException();
    }
}

CString PassThrough(CString text)
{
    text += "!";
    return text;
}
