#include "SupportDialog.h"
#include "Papers.h"
#include "resource.h"

namespace
{
/// The start of an extended dialog template.
struct TemplateStart
{
    WORD version;
    WORD signature;
    DWORD helpId;
    DWORD exStyle;
};

/// The host's dialog template, mirrored when `parent` is: a window does not inherit its owner's layout.
std::vector<BYTE> TemplateLaidOutLike(UINT id, const CWnd* parent)
{
    HMODULE const module = AfxGetInstanceHandle();
    HRSRC const resource = FindResourceA(module, MAKEINTRESOURCEA(id), MAKEINTRESOURCEA(5)); // RT_DIALOG
    const auto* const bytes = static_cast<const BYTE*>(LockResource(LoadResource(module, resource)));
    std::vector<BYTE> result(bytes, bytes + SizeofResource(module, resource));
    if (parent && (parent->GetExStyle() & WS_EX_LAYOUTRTL))
        reinterpret_cast<TemplateStart*>(result.data())->exStyle |= WS_EX_LAYOUTRTL;
    return result;
}
} // namespace

BEGIN_MESSAGE_MAP(SupportDialog, CDialog)
    ON_BN_CLICKED(IDC_CHANGE_COUNTRY, OnChangeCountry)
END_MESSAGE_MAP()

SupportDialog::SupportDialog(const CString& printer, CWnd* parent)
    : m_template(TemplateLaidOutLike(IDD_SUPPORT, parent)), m_printer(printer),
      m_support(std::make_unique<OEMTeleIni>())
{
    InitModalIndirect(reinterpret_cast<LPCDLGTEMPLATE>(m_template.data()), parent);
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
