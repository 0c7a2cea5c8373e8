#include "RegistryReport.h"
#include <afx.h>
#include "settings/TvkProduct.h"
#include "system/CSafeRegistry.h"
#include <cstdio>
#include <cstring>

namespace
{
constexpr char Section[] = "Demo";
char NumberName[] = "Job Progress Minimized";
char TextName[] = "JSW Skin";

const unsigned char* Bytes(const void* data)
{
    return static_cast<const unsigned char*>(data);
}
} // namespace

bool ReportRegistry(const char* printer)
{
    std::printf("Printer \"%s\", key \"%s\"\n", printer, Section);
    CSafeRegistry key;
    key.SetFriendlyName(printer);
    unsigned long disposition = 0;
    if (!key.Create(disposition, nullptr, Section, REG_OPTION_NON_VOLATILE, KEY_ALL_ACCESS, nullptr))
    {
        std::printf("  not created: error %ld\n", key.GetLastError());
        return false;
    }
    std::printf("  created   %s\n", static_cast<LPCSTR>(key.GetSubKey()));
    const unsigned long minimized = 1;
    const CString skin = TvkProduct::GetProductPrefix() + "skin2.dll";
    bool good = key.Write(NumberName, Bytes(&minimized), sizeof minimized, REG_DWORD) != 0;
    good = key.Write(TextName, Bytes(static_cast<LPCSTR>(skin)), static_cast<unsigned long>(skin.GetLength()) + 1,
                     REG_SZ) &&
           good;

    char name[64];
    unsigned char data[64];
    for (unsigned long index = 0;; ++index)
    {
        unsigned long nameLength = sizeof name, size = sizeof data - 1, type = 0;
        if (key.EnumValue(index, name, &nameLength, &type, data, &size) != ERROR_SUCCESS)
            break;
        data[size] = 0;
        unsigned long number = 0;
        std::memcpy(&number, data, sizeof number);
        if (type == REG_DWORD)
            std::printf("  holds     %s = %lu\n", name, number);
        else
            std::printf("  holds     %s = \"%s\"\n", name, reinterpret_cast<const char*>(data));
    }

    unsigned long number = 0, size = sizeof number, type = 0;
    good = key.Read(reinterpret_cast<unsigned char*>(&number), &size, &type, NumberName) && number == minimized && good;
    unsigned long textSize = sizeof data;
    good = key.Read(data, &textSize, &type, TextName) && skin == reinterpret_cast<char*>(data) && good;
    std::printf("  read back %s\n", good ? "what was written" : "something else");

    char missing[] = "Not There";
    size = sizeof number;
    if (!key.Read(reinterpret_cast<unsigned char*>(&number), &size, &type, missing))
        std::printf("  a missing value is a result, not an exception: error %ld\n", key.GetLastError());

    const CString path = key.GetSubKey();
    const CString parent = path.Left(path.ReverseFind('\\'));
    CSafeRegistry parentKey;
    const bool removed = parentKey.Open(HKEY_LOCAL_MACHINE, parent, 0, KEY_ALL_ACCESS) && parentKey.Remove(Section);
    if (removed)
        std::printf("  removed   again\n");
    else
        std::printf("  not removed: error %ld\n", parentKey.GetLastError());
    return good && removed;
}
