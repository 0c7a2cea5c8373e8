#include "ink/CGUIInkTank.h"
#include "controls/internal/Colours.h"
#include "ink/internal/ColorTable.h"
#include "system/internal/ParentRect.h"
#include <array>

namespace
{
constexpr int OutOfRangeBmpID = 190;
constexpr int FullTankDrops = 800;

/// First and last bitmap of the empty to the full tank.
struct Series
{
    int first;
    int last;
};

/// The series of one ink in the short and in the long set.
struct InkSeries
{
    CGUIInkTank::InkColor color;
    std::array<Series, 2> ofType;
};
constexpr std::array InkSeriesTable{
    InkSeries{CGUIInkTank::InkBlack, {{{381, 389}, {191, 203}}}},
    InkSeries{CGUIInkTank::InkColor1, {{{334, 342}, {134, 142}}}},
    InkSeries{CGUIInkTank::InkColor2, {{{351, 359}, {151, 159}}}},
    InkSeries{CGUIInkTank::InkColor3, {{{366, 374}, {166, 174}}}},
    InkSeries{CGUIInkTank::InkTriColor, {{{366, 374}, {221, 233}}}},
    InkSeries{CGUIInkTank::InkPhoto, {{{366, 374}, {271, 283}}}},
    InkSeries{CGUIInkTank::InkMissing, {{{381, 389}, {191, 203}}}},
    InkSeries{CGUIInkTank::InkInvalid, {{{381, 389}, {191, 203}}}},
    InkSeries{CGUIInkTank::InkAltTriColor, {{{366, 374}, {221, 233}}}},
    InkSeries{CGUIInkTank::InkBlackGeneric, {{{381, 389}, {191, 203}}}},
    InkSeries{CGUIInkTank::InkTriColorGeneric, {{{366, 374}, {221, 233}}}},
    InkSeries{CGUIInkTank::InkPhotoGeneric, {{{366, 374}, {271, 283}}}},
    InkSeries{CGUIInkTank::InkAltTriColorGeneric, {{{366, 374}, {221, 233}}}},
    InkSeries{CGUIInkTank::InkTriColorStatus, {{{366, 374}, {221, 233}}}},
    InkSeries{CGUIInkTank::InkPhotoStatus, {{{366, 374}, {271, 283}}}},
    InkSeries{CGUIInkTank::InkBlackStatus, {{{381, 389}, {191, 203}}}},
};
static_assert(tvk::IsIndexedByColor(InkSeriesTable));
} // namespace

CGUIInkTank::CGUIInkTank() : CGUIInkTank(BmpLongSeries) {}

CGUIInkTank::CGUIInkTank(int type)
    : m_nPercent(0), m_nInkLevel(0), m_nBmpType(static_cast<BmpType>(type)), m_nFirstBmpID(0), m_nLastBmpID(0),
      m_nMaxDropCount(0), m_iCurrentBmpID(0), m_crTransparent(tvk::TransparentGreen)
{
}

CGUIInkTank::~CGUIInkTank() = default;

void CGUIInkTank::SetColor(InkColor color)
{
    const auto index = static_cast<size_t>(color);
    if (index >= InkSeriesTable.size())
        return;
    m_nMaxDropCount = FullTankDrops;
    const auto& ofType = InkSeriesTable[index].ofType;
    const auto type = static_cast<size_t>(m_nBmpType);
    if (type >= ofType.size())
        return;
    m_nFirstBmpID = ofType[type].first;
    m_nLastBmpID = ofType[type].last;
}

void CGUIInkTank::SetInkPercent(int percent, HINSTANCE module)
{
    m_nPercent = percent;
    DrawInkLevel(module);
}

int CGUIInkTank::SetInkLevel(int drops)
{
    m_nInkLevel = drops;
    return DrawInkLevel(nullptr);
}

int CGUIInkTank::SetDropCount(int usedDrops)
{
    return SetInkLevel(FullTankDrops - usedDrops);
}

int CGUIInkTank::DrawInkLevel(HINSTANCE module)
{
    SetBmpForInkLevel();
    if (m_hWnd) // a null window would invalidate every window of the screen
        InvalidateRect(nullptr, TRUE);
    return Initialize(static_cast<UINT>(m_iCurrentBmpID), m_crTransparent, Keep, module);
}

void CGUIInkTank::SetBmpForInkLevel()
{
    const int lastStep = m_nLastBmpID - m_nFirstBmpID;
    int step = -1;
    if (m_nPercent == 0)
        step = 0;
    else if (m_nPercent == 100)
        step = lastStep;
    // A step is a twelfth of the tank, also in the series of eight: between two thirds and a full tank those have no
    // bitmap and show that the level is out of their range.
    else if (m_nPercent > 0 && m_nPercent < 100)
        step = static_cast<int>(static_cast<double>(static_cast<float>(m_nPercent) / 8.333333f) + 0.96666);

    m_iCurrentBmpID = step >= 0 && step <= lastStep ? m_nFirstBmpID + step : OutOfRangeBmpID;
    CString text;
    text.Format("m_iCurrentBmpID: %d", m_iCurrentBmpID);
    m_Spy.OutputData(text);
}

void CGUIInkTank::DrawOn(CDC* pDC)
{
    if (!m_hWnd)
        return;
    const RECT area = tvk::RectInParent(m_hWnd);
    m_bmp.TransBlt(pDC, area.left, area.top, 0, 0);
}
