// What the library's dialogs do with their controls and their palette.
#pragma once

#include <afxwin.h>

namespace tvk
{
/// Gives a control the text of a string resource; without the string the template's text stays.
void SetTextFromString(CWnd& dialog, int control, UINT string);

/// Shows or hides a control; one that the template does not have is left out.
void ShowControl(CWnd& dialog, int control, bool show);

/// Has a rectangle of the dialog painted anew, the controls in it included: the dialog erases below them.
void RepaintArea(CWnd& dialog, const RECT& area);

/// For a dialog whose window has gone: ends its modal loop, which nobody has ended when the window went with its owner.
/// DoModal answers -1 then.
void LeaveModalLoop(CWnd& dialog);

/// Answers that the dialog may use the palette (WM_QUERYNEWPALETTE), or that another window has changed the colours
/// (WM_PALETTECHANGED): realizes the palette and repaints when that moved colours. Returns whether it did.
BOOL RealizePalette(CWnd& dialog, CPalette& palette);
} // namespace tvk
