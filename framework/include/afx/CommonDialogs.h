// The system's own dialogs.
#pragma once

#include "afx/Dialogs.h"

/// The base of the system's dialogs.
class FRAMEWORK_API CCommonDialog : public CDialog
{
    DECLARE_DYNAMIC(CCommonDialog)
public:
    explicit CCommonDialog(CWnd* parent);
    ~CCommonDialog() override;

protected:
    void OnOK() override; ///< the system's dialog ends itself
    void OnCancel() override;
};

/// The choice of a colour. The 16 colours that the user mixes last as long as the program.
class FRAMEWORK_API CColorDialog : public CCommonDialog
{
    DECLARE_DYNAMIC(CColorDialog)
public:
    explicit CColorDialog(COLORREF initial = 0, DWORD flags = 0, CWnd* parent = nullptr);
    ~CColorDialog() override;

    CHOOSECOLORA m_cc; ///< may be changed before DoModal

    INT_PTR DoModal() override; ///< IDOK or IDCANCEL
    COLORREF GetColor() const;  ///< the colour chosen
    static COLORREF* GetSavedCustomColors();
};
