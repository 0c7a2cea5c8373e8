/* Stands in for a program that the library starts: writes how it was started into the file named like itself with
   ".txt" appended. The report is complete when it appears. */
#include <stdio.h>
#include <string.h>
#include <windows.h>

int main(void)
{
    char report[MAX_PATH + 8], draft[MAX_PATH + 8], parent[64] = "";
    STARTUPINFOA startup;
    FILE* file;
    GetModuleFileNameA(NULL, report, MAX_PATH);
    strcpy(draft, report);
    strcat(report, ".txt");
    strcat(draft, ".new");
    file = fopen(draft, "wb");
    if (!file)
        return 1;
    GetStartupInfoA(&startup);
    GetEnvironmentVariableA("RECORDER_PARENT", parent, sizeof parent);
    fprintf(file, "%s\npriority %lx, %s console\n", GetCommandLineA(), GetPriorityClass(GetCurrentProcess()),
            GetConsoleCP() ? "a" : "no");
    fprintf(file, "show %d, flags %lx, desktop %s\n", startup.wShowWindow, startup.dwFlags,
            startup.lpDesktop ? startup.lpDesktop : "");
    fprintf(file, "parent's variable: %s\n", parent);
    fclose(file);
    return !MoveFileExA(draft, report, MOVEFILE_REPLACE_EXISTING);
}
