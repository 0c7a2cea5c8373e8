// The job status window of the demo: ink tanks, bitmap buttons and a colour picker on the sample product.
#pragma once

#include "controls/CColourPicker.h"
#include "controls/CGUIButton.h"
#include "diag/StatusStructures.h"
#include "Links.h"
#include "ink/CGUIInkDisplay.h"
#include "ink/CGUIInkTank.h"
#include "links/CGUIUrlLink.h"
#include "settings/TvkProduct.h"
#include "ResourceLibrary.h"
#include <afxwin.h>
#include <array>

class JobStatusWindow : public CDialog
{
public:
    /// @param report  what the tanks show; copied
    /// @param tanks   1, 2 or 4 tanks
    JobStatusWindow(const INKINFO& report, int tanks);

    /// Shows another report.
    void ShowReport(const INKINFO& report);

protected:
    BOOL OnInitDialog() override;
    void DoDataExchange(CDataExchange* exchange) override;
    afx_msg void OnDestroy();
    afx_msg void OnPaint();
    afx_msg BOOL OnEraseBkgnd(CDC* dc);
    afx_msg void OnOrder();
    afx_msg void OnSupport();
    afx_msg void OnAbout();
    afx_msg void OnOptions();
    afx_msg void OnLink(UINT id);
    afx_msg LRESULT OnColour(WPARAM colour, LPARAM control);
    DECLARE_MESSAGE_MAP()

private:
    void PlaceControls();
    std::array<CGUIButton*, 5> Buttons();
    void MakeButtons();
    void MakeTanks();
    void MakeLinks();
    void PaintCard(CDC& dc, const CRect& rect, const char* title);
    void PaintTankLabels(CDC& dc);
    void PaintReport(CDC& dc);
    CString TankLabel(int tank);

    static constexpr int TankCount = 4;
    INKINFO m_report;
    const int m_tankMode;
    TvkProduct m_product;
    ResourceLibrary m_pictures; // the product's bitmaps
    CString m_printer;
    CFont m_titleFont;
    CFont m_boldFont;
    COLORREF m_captionColour = RGB(255, 255, 255);
    CGUIInkDisplay m_ink;
    std::array<CGUIInkTank, TankCount> m_tanks;
    CGUIButton m_supplies;
    CGUIButton m_options;
    CGUIButton m_support;
    CGUIButton m_about;
    CGUIButton m_order;
    CColourPicker m_colour;
    std::array<CGUIUrlLink, LinkKinds.size()> m_links;
};
