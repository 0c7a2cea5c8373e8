// The tests' main: a crash ends the program at once, with an exit code and a backtrace of module offsets instead of a
// dialog; `--probe NAME` runs a registered probe in place of the tests.
#include "Probe.h"
#include <windows.h>
#include <gmock/gmock.h>
#include <cstdio>
#include <cstring>

namespace
{
LONG WINAPI ReportCrash(EXCEPTION_POINTERS* pointers)
{
    std::fprintf(stderr, "\n*** CRASH code %08lx at %p\n", pointers->ExceptionRecord->ExceptionCode,
                 pointers->ExceptionRecord->ExceptionAddress);
    CONTEXT context = *pointers->ContextRecord;
    for (int frame = 0; frame < 40 && context.Rip; ++frame)
    {
        HMODULE module = nullptr;
        char name[MAX_PATH] = "?";
        GetModuleHandleExA(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                           reinterpret_cast<LPCSTR>(context.Rip), &module);
        if (module)
            GetModuleFileNameA(module, name, MAX_PATH);
        std::fprintf(stderr, "  #%d %s+0x%llx\n", frame, name, context.Rip - reinterpret_cast<DWORD64>(module));
        DWORD64 base = 0;
        PRUNTIME_FUNCTION function = RtlLookupFunctionEntry(context.Rip, &base, nullptr);
        if (!function)
        {
            if (frame)
                break;
            context.Rip = *reinterpret_cast<DWORD64*>(context.Rsp); // a leaf, or a call through a bad pointer
            context.Rsp += 8;
            continue;
        }
        void* handler = nullptr;
        DWORD64 establisher = 0;
        RtlVirtualUnwind(UNW_FLAG_NHANDLER, base, context.Rip, function, &context, &handler, &establisher, nullptr);
    }
    std::fflush(stderr);
    TerminateProcess(GetCurrentProcess(), 127); // Wine passes on the low eight bits: never a multiple of 256
    return EXCEPTION_EXECUTE_HANDLER;
}
} // namespace

int main(int argc, char** argv)
{
    SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOGPFAULTERRORBOX | SEM_NOOPENFILEERRORBOX);
    SetUnhandledExceptionFilter(ReportCrash);
    if (argc >= 3 && std::strcmp(argv[1], "--probe") == 0)
        return RunProbe(argv[2], argc - 3, argv + 3);
    testing::InitGoogleMock(&argc, argv);
    return RUN_ALL_TESTS();
}
