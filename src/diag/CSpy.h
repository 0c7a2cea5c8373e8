// CSpy: the switchable trace log. A class that wants to trace holds a CSpy and calls OutputData wherever it has
// something to say; a machine-wide registry value decides whether anything comes of it.
#pragma once

#include <afx.h>
#include "diag/StatusStructures.h"
#include "system/CRegistry.h"
#include <string>

class CBitmap;
class CDC;

/// Writes trace records to a log file, message boxes or the debugger, and sends pictures to the trace receiver.
///
/// The switch is the number "GUILOG" in HKEY_LOCAL_MACHINE\SOFTWARE\TORVANE: 1 log file, 2 message box, 3 both,
/// 4 debugger; anything else, a missing value and a key that this process may not fully access switch tracing off. It
/// is read once, when the object is made. A call on a switched-off object formats nothing.
///
/// A record is "HH:MM:SS <Month DD, YYYY>", two blanks, a type tag, the value and a line feed. No call reports failure;
/// none changes the thread's last error.
///
/// An object is used by the thread that owns it. Several objects and processes may write to the log file at once.
class AFX_EXT_CLASS CSpy
{
public:
    /// Works out the log file's path, "c:\<product prefix>gui.log", and reads the switch. Opens no file.
    CSpy();
    /// Closes the log file if a record has opened it.
    virtual ~CSpy();
    CSpy(const CSpy&) = delete;
    CSpy& operator=(const CSpy&) = delete;

    /// Writes one record with a value, and returns 1. Tag and form: "(int)" decimal.
    int OutputData(int value);
    /// "(DWORD)" and the value as a signed number: 4294967295 reads -1.
    int OutputData(unsigned long value);
    /// "(long)" decimal.
    int OutputData(long value);
    /// "(float)" with six digits behind the point.
    int OutputData(float value);
    /// "(char)" and the text, up to an embedded NUL.
    int OutputData(CString text);
    /// "(LPBYTE)" and each byte in hexadecimal without a leading zero, followed by two blanks; "NULL" for a null
    /// pointer.
    int OutputData(const unsigned char* bytes, int count);

    /// Writes one record with all fields of a structure, one line each, and returns 1. The pointers inside a structure
    /// are followed; by contract none is null, and one that is null all the same reads NULL.
    int OutputData(const INKINFO* info);
    int OutputData(const ALIGNINFO* info);
    int OutputData(const STATUSINFO* info);
    int OutputData(const PORTINFO* info);
    int OutputData(const LCDEVMODE* mode);
    int OutputData(const UPDPROXYINFO* info);
    int OutputData(const SUBNETINFO* info);
    int OutputData(const PRINTERPORTINFO* info); ///< may be null: each field then reads NULL

    /// Sends a picture to the trace receiver (diag/TracePicture.h) while tracing is on, whatever the sink. Every
    /// picture takes the next number of this process, also when nobody receives it. Waits until the receiver has read
    /// it.
    /// @param label    short name of the picture
    /// @param type     passed through to the receiver
    /// @param bitmap   the picture; null sends nothing and takes no number
    /// @param comment  free text
    /// @param numbered puts "GT #<number>: " in front of the comment
    void OutputData(const char* label, int type, CBitmap* bitmap, CString comment, bool numbered);
    /// The same for a rectangle of a device context: (x, y) is its top left corner. A rectangle that cannot be copied
    /// sends nothing and takes no number.
    void OutputData(const char* label, int type, CDC* dc, int x, int y, int cx, int cy, CString comment, bool numbered);

protected:
    /// Reads the switch and sets the four flags by it.
    void GetSpySetting();
    /// The local time as it stands in front of a record, such as "14:03:22 <November 16, 2006>". Month names are
    /// English whatever the host's locale: support people search the log for them.
    CString GetTimeStamp();
    /// Appends the time stamp and two blanks to the record.
    void AddTimeStamp();

    /// Each appends the form of its value, as OutputData describes it, to the record and returns 1.
    int AddToBuffer(int value);
    int AddToBuffer(unsigned long value);
    int AddToBuffer(long value);
    int AddToBuffer(float value);
    int AddToBuffer(CString text);
    int AddToBuffer(const unsigned char* bytes, int count);
    int AddToBuffer(const INKINFO* info);
    int AddToBuffer(const ALIGNINFO* info);
    int AddToBuffer(const STATUSINFO* info);
    int AddToBuffer(const PORTINFO* info);
    int AddToBuffer(const LCDEVMODE* mode);
    int AddToBuffer(const UPDPROXYINFO* info);
    int AddToBuffer(const SUBNETINFO* info);
    int AddToBuffer(const PRINTERPORTINFO* info);
    /// "(DWORD)" and the value in hexadecimal without leading zeros.
    int AddToBufferBase16(unsigned long value);

    /// Hands the record to the sinks that are switched on: file, message box, debugger.
    void WriteBuffer();
    /// Appends the record to the log file, which it opens when this object has not opened it yet.
    void WriteLogfile();
    /// Shows the record in a message box and waits for the user.
    void DisplayMsgBox();
    /// Passes the record to the debugger.
    void WriteOutputString();

private:
    friend class TvkProduct; // whose every look-up writes a record: m_bEnabled
    template <class... Value>
    int Record(const Value&... value);
    template <class Structure>
    int AppendDump(const Structure* structure);
    int Append(const std::string& text);

    BOOL m_bWriteToFile;
    BOOL m_bMessageBox;
    BOOL m_bDebugOutput;
    BOOL m_bEnabled;
    BOOL m_bFileOpen;
    CRegistry m_Registry;
    CString m_strLogPath;
    CString m_strBuffer;
    CFile m_LogFile;
    CFileException m_OpenError;
};
