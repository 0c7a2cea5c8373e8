/* A communication library that fills every byte of the cache with 'x', its size included, and then answers the number
   that the printer's name begins with. */
#include "links/PrinterCache.h"
#include <stdlib.h>
#include <string.h>

__declspec(dllexport) int GetPrinterCache(const char* printer, PRINTERCACHE* cache, int reserved1, int reserved2)
{
    memset(cache, 'x', sizeof *cache);
    return reserved1 || reserved2 ? -1 : atoi(printer);
}
