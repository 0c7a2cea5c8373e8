#include "diag/CSpy.h"
#include <afxwin.h>
#include "diag/TracePicture.h"
#include "diag/internal/RecordLock.h"
#include "diag/internal/StructureDump.h"
#include "diag/internal/TraceText.h"
#include "settings/TvkProduct.h"
#include "settings/internal/JoinedText.h"
#include "system/internal/Handle.h"
#include "system/internal/RegistryValue.h"
#include <algorithm>
#include <array>
#include <cstring>
#include <memory>
#include <new>

namespace
{
struct Sinks
{
    unsigned long guilog;
    BOOL file;
    BOOL messageBox;
    BOOL debugger;
};

constexpr std::array SwitchValues = {
    Sinks{1, TRUE, FALSE, FALSE},
    Sinks{2, FALSE, TRUE, FALSE},
    Sinks{3, TRUE, TRUE, FALSE},
    Sinks{4, FALSE, FALSE, TRUE},
};

constexpr UINT LogOpenFlags = CFile::modeCreate | CFile::modeNoTruncate | CFile::modeWrite | CFile::shareDenyNone;

// Numbers the pictures of this process for the receiver. Diagnosis of one user-interface thread: not locked.
unsigned long PictureCounter = 0;

// A caller often traces a failure before it acts on the thread's last error; switched-on tracing must not change it.
class KeepLastError
{
public:
    KeepLastError() : m_error(::GetLastError()) {}
    ~KeepLastError() { ::SetLastError(m_error); }
    KeepLastError(const KeepLastError&) = delete;
    KeepLastError& operator=(const KeepLastError&) = delete;

private:
    DWORD m_error;
};
} // namespace

CSpy::CSpy() : m_bWriteToFile(FALSE), m_bMessageBox(FALSE), m_bDebugOutput(FALSE), m_bEnabled(FALSE), m_bFileOpen(FALSE)
{
    // Once: the prefix stays for the life of the process, and every look-up of a setting makes a CSpy.
    static const CString path = tvk::Joined({"c:\\", tvk::View(TvkProduct::GetProductPrefix()), "gui.log"});
    m_strLogPath = path;
    GetSpySetting();
}

CSpy::~CSpy()
{
    if (!m_bFileOpen || m_LogFile.m_hFile == CFile::hFileNull)
        return;
    const KeepLastError keep;
    try
    {
        m_LogFile.Close();
    }
    catch (CException* exception)
    {
        exception->Delete();
    }
}

void CSpy::GetSpySetting()
{
    DWORD guilog = 0;
    // All access, though reading is all that happens: who may not write to the key gets no tracing.
    if (m_Registry.Open(HKEY_LOCAL_MACHINE, "SOFTWARE\\TORVANE", 0, KEY_ALL_ACCESS))
    {
        tvk::ReadNumber(m_Registry, "GUILOG", guilog);
        m_Registry.Close();
    }
    const auto found = std::find_if(SwitchValues.begin(), SwitchValues.end(),
                                    [guilog](const Sinks& row) { return row.guilog == guilog; });
    const bool on = found != SwitchValues.end();
    m_bWriteToFile = on && found->file;
    m_bMessageBox = on && found->messageBox;
    m_bDebugOutput = on && found->debugger;
    m_bEnabled = on;
}

// One record from its value to the sinks.
template <class... Value>
int CSpy::Record(const Value&... value)
{
    if (!m_bEnabled)
        return 1;
    const KeepLastError keep;
    // While a message box shows a record, the host's windows go on and may trace through this very object.
    const CString interrupted = m_strBuffer;
    m_strBuffer.Empty();
    AddTimeStamp();
    AddToBuffer(value...);
    WriteBuffer();
    m_strBuffer = interrupted;
    return 1;
}

int CSpy::OutputData(int value)
{
    return Record(value);
}

int CSpy::OutputData(unsigned long value)
{
    return Record(value);
}

int CSpy::OutputData(long value)
{
    return Record(value);
}

