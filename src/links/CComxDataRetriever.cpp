#include "links/CComxDataRetriever.h"
#include <cstring>
#include "settings/internal/Directories.h"
#include "system/internal/Handle.h"

namespace
{
/// An element by its number from 1 on; 0 when there is none.
template <std::size_t Count>
unsigned long Numbered(const unsigned long (&values)[Count], int number)
{
    return number >= 1 && number <= static_cast<int>(Count) ? values[number - 1] : 0;
}
} // namespace

CComxDataRetriever::CComxDataRetriever() : m_hComxDLL(nullptr), m_bLoaded(FALSE), m_pfnGetPrinterCache(nullptr)
{
    ForgetPrinter();
}

CComxDataRetriever::~CComxDataRetriever()
{
    FreeComxDLL();
}

int CComxDataRetriever::GetPrinterCacheData(CString friendlyName)
{
    m_Spy.OutputData("CComxDataRetriever::GetPrinterCacheData()");
    ForgetPrinter(); // what another printer reported must not pass for this one's
    LoadComxDLL();
    const int result = AskLibrary(friendlyName);
    FreeComxDLL();
    m_Spy.OutputData("GetPrinterCacheData(): bReturn");
    m_Spy.OutputData(result);
    return result;
}

CString CComxDataRetriever::GetSerialNumber()
{
    return m_szSerialNumber;
}

unsigned long CComxDataRetriever::GetInkPercent(int index)
{
    return Numbered(m_PrinterCache.inkPercent, index);
}

unsigned long CComxDataRetriever::GetInkStyle()
{
    return m_PrinterCache.inkStyle;
}

unsigned long CComxDataRetriever::GetLogCartId(int index)
{
    return Numbered(m_PrinterCache.logCartId, index);
}

unsigned long CComxDataRetriever::GetPhysCartId(int index)
{
    return Numbered(m_PrinterCache.physCartId, index);
}

unsigned long CComxDataRetriever::GetSavedCartId(int index)
{
    return Numbered(m_PrinterCache.savedCartId, index);
}

int CComxDataRetriever::LoadComxDLL()
{
    m_Spy.OutputData("CComxDataRetriever::LoadComxDLL()");
    // Its setting is read, and traced, before the file name's.
    CString folder = tvk::PrinterDriverDirectory(m_Product, 256);
    const CString fileName = m_Product.GetSetting("IDO_COMX_DLL_FILENAME", m_strSetting);
    m_Spy.OutputData("dlltoload: ");
    m_Spy.OutputData(folder + fileName);
    if (!m_bLoaded)
    {
        m_hComxDLL = tvk::LoadLibraryFrom(folder, fileName);
        if (!m_hComxDLL)
        {
            unsigned long error = ::GetLastError();
            m_Spy.OutputData("LoadLibrary() Failed, trying alternate path. Return Error Code:");
            m_Spy.OutputData(error);
            folder = tvk::LoadedModuleDirectory(m_Product.GetSetting("IDO_UTIL_RESDLL", m_strSetting), 256);
            m_hComxDLL = tvk::LoadLibraryFrom(folder, fileName);
            if (!m_hComxDLL)
            {
                error = ::GetLastError();
                m_Spy.OutputData("LoadLibrary() Return Error Code:");
                m_Spy.OutputData(error);
            }
        }
        m_bLoaded = m_hComxDLL != nullptr;
        if (m_bLoaded)
            m_Spy.OutputData("COMX DLL Loaded!");
    }
    m_Spy.OutputData("m_bLoaded ==");
    m_Spy.OutputData(m_bLoaded);
    return m_bLoaded;
}

void CComxDataRetriever::FreeComxDLL()
{
    m_pfnGetPrinterCache = nullptr;
    if (m_bLoaded)
        FreeLibrary(m_hComxDLL);
    m_hComxDLL = nullptr;
    m_bLoaded = FALSE;
}

int CComxDataRetriever::AskLibrary(const CString& friendlyName)
{
    m_pfnGetPrinterCache = tvk::FindEntry<GetPrinterCacheFunction>(m_hComxDLL, "GetPrinterCache");
    if (!m_pfnGetPrinterCache)
    {
        m_Spy.OutputData("pGetCache == NULL");
        return 0;
    }
    m_Spy.OutputData("lpFriendlyName ==");
    m_Spy.OutputData(friendlyName);
    const int answer = m_pfnGetPrinterCache(friendlyName, &m_PrinterCache, 0, 0);
    m_Spy.OutputData("pGetCache(): pfnRet ==");
    m_Spy.OutputData(answer);
    if (answer != 0)
    {
        ForgetPrinter(); // it may have been filled in part
        return 0;
    }
    std::memcpy(m_szSerialNumber, m_PrinterCache.serialNumber, PRINTERCACHE_SERIAL_SIZE); // the last byte stays NUL
    return 1;
}

void CComxDataRetriever::ForgetPrinter()
{
    m_PrinterCache = {};
    m_PrinterCache.size = sizeof m_PrinterCache;
    std::memset(m_szSerialNumber, 0, sizeof m_szSerialNumber);
}
