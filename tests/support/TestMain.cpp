// The tests' main: a crash ends the program at once, with an exit code and its place in its module instead of a
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
    const void* const address = pointers->ExceptionRecord->ExceptionAddress;
    HMODULE module = nullptr;
    char name[MAX_PATH] = "?";
    GetModuleHandleExA(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                       static_cast<LPCSTR>(address), &module);
    if (module)
        GetModuleFileNameA(module, name, MAX_PATH);
    std::fprintf(stderr, "\n*** CRASH code %08lx at %s+0x%llx\n", pointers->ExceptionRecord->ExceptionCode, name,
                 reinterpret_cast<ULONG_PTR>(address) - reinterpret_cast<ULONG_PTR>(module));
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
