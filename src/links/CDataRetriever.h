// CDataRetriever: does the user take part in the collection of usage data?
#pragma once

#include <afx.h>

/// Asks and tells the data-retriever library (setting `IDO_DATARETRIEVER_FILENAME`, see links/ParticipationLibrary.h)
/// the user's participation level. The library is loaded for each call and freed before it returns. A file name without
/// a folder is looked for where the system looks for libraries.
///
/// Failures are results; nothing is thrown.
class AFX_EXT_CLASS CDataRetriever
{
public:
    CDataRetriever();
    ~CDataRetriever();
    CDataRetriever(const CDataRetriever&) = delete;
    CDataRetriever& operator=(const CDataRetriever&) = delete;

    /// 2 when the user takes part, 3 when not, 9 when the library gives any other answer; 0 when the product has no
    /// such library, or it cannot be asked. The result is traced.
    int GetParticipationLevel();
    /// Remembers that the user takes part (`level` 1) or does not (any other). Returns 1 when the library says that it
    /// did, and also when the library is there but remembers no level; else 0.
    int SetParticipationLevel(int level);

private:
    CString GetDataRetrieverFilename();
    void LoadDataRetrieverDLL();
    void FreeDataRetrieverDLL();

    HMODULE m_hDataRetriever;
    int m_bLoaded;
};
