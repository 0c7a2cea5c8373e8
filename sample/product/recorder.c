/* The recorder library: keeps what users did in the text file "usage.txt" beside it, one line a record, with the local
   time and the printer's serial number. Records are written by the commit; those without one are dropped. */
#include "recorder.h"
#include <stdarg.h>
#include <stdio.h>
#include <string.h>

static HINSTANCE library;
static char printer[260];
static char pending[4096];

static void Add(const char* format, ...)
{
    char record[512];
    va_list arguments;
    SYSTEMTIME now;
    size_t length = strlen(pending);
    va_start(arguments, format);
    vsnprintf(record, sizeof record, format, arguments);
    va_end(arguments);
    GetLocalTime(&now);
    snprintf(pending + length, sizeof pending - length, "%04u-%02u-%02u %02u:%02u:%02u  %s  %s\r\n", now.wYear,
             now.wMonth, now.wDay, now.wHour, now.wMinute, now.wSecond, printer, record);
}

static HRESULT STDMETHODCALLTYPE QueryInterface(ICairnfieldRecorder* self, REFIID id, void** object)
{
    (void)self;
    (void)id;
    *object = NULL;
    return E_NOINTERFACE;
}

static ULONG STDMETHODCALLTYPE AddRef(ICairnfieldRecorder* self)
{
    (void)self;
    return 2;
}

static ULONG STDMETHODCALLTYPE Release(ICairnfieldRecorder* self)
{
    (void)self;
    return 0;
}

static HRESULT STDMETHODCALLTYPE SetSerialNumber(ICairnfieldRecorder* self, const char* serial)
{
    (void)self;
    snprintf(printer, sizeof printer, "%s", serial ? serial : "");
    return S_OK;
}

static HRESULT STDMETHODCALLTYPE Reserved(ICairnfieldRecorder* self)
{
    (void)self;
    return E_NOTIMPL;
}

static HRESULT STDMETHODCALLTYPE RecordHelpTopic(ICairnfieldRecorder* self, unsigned short item, int topic)
{
    (void)self;
    Add("item 0x%04x: help topic %d", item, topic);
    return S_OK;
}

static HRESULT STDMETHODCALLTYPE Commit(ICairnfieldRecorder* self)
{
    char path[MAX_PATH];
    char* name;
    HANDLE file;
    DWORD length = (DWORD)strlen(pending), written = 0, size = GetModuleFileNameA(library, path, sizeof path);
    (void)self;
    name = size && size < sizeof path ? strrchr(path, '\\') : NULL;
    if (!name || name + sizeof "\\usage.txt" > path + sizeof path)
        return E_FAIL;
    strcpy(name, "\\usage.txt");
    file = CreateFileA(path, FILE_APPEND_DATA, FILE_SHARE_READ | FILE_SHARE_WRITE, NULL, OPEN_ALWAYS,
                       FILE_ATTRIBUTE_NORMAL, NULL);
    if (file == INVALID_HANDLE_VALUE)
        return HRESULT_FROM_WIN32(GetLastError());
    if (!WriteFile(file, pending, length, &written, NULL))
        written = 0;
    CloseHandle(file);
    pending[0] = '\0';
    return written == length ? S_OK : E_FAIL;
}

static HRESULT STDMETHODCALLTYPE RecordDatedItem(ICairnfieldRecorder* self, unsigned short item, int first, int second)
{
    (void)self;
    (void)first;
    (void)second;
    Add("item 0x%04x: today", item);
    return S_OK;
}

static HRESULT STDMETHODCALLTYPE RecordText(ICairnfieldRecorder* self, unsigned short item, const char* text,
                                            unsigned long count)
{
    (void)self;
    Add("item 0x%04x: \"%s\", %lu times", item, text ? text : "", count);
    return S_OK;
}

static HRESULT STDMETHODCALLTYPE RecordValue(ICairnfieldRecorder* self, unsigned short item, int value,
                                             unsigned long count)
{
    (void)self;
    Add("item 0x%04x: %d, %lu times", item, value, count);
    return S_OK;
}

static ICairnfieldRecorderVtbl operations = {QueryInterface,  AddRef, Release,         SetSerialNumber, Reserved,
                                             RecordHelpTopic, Commit, RecordDatedItem, RecordText,      RecordValue};
static ICairnfieldRecorder recorder = {&operations};

__declspec(dllexport) HRESULT STDAPICALLTYPE MakeRecorder(ICairnfieldRecorder** object)
{
    pending[0] = '\0';
    printer[0] = '\0';
    *object = &recorder;
    return S_OK;
}

BOOL WINAPI DllMain(HINSTANCE instance, DWORD reason, LPVOID reserved)
{
    (void)reserved;
    if (reason == DLL_PROCESS_ATTACH)
        library = instance;
    return TRUE;
}
