#include "settings/SystemConfigDLL.h"
#include "settings/TvkProduct.h"
#include "settings/internal/Directories.h"
#include "system/CRegistry.h"
#include "system/internal/Handle.h"
#include <array>
#include <cstring>

namespace
{
constexpr char NoLibrary[] = "ERROR_SYSCONFIGDLL_FAILURE";
constexpr unsigned long NoNumber = 0xFFFFFFFF;

constexpr std::array ResultNames{
    "ERROR_CONFIG_SUCCESS",
    "ERROR_CONFIG_UNDEFINED_ITEM",
    "ERROR_CONFIG_OUT_OF_RANGE",
    "ERROR_CONFIG_INSUFFICIENT_BUFFER_SIZE",
};
static_assert(ResultNames.size() == ERROR_CONFIG_INSUFFICIENT_BUFFER_SIZE + 1);

CString NoProtocol()
{
    return CString('\xFF', 1);
}

/// What is expected of one of a question's two calls, and the words for what came of it.
struct Call
{
    DWORD expected;
    const char* met;
    const char* missed;
    const char* instead;
};
constexpr Call FirstCall{
    ERROR_CONFIG_INSUFFICIENT_BUFFER_SIZE, "Buffer size returned ERROR_CONFIG_INSUFFICIENT_BUFFER_SIZE",
    "BufferSize should have returned error_config_insufficient_buffer_size.\n", "Instead returned: "};
constexpr Call SecondCall{ERROR_CONFIG_SUCCESS, "Data returned ERROR_CONFIG_SUCCESS",
                          "Data should have returned error_config_success.\n", "Instead returned "};

/// What a call's result means. A text for whoever looks at the failing frame in a debugger: it goes nowhere.
CString Describe(const Call& call, DWORD result)
{
    if (result == call.expected)
        return call.met;
    const CString missed(call.missed);
    return result < ResultNames.size() ? missed + call.instead + ResultNames[result]
                                       : missed + "Instead returned unknown error";
}
} // namespace

SystemConfigDLL::SystemConfigDLL()
    : m_hConfigDLL(nullptr), m_pfnGetConfigData(nullptr), m_bLoaded(0), m_dwReserved1(0), m_dwItem(0), m_dwReserved2(0),
      m_szData(), m_abNumber(), m_dwSize(0), m_dwLastResult(0)
{
}

SystemConfigDLL::SystemConfigDLL(CString libraryName) : SystemConfigDLL()
{
    Initialize(libraryName);
}

SystemConfigDLL::~SystemConfigDLL()
{
    TerminateSystemConfigDLL();
}

int SystemConfigDLL::Initialize(CString libraryName)
{
    m_strLibraryName = libraryName;
    return InitializeSystemConfigDLL();
}

int SystemConfigDLL::InitializeSystemConfigDLL()
{
    if (m_bLoaded)
        return 1;
    if (m_strLibraryName.IsEmpty())
        return 0;
    m_hConfigDLL = LoadLibraryA(m_strLibraryName);
    if (!m_hConfigDLL && CRegistry().GetOSPlatform() != CRegistry::OS_PLATFORM_WIN9X)
    {
        TvkProduct product;
        // The path setting may itself be mapped to a configuration item: the library that is being looked for cannot
        // answer it.
        product.m_bConfigDLLAllowed = false;
        m_hConfigDLL = tvk::LoadLibraryFrom(tvk::PrinterDriverDirectory(product), m_strLibraryName);
    }
    if (m_hConfigDLL)
    {
        m_pfnGetConfigData = tvk::FindEntry<GetConfigDataFunction>(m_hConfigDLL, "GetConfigData");
        if (!m_pfnGetConfigData)
        {
            FreeLibrary(m_hConfigDLL); // the stale handle is not used: nothing counts as loaded
            return 0;
        }
        m_bLoaded = 1;
        return 1;
    }
    if (::GetLastError() == ERROR_FILE_NOT_FOUND)
    {
        CString text; // for the debugger only, as the descriptions of the results
        text.Format("Config DLL, %s, was not found.", static_cast<LPCSTR>(m_strLibraryName));
    }
    return 0;
}

/// The two calls of a question. True when the second one filled `buffer`.
bool SystemConfigDLL::Ask(unsigned long item, void* firstBuffer, void* buffer)
{
    m_dwItem = item;
    m_dwLastResult = m_pfnGetConfigData(m_dwReserved1, item, m_dwReserved2, firstBuffer, &m_dwSize);
    [[maybe_unused]] CString description = Describe(FirstCall, m_dwLastResult);
    if (m_dwLastResult != ERROR_CONFIG_INSUFFICIENT_BUFFER_SIZE)
        return false; // success without having told the size is a failure too
    m_dwLastResult = m_pfnGetConfigData(m_dwReserved1, m_dwItem, m_dwReserved2, buffer, &m_dwSize);
    description = Describe(SecondCall, m_dwLastResult);
    return m_dwLastResult == ERROR_CONFIG_SUCCESS;
}

CString SystemConfigDLL::GetItemData(unsigned long item, CString& value)
{
    if (!m_bLoaded || !m_pfnGetConfigData)
        return NoLibrary;
    if (!Ask(item, m_szData, m_szData))
        return NoProtocol();
    // Whatever size the library declares, no more than the buffer is read.
    value = CString(m_szData, static_cast<int>(strnlen(m_szData, sizeof m_szData)));
    return value;
}

unsigned long SystemConfigDLL::GetItemData(unsigned long item, unsigned long& value)
{
    if (!m_bLoaded || !m_pfnGetConfigData)
        return NoNumber;
    if (!Ask(item, nullptr, m_abNumber))
        return NoNumber;
    std::memcpy(&value, m_abNumber, sizeof value);
    return value;
}

int SystemConfigDLL::TerminateSystemConfigDLL()
{
    if (m_bLoaded != 1)
        return 0;
    m_pfnGetConfigData = nullptr;
    if (!m_hConfigDLL)
        return 0;
    if (FreeLibrary(m_hConfigDLL))
    {
        m_hConfigDLL = nullptr;
        m_bLoaded = 0;
        return 1;
    }
    tvk::LocalMemory<char> text; // again for the debugger only
    FormatMessageA(FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr,
                   ::GetLastError(), 0, reinterpret_cast<LPSTR>(text.Receive()), 0, nullptr);
    return 0;
}
