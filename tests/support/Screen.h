// What a user's screen and queue are to a test.
#pragma once

#include <windows.h>

/// Handles the messages that are there, and those that come within the time: real input does not come at once.
/// @param dialog  its keyboard interface (Tab, Return, mnemonics) is at work
inline void PumpMessages(DWORD milliseconds = 0, HWND dialog = nullptr)
{
    const DWORD end = GetTickCount() + milliseconds;
    do
    {
        // A window that never validates itself has messages without end.
        for (MSG message; (!milliseconds || GetTickCount() < end) && PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE);)
            if (!dialog || !IsDialogMessageA(dialog, &message))
            {
                TranslateMessage(&message);
                DispatchMessageA(&message);
            }
        Sleep(milliseconds ? 5 : 0);
    } while (GetTickCount() < end);
}

/// Handles messages until the condition holds; false after ten seconds. Input and screen are not immediate.
template <class F>
bool Until(F condition, HWND dialog = nullptr)
{
    const DWORD end = GetTickCount() + 10000;
    while (PumpMessages(0, dialog), !condition())
    {
        if (GetTickCount() >= end)
            return false;
        Sleep(10);
    }
    return true;
}

/// A pixel of a window's client area as it has been drawn; of the screen, without a window.
inline COLORREF ShownPixel(HWND window, POINT point)
{
    const HDC context = GetDC(window);
    const COLORREF pixel = GetPixel(context, point.x, point.y);
    ReleaseDC(window, context);
    return pixel;
}
