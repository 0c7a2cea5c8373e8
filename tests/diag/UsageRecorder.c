/* The tests' portal and recorder libraries, of one source: a readable log of what they are asked, and faults on demand.
   Plain C: they are loaded and freed for every record. Their tables are laid out slot by slot, not by the suite's own
   header, so that a slot in the wrong place shows. */
#include <stdarg.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <windows.h>

/* Slot of an object's table: functions of any type, in the order of the interface. */
typedef void (*Slot)(void);

typedef struct Object
{
    const Slot* table;
} Object;

/* Appends a line to the file that the environment variable USAGE_LOG names, then gives the step's result: what
   USAGE_FAULT ("<step>=<result>") says when it names this step, else 0. */
static HRESULT Log(const char* step, const char* format, ...)
{
    char name[MAX_PATH], fault[64] = "";
    const size_t length = strlen(step);
    va_list arguments;
    if (GetEnvironmentVariableA("USAGE_LOG", name, sizeof name))
    {
        FILE* file = fopen(name, "ab");
        fputs(step, file);
        va_start(arguments, format);
        vfprintf(file, format, arguments);
        va_end(arguments);
        fputs("\n", file);
        fclose(file);
    }
    GetEnvironmentVariableA("USAGE_FAULT", fault, sizeof fault);
    if (strncmp(fault, step, length) == 0 && fault[length] == '=')
        return (HRESULT)strtoul(fault + length + 1, NULL, 0);
    return 0;
}

/* Whether USAGE_FAULT is exactly this. */
static BOOL IsFault(const char* fault)
{
    char value[64] = "";
    GetEnvironmentVariableA("USAGE_FAULT", value, sizeof value);
    return strcmp(value, fault) == 0;
}

static HRESULT STDMETHODCALLTYPE Unexpected(void)
{
    return Log("unexpected call", "");
}

static ULONG STDMETHODCALLTYPE ReleaseRecorder(Object* self)
{
    return Log("recorder release", "");
}

static HRESULT STDMETHODCALLTYPE SetSerialNumber(Object* self, const char* serial)
{
    return Log("serial", " %s", serial);
}

static HRESULT STDMETHODCALLTYPE RecordHelpTopic(Object* self, unsigned short item, int topic)
{
    return Log("topic", " 0x%x %d", item, topic);
}

static HRESULT STDMETHODCALLTYPE Commit(Object* self)
{
    return Log("commit", "");
}

static HRESULT STDMETHODCALLTYPE RecordDatedItem(Object* self, unsigned short item, int first, int second)
{
    return Log("dated", " 0x%x %d %d", item, first, second);
}

static HRESULT STDMETHODCALLTYPE RecordText(Object* self, unsigned short item, const char* text, unsigned long count)
{
    return Log("text", " 0x%x %s %lu", item, text, count);
}

static HRESULT STDMETHODCALLTYPE RecordValue(Object* self, unsigned short item, int value, unsigned long count)
{
    return Log("value", " 0x%x %d %lu", item, value, count);
}

static const Slot recorderTable[] = {
    (Slot)Unexpected,      (Slot)Unexpected, (Slot)ReleaseRecorder, (Slot)SetSerialNumber, (Slot)Unexpected,
    (Slot)RecordHelpTopic, (Slot)Commit,     (Slot)RecordDatedItem, (Slot)RecordText,      (Slot)RecordValue};
static Object recorder = {recorderTable};

__declspec(dllexport) Object* MakeRecorder(void)
{
    return &recorder;
}

static HMODULE recorderLibrary;

static ULONG STDMETHODCALLTYPE ReleasePortal(Object* self)
{
    Log("portal release", "");
    if (recorderLibrary)
        FreeLibrary(recorderLibrary);
    recorderLibrary = NULL;
    return 0;
}

static HRESULT STDMETHODCALLTYPE LoadRecorder(Object* self, const char* path)
{
    const HRESULT result = Log("load", " %s", path);
    if (result != 0)
        return result;
    recorderLibrary = LoadLibraryA(path);
    return recorderLibrary ? 0 : HRESULT_FROM_WIN32(GetLastError());
}

static HRESULT STDMETHODCALLTYPE CreateRecorder(Object* self, int first, int second, int third, Object** made)
{
    const HRESULT result = Log("create", " %d %d 0x%x", first, second, third);
    Object* (*make)(void) = (Object * (*)(void))(Slot)GetProcAddress(recorderLibrary, "MakeRecorder");
    if (result == 0)
        *made = IsFault("no recorder") ? NULL : make();
    return result;
}

static const Slot portalTable[] = {(Slot)Unexpected, (Slot)Unexpected, (Slot)ReleasePortal, (Slot)LoadRecorder,
                                   (Slot)Unexpected, (Slot)Unexpected, (Slot)Unexpected,    (Slot)CreateRecorder};
static Object portal = {portalTable};

__declspec(dllexport) HRESULT STDMETHODCALLTYPE GetCairnfieldPortal(Object** object)
{
    const HRESULT result = Log("portal", "");
    /* A failing function may leave anything behind. */
    *object = result != 0 ? (Object*)1 : IsFault("no portal") ? NULL : &portal;
    return result;
}
