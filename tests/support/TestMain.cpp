// The tests' main: a crash ends the program at once, with an exit code and its place in its module instead of a
// dialog; `--probe NAME` runs a registered probe in place of the tests.
#include "Probe.h"
#include "system/internal/Handle.h"
#include <gmock/gmock.h>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <map>
#include <thread>

namespace
{
std::map<std::string, ProbeFunction>& Probes()
{
    static std::map<std::string, ProbeFunction> probes;
    return probes;
}

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

ProbeRegistration::ProbeRegistration(const char* name, ProbeFunction function)
{
    Probes()[name] = function;
}

ProcessResult RunProcess(const std::string& commandLine, unsigned long milliseconds)
{
    ProcessResult result;
    SECURITY_ATTRIBUTES inherit = {sizeof inherit, nullptr, TRUE};
    tvk::KernelHandle readEnd, writeEnd;
    if (!CreatePipe(readEnd.Receive(), writeEnd.Receive(), &inherit, 0))
        return result;
    SetHandleInformation(readEnd.Get(), HANDLE_FLAG_INHERIT, 0);
    STARTUPINFOA startup = {};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESTDHANDLES;
    startup.hStdInput = GetStdHandle(STD_INPUT_HANDLE);
    startup.hStdOutput = startup.hStdError = writeEnd.Get();
    PROCESS_INFORMATION started = {};
    std::string line = commandLine;
    if (!CreateProcessA(nullptr, line.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &startup, &started))
    {
        result.output = "cannot start " + commandLine;
        return result;
    }
    const tvk::KernelHandle process(started.hProcess), thread(started.hThread);
    writeEnd.Reset();
    std::thread reader(
        [&]
        {
            char buffer[4096];
            DWORD got = 0;
            while (ReadFile(readEnd.Get(), buffer, sizeof buffer, &got, nullptr) && got)
                result.output.append(buffer, got);
        });
    if (WaitForSingleObject(process.Get(), milliseconds) != WAIT_OBJECT_0)
    {
        TerminateProcess(process.Get(), 97);
        WaitForSingleObject(process.Get(), 5000);
    }
    reader.join();
    std::erase(result.output, '\r');
    GetExitCodeProcess(process.Get(), &result.exitCode);
    return result;
}

ProcessResult RunProbeProcess(const std::string& name, const std::vector<std::string>& arguments)
{
    std::string command = std::string("\"") + _pgmptr + "\" --probe " + name;
    for (const std::string& argument : arguments)
        command += " \"" + argument + "\"";
    return RunProcess(command);
}

ProcessResult RunProbeUnder(const std::string& windowsVersion, const std::string& name,
                            const std::vector<std::string>& arguments)
{
    const std::string path = _pgmptr;
    const std::string key = "Software\\Wine\\AppDefaults\\" + path.substr(path.rfind('\\') + 1);
    RegSetKeyValueA(HKEY_CURRENT_USER, key.c_str(), "Version", REG_SZ, windowsVersion.c_str(),
                    static_cast<DWORD>(windowsVersion.size() + 1));
    ProcessResult result = RunProbeProcess(name, arguments);
    RegDeleteTreeA(HKEY_CURRENT_USER, key.c_str());
    return result;
}

int main(int argc, char** argv)
{
    SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOGPFAULTERRORBOX | SEM_NOOPENFILEERRORBOX);
    SetUnhandledExceptionFilter(ReportCrash);
    if (argc >= 3 && std::strcmp(argv[1], "--probe") == 0)
        return Probes().at(argv[2])(argc - 3, argv + 3);
    testing::InitGoogleMock(&argc, argv);
    return RUN_ALL_TESTS();
}