int CSpy::OutputData(float value)
{
    return Record(value);
}

int CSpy::OutputData(CString text)
{
    return Record(text);
}

int CSpy::OutputData(const unsigned char* bytes, int count)
{
    return Record(bytes, count);
}

int CSpy::OutputData(const INKINFO* info)
{
    return Record(info);
}

int CSpy::OutputData(const ALIGNINFO* info)
{
    return Record(info);
}

int CSpy::OutputData(const STATUSINFO* info)
{
    return Record(info);
}

int CSpy::OutputData(const PORTINFO* info)
{
    return Record(info);
}

int CSpy::OutputData(const LCDEVMODE* mode)
{
    return Record(mode);
}

int CSpy::OutputData(const UPDPROXYINFO* info)
{
    return Record(info);
}

int CSpy::OutputData(const SUBNETINFO* info)
{
    return Record(info);
}

int CSpy::OutputData(const PRINTERPORTINFO* info)
{
    return Record(info);
}

void CSpy::OutputData(const char* label, int type, CBitmap* bitmap, CString comment, bool numbered)
{
    if (!m_bEnabled || !bitmap)
        return;
    const KeepLastError keep;
    // First of all, so that a gap in the numbers tells of a picture that was not received.
    ++PictureCounter;
    if (numbered)
    {
        CString number;
        number.Format("GT #%d: ", static_cast<int>(PictureCounter));
        comment = number + comment;
    }
    const HWND receiver = ::FindWindowA(TRACE_RECEIVER_CLASS, TRACE_RECEIVER_TITLE);
    if (!receiver)
        return;
    TracePictureHeader header = {};
    const HGDIOBJ handle = bitmap->GetSafeHandle();
    if (!::GetObjectA(handle, sizeof header.bitmap, &header.bitmap))
        return;

    const char* const commentText = comment;
    const char* const labelText = label ? label : "";
    const std::size_t commentSize = std::strlen(commentText) + 1;
    const std::size_t labelSize = std::strlen(labelText) + 1;
    const long long pixelBytes =
        static_cast<long long>(header.bitmap.bmPlanes) * header.bitmap.bmHeight * header.bitmap.bmWidthBytes;
    const unsigned long long total =
        sizeof header + commentSize + labelSize + static_cast<unsigned long long>(pixelBytes);
    if (pixelBytes < 0 || total > MAXLONG) // GetBitmapBits counts in a signed number
        return;
    header.number = PictureCounter;
    header.type = type;
    header.commentOffset = sizeof header;
    header.labelOffset = static_cast<unsigned long>(header.commentOffset + commentSize);
    header.pixelOffset = static_cast<unsigned long>(header.labelOffset + labelSize);
    header.pixelBytes = static_cast<unsigned long>(pixelBytes);

    // Zeroed: lines of a DIB section are padded further than those that GetBitmapBits gives.
    const std::unique_ptr<char[]> message(new (std::nothrow) char[total]());
    if (!message)
        return;
    std::memcpy(message.get(), &header, sizeof header);
    std::memcpy(message.get() + header.commentOffset, commentText, commentSize);
    std::memcpy(message.get() + header.labelOffset, labelText, labelSize);
    if (pixelBytes && !::GetBitmapBits(static_cast<HBITMAP>(handle), static_cast<LONG>(pixelBytes),
                                       message.get() + header.pixelOffset))
        return;
    COPYDATASTRUCT copy = {0, static_cast<DWORD>(total), message.get()};
    ::SendMessageA(receiver, WM_COPYDATA, 0, reinterpret_cast<LPARAM>(&copy));
}

void CSpy::OutputData(const char* label, int type, CDC* dc, int x, int y, int cx, int cy, CString comment,
                      bool numbered)
{
    if (!m_bEnabled || !dc)
        return;
    const KeepLastError keep;
    CBitmap bitmap;
    CDC memory;
    if (!bitmap.CreateCompatibleBitmap(dc, cx, cy) || !memory.CreateCompatibleDC(dc))
        return;
    const tvk::SelectGuard selected(memory, bitmap);
    if (selected && memory.BitBlt(0, 0, cx, cy, dc, x, y, SRCCOPY))
        OutputData(label, type, &bitmap, comment, numbered);
}

