#include "JobStatusWindow.h"
#include "../install/ProgramEntry.h"
#include "../product/bitmaps.h"
#include "InkReport.h"
#include "Mirrored.h"
#include "SupportDialog.h"
#include "dialogs/JSWOptionsDlg.h"
#include "dialogs/VersionDlg.h"
#include "resource.h"
#include <algorithm>

namespace
{
constexpr COLORREF Green = RGB(0, 255, 0); // the transparent colour of all pictures
constexpr COLORREF Background = RGB(243, 246, 250);
constexpr COLORREF CardBorder = RGB(208, 215, 224);
constexpr COLORREF TextColour = RGB(32, 41, 54);
constexpr COLORREF HeaderTop = RGB(31, 95, 168);
constexpr COLORREF HeaderBottom = RGB(20, 66, 122);

// Pixels in the client area, laid out from the reading side.
constexpr SIZE ClientSize = {560, 476};
constexpr RECT Header = {0, 0, 560, 64};
constexpr RECT InkCard = {16, 80, 296, 276};
constexpr RECT ReportCard = {312, 80, 544, 276};
constexpr RECT LinkCard = {16, 292, 544, 408};
constexpr int TankTop = 116;
constexpr SIZE TankSize = {48, 104};

struct Place
{
    int id;
    RECT rect;
};

constexpr Place Places[] = {
    {IDC_COLOUR, {324, 236, 532, 264}},  {IDC_SUPPLIES, {16, 420, 56, 460}}, {IDC_OPTIONS, {64, 420, 104, 460}},
    {IDC_SUPPORT, {132, 424, 264, 456}}, {IDC_ABOUT, {272, 424, 404, 456}},  {IDC_ORDER, {412, 424, 544, 456}},
};

/// The links stand in rows of five, in the order of the window's table of links.
constexpr int LinksInRow = 5;
constexpr POINT FirstLink = {28, 324};
constexpr SIZE LinkStep = {100, 24};
constexpr SIZE LinkSize = {96, 20};

/// Which of the four tank controls a window of so many tanks shows, from the reading side.
struct TankLayout
{
    int tanks;
    int control; // the first one
    int left;    // of the first tank
    int step;
};

constexpr TankLayout TankLayouts[] = {{1, 1, 132, 0}, {2, 0, 76, 112}, {4, 0, 36, 64}};

const TankLayout& LayoutOf(int tanks)
{
    const auto* found = std::find_if(std::begin(TankLayouts), std::end(TankLayouts),
                                     [tanks](const TankLayout& layout) { return layout.tanks == tanks; });
    return found != std::end(TankLayouts) ? *found : TankLayouts[1];
}

const char* NameOf(CGUIInkTank::InkColor ink)
{
    switch (ink)
    {
    case CGUIInkTank::InkBlack:
    case CGUIInkTank::InkBlackGeneric:
        return "Black";
    case CGUIInkTank::InkTriColor:
    case CGUIInkTank::InkAltTriColor:
    case CGUIInkTank::InkTriColorGeneric:
    case CGUIInkTank::InkAltTriColorGeneric:
        return "Colour";
    case CGUIInkTank::InkPhoto:
    case CGUIInkTank::InkPhotoGeneric:
        return "Photo";
    case CGUIInkTank::InkMissing:
        return "Missing";
    default:
        return "Unknown";
    }
}

CString ResourceLibraryName(TvkProduct& product)
{
    CString name;
    return product.GetSetting("IDO_JSW_RESDLL", name);
}

void MakeFont(CFont& font, CWnd& like, int height, int weight)
{
    LOGFONTA description = {};
    like.GetFont()->GetLogFont(&description);
    description.lfHeight = height;
    description.lfWeight = weight;
    font.CreateFontIndirect(&description);
}

void FillGradient(CDC& dc, const CRect& rect, COLORREF top, COLORREF bottom)
{
    const auto mix = [&](int from, int to, int row)
    { return from + (to - from) * row / std::max(1, rect.Height() - 1); };
    for (int row = 0; row < rect.Height(); ++row)
    {
        const COLORREF colour =
            RGB(mix(GetRValue(top), GetRValue(bottom), row), mix(GetGValue(top), GetGValue(bottom), row),
                mix(GetBValue(top), GetBValue(bottom), row));
        dc.FillSolidRect(rect.left, rect.top + row, rect.Width(), 1, colour);
    }
}
} // namespace

