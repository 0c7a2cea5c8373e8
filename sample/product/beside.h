/* The place of a library that is loaded by whatever path: its own name with another ending. */
#ifndef SAMPLE_BESIDE_H
#define SAMPLE_BESIDE_H

#include <string.h>
#include <windows.h>

/* Writes the path of the library that includes this, its ending replaced, to MAX_PATH bytes at `path`. Returns 0 when
   that does not fit. */
static int FileBesideThisLibrary(const char* ending, char* path)
{
    static const char insideThisLibrary;
    HMODULE module = NULL;
    GetModuleHandleExA(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                       &insideThisLibrary, &module);
    const DWORD length = GetModuleFileNameA(module, path, MAX_PATH);
    char* dot = length < MAX_PATH ? strrchr(path, '.') : NULL;
    if (!dot || dot + strlen(ending) >= path + MAX_PATH)
        return 0;
    strcpy(dot, ending);
    return 1;
}

#endif
