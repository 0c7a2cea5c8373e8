// Text for the debugger, and ASSERT.
#include "afx/Platform.h"
#include <cstdio>
#include <cstdlib>

void AfxTrace(LPCSTR format, ...)
{
    char text[1024];
    va_list arguments;
    va_start(arguments, format);
    std::vsnprintf(text, sizeof text, format, arguments);
    va_end(arguments);
    OutputDebugStringA(text);
}

void AfxAssertFailed(LPCSTR condition, LPCSTR file, int line)
{
    AfxTrace("%s(%d): assertion failed: %s\n", file, line, condition);
    std::fprintf(stderr, "%s(%d): assertion failed: %s\n", file, line, condition);
    AfxAbort();
}

void AfxAbort()
{
    std::fflush(stderr);
    std::abort();
}
