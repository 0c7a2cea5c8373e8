#include "TraceLog.h"
#include <afx.h>
#include "settings/TvkProduct.h"
#include "system/CSafeRegistry.h"
#include <fstream>

namespace
{
constexpr const char* SwitchKey = "SOFTWARE\\TORVANE";
constexpr unsigned long ToFile = 1;
char SwitchValue[] = "GUILOG";
} // namespace

TraceLog::TraceLog() : m_path("c:\\" + std::string(static_cast<LPCSTR>(TvkProduct::GetProductPrefix())) + "gui.log")
{
    DeleteFileA(m_path.c_str());
    CSafeRegistry key(0);
    unsigned long disposition = 0;
    if (!key.Create(disposition, HKEY_LOCAL_MACHINE, SwitchKey, 0, KEY_ALL_ACCESS, nullptr))
        return;
    unsigned long size = sizeof m_before, type = 0;
    m_hadValue = key.Read(reinterpret_cast<unsigned char*>(&m_before), &size, &type, SwitchValue) != 0;
    m_on = key.Write(SwitchValue, reinterpret_cast<const unsigned char*>(&ToFile), sizeof ToFile, REG_DWORD) != 0;
    key.Close();
}

TraceLog::~TraceLog()
{
    CSafeRegistry key(0);
    if (!key.Open(HKEY_LOCAL_MACHINE, SwitchKey, 0, KEY_ALL_ACCESS))
        return;
    if (m_hadValue)
        key.Write(SwitchValue, reinterpret_cast<const unsigned char*>(&m_before), sizeof m_before, REG_DWORD);
    else
        key.DeleteValue(SwitchValue);
    key.Close();
}

std::vector<std::string> TraceLog::NewRecords()
{
    std::vector<std::string> records;
    std::ifstream file(m_path, std::ios::binary);
    file.seekg(m_read);
    for (std::string line; std::getline(file, line);)
    {
        m_read += static_cast<long>(line.size()) + 1;
        records.push_back(line);
    }
    m_records.insert(m_records.end(), records.begin(), records.end());
    return records;
}

std::string RecordBody(const std::string& record)
{
    const size_t stampEnd = record.find(">  ");
    return stampEnd == std::string::npos ? record : record.substr(stampEnd + 3);
}
