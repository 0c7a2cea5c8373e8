#include "system/WindowLookup.h"
#include "system/internal/Handle.h"

namespace
{
constexpr char Property[] = "TvkUserDefinedData";
constexpr char DialogClass[] = "#32770";
} // namespace

extern "C" int SetUserDefinedData(HWND window, unsigned long data)
{
    return ::SetPropA(window, Property, reinterpret_cast<HANDLE>(static_cast<ULONG_PTR>(data))) != 0;
}

extern "C" HWND FindDlgWindow(const char* title, unsigned long data)
{
    HWND dialog = nullptr;
    // The system goes on behind a window that may be gone by then; that ends the search, which is no worse than a
    // dialog that closes right after it was found.
    while ((dialog = ::FindWindowExA(nullptr, dialog, DialogClass, title)) != nullptr)
        if (reinterpret_cast<ULONG_PTR>(::GetPropA(dialog, Property)) == data)
            return dialog;
    return nullptr;
}

extern "C" int IsDeviceInstallInProgress(void)
{
    using WaitNoPendingInstallEvents = DWORD(WINAPI*)(DWORD);
    // Looked up at run time: systems before XP go without it.
    const tvk::Module library(::LoadLibraryA("setupapi.dll"));
    const auto wait = tvk::FindEntry<WaitNoPendingInstallEvents>(library.Get(), "CMP_WaitNoPendingInstallEvents");
    return wait && wait(0) == WAIT_TIMEOUT;
}
