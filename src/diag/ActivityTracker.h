// ActivityTracker: records what the user did in the maker's usage-data recorder.
#pragma once

#include <afx.h>
#include "diag/CSpy.h"
#include "settings/TvkProduct.h"

struct ICairnfieldPortal;
struct ICairnfieldRecorder;

/// Records activities: an item (a 16-bit number of the host's), a value or a text, for the printer of a serial number.
///
/// Records go to the recorder library (setting `IDO_DATA_RECORDER_DLL`) through a portal library
/// (`IDO_CAIRNFIELD_DLL`), see diag/UsagePortal.h. Both lie in the printer driver's directory or, failing that, beside
/// the resource module that `IDO_UTIL_RESDLL` names. They are loaded for one call of `WriteData` and unloaded before it
/// returns, whatever happens. A product records only when its setting `IDO_DATA_REC_SUPPORTED` is 1.
///
/// Every call is traced. Failures are reported by the result 0 and a trace record. One thing is fatal: a portal library
/// that claims success and hands out no object. The call that needed the object throws a std::logic_error, which the
/// library does not catch.
class AFX_EXT_CLASS ActivityTracker
{
public:
    /// Loads nothing.
    ActivityTracker();
    /// Unloads what is still loaded.
    ~ActivityTracker();
    ActivityTracker(const ActivityTracker&) = delete;
    ActivityTracker& operator=(const ActivityTracker&) = delete;

    /// Records a value; `count` says how often. Returns 1 when the record was committed, else 0. Some items are
    /// recorded once more as the item of the same activity that carries a date.
    /// @param serial serial number of the printer; passed to the recorder as it is
    int WriteData(unsigned short item, int value, unsigned long count, const char* serial);
    /// Records the help topic that the user has opened, then the value. A topic that cannot be recorded ends the call.
    int WriteData(unsigned short item, int value, unsigned long count, const char* serial, int helpTopic);
    /// Records a text.
    int WriteData(unsigned short item, const char* text, unsigned long count, const char* serial);
    /// Records a help topic and the value 1 once.
    int WriteData(unsigned short item, const char* serial, int helpTopic);
    /// Records a value once.
    int WriteData(unsigned short item, int value, const char* serial);
    /// Records the value 1 once.
    int WriteData(unsigned short item, const char* serial);

private:
    HMODULE m_hPortal;
    BOOL m_bLoaded; // portal loaded and recorder object obtained
    CString m_strDataRecDLL;
    const char* m_pSerialNumber; // of the WriteData at work
    unsigned short m_wItem;
    CString m_strCairnfieldDLL;
    ICairnfieldPortal* m_pPortal;
    HRESULT(STDAPICALLTYPE* m_pfnGetPortal)(ICairnfieldPortal**);
    HRESULT m_hrLast;
    ICairnfieldRecorder* m_pRecorder;
    CSpy m_Spy;
    CString m_strTrace;
    TvkProduct m_Product;

    int IsDataRecSupported();
    void GetCairnfieldFileName();
    void GetDataRecFileName();
    int PrepareToWriteData();
    int LoadDataRecorder();
    void UnloadDataRecorder();
    int SetSerialNumber();
    int WriteDateStamp(unsigned short item);
    static unsigned short CheckForDatedItemID(unsigned short item);

    int BeginRecord(unsigned short item, const char* serial);
    int EndRecord(bool recorded);
    bool Succeeded(HRESULT result, const char* failure);
    HRESULT ConnectToPortal(const CString& folder);
    void ReleaseDataRecorder();
    ICairnfieldPortal& Portal();
    ICairnfieldRecorder& Recorder();
    [[noreturn]] void FailWithoutObject(const char* message);
};
