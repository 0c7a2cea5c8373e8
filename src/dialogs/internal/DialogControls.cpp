#include "dialogs/internal/DialogControls.h"

namespace tvk
{
void SetTextFromString(CWnd& dialog, int control, UINT string)
{
    CString text;
    if (text.LoadString(string))
        dialog.SetDlgItemText(control, text);
}

void ShowControl(CWnd& dialog, int control, bool show)
{
    if (CWnd* window = dialog.GetDlgItem(control))
        window->ShowWindow(show ? SW_SHOW : SW_HIDE);
}

void RepaintArea(CWnd& dialog, const RECT& area)
{
    dialog.RedrawWindow(&area, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN);
}

void LeaveModalLoop(CWnd& dialog)
{
    if (dialog.ContinueModal()) // else its result is known
        dialog.EndModalLoop(-1);
}

BOOL RealizePalette(CWnd& dialog, CPalette& palette)
{
    if (!palette.GetSafeHandle())
        return FALSE;
    CClientDC context(&dialog);
    CPalette* const former = context.SelectPalette(&palette, FALSE);
    const UINT changed = context.RealizePalette();
    context.SelectPalette(former, TRUE);
    if (changed == 0 || changed == GDI_ERROR)
        return FALSE;
    dialog.Invalidate();
    return TRUE;
}
} // namespace tvk
