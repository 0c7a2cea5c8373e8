// Small questions that the suite's programs ask the system: is another program's dialog open, is a device being
// installed? Plain functions with C linkage, for hosts in any language.
#pragma once

#include <windows.h>

#ifdef __cplusplus
extern "C"
{
#endif

    /// Marks a window with a number by which its owner's programs tell it from others of the same title; a window that
    /// was never marked has 0. The mark goes with the window.
    /// @return 1, or 0 when there is no such window or it belongs to somebody else
    int SetUserDefinedData(HWND window, unsigned long data);

    /// Finds a dialog on the desktop, of whichever program, by its title (upper and lower case alike; null: any title)
    /// and its mark.
    /// @return the dialog, null when there is none
    HWND FindDlgWindow(const char* title, unsigned long data);

    /// @return 1 while the system is installing a device, 0 when it is not or cannot tell
    int IsDeviceInstallInProgress(void);

#ifdef __cplusplus
}
#endif
