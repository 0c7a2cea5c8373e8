#include "RecordingProgram.h"
#include "TestProduct.h"
#include <gtest/gtest.h>
#include <fstream>

RecordingProgram::RecordingProgram(const std::string& path) : m_path(path)
{
    EXPECT_TRUE(CopyFileA((TestFolder() + "recorder.exe").c_str(), m_path.c_str(), FALSE)) << m_path;
}

RecordingProgram::~RecordingProgram()
{
    for (int tries = 0; !DeleteFileA(m_path.c_str()) && tries < 200; ++tries) // the last one may still be running
        Sleep(20);
    DeleteFileA((m_path + ".txt").c_str());
}

ProgramStart RecordingProgram::Recorded(const std::function<void()>& call, bool started) const
{
    const std::string report = m_path + ".txt";
    DeleteFileA(report.c_str());
    call();
    for (int tries = 0; tries < (started ? 2000 : 10); ++tries)
    {
        ProgramStart start;
        std::ifstream file(report, std::ios::binary);
        if (std::getline(file, start.commandLine) && std::getline(file, start.process) &&
            std::getline(file, start.window) && std::getline(file, start.parent))
        {
            start.parent.erase(0, start.parent.find(": ") + 2);
            return start;
        }
        Sleep(20);
    }
    return {"nothing was started", "", "", ""};
}
