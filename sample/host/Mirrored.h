// A dialog laid out from the right when the main window is.
#pragma once

#include <afxwin.h>

/// Windows hand their layout on to their child windows, but not to those that they own. A product sold in a language
/// that is read from the right has mirrored templates; the demo shows both layouts on the same ones.
template <class Dialog>
class Mirrored : public Dialog
{
public:
    using Dialog::Dialog;

protected:
    /// The first message sets the layout: the controls, which take it over, are not made yet.
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override
    {
        if (message == WM_NCCREATE)
        {
            const DWORD layout = AfxGetMainWnd()->GetExStyle() & WS_EX_LAYOUTRTL;
            ::SetWindowLongPtrA(this->m_hWnd, GWL_EXSTYLE, static_cast<LONG_PTR>(this->GetExStyle() | layout));
        }
        return Dialog::WindowProc(message, wParam, lParam);
    }
};
