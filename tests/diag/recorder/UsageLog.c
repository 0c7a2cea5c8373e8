#include "UsageLog.h"
#include <stdarg.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

HRESULT Log(const char* step, const char* format, ...)
{
    char line[1024], name[MAX_PATH], fault[64];
    va_list arguments;
    DWORD written = 0;
    HANDLE file;
    int length = snprintf(line, sizeof line - 2, "%s", step);

    va_start(arguments, format);
    vsnprintf(line + length, sizeof line - 2 - length, format, arguments);
    va_end(arguments);
    strcat(line, "\n");
    if (GetEnvironmentVariableA("USAGE_LOG", name, sizeof name))
    {
        file = CreateFileA(name, FILE_APPEND_DATA, FILE_SHARE_READ, NULL, OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, NULL);
        WriteFile(file, line, (DWORD)strlen(line), &written, NULL);
        CloseHandle(file);
    }
    length = (int)strlen(step);
    if (GetEnvironmentVariableA("USAGE_FAULT", fault, sizeof fault) && strncmp(fault, step, length) == 0 &&
        fault[length] == '=')
        return (HRESULT)strtoul(fault + length + 1, NULL, 0);
    return 0;
}

BOOL IsFault(const char* fault)
{
    char value[64] = "";
    GetEnvironmentVariableA("USAGE_FAULT", value, sizeof value);
    return strcmp(value, fault) == 0;
}
