#include "locale/CSelectCountryDlg.h"
#include "locale/SelectCountryResources.h"

BEGIN_MESSAGE_MAP(CSelectCountryDlg, CDialog)
    ON_LBN_SELCHANGE(IDC_SELECT_COUNTRY_LIST, &CSelectCountryDlg::OnListSelection)
    ON_LBN_DBLCLK(IDC_SELECT_COUNTRY_LIST, &CSelectCountryDlg::OnListDoubleClick)
END_MESSAGE_MAP()

CSelectCountryDlg::CSelectCountryDlg(CWnd* parent) : CDialog(IDD_SELECT_COUNTRY, parent) {}

CSelectCountryDlg::~CSelectCountryDlg() = default;

BOOL CSelectCountryDlg::OnInitDialog()
{
    CDialog::OnInitDialog();
    const bool isMineFirst = m_Numbers.MakeList();
    for (int i = 0; i < m_Numbers.m_nCount; ++i)
        m_List.AddString(m_Numbers.m_strDisplay[i]);
    m_List.SetCurSel(isMineFirst ? 0 : -1);
    OnListSelection();
    return TRUE;
}

void CSelectCountryDlg::DoDataExchange(CDataExchange* exchange)
{
    CDialog::DoDataExchange(exchange);
    DDX_Control(exchange, IDC_SELECT_COUNTRY_LIST, m_List);
}

void CSelectCountryDlg::OnOK()
{
    const int chosen = m_List.GetCurSel();
    if (chosen < 0 || chosen >= m_Numbers.m_nCount)
        return; // Return reaches a disabled OK, too
    m_Numbers.WriteMyLocaleKey(m_Numbers.m_strLocale[chosen]);
    CDialog::OnOK();
}

void CSelectCountryDlg::OnListSelection()
{
    if (CWnd* const ok = GetDlgItem(IDOK)) // a template may lack it
        ok->EnableWindow(m_List.GetCurSel() != LB_ERR);
}

void CSelectCountryDlg::OnListDoubleClick()
{
    OnOK();
}
