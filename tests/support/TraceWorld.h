// The trace switched on, with an empty log, for as long as the object lives; the machine's former state comes back
// afterwards. Objects under test read the switch when they are made: make them after this one. Tests that use it run
// ALONE.
#pragma once

#include "RegistryWorld.h"
#include <string>
#include <vector>
#include <windows.h>

class TraceWorld
{
public:
    /// Sets GUILOG to the value: 1 log file, 2 message box, 3 both, 4 debugger.
    explicit TraceWorld(unsigned long guilog = 1);
    ~TraceWorld();

    /// Sets GUILOG to raw data of any type; takes it away.
    void Switch(unsigned long type, const std::string& data);
    void Switch(unsigned long guilog);
    void RemoveSwitch();

    /// "c:\<prefix>gui.log" of the library under test.
    static std::string LogPath();
    /// The whole log as it lies in the file; empty without a file.
    std::string Log() const;
    /// The bodies of the log's records: what follows the time stamp and two blanks, without the last line feed. Every
    /// record's time stamp is checked for its shape, and the file for ending in a line feed.
    std::vector<std::string> Records() const;
    /// The records without the look-ups of settings, one a line.
    std::string Steps() const;
    /// Empties the log; traces that hold it open go on.
    void Clear();

private:
    RegistryWorld m_registry;
};

/// A record without its time stamp and the two blanks; fails the running test when they are not there.
std::string WithoutTimeStamp(const std::string& record);
