/* The interface between this suite and a product's configuration library, for both sides; plain C.

   A configuration library is a module that answers numbered configuration items through one exported function,
   `GetConfigData`. Every question takes two calls. The first is to return ERROR_CONFIG_INSUFFICIENT_BUFFER_SIZE and to
   write the size that the answer needs into the size word; the second is to fill the buffer and to return
   ERROR_CONFIG_SUCCESS. Success on the first call counts as a failure. A text is asked for with the same buffer of 256
   bytes in both calls, and is ANSI with its NUL; a number with no buffer in the first call and one of 40 bytes in the
   second, of which the first 32 bits are the answer. */
#pragma once

#include <windows.h>

enum ConfigDataResult
{
    ERROR_CONFIG_SUCCESS = 0,
    ERROR_CONFIG_UNDEFINED_ITEM = 1,
    ERROR_CONFIG_OUT_OF_RANGE = 2,
    ERROR_CONFIG_INSUFFICIENT_BUFFER_SIZE = 3
};

/* GetConfigData(reserved, 0; item number; reserved, 0; answer buffer or null; size word): a ConfigDataResult. */
typedef unsigned long(WINAPI* GetConfigDataFunction)(unsigned long, unsigned long, unsigned long, void*,
                                                     unsigned long*);
