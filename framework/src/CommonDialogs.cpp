// The system's own dialogs: the object is attached to the system's window while it is open.
#include "afx/CommonDialogs.h"
#include "ThreadState.h"

IMPLEMENT_DYNAMIC(CCommonDialog, CDialog)
IMPLEMENT_DYNAMIC(CColorDialog, CCommonDialog)

CCommonDialog::CCommonDialog(CWnd* parent) : CDialog(static_cast<LPCSTR>(nullptr), parent) {}

CCommonDialog::~CCommonDialog() = default;

void CCommonDialog::OnOK()
{
    Default();
}

void CCommonDialog::OnCancel()
{
    Default();
}

CColorDialog::CColorDialog(COLORREF initial, DWORD flags, CWnd* parent) : CCommonDialog(parent), m_cc{}
{
    m_cc.lStructSize = sizeof m_cc;
    m_cc.lpCustColors = GetSavedCustomColors();
    m_cc.rgbResult = initial;
    m_cc.Flags = flags;
    if (initial)
        m_cc.Flags |= CC_RGBINIT;
}

CColorDialog::~CColorDialog() = default;

INT_PTR CColorDialog::DoModal()
{
    m_cc.hwndOwner = m_pParentWnd ? m_pParentWnd->m_hWnd : framework::DefaultOwner();
    HookCreation();
    const BOOL chosen = ::ChooseColorA(&m_cc);
    UnhookCreation();
    return chosen ? IDOK : IDCANCEL;
}

COLORREF CColorDialog::GetColor() const
{
    return m_cc.rgbResult;
}

COLORREF* CColorDialog::GetSavedCustomColors()
{
    static COLORREF colours[16] = {
        0xFFFFFF, 0xFFFFFF, 0xFFFFFF, 0xFFFFFF, 0xFFFFFF, 0xFFFFFF, 0xFFFFFF, 0xFFFFFF,
        0xFFFFFF, 0xFFFFFF, 0xFFFFFF, 0xFFFFFF, 0xFFFFFF, 0xFFFFFF, 0xFFFFFF, 0xFFFFFF,
    };
    return colours;
}
