#include "diag/ActivityTracker.h"
#include <algorithm>
#include <array>
#include <stdexcept>
#include "diag/UsagePortal.h"
#include "settings/internal/Directories.h"
#include "system/internal/Handle.h"

namespace
{
/// A run of items and the first of their partners that carry a date.
struct DatedItems
{
    unsigned short first;
    unsigned short last;
    unsigned short partner;
};

// Item 0x6032 has no partner: the gap belongs there.
constexpr auto DatedItemRuns = std::to_array<DatedItems>({
    {0x1005, 0x1005, 0x1006},
    {0x6020, 0x6031, 0x6050},
    {0x6033, 0x6039, 0x6063},
});

static_assert(std::all_of(DatedItemRuns.begin(), DatedItemRuns.end(),
                          [](const DatedItems& run) { return run.first <= run.last && run.partner > run.last; }));
static_assert(std::is_sorted(DatedItemRuns.begin(), DatedItemRuns.end(),
                             [](const DatedItems& left, const DatedItems& right) { return left.last < right.first; }));

// What the portal's recorder for this suite is asked for by; the numbers are the portal's.
constexpr int RecorderArgument1 = 6;
constexpr int RecorderArgument2 = 3;
constexpr int RecorderArgument3 = 0x2003;
} // namespace

ActivityTracker::ActivityTracker()
    : m_hPortal(nullptr), m_bLoaded(FALSE), m_pSerialNumber(nullptr), m_wItem(0), m_pPortal(nullptr),
      m_pfnGetPortal(nullptr), m_hrLast(S_OK), m_pRecorder(nullptr)
{
}

ActivityTracker::~ActivityTracker()
{
    UnloadDataRecorder();
}

int ActivityTracker::WriteData(unsigned short item, int value, unsigned long count, const char* serial)
{
    m_strTrace.Format("ActivityTracker::WriteData(%d, %d, %d, %s)", item, value, static_cast<int>(count), serial);
    if (!BeginRecord(item, serial))
        return 0;
    return EndRecord(Succeeded(Recorder().RecordValue(item, value, count), "Record API Failed"));
}

int ActivityTracker::WriteData(unsigned short item, int value, unsigned long count, const char* serial, int helpTopic)
{
    m_strTrace.Format("ActivityTracker::WriteData(%d, %d, %d, %s, %d)", item, value, static_cast<int>(count), serial,
                      helpTopic);
    if (!BeginRecord(item, serial))
        return 0;
    return EndRecord(Succeeded(Recorder().RecordHelpTopic(item, helpTopic), "HelpTopic API Failed") &&
                     Succeeded(Recorder().RecordValue(item, value, count), "Record API Failed"));
}

int ActivityTracker::WriteData(unsigned short item, const char* text, unsigned long count, const char* serial)
{
    m_strTrace.Format("ActivityTracker::WriteData(%d, %s, %d, %s)", item, text, static_cast<int>(count), serial);
    if (!BeginRecord(item, serial))
        return 0;
    return EndRecord(Succeeded(Recorder().RecordText(item, text, count), "Record API Failed"));
}

int ActivityTracker::WriteData(unsigned short item, const char* serial, int helpTopic)
{
    return WriteData(item, 1, 1ul, serial, helpTopic);
}

int ActivityTracker::WriteData(unsigned short item, int value, const char* serial)
{
    return WriteData(item, value, 1ul, serial);
}

int ActivityTracker::WriteData(unsigned short item, const char* serial)
{
    return WriteData(item, 1, 1ul, serial);
}

int ActivityTracker::IsDataRecSupported()
{
    return m_Product.CompareSetting("IDO_DATA_REC_SUPPORTED", 1ul);
}

void ActivityTracker::GetCairnfieldFileName()
{
    m_Product.GetSetting("IDO_CAIRNFIELD_DLL", m_strCairnfieldDLL);
}

void ActivityTracker::GetDataRecFileName()
{
    m_Product.GetSetting("IDO_DATA_RECORDER_DLL", m_strDataRecDLL);
}

int ActivityTracker::PrepareToWriteData()
{
    if (m_bLoaded)
        return 1;
    if (!IsDataRecSupported())
        return 0;
    GetCairnfieldFileName();
    GetDataRecFileName();
    return LoadDataRecorder();
}

