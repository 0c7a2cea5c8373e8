// The system calls that a launch consists of: written down, refused on demand, or only pretended.
#pragma once

#include "support/IatPatch.h"
#include <list>
#include <set>
#include <string>

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
    bool pretend = false; ///< processes are not started; their handles are those of events
    int environments = 0; ///< environment blocks made and not destroyed
    int shellResult = 0;  ///< not 0: what ShellExecuteA returns without being asked
    const char* windowsFolder = nullptr; ///< not null: what GetWindowsDirectoryA tells

    // For the replacements of the calls.
    bool Refuses(const std::string& name);
    void Note(const std::string& call);

private:
    std::list<IatPatch> m_patches;
    std::set<std::string> m_refused;
};