BEGIN_MESSAGE_MAP(JobStatusWindow, CDialog)
    ON_WM_DESTROY()
    ON_WM_PAINT()
    ON_WM_ERASEBKGND()
    ON_BN_CLICKED(IDC_ORDER, OnOrder)
    ON_BN_CLICKED(IDC_SUPPLIES, OnOrder)
    ON_BN_CLICKED(IDC_SUPPORT, OnSupport)
    ON_BN_CLICKED(IDC_ABOUT, OnAbout)
    ON_BN_CLICKED(IDC_OPTIONS, OnOptions)
    ON_COMMAND_RANGE(IDC_FIRST_LINK, IDC_FIRST_LINK + static_cast<int>(LinkKinds.size()) - 1, OnLink)
    ON_MESSAGE(COLOURPICKER_SELENDOK, OnColour)
END_MESSAGE_MAP()

JobStatusWindow::JobStatusWindow(const INKINFO& report, int tanks)
    : CDialog(IDD_JOB_STATUS), m_report(report), m_tankMode(tanks), m_pictures(ResourceLibraryName(m_product)),
      m_printer(PrinterName())
{
}

void JobStatusWindow::ShowReport(const INKINFO& report)
{
    m_report = report;
    MakeTanks();
    Invalidate();
}

void JobStatusWindow::DoDataExchange(CDataExchange* exchange)
{
    CDialog::DoDataExchange(exchange);
    for (int tank = 0; tank < TankCount; ++tank)
        DDX_Control(exchange, IDC_TANK_0 + tank, m_tanks[static_cast<size_t>(tank)]);
    DDX_Control(exchange, IDC_SUPPLIES, m_supplies);
    DDX_Control(exchange, IDC_OPTIONS, m_options);
    DDX_Control(exchange, IDC_SUPPORT, m_support);
    DDX_Control(exchange, IDC_ABOUT, m_about);
    DDX_Control(exchange, IDC_ORDER, m_order);
    DDX_Control(exchange, IDC_COLOUR, m_colour);
    for (size_t i = 0; i < m_links.size(); ++i)
        DDX_Control(exchange, IDC_FIRST_LINK + static_cast<int>(i), m_links[i]);
}

BOOL JobStatusWindow::OnInitDialog()
{
    CDialog::OnInitDialog();
    SetWindowText(m_printer);
    MakeFont(m_titleFont, *this, -20, FW_BOLD);
    MakeFont(m_boldFont, *this, -12, FW_BOLD);
    PlaceControls();
    MakeButtons();
    MakeTanks();
    MakeLinks();
    m_colour.SetTextColour(m_captionColour);
    m_colour.SetBkColour(HeaderTop);
    m_colour.SetSelectionMode(CColourPicker::ModeText);
    CenterWindow();
    AfxGetApp()->m_pMainWnd = this; // owner of the dialogs that are given none
    return TRUE;
}

void JobStatusWindow::OnDestroy()
{
    AfxGetApp()->m_pMainWnd = nullptr; // the program goes on, perhaps with another window
    CDialog::OnDestroy();
}

void JobStatusWindow::PlaceControls()
{
    CRect window, client;
    GetWindowRect(&window);
    GetClientRect(&client);
    SetWindowPos(nullptr, 0, 0, window.Width() - client.Width() + ClientSize.cx,
                 window.Height() - client.Height() + ClientSize.cy, SWP_NOMOVE | SWP_NOZORDER);
    for (const Place& place : Places)
        GetDlgItem(place.id)->MoveWindow(&place.rect);
    for (int i = 0; i < static_cast<int>(LinkKinds.size()); ++i)
    {
        CGUIUrlLink& link = m_links[static_cast<size_t>(i)];
        link.SetWindowText(LinkKinds[static_cast<size_t>(i)].caption);
        link.MoveWindow(FirstLink.x + i % LinksInRow * LinkStep.cx, FirstLink.y + i / LinksInRow * LinkStep.cy,
                        LinkSize.cx, LinkSize.cy);
    }
    const TankLayout& layout = LayoutOf(m_tankMode);
    for (int tank = 0; tank < TankCount; ++tank)
    {
        CGUIInkTank& control = m_tanks[static_cast<size_t>(tank)];
        const int column = tank - layout.control;
        const bool shown = column >= 0 && column < layout.tanks;
        control.MoveWindow(layout.left + column * layout.step, TankTop, TankSize.cx, TankSize.cy);
        control.ShowWindow(shown ? SW_SHOW : SW_HIDE);
    }
}

