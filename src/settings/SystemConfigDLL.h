// SystemConfigDLL: asks a product's configuration library for numbered items.
#pragma once

#include <afx.h>
#include "diag/CSpy.h"
#include "settings/ConfigurationLibrary.h"

/// Loads a configuration library (see settings/ConfigurationLibrary.h), asks it for one item at a time and frees it
/// again. TvkProduct does so for every key that the settings library maps to a configuration item.
///
/// No member throws; what failed is told by the value that is returned.
class AFX_EXT_CLASS SystemConfigDLL : public CObject
{
public:
    /// Nothing is loaded yet.
    SystemConfigDLL();
    /// Loads at once, as Initialize does; whether that succeeded shows in the answers.
    explicit SystemConfigDLL(CString libraryName);
    /// Frees the library.
    ~SystemConfigDLL() override;

    /// Loads the library: by its name in the system's usual search, then, on the NT family, from the printer driver's
    /// directory. Returns 1 when it can be asked, else 0. An object that holds a library already keeps it, whatever
    /// the name, and returns 1.
    int Initialize(CString libraryName);
    /// Asks for a text. On success returns it and stores it in `value`. `value` stays untouched on failure: returns
    /// "ERROR_SYSCONFIGDLL_FAILURE" when there is no library to ask, and the one character 0xFF when the library broke
    /// the two-call protocol or does not know the item. At most 256 bytes of a text are read.
    CString GetItemData(unsigned long item, CString& value);
    /// Asks for a number. On success returns it and stores it in `value`; on failure returns 0xFFFFFFFF and leaves
    /// `value` untouched.
    unsigned long GetItemData(unsigned long item, unsigned long& value);

private:
    HMODULE m_hConfigDLL;
    GetConfigDataFunction m_pfnGetConfigData;
    int m_bLoaded;            // 1 once the library is loaded and its entry point found
    CString m_strLibraryName; // as last given to Initialize
    DWORD m_dwReserved1;      // first argument of every call
    DWORD m_dwItem;           // item of the current question
    DWORD m_dwReserved2;      // third argument of every call
    char m_szData[256];       // text answers
    BYTE m_abNumber[40];      // numeric answers: the first 32-bit word
    DWORD m_dwSize;           // size word of every call; the library's last word stays in it
    CSpy m_Spy;
    DWORD m_dwLastResult; // result of the last call

    int InitializeSystemConfigDLL();
    int TerminateSystemConfigDLL();

    bool Ask(unsigned long item, void* firstBuffer, void* buffer);
};
