#include "TraceWorld.h"
#include "TestProduct.h"
#include <gtest/gtest.h>
#include <regex>
#include <sstream>

namespace
{
constexpr char Key[] = "SOFTWARE\\TORVANE";
constexpr char Name[] = "GUILOG";

// At the beginning of a line: 14:03:22 <November 16, 2006> and two blanks.
const std::regex TimeStamp("([01]\\d|2[0-3]):[0-5]\\d:[0-5]\\d <(January|February|March|April|May|June|July|August|"
                           "September|October|November|December) (0[1-9]|[12]\\d|3[01]), \\d{4}>  ");
} // namespace

TraceWorld::TraceWorld(unsigned long guilog)
{
    m_registry.Claim(HKEY_LOCAL_MACHINE, Key);
    m_registry.Keep(HKEY_LOCAL_MACHINE, Key, Name);
    Clear();
    Switch(guilog);
}

TraceWorld::~TraceWorld()
{
    RemoveSwitch();
    Clear();
    DeleteFileA(LogPath().c_str());
}

void TraceWorld::Switch(unsigned long type, const std::string& data)
{
    EXPECT_EQ(RegSetKeyValueA(HKEY_LOCAL_MACHINE, Key, Name, type, data.data(), static_cast<DWORD>(data.size())), 0);
}

void TraceWorld::Switch(unsigned long guilog)
{
    Switch(REG_DWORD, std::string(reinterpret_cast<const char*>(&guilog), sizeof guilog));
}

void TraceWorld::RemoveSwitch()
{
    RegDeleteKeyValueA(HKEY_LOCAL_MACHINE, Key, Name);
}

std::string TraceWorld::LogPath()
{
    return "c:\\" PRODUCT_PREFIX "gui.log";
}

std::string TraceWorld::Log() const
{
    return FileText(LogPath());
}

std::vector<std::string> TraceWorld::Records() const
{
    const std::string log = Log();
    EXPECT_TRUE(log.empty() || log.back() == '\n') << "the log ends within a record";
    std::vector<std::string> records;
    std::istringstream lines(log);
    for (std::string line; std::getline(lines, line);)
        if (std::smatch stamp; std::regex_search(line, stamp, TimeStamp, std::regex_constants::match_continuous))
            records.push_back(stamp.suffix());
        else if (records.empty())
            ADD_FAILURE() << "the log does not begin with a time stamp: " << line;
        else
            records.back() += "\n" + line;
    return records;
}

std::string TraceWorld::Steps() const
{
    std::string steps;
    for (const std::string& record : Records())
        if (record.find("---->") == std::string::npos)
            steps += record + "\n";
    return steps;
}

void TraceWorld::Clear()
{
    const HANDLE file = CreateFileA(LogPath().c_str(), GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                                    TRUNCATE_EXISTING, 0, nullptr);
    if (file != INVALID_HANDLE_VALUE)
        CloseHandle(file);
}

std::string WithoutTimeStamp(const std::string& record)
{
    std::smatch stamp;
    if (std::regex_search(record, stamp, TimeStamp, std::regex_constants::match_continuous))
        return stamp.suffix();
    ADD_FAILURE() << "no time stamp in front of: " << record;
    return record;
}
