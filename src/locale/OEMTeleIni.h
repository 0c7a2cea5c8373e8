// OEMTeleIni: support telephone numbers by country.
#pragma once

#include <afx.h>
#include <afxwin.h>
#include "settings/TvkIniFile.h"
#include "settings/TvkProduct.h"
#include "system/CRegistry.h"

/// Gives the support number for the user's country, and the list of all countries that have one.
///
/// The numbers stand in an INI file in the printer driver's directory (settings `IDO_PHONENUMBER_INIFILE_NAME`,
/// `IDO_PHONENUMBER_SECTION_NAME`), with a key for each locale: two blanks, "0x" and the last four digits. A value that
/// is empty or the text of `IDO_DEFAULTSTRING` is no number; the text of `IDO_DEFAULT_PHONENUMBER_STRING` stands for a
/// generic support text. Countries are named by the system, in its own language.
///
/// The user's country ("my locale") is remembered as eight hexadecimal digits in the model's supplies key, in the value
/// that `IDO_KEY_NAME_MYLOCALE` names. It is written when it is missing (the system's locale then) and when the country
/// has no number (the United States then). Registry failures are silent.
class AFX_EXT_CLASS OEMTeleIni
{
public:
    /// Room in the list; at most 107 entries are used.
    static constexpr int MAX_ENTRIES = 260;

    /// Reads the settings; the list is empty.
    OEMTeleIni();
    /// Writes nothing.
    ~OEMTeleIni();
    OEMTeleIni(const OEMTeleIni&) = delete;
    OEMTeleIni& operator=(const OEMTeleIni&) = delete;

    /// Looks up the number for a locale of eight hexadecimal digits. Returns 1 when there is one, else 0; `number`
    /// receives what was read in either case.
    int GetPhoneNumber(CString locale, CString& number);
    /// The remembered locale, from the value of this name of the supplies key; empty when there is none.
    CString ReadMyLocaleKey(CString valueName);
    /// Remembers a locale.
    void WriteMyLocaleKey(CString locale);
    /// Makes the list anew: the user's own country first, when it has a number, then the others in the suite's order.
    /// Entries are told apart by what they display: of equal ones the first stays.
    void GetPhoneNumberList();
    /// The number for the user's country, or the generic text (string 10070 of the resource library). `countryName`
    /// receives the country's name.
    CString GetDefaultPhoneNumber(CString& countryName);
    /// Widens a combo box whose longest item does not fit into its drop-down list, by half of what is missing.
    void ExpandCombobox(CComboBox* combo);
    /// Lets the user choose a country, in a modal dialog (CSelectCountryDlg).
    void OnSelectCountryLink();

    CString m_strDisplay[MAX_ENTRIES]; ///< the list: "number - country", or the country alone, by the product's setting
    CString m_strLocale[MAX_ENTRIES];  ///< the locale of each entry
    int m_nCount;                      ///< how many entries there are

protected:
    /// The country's name in the system's language; the United States' for a locale that the suite does not know. Empty
    /// when the system cannot tell.
    CString GetLocalizedCountryString(CString locale);
    /// Makes the suite's resource library the current resource handle: the job status window's when it is loaded, else
    /// the utilities library's own, loaded until ReleaseResDll. Tells the user when that cannot be loaded, and goes on
    /// without.
    void LoadResDll();
    /// Puts the former resource handle back.
    void ReleaseResDll();
    /// Appends an entry unless one displays the same.
    void AddToList(CString locale, CString number);

private:
    friend class CSelectCountryDlg; // chooses my country

    bool MakeList();
    CString ResolveMyLocale();
    CString ReadSetting(const char* key);

    HMODULE m_hResDll;
    HINSTANCE m_hSavedResource;
    BOOL m_bResDllLoaded;
    TvkIniFile m_IniFile;
    TvkProduct m_Product;
    CString m_strSetting;       // of the look-ups
    CString m_strMyLocaleName;  // value of the supplies key
    CString m_strIniFile;       // name of the INI file
    CString m_strSection;       // its section
    CString m_strNoNumber;      // the value of a country without a number
    CString m_strDefaultNumber; // the value of a country with the generic text
    CString m_strSuppliesPath;  // below HKEY_LOCAL_MACHINE
    CString m_strNTPath;
    CRegistry m_Registry;
};