std::array<CGUIButton*, 5> JobStatusWindow::Buttons()
{
    return {&m_supplies, &m_options, &m_support, &m_about, &m_order};
}

void JobStatusWindow::MakeButtons()
{
    const ResourcesFrom pictures(m_pictures.Module());
    m_order.Initialize(IDB_ACTION_NORMAL, IDB_ACTION_HOVER, IDB_ACTION_PRESSED, Green, m_captionColour);
    m_order.SetDisabledBitmap(IDB_ACTION_DISABLED, Green);
    m_order.SetTextBold();
    for (CGUIButton* plain : {&m_support, &m_about})
    {
        plain->Initialize(IDB_PLAIN_NORMAL, IDB_PLAIN_HOVER, IDB_PLAIN_PRESSED, Green, TextColour);
        plain->SetDisabledBitmap(IDB_PLAIN_DISABLED, Green);
    }
    m_supplies.Initialize(IDB_SUPPLIES_NORMAL, IDB_SUPPLIES_HOVER, IDB_SUPPLIES_PRESSED, Green, 0);
    m_supplies.SetDisabledBitmap(IDB_SUPPLIES_DISABLED, Green);
    m_options.Initialize(IDB_OPTIONS_NORMAL, IDB_OPTIONS_HOVER, IDB_OPTIONS_PRESSED, Green, 0);
    m_options.SetDisabledBitmap(IDB_OPTIONS_DISABLED, Green);
    for (CGUIButton* button : Buttons())
        button->EnableCursorMorph(1);
}

void JobStatusWindow::MakeLinks()
{
    for (CGUIUrlLink& link : m_links)
    {
        link.SetTextStart(0, 0);
        link.Initialize(0, nullptr); // text alone
    }
}

void JobStatusWindow::MakeTanks()
{
    m_ink.SetInkInfo(&m_report, nullptr);
    m_ink.InitializeInkTanks(&m_tanks[0], &m_tanks[1], &m_tanks[2], &m_tanks[3], CGUIInkTank::BmpLongSeries, m_tankMode,
                             m_pictures.Module());
}

BOOL JobStatusWindow::OnEraseBkgnd(CDC* dc)
{
    CRect client;
    GetClientRect(&client);
    dc->FillSolidRect(client, Background);
    FillGradient(*dc, CRect(Header), HeaderTop, HeaderBottom);
    dc->SetBkMode(TRANSPARENT);
    CFont* const before = dc->SelectObject(&m_titleFont);
    dc->SetTextColor(m_captionColour);
    CRect title(16, 12, Header.right - 16, 36);
    dc->DrawText(m_printer, &title, DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX);
    dc->SelectObject(GetFont());
    CRect status(16, 36, Header.right - 16, 56);
    dc->DrawText("Ready. No documents are waiting.", &status, DT_SINGLELINE | DT_VCENTER);
    PaintCard(*dc, CRect(InkCard), "Ink levels");
    PaintCard(*dc, CRect(ReportCard), "Cartridges");
    PaintCard(*dc, CRect(LinkCard), "On the web");
    PaintTankLabels(*dc);
    PaintReport(*dc);
    dc->SelectObject(before);
    return TRUE;
}

void JobStatusWindow::OnPaint()
{
    CPaintDC dc(this);
    for (CGUIButton* button : Buttons())
        button->DrawButton(&dc);
    for (CGUIUrlLink& link : m_links)
        link.DrawButton(&dc);
}

void JobStatusWindow::PaintCard(CDC& dc, const CRect& rect, const char* title)
{
    dc.FillSolidRect(rect, CardBorder);
    CRect inside = rect;
    inside.DeflateRect(1, 1);
    dc.FillSolidRect(inside, RGB(255, 255, 255));
    CFont* const before = dc.SelectObject(&m_boldFont);
    dc.SetTextColor(TextColour);
    CRect line(rect.left + 12, rect.top + 8, rect.right - 12, rect.top + 28);
    dc.DrawText(title, &line, DT_SINGLELINE | DT_VCENTER);
    dc.SelectObject(before);
}

