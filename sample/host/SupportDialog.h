// The support page: whom to call, by country, and what the printer can print on.
#pragma once

#include "locale/OEMTeleIni.h"
#include <afxwin.h>
#include <memory>

class SupportDialog : public CDialog
{
public:
    SupportDialog(const CString& printer, CWnd* owner);

protected:
    BOOL OnInitDialog() override;
    void DoDataExchange(CDataExchange* exchange) override;
    afx_msg void OnChangeCountry();
    DECLARE_MESSAGE_MAP()

private:
    void ShowNumbers();
    void ShowPapers();

    CString m_printer;
    CComboBox m_countries;
    CListBox m_papers;
    std::unique_ptr<OEMTeleIni> m_support; // its lists are too large for the stack
};
