/* The portal library of the usage-data recorder: loads the recorder library and hands out its recorder. Plain C, since
   it is loaded and freed for every record. */
#include "diag/UsagePortal.h"
#include "recorder.h"

/* One portal and one recorder at a time: the suite's applications record on their user-interface thread. */
static HMODULE recorderLibrary;

static HRESULT STDMETHODCALLTYPE QueryInterface(ICairnfieldPortal* self, REFIID id, void** object)
{
    (void)self;
    (void)id;
    *object = NULL;
    return E_NOINTERFACE;
}

static ULONG STDMETHODCALLTYPE AddRef(ICairnfieldPortal* self)
{
    (void)self;
    return 2;
}

static ULONG STDMETHODCALLTYPE Release(ICairnfieldPortal* self)
{
    (void)self;
    if (recorderLibrary)
        FreeLibrary(recorderLibrary);
    recorderLibrary = NULL;
    return 0;
}

static HRESULT STDMETHODCALLTYPE LoadRecorder(ICairnfieldPortal* self, const char* path)
{
    (void)self;
    recorderLibrary = LoadLibraryA(path);
    return recorderLibrary ? S_OK : HRESULT_FROM_WIN32(GetLastError());
}

static HRESULT STDMETHODCALLTYPE Reserved(ICairnfieldPortal* self)
{
    (void)self;
    return E_NOTIMPL;
}

static HRESULT STDMETHODCALLTYPE CreateRecorder(ICairnfieldPortal* self, int first, int second, int third,
                                                ICairnfieldRecorder** recorder)
{
    MakeRecorderFunction make;
    (void)self;
    *recorder = NULL;
    /* The recorder of the printer suite, in its third version: the only one here. */
    if (!recorderLibrary || first != 6 || second != 3 || third != 0x2003)
        return E_INVALIDARG;
    make = (MakeRecorderFunction)(void (*)(void))GetProcAddress(recorderLibrary, "MakeRecorder");
    return make ? make(recorder) : HRESULT_FROM_WIN32(GetLastError());
}

static ICairnfieldPortalVtbl operations = {QueryInterface, AddRef,   Release,  LoadRecorder,
                                           Reserved,       Reserved, Reserved, CreateRecorder};
static ICairnfieldPortal portal = {&operations};

__declspec(dllexport) HRESULT STDAPICALLTYPE GetCairnfieldPortal(ICairnfieldPortal** object)
{
    *object = &portal;
    return S_OK;
}