CString JobStatusWindow::TankLabel(int tank)
{
    static constexpr const char* FourTanks[] = {"Black", "Cyan", "Magenta", "Yellow"};
    if (m_tankMode == 4)
        return FourTanks[tank];
    // With two cartridges the print-head format says which one stands where.
    unsigned long format = 0;
    m_product.GetSetting("IDO_PRINTHEADFORMAT", format);
    const bool first = m_tankMode == 1 || (tank == 0) == (format == 2);
    return NameOf(m_ink.WhatIsIt(CGUIInkDisplay::Logical, first ? CGUIInkDisplay::First : CGUIInkDisplay::Second));
}

void JobStatusWindow::PaintTankLabels(CDC& dc)
{
    const TankLayout& layout = LayoutOf(m_tankMode);
    dc.SetTextColor(TextColour);
    for (int column = 0; column < layout.tanks; ++column)
    {
        const int centre = layout.left + column * layout.step + TankSize.cx / 2;
        CRect line(centre - 44, TankTop + TankSize.cy + 8, centre + 44, TankTop + TankSize.cy + 28);
        dc.DrawText(TankLabel(layout.control + column), &line, DT_SINGLELINE | DT_CENTER | DT_VCENTER);
    }
}

void JobStatusWindow::PaintReport(CDC& dc)
{
    struct Line
    {
        const char* title;
        CGUIInkDisplay::CartPosition position;
    };
    CRect line(ReportCard.left + 12, ReportCard.top + 36, ReportCard.right - 12, ReportCard.top + 56);
    dc.SetTextColor(TextColour);
    for (const Line& entry : {Line{"First", CGUIInkDisplay::First}, Line{"Second", CGUIInkDisplay::Second}})
    {
        const auto type = CGUIInkDisplay::Logical;
        CString text;
        text.Format("%s: %s%s", entry.title, NameOf(m_ink.WhatIsIt(type, entry.position)),
                    m_ink.IsItHighYield(type, entry.position)  ? ", high yield"
                    : m_ink.IsItLowYield(type, entry.position) ? ", low yield"
                    : m_ink.IsItValid(type, entry.position)    ? ", standard"
                                                               : "");
        dc.DrawText(text, &line, DT_SINGLELINE | DT_VCENTER);
        line.OffsetRect(0, 24);
    }
    CString pages;
    if (m_report.iEstPagesRemaining == PagesUnknown)
        pages = "Pages left: unknown";
    else
        pages.Format("About %d pages left", m_report.iEstPagesRemaining);
    dc.DrawText(pages, &line, DT_SINGLELINE | DT_VCENTER);
    CRect label(ReportCard.left + 12, 212, ReportCard.right - 12, 232);
    dc.DrawText("Colour of the captions", &label, DT_SINGLELINE | DT_VCENTER);
}

void JobStatusWindow::OnOrder()
{
    m_ink.LaunchInkOrderApp();
}

void JobStatusWindow::OnSupport()
{
    Mirrored<SupportDialog>(m_printer, this).DoModal();
}

LRESULT JobStatusWindow::OnColour(WPARAM colour, LPARAM)
{
    m_captionColour =
        static_cast<COLORREF>(colour) == COLOURPICKER_AUTOMATIC ? RGB(255, 255, 255) : static_cast<COLORREF>(colour);
    MakeButtons();
    Invalidate();
    return 0;
}

void JobStatusWindow::OnAbout()
{
    // The version dialog's texts lie in a library of their own.
    const ResourceLibrary resources(TvkProduct::GetProductPrefix() + "vres.dll");
    const ResourcesFrom current(resources.Module());
    Mirrored<VersionDlg>(this).DoModal();
}

void JobStatusWindow::OnOptions()
{
    const ResourcesFrom current(m_pictures.Module());
    char system[MAX_PATH] = "";
    GetSystemDirectoryA(system, MAX_PATH);
    CString path;
    Mirrored<JSWOptionsDlg> dialog;
    dialog.Init(static_cast<LPCSTR>(m_printer));
    // The suite's own skins lie where its programs do: which folder that is depends on the Windows version.
    dialog.InitModal(m_printer, CString(system) + "\\" + m_product.GetSetting("IDO_RZB_EXECUTABLENAME_PATH", path));
    dialog.DoModal();
}

void JobStatusWindow::OnLink(UINT id)
{
    const size_t index = id - IDC_FIRST_LINK;
    CString subUrl;
    m_product.GetSetting(LinkKinds[index].subUrlKey, subUrl);
    m_links[index].FollowLink(subUrl, &m_report, m_printer, 1);
}
