// A program that writes down how it was started, in the place of one that the library starts.
#pragma once

#include <functional>
#include <string>

/// What a started program saw of its start.
struct ProgramStart
{
    std::string commandLine; ///< "nothing was started" when no program came up
    std::string process;     ///< "priority 20, no console"
    std::string window;      ///< "show 5, flags 1, desktop ..."
    std::string parent;      ///< what it inherited of the variable RECORDER_PARENT
};

class RecordingProgram
{
public:
    /// Copies the recorder to this path, for as long as the object lives.
    explicit RecordingProgram(const std::string& path);
    ~RecordingProgram();
    RecordingProgram(const RecordingProgram&) = delete;
    RecordingProgram& operator=(const RecordingProgram&) = delete;

    const std::string& Path() const { return m_path; }

    /// How the program was started by the call; waits for it. With `started` false waits a moment only, to see that
    /// nothing comes.
    ProgramStart Recorded(const std::function<void()>& call, bool started = true) const;

private:
    std::string m_path;
};
