#include "settings/TvkIniFile.h"

TvkIniFile::TvkIniFile() : m_szBuffer(), m_bFileFound(0)
{
    m_strDefault = m_Product.GetSetting("IDO_DEFAULTSTRING", m_strSettingOut);
}

TvkIniFile::~TvkIniFile() = default;

CString TvkIniFile::ReadINI(CString file, CString key, CString section)
{
    if (FindIniFile(file))
        ReadValue(file, section, key);
    return m_strResult;
}

CString TvkIniFile::ReadINI(CString file, CString key, CString section, CString secondKey)
{
    if (FindIniFile(file))
    {
        ReadValue(file, section, key);
        if (m_strResult == m_strDefault)
            ReadValue(file, section, secondKey);
    }
    return m_strResult;
}

int TvkIniFile::WriteINI(CString file, CString section, CString key, CString value)
{
    const BOOL written = WritePrivateProfileStringA(section, key, value, file);
    if (!written)
    {
        const unsigned long error = ::GetLastError();
        m_Spy.OutputData("GetLastError() Return Code (WriteINI)");
        m_Spy.OutputData(error);
    }
    return written;
}

/// Whether the file exists; the result of reading from one that does not is the empty text.
bool TvkIniFile::FindIniFile(const CString& file)
{
    m_bFileFound = m_FileFind.FindFile(file);
    m_FileFind.Close(); // an open search would keep the directory in use
    if (!m_bFileFound)
        m_strResult.Empty();
    return m_bFileFound != 0;
}

void TvkIniFile::ReadValue(const CString& file, const CString& section, const CString& key)
{
    GetPrivateProfileStringA(section, key, m_strDefault, m_szBuffer, sizeof m_szBuffer, file);
    m_strResult = m_szBuffer;
}
