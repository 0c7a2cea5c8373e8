// The registry layer's exception.
#include "system/CRegistryException.h"
#include "system/internal/Handle.h"

IMPLEMENT_DYNAMIC(CRegistryException, CException)

CRegistryException::CRegistryException(LONG errorCode) : m_lErrorCode(errorCode) {}

CRegistryException::~CRegistryException() = default;

int CRegistryException::ReportError(UINT, UINT)
{
    tvk::LocalMemory<char> description;
    // With this flag the system allocates the text and takes the buffer argument for the address of a pointer to it.
    ::FormatMessageA(FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS,
                     nullptr, static_cast<DWORD>(m_lErrorCode), MAKELANGID(LANG_NEUTRAL, SUBLANG_DEFAULT),
                     reinterpret_cast<char*>(description.Receive()), 0, nullptr);
    // Silent on purpose: destructors report through this, and a box from there would stop the host. The text is
    // composed for whoever looks at it in a debugger.
    CString report;
    report.Format("Registry Error\n\nError Code: %d\nDescription: %s", static_cast<int>(m_lErrorCode),
                  description ? description.Get() : "");
    return 0;
}
