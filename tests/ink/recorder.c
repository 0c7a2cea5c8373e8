/* Stands in for the ordering program: writes its command line, its priority class and whether it has a console into the
   file named like itself with ".txt" appended. */
#include <stdio.h>
#include <string.h>
#include <windows.h>

int main(void)
{
    char report[MAX_PATH + 8];
    char draft[MAX_PATH + 8];
    FILE* file;
    GetModuleFileNameA(NULL, report, MAX_PATH);
    strcpy(draft, report);
    strcat(report, ".txt");
    strcat(draft, ".new");
    file = fopen(draft, "wb");
    if (!file)
        return 1;
    fprintf(file, "%s\npriority %lx, %s console\n", GetCommandLineA(), GetPriorityClass(GetCurrentProcess()),
            GetConsoleCP() ? "a" : "no");
    fclose(file);
    return !MoveFileExA(draft, report, MOVEFILE_REPLACE_EXISTING); /* complete when it appears */
}
