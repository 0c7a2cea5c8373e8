/* The tests' configuration library. Plain C: it is loaded and freed for every question. Each call is written down,
   arguments and result, in the file that the environment variable CONFIGURATION_LOG names. */
#include <stdio.h>
#include <string.h>
#include "settings/ConfigurationLibrary.h"
#include "ConfigItems.h"

#define MORE ERROR_CONFIG_INSUFFICIENT_BUFFER_SIZE
#define SIXTEEN "xxxxxxxxxxxxxxxx"
#define LONGEST SIXTEEN SIXTEEN SIXTEEN SIXTEEN SIXTEEN SIXTEEN SIXTEEN SIXTEEN
#define TEXT_ANSWER(text) .first = MORE, .bytes = text, .size = sizeof text /* and success, 0 */

/* What both calls are answered, and the answer with the size that is told of it. */
static const struct
{
    unsigned long first, second;
    const char* bytes;
    unsigned long size;
} Answers[] = {
    [ItemText] = {TEXT_ANSWER("Larkmoor 5")},
    [ItemNumber] = {MORE, ERROR_CONFIG_SUCCESS, "M\0\0", 4},
    [ItemTokens] = {TEXT_ANSWER("~MODEL~, not ~MODEL~, by ~MFG~")},
    [ItemModel] = {TEXT_ANSWER("X100")},
    [ItemMaker] = {TEXT_ANSWER("Torvane")},
    [ItemEager] = {.first = ERROR_CONFIG_SUCCESS},
    [ItemUndefined] = {.first = ERROR_CONFIG_UNDEFINED_ITEM},
    [ItemLate] = {.first = MORE, .second = ERROR_CONFIG_OUT_OF_RANGE},
    [ItemStrange] = {.first = 99},
    [ItemInsatiable] = {.first = MORE, .second = MORE},
    [ItemUnterminated] = {MORE, ERROR_CONFIG_SUCCESS, LONGEST LONGEST, 100000},
    [ItemFailureText] = {TEXT_ANSWER("ERROR_SYSCONFIGDLL_FAILURE")},
    [ItemAllOnes] = {MORE, ERROR_CONFIG_SUCCESS, "\xFF\xFF\xFF\xFF", 4},
};

static unsigned long Answer(unsigned long item, void* buffer, unsigned long* size, int second)
{
    if (item == 0 || item > ItemAllOnes)
        return ERROR_CONFIG_UNDEFINED_ITEM;
    if (Answers[item].bytes)
    {
        *size = Answers[item].size;
        if (second)
            memcpy(buffer, Answers[item].bytes, *size < 256 ? *size : 256);
    }
    return second ? Answers[item].second : Answers[item].first;
}

__declspec(dllexport) unsigned long WINAPI GetConfigData(unsigned long reserved1, unsigned long item,
                                                         unsigned long reserved2, void* buffer, unsigned long* size)
{
    static unsigned long asked; /* the item that was told its size: this is its second call */
    const int second = asked == item;
    const unsigned long sizeBefore = *size;
    const unsigned long result = Answer(item, buffer, size, second);
    char path[MAX_PATH];
    asked = !second && result == ERROR_CONFIG_INSUFFICIENT_BUFFER_SIZE ? item : 0;
    if (GetEnvironmentVariableA("CONFIGURATION_LOG", path, sizeof path))
    {
        FILE* log = fopen(path, "ab");
        fprintf(log, "%lu %lu %lu %s %lu: %lu %lu\n", reserved1, item, reserved2, buffer ? "buffer" : "null",
                sizeBefore, result, *size);
        fclose(log);
    }
    return result;
}
