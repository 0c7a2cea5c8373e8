#include "SupportDialog.h"
#include "Papers.h"
#include "resource.h"
#include <iterator>

namespace
{
// Columns of the list of papers, in dialog units from its edge; the headings stand above them (demohost.rc).
constexpr int PaperAreaColumn = 98;
constexpr int PaperTwinColumn = 186;
} // namespace

BEGIN_MESSAGE_MAP(SupportDialog, CDialog)
    ON_BN_CLICKED(IDC_CHANGE_COUNTRY, &SupportDialog::OnChangeCountry)
END_MESSAGE_MAP()

SupportDialog::SupportDialog(const CString& printer, CWnd* owner)
    : CDialog(IDD_SUPPORT, owner), m_printer(printer), m_support(std::make_unique<OEMTeleIni>())
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
    m_support->ExpandCombobox(&m_countries); // once: each call widens by half of what is missing then
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
}

void SupportDialog::ShowPapers()
{
    int columns[] = {PaperAreaColumn, PaperTwinColumn};
    m_papers.SendMessage(LB_SETTABSTOPS, std::size(columns), reinterpret_cast<LPARAM>(columns));
    const std::vector<Paper> papers = PapersOf(m_printer);
    for (const Paper& paper : papers)
        m_papers.AddString((paper.name + "\t" + paper.area + "\t" + paper.twin).c_str());
    if (!papers.empty()) // all of one resolution
        SetDlgItemText(IDC_PAPER_AREA, ("Pixels at " + papers.front().resolution).c_str());
}

void SupportDialog::OnChangeCountry()
{
    m_support->OnSelectCountryLink();
    ShowNumbers();
}
