/* The printer communication library: answers what a printer last reported. This one has no printer; its reports stand
   in a file beside it, a section for each printer's name. It is loaded and freed for every single question, hence plain
   C. */
#include "beside.h"
#include "links/PrinterCache.h"
#include <stddef.h>

typedef struct
{
    const char* key; /* with a number from 1 on behind it when there are several */
    size_t offset;
    int count;
} Field;

#define FIELD(key, member)                                                                                             \
    {                                                                                                                  \
        key, offsetof(PRINTERCACHE, member), 1                                                                         \
    }
#define ARRAY(key, member, count)                                                                                      \
    {                                                                                                                  \
        key, offsetof(PRINTERCACHE, member), count                                                                     \
    }
static const Field fields[] = {
    FIELD("InkStyle", inkStyle),
    ARRAY("InkPercent", inkPercent, PRINTERCACHE_INKS),
    ARRAY("LogicalCartridge", logCartId, PRINTERCACHE_CARTRIDGES),
    ARRAY("PhysicalCartridge", physCartId, PRINTERCACHE_CARTRIDGES),
    ARRAY("SavedCartridge", savedCartId, PRINTERCACHE_CARTRIDGES),
};

static void Read(const Field* field, const char* printer, const char* path, PRINTERCACHE* cache)
{
    unsigned long* value = (unsigned long*)((char*)cache + field->offset);
    for (int i = 0; i < field->count; ++i)
    {
        char key[32];
        wsprintfA(key, field->count > 1 ? "%s%d" : "%s", field->key, i + 1);
        value[i] = GetPrivateProfileIntA(printer, key, 0, path);
    }
}

__declspec(dllexport) int GetPrinterCache(const char* printer, PRINTERCACHE* cache, int reserved1, int reserved2)
{
    char path[MAX_PATH];
    char serial[PRINTERCACHE_SERIAL_SIZE];
    (void)reserved1;
    (void)reserved2;
    if (!printer || !*printer || !cache || cache->size < sizeof *cache || !FileBesideThisLibrary(".ini", path))
        return ERROR_INVALID_PARAMETER;
    if (!GetPrivateProfileStringA(printer, "SerialNumber", "", serial, sizeof serial, path))
        return ERROR_FILE_NOT_FOUND; /* this printer has never reported anything */
    memcpy(cache->serialNumber, serial, sizeof serial);
    for (size_t i = 0; i < sizeof fields / sizeof fields[0]; ++i)
        Read(&fields[i], printer, path, cache);
    return ERROR_SUCCESS;
}
