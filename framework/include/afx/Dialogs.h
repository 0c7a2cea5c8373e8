// Dialogs, and the exchange of values between their controls and members.
#pragma once

#include "afx/Controls.h"
#include "afx/CException.h"

/// A dialog over a template that AfxFindResourceHandle finds: modal (construct, DoModal) or modeless (Create).
class FRAMEWORK_API CDialog : public CWnd
{
    DECLARE_DYNAMIC(CDialog)
public:
    CDialog();
    explicit CDialog(LPCSTR templateName, CWnd* parent = nullptr);
    explicit CDialog(UINT templateId, CWnd* parent = nullptr);
    ~CDialog() override;

    using CWnd::Create;
    BOOL Create(LPCSTR templateName, CWnd* parent = nullptr);
    BOOL Create(UINT templateId, CWnd* parent = nullptr);
    BOOL CreateIndirect(LPCDLGTEMPLATE dialogTemplate, CWnd* parent = nullptr, void* initialisation = nullptr,
                        HINSTANCE module = nullptr);

    /// Shows the dialog until EndDialog; answers its result, -1 when the dialog cannot be made.
    virtual INT_PTR DoModal();
    void EndDialog(int result);

    void MapDialogRect(LPRECT rect) const; ///< dialog units to pixels
    void GotoDlgCtrl(CWnd* control);       ///< moves the focus as Tab would

    /// The dialog is made but not shown; FALSE when the handler has set the focus itself.
    virtual BOOL OnInitDialog();

    BOOL PreTranslateMessage(MSG* message) override;

protected:
    virtual void OnOK(); ///< takes the values over and ends the dialog
    virtual void OnCancel();

    LPCSTR m_lpszTemplateName;
    CWnd* m_pParentWnd;

    DECLARE_MESSAGE_MAP()

private:
    static INT_PTR CALLBACK DialogProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
};

/// One exchange of values in one direction; DoDataExchange passes it on to the DDX_ functions.
class FRAMEWORK_API CDataExchange
{
public:
    CDataExchange(CWnd* dialog, BOOL saveAndValidate);

    BOOL m_bSaveAndValidate; ///< TRUE: from the controls to the members
    CWnd* m_pDlgWnd;

    /// The control about to be used; throws a CNotSupportedException when there is none.
    HWND PrepareCtrl(int id);
    HWND PrepareEditCtrl(int id);
    /// Ends the exchange: the focus goes to the control whose value is bad.
    [[noreturn]] void Fail();

    HWND m_hWndLastControl;
    BOOL m_bEditLastControl;
};

/// Subclasses the control at the first exchange.
FRAMEWORK_API void DDX_Control(CDataExchange* exchange, int id, CWnd& control);
FRAMEWORK_API void DDX_Text(CDataExchange* exchange, int id, CString& value);
FRAMEWORK_API void DDX_Text(CDataExchange* exchange, int id, int& value);
FRAMEWORK_API void DDX_Text(CDataExchange* exchange, int id, UINT& value);
FRAMEWORK_API void DDX_Check(CDataExchange* exchange, int id, int& value);
/// The index of the checked button in the group that begins at `id`; -1 for none.
FRAMEWORK_API void DDX_Radio(CDataExchange* exchange, int id, int& value);
FRAMEWORK_API void DDX_LBIndex(CDataExchange* exchange, int id, int& index);
FRAMEWORK_API void DDX_CBIndex(CDataExchange* exchange, int id, int& index);
FRAMEWORK_API void DDV_MaxChars(CDataExchange* exchange, const CString& value, int maximum);
