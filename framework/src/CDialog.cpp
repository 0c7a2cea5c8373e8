// Dialogs. A modal dialog is a modeless one with a message loop of the framework's, so that PreTranslateMessage sees
// its messages.
#include "afx/Dialogs.h"
#include "afx/CWinApp.h"
#include "afx/Resources.h"
#include "ThreadState.h"

IMPLEMENT_DYNAMIC(CDialog, CWnd)

BEGIN_MESSAGE_MAP(CDialog, CWnd)
    ON_COMMAND(IDOK, &CDialog::OnOK)
    ON_COMMAND(IDCANCEL, &CDialog::OnCancel)
END_MESSAGE_MAP()

namespace
{
// The top-level window that owns what `parent` (the application's window by default) opens.
HWND OwnerOf(const CWnd* parent)
{
    HWND owner = parent ? parent->m_hWnd : framework::DefaultOwner();
    while (owner && (::GetWindowLongPtrA(owner, GWL_STYLE) & WS_CHILD))
        owner = ::GetParent(owner);
    return owner;
}

LPCDLGTEMPLATE LoadTemplate(LPCSTR name, HINSTANCE& module)
{
    module = AfxFindResourceHandle(name, RT_DIALOG);
    const HRSRC resource = FindResourceA(module, name, RT_DIALOG);
    const HGLOBAL loaded = resource ? LoadResource(module, resource) : nullptr;
    return static_cast<LPCDLGTEMPLATE>(loaded ? LockResource(loaded) : nullptr);
}
// A template of either form: the extended one has a version and a signature before its style.
DWORD StyleOf(LPCDLGTEMPLATE dialogTemplate)
{
    struct Extended
    {
        WORD version;
        WORD signature;
        DWORD helpId;
        DWORD exStyle;
        DWORD style;
    };
    const auto* extended = reinterpret_cast<const Extended*>(dialogTemplate);
    return extended->version == 1 && extended->signature == 0xFFFF ? extended->style : dialogTemplate->style;
}
} // namespace

CDialog::CDialog() : CDialog(static_cast<LPCSTR>(nullptr)) {}

CDialog::CDialog(LPCSTR templateName, CWnd* parent) : m_lpszTemplateName(templateName), m_pParentWnd(parent) {}

CDialog::CDialog(UINT templateId, CWnd* parent) : CDialog(MAKEINTRESOURCEA(templateId), parent) {}

CDialog::~CDialog() = default;

BOOL CDialog::Create(UINT templateId, CWnd* parent)
{
    return Create(MAKEINTRESOURCEA(templateId), parent);
}

BOOL CDialog::Create(LPCSTR templateName, CWnd* parent)
{
    m_lpszTemplateName = templateName;
    HINSTANCE module = nullptr;
    const LPCDLGTEMPLATE dialogTemplate = LoadTemplate(templateName, module);
    return CreateIndirect(dialogTemplate, parent, nullptr, module);
}

BOOL CDialog::CreateIndirect(LPCDLGTEMPLATE dialogTemplate, CWnd* parent, void*, HINSTANCE module)
{
    if (!dialogTemplate)
        return FALSE;
    m_pParentWnd = parent;
    HWND owner = parent ? parent->m_hWnd : framework::DefaultOwner();
    HookCreation();
    const HWND window = ::CreateDialogIndirectParamA(module ? module : AfxGetResourceHandle(), dialogTemplate, owner,
                                                     &CDialog::DialogProcedure, 0);
    if (!UnhookCreation() && !window)
        PostNcDestroy();
    return window != nullptr;
}

INT_PTR CDialog::DoModal()
{
    HINSTANCE module = nullptr;
    const LPCDLGTEMPLATE dialogTemplate = m_lpszTemplateName ? LoadTemplate(m_lpszTemplateName, module) : nullptr;
    if (!dialogTemplate)
        return -1;

    const HWND owner = OwnerOf(m_pParentWnd);
    const bool disable = owner && owner != ::GetDesktopWindow() && ::IsWindowEnabled(owner);
    if (disable)
        ::EnableWindow(owner, FALSE);
    // OnInitDialog may end the dialog already: the loop is declared running before it.
    m_modal = true;
    m_modalResult = -1;
    HookCreation();
    const HWND window = ::CreateDialogIndirectParamA(module, dialogTemplate, owner, &CDialog::DialogProcedure, 0);
    UnhookCreation();
    int result = m_modalResult;
    if (window)
    {
        if (m_modal)
        {
            const bool quiet = (StyleOf(dialogTemplate) & DS_NOIDLEMSG) != 0;
            result = RunModalLoop(MLF_SHOWONIDLE | (quiet ? MLF_NOIDLEMSG : 0));
        }
        if (m_hWnd)
            SetWindowPos(nullptr, 0, 0, 0, 0, SWP_HIDEWINDOW | SWP_NOSIZE | SWP_NOMOVE | SWP_NOACTIVATE | SWP_NOZORDER);
    }
    m_modal = false;
    // Before the dialog goes, so that the system does not activate some other program's window.
    if (disable)
        ::EnableWindow(owner, TRUE);
    if (owner && m_hWnd && ::GetActiveWindow() == m_hWnd)
        ::SetActiveWindow(owner);
    DestroyWindow();
    return result;
}

void CDialog::EndDialog(int result)
{
    const bool modal = m_modal;
    EndModalLoop(result);
    if (!modal && m_hWnd)
        ::EndDialog(m_hWnd, result); // hides it
}

INT_PTR CALLBACK CDialog::DialogProcedure(HWND window, UINT message, WPARAM, LPARAM)
{
    if (message != WM_INITDIALOG)
        return FALSE;
    auto* dialog = dynamic_cast<CDialog*>(FromHandlePermanent(window));
    if (!dialog)
        return TRUE;
    try
    {
        return dialog->OnInitDialog();
    }
    catch (CException* exception)
    {
        framework::EndedByException(exception, dialog->m_hWnd ? *GetCurrentMessage() : MSG{});
    }
    catch (...)
    {
        framework::EndedByException(nullptr, MSG{});
    }
    dialog->EndDialog(-1);
    return FALSE;
}

void CDialog::MapDialogRect(LPRECT rect) const
{
    ::MapDialogRect(m_hWnd, rect);
}

void CDialog::GotoDlgCtrl(CWnd* control)
{
    ::SendMessageA(m_hWnd, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(control->m_hWnd), TRUE);
}

BOOL CDialog::OnInitDialog()
{
    if (!UpdateData(FALSE))
    {
        EndDialog(-1);
        return FALSE;
    }
    return TRUE;
}

BOOL CDialog::PreTranslateMessage(MSG* message)
{
    return CWnd::PreTranslateMessage(message) || PreTranslateInput(message);
}

void CDialog::OnOK()
{
    if (UpdateData(TRUE))
        EndDialog(IDOK);
}

void CDialog::OnCancel()
{
    EndDialog(IDCANCEL);
}
