#include "Probe.h"
#include "system/internal/Handle.h"
#include <windows.h>
#include <cstdio>
#include <map>
#include <thread>

namespace
{
std::map<std::string, ProbeFunction>& Probes()
{
    static std::map<std::string, ProbeFunction> probes;
    return probes;
}

std::string OwnPath()
{
    char path[MAX_PATH] = "";
    GetModuleFileNameA(nullptr, path, MAX_PATH);
    return path;
}
} // namespace

ProbeRegistration::ProbeRegistration(const char* name, ProbeFunction function)
{
    Probes()[name] = function;
}

int RunProbe(const char* name, int argc, char** argv)
{
    const auto found = Probes().find(name);
    if (found == Probes().end())
    {
        std::printf("no probe %s\n", name);
        return 98;
    }
    return found->second(argc, argv);
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
    std::string command = "\"" + OwnPath() + "\" --probe " + name;
    for (const std::string& argument : arguments)
        command += " \"" + argument + "\"";
    return RunProcess(command);
}

ProcessResult RunProbeUnder(const std::string& windowsVersion, const std::string& name,
                            const std::vector<std::string>& arguments)
{
    const std::string path = OwnPath();
    const std::string key = "Software\\Wine\\AppDefaults\\" + path.substr(path.rfind('\\') + 1);
    RegSetKeyValueA(HKEY_CURRENT_USER, key.c_str(), "Version", REG_SZ, windowsVersion.c_str(),
                    static_cast<DWORD>(windowsVersion.size() + 1));
    ProcessResult result = RunProbeProcess(name, arguments);
    RegDeleteTreeA(HKEY_CURRENT_USER, key.c_str());
    return result;
}
