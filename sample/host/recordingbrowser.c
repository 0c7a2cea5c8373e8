/* A browser that opens nothing: it adds the command line that it was started with to the file named after it, with
   ".txt" in place of ".exe". */
#include <windows.h>
#include <stdio.h>
#include <string.h>

int main(void)
{
    char path[MAX_PATH];
    const DWORD length = GetModuleFileNameA(NULL, path, sizeof path);
    FILE* file;
    if (length < 4 || length >= sizeof path)
        return 1;
    strcpy(path + length - 4, ".txt");
    file = fopen(path, "ab");
    if (!file)
        return 1;
    fprintf(file, "%s\n", GetCommandLineA());
    return fclose(file) == 0 ? 0 : 1;
}
