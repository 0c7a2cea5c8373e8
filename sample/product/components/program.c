/* A program of the suite that others start: it appends its command line to a file in the folder for temporary files,
   called like itself with the ending ".log", so that one can see what was asked of it. */
#include <stdio.h>
#include <string.h>
#include <windows.h>

int WINAPI WinMain(HINSTANCE instance, HINSTANCE previous, LPSTR arguments, int show)
{
    char program[MAX_PATH] = "", log[2 * MAX_PATH] = "";
    FILE* file;
    (void)instance, (void)previous, (void)arguments, (void)show;
    if (!GetModuleFileNameA(NULL, program, MAX_PATH - 1) || !GetTempPathA(MAX_PATH, log))
        return 1;
    const char* name = strrchr(program, '\\');
    strncat(log, name ? name + 1 : program, sizeof log - strlen(log) - sizeof ".log");
    char* ending = strrchr(log, '.');
    strcpy(ending ? ending : log + strlen(log), ".log");
    file = fopen(log, "a");
    if (!file)
        return 1;
    fprintf(file, "%s\n", GetCommandLineA());
    return fclose(file) ? 1 : 0;
}
