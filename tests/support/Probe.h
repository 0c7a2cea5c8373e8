// A probe is a piece of a test that must run in a process of its own: under another Windows version, beside a second
// writer, or to be ended. The test program starts itself with `--probe NAME arguments`; what the probe prints is its
// answer.
#pragma once

#include <string>
#include <vector>

using ProbeFunction = int (*)(int argc, char** argv); ///< returns the exit code

/// Registers a probe under a name; use PROBE.
struct ProbeRegistration
{
    ProbeRegistration(const char* name, ProbeFunction function);
};

/// Defines and registers a probe: PROBE(Name) { std::puts("answer"); return 0; }
#define PROBE(name)                                                                                                    \
    static int Probe##name(int argc, char** argv);                                                                     \
    static const ProbeRegistration ProbeRegistration##name(#name, Probe##name);                                        \
    static int Probe##name([[maybe_unused]] int argc, [[maybe_unused]] char** argv)

/// What a finished child printed, with CR taken out, and its exit code.
struct ProcessResult
{
    unsigned long exitCode = ~0ul;
    std::string output;
};

/// Runs a command line to its end (at most `milliseconds`, then it is ended and exitCode is 97); collects its output.
ProcessResult RunProcess(const std::string& commandLine, unsigned long milliseconds = 20000);

/// Starts this program's probe in a child process and waits for it.
ProcessResult RunProbeProcess(const std::string& name, const std::vector<std::string>& arguments = {});

/// The same under another Windows version ("win95", "nt40", "winxp", ...: Wine's per-program setting).
ProcessResult RunProbeUnder(const std::string& windowsVersion, const std::string& name,
                            const std::vector<std::string>& arguments = {});
