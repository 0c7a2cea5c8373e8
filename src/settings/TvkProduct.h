// TvkProduct: what is setting X for this product?
#pragma once

#include <afx.h>
#include "system/CRegistry.h"

/// Answers product settings. A setting is named by a key that begins with `IDO_` and is a text or an unsigned 32-bit
/// number. Its value comes from the first of these places that has one:
///
///  1. the product's configuration library (SystemConfigDLL), for a key whose settings library also holds the resource
///     key + `_OVERRIDE`: the number of the configuration item to ask for;
///  2. the settings library, a module of resources: an `RT_RCDATA` resource named by the key, a NUL-terminated ANSI
///     text or a little-endian 32-bit word;
///  3. the fallback settings library, when the object was built with one.
///
/// A few keys are rewritten first: by the Windows family, by the driver's version, by the cartridges preloaded at
/// installation. The tokens `~MODEL~` and `~MFG~` in a text are replaced by the configuration library's answers. Every
/// look-up writes one line to the trace log (CSpy) that tells where the value came from.
///
/// No look-up fails loudly: a missing text reads "ERROR", a missing number 0; a settings library that cannot be loaded
/// is traced and its settings are looked for in the host program's own resources, then in the fallback library.
///
/// An object may live as short or as long as its owner likes. A settings library that is not resident is loaded by the
/// first look-up and freed by the destructor, so a host that asks often keeps one object, or the library, alive.
/// Look-ups switch the framework's resource handle for a moment and belong to the thread that owns it, the host's
/// user-interface thread. The destructor puts back the resource handle that was current at the last look-up.
class AFX_EXT_CLASS TvkProduct : public CObject
{
public:
    /// Settings of this product: from the product prefix + "jswr.dll", without a fallback.
    TvkProduct();
    /// Settings from `libraryName` (a file name, looked for among the loaded modules, then beside this library), with
    /// the product prefix + "jswr.dll" as the fallback.
    explicit TvkProduct(CString libraryName);
    /// Settings from `libraryName`, with `fallbackLibraryName` as the fallback.
    TvkProduct(CString libraryName, CString fallbackLibraryName);
    /// Frees the settings library resolved last if this object loaded it; puts the saved resource handle back.
    ~TvkProduct() override;

    /// Looks a text up. `value` is output only: it receives the text, or "ERROR" when there is none. Returns a copy.
    CString GetSetting(const char* key, CString& value);
    /// Looks a number up. `value` is output only: it receives the number, or 0 when there is none. Returns it too.
    unsigned long GetSetting(const char* key, unsigned long& value);
    /// 1 when the text of `key` equals `expected`, upper and lower case told apart; else 0. A missing text is "ERROR".
    int CompareSetting(const char* key, CString expected);
    /// 1 when the number of `key` equals `expected`, else 0. A missing number is 0.
    int CompareSetting(const char* key, unsigned long expected);
    /// 1 when the driver's language (string 8003 of the product prefix + "jswr.dll") is Hebrew or Arabic, in any
    /// spelling of upper and lower case; else 0.
    int IsDriverLanguageRTL();

    /// The first four characters of this library's file name, of which the product's file names are formed. Found
    /// once and kept for the life of the process.
    static CString GetProductPrefix();
    /// Tells where this library lies; called by its entry point.
    static void SetUtilDLLInstance(HINSTANCE instance);

private:
    friend class SystemConfigDLL; // its own questions must not come back to it: m_bConfigDLLAllowed

    HMODULE m_hSettingsDLL;     // resolved by the last load; null when none
    HMODULE m_hSavedResource;   // the framework's resource handle when the last load began
    BOOL m_bFreeSettingsDLL;    // this object has loaded a settings library
    CString m_strKey;           // the key being looked up, as rewritten
    const BYTE* m_pSettingData; // data of the last look-up; null when not found
    CRegistry m_Registry;       // asked for the Windows version only
    DWORD m_dwConfigItem;       // item number in the key's override
    CString m_strConfigDLL;     // file name of the configuration library
    BOOL m_bPreloaded;          // the preload step rewrote the key
    BOOL m_bFromConfigDLL;      // the value came from the configuration library
    CString m_strPrimaryDLL;    // file name of the settings library
    CString m_strFallbackDLL;   // file name of the fallback settings library
    CString m_strCurrentDLL;    // the one that the last load used
    bool m_bFallbackAllowed;    // a failed look-up may be repeated in the fallback library
    bool m_bUseFallback;        // loads use the fallback library
    DWORD m_dwSettingSize;      // bytes at m_pSettingData: a resource may be shorter than its type
    HMODULE m_ahLoadedDLLs[3];  // modules that this object loaded; what it only found is never freed
    bool m_bConfigDLLAllowed;   // cleared while the configuration library itself is being looked for

    static HMODULE m_UtilDLLInstance;
    static CString m_strProductPrefix;
    static const CString m_strHebrew;
    static const CString m_strArabic;

    TvkProduct(CString libraryName, CString fallbackLibraryName, bool fallbackAllowed);

    // The steps of a look-up.
    void LoadSettingsDLL();
    bool LoadResourceSetting();
    void LoadSetting();
    unsigned long ConvertSetting();
    void TranslateSetting();
    void TranslateDebugMsg();
    void TranslateContactFileName();
    void TranslateExecutableFileNamePath();
    BOOL PreloadSetting();
    CString GetPreloadCartID();
    BOOL TranslateDefaultCartID();
    bool CheckForOverride();
    bool GetConfigDLLFileName();
    bool UseSystemConfigDLL(CString& value);
    bool UseSystemConfigDLL(unsigned long& value);
    unsigned long TranslateConfigDLLReturnValue(unsigned long value);
    CString TranslateResourceValue(CString value);
    CString TranslateResourceValue(CString value, CString token);
    static CString ExtractProductPrefixFromHINST(HINSTANCE instance);

    template <class Value>
    bool AskConfigDLLFirst(const CString& key, Value& value);
    bool FindConfigItem();
    void RememberLoadedDLL();
    bool HasLoaded(HMODULE module) const;
    CString SettingText() const;
    void TraceSetting(const CString& key, const CString& value) const;
};
