// The system calls that a launch consists of: written down, refused on demand, or only pretended; and the ways that a
// launch takes.
#pragma once

#include "support/IatPatch.h"
#include <list>
#include <set>
#include <string>
#include <vector>

class LaunchCalls
{
public:
    LaunchCalls();
    ~LaunchCalls();
    LaunchCalls(const LaunchCalls&) = delete;
    LaunchCalls& operator=(const LaunchCalls&) = delete;

    /// From now on these are refused, and the calls written down so far are forgotten: names of functions
    /// ("CreateProcessAsUserA"), or of libraries that cannot be loaded ("wtsapi32.dll").
    void Refuse(std::set<std::string> names);

    std::string log;      ///< the calls with what matters of their arguments, each followed by a semicolon
    std::string loads;    ///< the libraries asked for, likewise
    bool pretend = false; ///< processes are not started; their handles are those of events
    int environments = 0; ///< environment blocks made and not destroyed
    int shellResult = 0;  ///< not 0: what ShellExecuteA returns without being asked
    const char* windowsFolder = nullptr; ///< not null: what GetWindowsDirectoryA tells

    /// The last error that a start leaves behind, to be told from all others; a refused call: ERROR_NOT_SUPPORTED.
    static constexpr DWORD Started = 4712;

    // For the replacements of the calls.
    bool Refuses(const std::string& name);
    template <class... N>
    void Note(std::string call, N... numbers)
    {
        log += ((call + ... + Hex(static_cast<unsigned long>(numbers)))) + "; ";
    }

private:
    static std::string Hex(unsigned long number);

    std::list<IatPatch> m_patches;
    std::set<std::string> m_refused;
};

/// A way that a launch takes, the same for browser and help viewer.
struct LaunchRoute
{
    std::set<std::string> refused;
    std::string calls;
    std::string trace;
    int result;
    int version = 9;

    static constexpr int OwnToken = -1; ///< a result: whatever the launcher tells of a start with its own token

    bool Starts() const { return result != 0; }
    bool StartsDirectly() const { return calls.find("process 28") != std::string::npos; }
    /// What is traced: with the launcher's name in place of "@", and on systems with sessions `begins` in front.
    std::string Trace(const std::string& launcher, const std::string& begins) const;
};
extern const std::vector<LaunchRoute> LaunchRoutes;
