// Rows of the trace: a call that is switched off, and a record to the file against the file calls that it needs.
#include "Harness.h"
#include <afx.h>
#include "diag/CSpy.h"
#include "settings/TvkProduct.h"
#include <cstdio>
#include <string>

namespace
{
constexpr const char* SwitchKey = "SOFTWARE\\TORVANE";
constexpr DWORD RegionHigh = 0x40000000; // the lock lies far behind any end of the file

/// What a switched-off call is compared with: the argument is made and handed over, nothing else.
__attribute__((noinline)) int TakeText(CString text)
{
    return text.GetLength();
}

bool SwitchedOff()
{
    CSpy spy;
    const CString text = "CGUIUrlLink::GotoURL()";
    volatile int sink = 0;
    const bench::Contender numbers = {"OutputData(int)", [&](int count)
                                      {
                                          for (int i = 0; i < count; ++i)
                                              sink = spy.OutputData(i);
                                      }};
    const bench::Contender nothing = {"an empty loop", [&](int count)
                                      {
                                          for (int i = 0; i < count; ++i)
                                              sink = i;
                                      }};
    const bench::Contender texts = {"OutputData(CString)", [&](int count)
                                    {
                                        for (int i = 0; i < count; ++i)
                                            sink = spy.OutputData(text);
                                    }};
    const bench::Contender argument = {"its argument", [&](int count)
                                       {
                                           for (int i = 0; i < count; ++i)
                                               sink = TakeText(text);
                                       }};
    const bool number = bench::CompareDifference("trace call of a number, switched off", numbers, nothing, 20, 200000);
    return bench::CompareDifference("trace call of a text, switched off", texts, argument, 20, 200000) && number;
}

bool ToFile()
{
    const std::string log = "c:\\" + std::string(static_cast<LPCSTR>(TvkProduct::GetProductPrefix())) + "gui.log";
    const DWORD on = 1;
    RegSetKeyValueA(HKEY_LOCAL_MACHINE, SwitchKey, "GUILOG", REG_DWORD, &on, sizeof on);
    bool met = false;
    {
        CSpy spy;
        const CString text = "CGUIUrlLink::GotoURL()";
        const std::string record = "14:03:22 <November 16, 2006>  (char)CGUIUrlLink::GotoURL()\n";
        HANDLE file = CreateFileA("c:\\bench.log", GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                                  CREATE_ALWAYS, 0, nullptr);
        const bench::Contender ours = {"CSpy::OutputData(CString) to the file", [&](int count)
                                       {
                                           for (int i = 0; i < count; ++i)
                                               spy.OutputData(text);
                                       }};
        const bench::Contender calls = {"lock, seek, write, unlock", [&](int count)
                                        {
                                            for (int i = 0; i < count; ++i)
                                            {
                                                OVERLAPPED region = {};
                                                region.OffsetHigh = RegionHigh;
                                                LockFileEx(file, LOCKFILE_EXCLUSIVE_LOCK, 0, 1, 0, &region);
                                                SetFilePointer(file, 0, nullptr, FILE_END);
                                                DWORD written = 0;
                                                WriteFile(file, record.data(), static_cast<DWORD>(record.size()),
                                                          &written, nullptr);
                                                UnlockFileEx(file, 0, 1, 0, &region);
                                            }
                                        }};
        met = bench::Compare("trace record to the file", ours, {{calls, bench::Goal::AtMost, 1.3}}, 100);
        CloseHandle(file);
    }
    RegDeleteKeyValueA(HKEY_LOCAL_MACHINE, SwitchKey, "GUILOG");
    RegDeleteKeyA(HKEY_LOCAL_MACHINE, SwitchKey);
    DeleteFileA("c:\\bench.log");
    DeleteFileA(log.c_str());
    return met;
}

bool Trace()
{
    const bool off = SwitchedOff();
    return ToFile() && off;
}

const bench::Registration Registered("trace", Trace);
} // namespace
