#include "SupportDialog.h"
#include "Papers.h"
#include "resource.h"

BEGIN_MESSAGE_MAP(SupportDialog, CDialog)
    ON_BN_CLICKED(IDC_CHANGE_COUNTRY, OnChangeCountry)
END_MESSAGE_MAP()

SupportDialog::SupportDialog(const CString& printer)
    : CDialog(IDD_SUPPORT), m_printer(printer), m_support(std::make_unique<OEMTeleIni>())
{
}

void SupportDialog::DoDataExchange(CDataExchange* exchange)
{
    CDialog::DoDataExchange(exchange);
    DDX_Control(exchange, IDC_COUNTRIES, m_countries);
    DDX_Control(exchange, IDC_PAPERS, m_papers);
}

BOOL SupportDialog::OnInitDialog()
{
    CDialog::OnInitDialog();
    CenterWindow();
    ShowNumbers();
    ShowPapers();
    return TRUE;
}

void SupportDialog::ShowNumbers()
{
    CString country;
    const CString number = m_support->GetDefaultPhoneNumber(country);
    SetDlgItemText(IDC_NUMBER, country + ": " + number);
    m_support->GetPhoneNumberList();
    m_countries.ResetContent();
    for (int i = 0; i < m_support->m_nCount; ++i)
        m_countries.AddString(m_support->m_strDisplay[i]);
    m_countries.SetCurSel(0);
    m_support->ExpandCombobox(&m_countries);
}

void SupportDialog::ShowPapers()
{
    for (const Paper& paper : PapersOf(m_printer))
    {
        m_papers.AddString((paper.name + ":  " + paper.area).c_str());
    }
}

void SupportDialog::OnChangeCountry()
{
    m_support->OnSelectCountryLink();
    ShowNumbers();
}
