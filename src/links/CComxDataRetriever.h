// CComxDataRetriever: what a printer last reported about its ink.
#pragma once

#include <afx.h>
#include "diag/CSpy.h"
#include "links/PrinterCache.h"
#include "settings/TvkProduct.h"

/// Fetches a printer's cached status from the printer communication library (setting `IDO_COMX_DLL_FILENAME`, see
/// links/PrinterCache.h), without a word to the printer itself. The library lies in the printer driver's directory or,
/// failing that, beside the resource module that `IDO_UTIL_RESDLL` names. It is loaded for one call and freed before
/// the call returns. Every call is traced; failures are results, nothing is thrown.
class AFX_EXT_CLASS CComxDataRetriever
{
public:
    /// Knows nothing yet: the getters answer 0 and the empty text.
    CComxDataRetriever();
    ~CComxDataRetriever();
    CComxDataRetriever(const CComxDataRetriever&) = delete;
    CComxDataRetriever& operator=(const CComxDataRetriever&) = delete;

    /// Fetches the status of the printer of this name. Returns 1; or 0 when there is no library or it knows no status:
    /// the getters then answer as if nothing had ever been fetched.
    int GetPrinterCacheData(CString friendlyName);

    /// The printer's serial number.
    CString GetSerialNumber();
    /// The level of ink 1 to 10 in per cent, numbered as in INKINFO; 0 for any other number.
    unsigned long GetInkPercent(int index);
    /// The kind of ink system.
    unsigned long GetInkStyle();
    /// The logical identity of cartridge 1 or 2: what the printer treats it as; 0 for any other number.
    unsigned long GetLogCartId(int index);
    /// The physical identity: what it is.
    unsigned long GetPhysCartId(int index);
    /// The identity that it had when the printer was switched off.
    unsigned long GetSavedCartId(int index);

private:
    int LoadComxDLL();
    void FreeComxDLL();
    int AskLibrary(const CString& friendlyName);
    void ForgetPrinter();

    CSpy m_Spy;
    TvkProduct m_Product;
    CString m_strSetting; // of the look-ups
    HMODULE m_hComxDLL;
    int m_bLoaded;
    GetPrinterCacheFunction m_pfnGetPrinterCache;
    PRINTERCACHE m_PrinterCache;
    char m_szSerialNumber[PRINTERCACHE_SERIAL_SIZE + 1];
};
