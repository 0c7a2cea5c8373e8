/* The interface between this suite and the printer communication library, for both sides; plain C.

   The communication library keeps what a printer last reported about itself. It is a module that exports
   `GetPrinterCache`; CComxDataRetriever loads it for one question and frees it again. */
#pragma once

#define PRINTERCACHE_INKS 10        /* levels in a printer's report */
#define PRINTERCACHE_CARTRIDGES 2   /* positions of the print head */
#define PRINTERCACHE_SERIAL_SIZE 32 /* bytes of the serial number, its NUL included */

/* What the library knows about one printer. The caller sets `size` and zeroes the rest; the library fills in what the
   printer has reported and leaves the other fields 0. All numbers have 32 bits. */
typedef struct
{
    unsigned long size;                          /* of this structure in bytes; a library fills no field beyond it */
    unsigned long inkStyle;                      /* kind of ink system */
    unsigned long inkPercent[PRINTERCACHE_INKS]; /* levels in per cent, in the order of INKINFO's InkPercent1 to 10 */
    unsigned long logCartId[PRINTERCACHE_CARTRIDGES];   /* cartridge identities: what the printer treats it as, */
    unsigned long physCartId[PRINTERCACHE_CARTRIDGES];  /* what it is, */
    unsigned long savedCartId[PRINTERCACHE_CARTRIDGES]; /* and what it was when the printer was switched off */
    char serialNumber[PRINTERCACHE_SERIAL_SIZE];        /* ANSI; without a NUL when it fills the field */
} PRINTERCACHE;

#ifdef __cplusplus
static_assert(sizeof(PRINTERCACHE) == 104, "the layout is an agreement between modules that are built apart");
#endif

/* GetPrinterCache(friendly name of the printer; cache to fill; reserved, 0; reserved, 0): 0 on success, else a number
   of the library's own. */
typedef int (*GetPrinterCacheFunction)(const char*, PRINTERCACHE*, int, int);
