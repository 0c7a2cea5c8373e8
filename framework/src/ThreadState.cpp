// The framework's state per thread, and its entry point.
#include "ThreadState.h"

namespace
{
DWORD Slot = TLS_OUT_OF_INDEXES;
}

namespace framework
{
ThreadState& State()
{
    auto* state = static_cast<ThreadState*>(TlsGetValue(Slot));
    if (!state)
    {

        state = new ThreadState;
        TlsSetValue(Slot, state);
    }
    return *state;
}

void DeleteState()
{
    delete static_cast<ThreadState*>(TlsGetValue(Slot));
    TlsSetValue(Slot, nullptr);
}

void DeleteTemporaryObjects()
{
    ThreadState& state = State();
    if (state.depth)
        return;
    state.gdiObjects.DeleteTemporary();
    state.contexts.DeleteTemporary();
    state.windows.DeleteTemporary();
}
} // namespace framework

extern "C" BOOL WINAPI DllMain(HINSTANCE, DWORD reason, LPVOID)
{
    if (reason == DLL_PROCESS_ATTACH)
        Slot = TlsAlloc();
    else if (reason == DLL_THREAD_DETACH)
        framework::DeleteState();
    return Slot != TLS_OUT_OF_INDEXES;
}
