/* Stands in for the HTML Help library: leaves the arguments of its last call in the environment of the process. */
#include <stdio.h>
#include <windows.h>

HWND WINAPI ShowHelp(HWND owner, const char* file, UINT command, DWORD_PTR data)
{
    char call[512];
    snprintf(call, sizeof call, "0x%llx %s %u %lld", (unsigned long long)(ULONG_PTR)owner, file, command,
             (long long)(LONG_PTR)data);
    SetEnvironmentVariableA("HTMLHELP_CALL", call);
    return NULL;
}
