/* The configuration library of the Larkmoor 460: answers, for this model, the items that the series' settings library
   names in its overrides. It is loaded and freed for every single question, hence plain C: the C++ run-time library
   would keep something of each load. */
#include "settings/ConfigurationLibrary.h"
#include <string.h>

typedef struct
{
    unsigned long item;
    const char* text; /* null: a number */
    unsigned long number;
} Item;

static const Item items[] = {
    {1, "Larkmoor 460", 0}, /* IDO_MODEL */
    {2, "Torvane", 0},      /* IDO_MFG */
    {3, "LM46", 0},         /* IDO_URL_PRINTER_CODE */
    {17, NULL, 2},          /* IDO_INKSTYLE: two cartridges */
    {18, NULL, 2},          /* IDO_PRINTHEADFORMAT: shown in the order of the holders */
};

/* The item whose size was asked for last. The first call of a question may come with a buffer that is large enough, and
   is still to be answered by the size alone. */
static const Item* announced;

__declspec(dllexport) unsigned long WINAPI GetConfigData(unsigned long reserved1, unsigned long item,
                                                         unsigned long reserved2, void* buffer, unsigned long* size)
{
    const Item* found = NULL;
    (void)reserved1;
    (void)reserved2;
    for (size_t i = 0; i < sizeof items / sizeof items[0]; ++i)
        if (items[i].item == item)
            found = &items[i];
    if (!found || !size)
        return ERROR_CONFIG_UNDEFINED_ITEM;

    unsigned long length = found->text ? (unsigned long)strlen(found->text) + 1 : (unsigned long)sizeof found->number;
    if (announced != found || !buffer || *size < length)
    {
        announced = found;
        *size = length;
        return ERROR_CONFIG_INSUFFICIENT_BUFFER_SIZE;
    }
    announced = NULL;
    memcpy(buffer, found->text ? (const void*)found->text : (const void*)&found->number, length);
    return ERROR_CONFIG_SUCCESS;
}
