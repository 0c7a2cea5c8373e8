// TvkIniFile: values of INI files, with the product's text for missing ones.
#pragma once

#include <afx.h>
#include "diag/CSpy.h"
#include "settings/TvkProduct.h"

/// Reads and writes private INI files. A value that is missing from an existing file reads as the product's default
/// text, the setting `IDO_DEFAULTSTRING`; every value of a missing file reads as the empty text.
///
/// Give the file with its full path. The system looks for a bare name in the Windows directory, but whether the file
/// exists is judged in the current directory.
class AFX_EXT_CLASS TvkIniFile
{
public:
    /// Reads `IDO_DEFAULTSTRING`.
    TvkIniFile();
    virtual ~TvkIniFile();

    /// Reads `key` of `section`: at most 255 characters, the rest of a longer value is cut off. Mind the order of the
    /// arguments, which differs from WriteINI's.
    CString ReadINI(CString file, CString key, CString section);
    /// The same; when the value of `key` is missing, or equals the default text, `secondKey` is read in its place.
    CString ReadINI(CString file, CString key, CString section, CString secondKey);
    /// Writes `value` as `key` of `section`, creating file and section as needed. Nonzero on success. A failure is
    /// traced with the system's error number and returns 0.
    int WriteINI(CString file, CString section, CString key, CString value);

private:
    char m_szBuffer[256]; // every read fills it
    CString m_strDefault; // the text for a missing value
    CString m_strResult;  // result of the last read
    CFileFind m_FileFind; // tells whether the file exists
    int m_bFileFound;     // result of the last test
    CSpy m_Spy;           // write failures
    TvkProduct m_Product;
    CString m_strSettingOut; // the constructor's look-up

    bool FindIniFile(const CString& file);
    void ReadValue(const CString& file, const CString& section, const CString& key);
};
