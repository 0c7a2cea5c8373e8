/* The data-retriever library: keeps whether the user takes part in the collection of usage data, in a file beside
   itself. It is loaded and freed for every single question, hence plain C: the C++ run-time library would keep
   something of each load. */
#include "beside.h"
#include "links/ParticipationLibrary.h"

static int IniPath(char* path)
{
    return FileBesideThisLibrary(".ini", path);
}

__declspec(dllexport) int QueryParticipationLevel(void)
{
    char path[MAX_PATH];
    return IniPath(path) ? (int)GetPrivateProfileIntA("Participation", "Level", 0, path) : 0;
}

__declspec(dllexport) int SetParticipationLevel(int level)
{
    char path[MAX_PATH];
    char text[16];
    wsprintfA(text, "%d", level);
    return IniPath(path) && WritePrivateProfileStringA("Participation", "Level", text, path);
}
