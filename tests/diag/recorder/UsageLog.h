/* What the tests' portal and recorder libraries share: a readable log of what they were asked, and faults on demand.
   Both are plain C: they are loaded and freed for every record. */
#pragma once

#include <windows.h>

/* Slot of an object's table: functions of any type, in the order of the interface. */
typedef void (*Slot)(void);

typedef struct Object
{
    const Slot* table;
} Object;

/* Appends a line to the file that the environment variable USAGE_LOG names, then gives the step's result: what
   USAGE_FAULT ("<step>=<result>") says when it names this step, else 0. */
HRESULT Log(const char* step, const char* format, ...);

/* Whether USAGE_FAULT is exactly this. */
BOOL IsFault(const char* fault);