CString CSpy::GetTimeStamp()
{
    return tvk::CurrentTimeStamp().text;
}

void CSpy::AddTimeStamp()
{
    m_strBuffer += tvk::CurrentTimeStamp().text;
    m_strBuffer += "  ";
}

int CSpy::Append(const std::string& text)
{
    m_strBuffer += text.c_str();
    return 1;
}

int CSpy::AddToBuffer(int value)
{
    std::string text;
    tvk::AppendNumber(text, "(int)", value);
    return Append(text);
}

int CSpy::AddToBuffer(unsigned long value)
{
    std::string text;
    // Signed on purpose: result codes are known to support people as negative numbers.
    tvk::AppendNumber(text, "(DWORD)", static_cast<long>(value));
    return Append(text);
}

int CSpy::AddToBuffer(long value)
{
    std::string text;
    tvk::AppendNumber(text, "(long)", value);
    return Append(text);
}

int CSpy::AddToBuffer(float value)
{
    std::string text;
    tvk::AppendFloat(text, value);
    return Append(text);
}

int CSpy::AddToBuffer(CString value)
{
    std::string text;
    tvk::AppendText(text, value);
    return Append(text);
}

int CSpy::AddToBuffer(const unsigned char* bytes, int count)
{
    std::string text;
    tvk::AppendBytes(text, bytes, count);
    return Append(text);
}

int CSpy::AddToBufferBase16(unsigned long value)
{
    std::string text;
    tvk::AppendHex(text, value);
    return Append(text);
}

template <class Structure>
int CSpy::AppendDump(const Structure* structure)
{
    std::string text;
    tvk::AppendDump(text, structure);
    return Append(text);
}

int CSpy::AddToBuffer(const INKINFO* info)
{
    return AppendDump(info);
}

int CSpy::AddToBuffer(const ALIGNINFO* info)
{
    return AppendDump(info);
}

int CSpy::AddToBuffer(const STATUSINFO* info)
{
    return AppendDump(info);
}

int CSpy::AddToBuffer(const PORTINFO* info)
{
    return AppendDump(info);
}

int CSpy::AddToBuffer(const LCDEVMODE* mode)
{
    return AppendDump(mode);
}

int CSpy::AddToBuffer(const UPDPROXYINFO* info)
{
    return AppendDump(info);
}

int CSpy::AddToBuffer(const SUBNETINFO* info)
{
    return AppendDump(info);
}

int CSpy::AddToBuffer(const PRINTERPORTINFO* info)
{
    return AppendDump(info);
}

void CSpy::WriteBuffer()
{
    if (m_bWriteToFile)
        WriteLogfile();
    if (m_bMessageBox)
        DisplayMsgBox();
    if (m_bDebugOutput)
        WriteOutputString();
}

void CSpy::WriteLogfile()
{
    if (!m_bFileOpen)
    {
        m_bFileOpen = m_LogFile.Open(m_strLogPath, LogOpenFlags, &m_OpenError);
        if (!m_bFileOpen)
            return; // the next record tries again
    }
    try
    {
        // Others may have written since, and more may want to: from the seek on, the end must stay the end.
        const tvk::RecordLock lock(m_LogFile.m_hFile);
        m_LogFile.SeekToEnd();
        m_LogFile.Write(static_cast<LPCSTR>(m_strBuffer), static_cast<UINT>(::lstrlenA(m_strBuffer)));
    }
    catch (CException* exception)
    {
        exception->Delete(); // a full disk loses the record; tracing never stops its caller
    }
}

void CSpy::DisplayMsgBox()
{
    ::MessageBoxA(nullptr, m_strBuffer, "GUI debug", MB_OK);
}

void CSpy::WriteOutputString()
{
    ::OutputDebugStringA(m_strBuffer);
}
