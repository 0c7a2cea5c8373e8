// CSelectCountryDlg: which country's support number does the user want?
#pragma once

#include <afxwin.h>
#include "locale/OEMTeleIni.h"

/// Shows the countries that have a support number, with the user's own one chosen, and remembers the choice when the
/// dialog is left with OK or a double click. A country that is not in the list leaves nothing chosen and OK disabled.
///
/// Modal. The template (locale/SelectCountryResources.h) comes from the framework's current resource handle or the
/// modules behind it; OEMTeleIni::OnSelectCountryLink sees to that.
class AFX_EXT_CLASS CSelectCountryDlg : public CDialog
{
public:
    explicit CSelectCountryDlg(CWnd* parent = nullptr);
    ~CSelectCountryDlg() override;

    BOOL OnInitDialog() override;

protected:
    void DoDataExchange(CDataExchange* exchange) override;
    void OnOK() override;
    afx_msg void OnListSelection();
    afx_msg void OnListDoubleClick();
    DECLARE_MESSAGE_MAP()

private:
    CListBox m_List;
    OEMTeleIni m_Numbers;
};
