/* The tests' portal library. Its table is laid out slot by slot, not by the suite's own header, so that a slot in the
   wrong place shows. */
#include "UsageLog.h"

static HMODULE recorderLibrary;

static ULONG STDMETHODCALLTYPE Release(Object* self)
{
    (void)self;
    Log("portal release", "");
    if (recorderLibrary)
        FreeLibrary(recorderLibrary);
    recorderLibrary = NULL;
    return 0;
}

static HRESULT STDMETHODCALLTYPE LoadRecorder(Object* self, const char* path)
{
    (void)self;
    const HRESULT result = Log("load", " %s", path);
    if (result != 0)
        return result;
    recorderLibrary = LoadLibraryA(path);
    return recorderLibrary ? 0 : HRESULT_FROM_WIN32(GetLastError());
}

static HRESULT STDMETHODCALLTYPE CreateRecorder(Object* self, int first, int second, int third, Object** recorder)
{
    Object* (*make)(void);
    (void)self;
    const HRESULT result = Log("create", " %d %d 0x%x", first, second, third);
    if (result != 0)
        return result;
    make = (Object * (*)(void))(Slot)GetProcAddress(recorderLibrary, "MakeRecorder");
    *recorder = IsFault("no recorder") ? NULL : make();
    return 0;
}

static HRESULT STDMETHODCALLTYPE Unexpected(void)
{
    return Log("unexpected call of the portal", "");
}

static const Slot table[] = {(Slot)Unexpected, (Slot)Unexpected, (Slot)Release,    (Slot)LoadRecorder,
                             (Slot)Unexpected, (Slot)Unexpected, (Slot)Unexpected, (Slot)CreateRecorder};
static Object portal = {table};

__declspec(dllexport) HRESULT STDMETHODCALLTYPE GetCairnfieldPortal(Object** object)
{
    const HRESULT result = Log("portal", "");
    /* A failing function may leave anything behind. */
    *object = result != 0 ? (Object*)1 : IsFault("no portal") ? NULL : &portal;
    return result;
}
