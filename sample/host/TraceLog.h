// The trace of the library, as a support engineer uses it: switched on for a while, and read back from its file.
#pragma once

#include <string>
#include <vector>

/// Switches the trace to the log file for as long as the object lives, on an empty log; puts the switch back.
class TraceLog
{
public:
    TraceLog();
    ~TraceLog();
    TraceLog(const TraceLog&) = delete;
    TraceLog& operator=(const TraceLog&) = delete;

    /// False when the switch could not be set: the machine's registry refused.
    bool IsOn() const { return m_on; }
    /// The records written since the last call, without line ends; every one begins with its time stamp.
    std::vector<std::string> NewRecords();
    /// All records so far.
    const std::vector<std::string>& Records() const { return m_records; }
    /// The log's path.
    const std::string& Path() const { return m_path; }

private:
    std::string m_path;
    std::vector<std::string> m_records;
    long m_read = 0; ///< bytes of the log read so far
    unsigned long m_before = 0;
    bool m_hadValue = false;
    bool m_on = false;
};

/// A record's text behind its time stamp.
std::string RecordBody(const std::string& record);
