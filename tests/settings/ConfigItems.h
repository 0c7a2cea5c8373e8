/* The items of the tests' configuration library (testconf.c): each a way of answering, good or bad. */
#pragma once

enum ConfigItem
{
    ItemText = 1,     /* "Larkmoor 5" */
    ItemNumber,       /* 77 */
    ItemTokens,       /* a text with both tokens, one of them twice */
    ItemModel,        /* "X100" */
    ItemMaker,        /* "Torvane" */
    ItemEager,        /* success on the first call */
    ItemUndefined,    /* undefined on the first call */
    ItemLate,         /* asks for room, then out of range */
    ItemStrange,      /* a result that no one knows, on the first call */
    ItemInsatiable,   /* asks for room twice */
    ItemUnterminated, /* fills 256 bytes without a NUL and claims 100000 */
    ItemFailureText,  /* the text that callers take for a failure */
    ItemAllOnes       /* 0xFFFFFFFF */
};