int ActivityTracker::LoadDataRecorder()
{
    CString folder = tvk::PrinterDriverDirectory(m_Product);
    m_Spy.OutputData(folder + m_strCairnfieldDLL);
    m_hPortal = tvk::LoadLibraryFrom(folder, m_strCairnfieldDLL);
    if (!m_hPortal)
    {
        CString resourceModule;
        folder = tvk::LoadedModuleDirectory(m_Product.GetSetting("IDO_UTIL_RESDLL", resourceModule), 256);
        m_hPortal = tvk::LoadLibraryFrom(folder, m_strCairnfieldDLL);
    }
    if (!m_hPortal)
        return 0;
    m_pfnGetPortal = tvk::FindEntry<GetCairnfieldPortalFunction>(m_hPortal, "GetCairnfieldPortal");
    m_bLoaded = m_pfnGetPortal && ConnectToPortal(folder) == S_OK;
    if (!m_bLoaded)
        ReleaseDataRecorder();
    return m_bLoaded;
}

HRESULT ActivityTracker::ConnectToPortal(const CString& folder)
{
    m_hrLast = m_pfnGetPortal(&m_pPortal);
    if (m_hrLast != S_OK)
    {
        m_pPortal = nullptr; // a failing function hands out nothing that could be released
        return m_hrLast;
    }
    const CString recorder = folder + m_strDataRecDLL;
    m_Spy.OutputData(recorder);
    m_hrLast = Portal().LoadRecorder(recorder);
    if (m_hrLast != S_OK)
        return m_hrLast;
    m_hrLast = Portal().CreateRecorder(RecorderArgument1, RecorderArgument2, RecorderArgument3, &m_pRecorder);
    if (m_hrLast != S_OK)
        m_pRecorder = nullptr;
    return m_hrLast;
}

void ActivityTracker::UnloadDataRecorder()
{
    if (m_bLoaded)
        ReleaseDataRecorder();
}

int ActivityTracker::SetSerialNumber()
{
    if (!m_bLoaded)
        return 0;
    Recorder().SetSerialNumber(m_pSerialNumber);
    return 1;
}

int ActivityTracker::WriteDateStamp(unsigned short item)
{
    const unsigned short partner = CheckForDatedItemID(item);
    if (!partner || !m_bLoaded)
        return 0;
    m_hrLast = Recorder().RecordDatedItem(partner, 0, 0);
    return m_hrLast == S_OK;
}

unsigned short ActivityTracker::CheckForDatedItemID(unsigned short item)
{
    const auto run =
        std::find_if(DatedItemRuns.begin(), DatedItemRuns.end(),
                     [item](const DatedItems& items) { return item >= items.first && item <= items.last; });
    return run == DatedItemRuns.end() ? 0 : static_cast<unsigned short>(run->partner + (item - run->first));
}

/// Steps that all records begin with: the trace record, loading, the serial number. Returns 0 when nothing is loaded.
int ActivityTracker::BeginRecord(unsigned short item, const char* serial)
{
    m_Spy.OutputData(m_strTrace);
    m_wItem = item;
    m_pSerialNumber = serial;
    return PrepareToWriteData() && SetSerialNumber();
}

/// Steps that all records end with: the dated partner and the commit, when the item itself was recorded; unloading in
/// any case. Returns the result of WriteData.
int ActivityTracker::EndRecord(bool recorded)
{
    if (recorded)
    {
        WriteDateStamp(m_wItem); // an extra: the record counts without it
        recorded = Succeeded(Recorder().Commit(), "Commit API Failed");
    }
    UnloadDataRecorder();
    return recorded;
}

bool ActivityTracker::Succeeded(HRESULT result, const char* failure)
{
    m_hrLast = result;
    if (m_hrLast != S_OK)
        m_Spy.OutputData(CString(failure));
    return m_hrLast == S_OK;
}

/// Releases whatever has been obtained, in the reverse order.
void ActivityTracker::ReleaseDataRecorder()
{
    if (m_pRecorder)
        m_pRecorder->Release();
    m_pRecorder = nullptr;
    if (m_pPortal)
        m_pPortal->Release();
    m_pPortal = nullptr;
    m_pfnGetPortal = nullptr;
    if (m_hPortal)
        FreeLibrary(m_hPortal);
    m_hPortal = nullptr;
    m_bLoaded = FALSE;
}

ICairnfieldPortal& ActivityTracker::Portal()
{
    if (!m_pPortal)
        FailWithoutObject("The usage-data portal handed out no portal object");
    return *m_pPortal;
}

ICairnfieldRecorder& ActivityTracker::Recorder()
{
    if (!m_pRecorder)
        FailWithoutObject("The usage-data portal handed out no recorder object");
    return *m_pRecorder;
}

void ActivityTracker::FailWithoutObject(const char* message)
{
    ReleaseDataRecorder();
    throw std::logic_error(message);
}
