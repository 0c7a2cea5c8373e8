/* The tests' configuration library. Plain C: it is loaded and freed for every question. Each call is written down in
   testconf.log beside it: arguments and result. */
#include <stdio.h>
#include <string.h>
#include "settings/ConfigurationLibrary.h"
#include "ConfigItems.h"

static HMODULE Module;

BOOL WINAPI DllMain(HINSTANCE instance, DWORD reason, LPVOID reserved)
{
    (void)reason;
    (void)reserved;
    Module = instance;
    return TRUE;
}

static void WriteDown(const char* line)
{
    char path[MAX_PATH];
    DWORD written = 0;
    HANDLE log;
    GetModuleFileNameA(Module, path, sizeof path);
    strcpy(strrchr(path, '.'), ".log");
    log = CreateFileA(path, FILE_APPEND_DATA, FILE_SHARE_READ, NULL, OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, NULL);
    WriteFile(log, line, (DWORD)strlen(line), &written, NULL);
    CloseHandle(log);
}

static unsigned long Text(const char* text, void* buffer, unsigned long* size, int second)
{
    *size = (unsigned long)strlen(text) + 1;
    if (!second)
        return ERROR_CONFIG_INSUFFICIENT_BUFFER_SIZE;
    memcpy(buffer, text, *size);
    return ERROR_CONFIG_SUCCESS;
}

static unsigned long Number(unsigned long number, void* buffer, unsigned long* size, int second)
{
    *size = sizeof number;
    if (!second)
        return ERROR_CONFIG_INSUFFICIENT_BUFFER_SIZE;
    memcpy(buffer, &number, sizeof number);
    return ERROR_CONFIG_SUCCESS;
}

static unsigned long Answer(unsigned long item, void* buffer, unsigned long* size, int second)
{
    switch (item)
    {
    case ItemText:
        return Text("Larkmoor 5", buffer, size, second);
    case ItemNumber:
        return Number(77, buffer, size, second);
    case ItemTokens:
        return Text("~MODEL~, not ~MODEL~, by ~MFG~", buffer, size, second);
    case ItemModel:
        return Text("X100", buffer, size, second);
    case ItemMaker:
        return Text("Torvane", buffer, size, second);
    case ItemEager:
        return ERROR_CONFIG_SUCCESS;
    case ItemLate:
        return second ? ERROR_CONFIG_OUT_OF_RANGE : ERROR_CONFIG_INSUFFICIENT_BUFFER_SIZE;
    case ItemStrange:
        return 99;
    case ItemInsatiable:
        return ERROR_CONFIG_INSUFFICIENT_BUFFER_SIZE;
    case ItemUnterminated:
        *size = 100000;
        if (!second)
            return ERROR_CONFIG_INSUFFICIENT_BUFFER_SIZE;
        memset(buffer, 'x', 256);
        return ERROR_CONFIG_SUCCESS;
    case ItemFailureText:
        return Text("ERROR_SYSCONFIGDLL_FAILURE", buffer, size, second);
    case ItemAllOnes:
        return Number(0xFFFFFFFF, buffer, size, second);
    case ItemSilent:
        return second ? ERROR_CONFIG_SUCCESS : ERROR_CONFIG_INSUFFICIENT_BUFFER_SIZE;
    default:
        return ERROR_CONFIG_UNDEFINED_ITEM;
    }
}

__declspec(dllexport) unsigned long WINAPI GetConfigData(unsigned long reserved1, unsigned long item,
                                                         unsigned long reserved2, void* buffer, unsigned long* size)
{
    static unsigned long asked; /* the item that was told its size: this is its second call */
    const int second = asked == item;
    const unsigned long sizeBefore = *size;
    const unsigned long result = Answer(item, buffer, size, second);
    char line[100];
    asked = !second && result == ERROR_CONFIG_INSUFFICIENT_BUFFER_SIZE ? item : 0;
    sprintf(line, "%lu %lu %lu %s %lu: %lu %lu\n", reserved1, item, reserved2, buffer ? "buffer" : "null", sizeBefore,
            result, *size);
    WriteDown(line);
    return result;
}
