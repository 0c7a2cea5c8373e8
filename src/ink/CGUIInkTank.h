// The picture of one ink tank.
#pragma once

#include "controls/CTransStaticBmp.h"
#include "diag/CSpy.h"

/// A picture control that shows how full an ink tank is. For every kind of ink there is a series of bitmap resources
/// with one bitmap for each fill step, from empty to full; the control shows the one that matches the tank's
/// percentage, with pure green as the transparent colour. A percentage that is none (below 0 or above 100: the
/// printer's marks for an unknown level) shows bitmap 190 and never an empty tank.
///
/// Subclass a static control of the dialog, choose the ink with SetColor() and the level with SetInkPercent(), or leave
/// both to a CGUIInkDisplay.
class AFX_EXT_CLASS CGUIInkTank : public CTransStaticBmp
{
public:
    /// What a tank holds.
    enum InkColor : int
    {
        InkBlack = 0,        ///< black cartridge
        InkColor1 = 1,       ///< first single colour of a printer with four tanks
        InkColor2 = 2,       ///< second single colour
        InkColor3 = 3,       ///< third single colour
        InkTriColor = 4,     ///< cartridge of three colours
        InkPhoto = 5,        ///< photo cartridge
        InkMissing = 6,      ///< no cartridge, or one that is not accepted
        InkInvalid = 7,      ///< invalid or unknown cartridge
        InkAltTriColor = 8,  ///< cartridge of three colours, alternative kind
        InkBlackGeneric = 9, ///< the generic cartridges
        InkTriColorGeneric = 10,
        InkPhotoGeneric = 11,
        InkAltTriColorGeneric = 12,
        InkTriColorStatus = 13, ///< cartridges whose status is flagged to the user
        InkPhotoStatus = 14,
        InkBlackStatus = 15,
    };

    /// Which set of bitmaps is used. A tank of any other type keeps the series it has.
    enum BmpType : int
    {
        BmpShortSeries = 0, ///< series of eight steps for all inks
        BmpLongSeries = 1,  ///< twelve steps for black and for the cartridges of several inks
    };

    /// A tank of the long series.
    CGUIInkTank();
    /// A tank of the given bitmap type.
    explicit CGUIInkTank(int type);
    ~CGUIInkTank() override;

    /// Chooses the series of the ink; the picture changes with the next level. A value outside InkColor is ignored.
    ///
    /// The two sets have nine bitmaps from 381 (black), 334, 351 and 366 (the three single colours) in the short one,
    /// thirteen from 191 (black) and nine from 134, 151 and 166 in the long one. Cartridges of three colours and photo
    /// cartridges have thirteen from 221 and 271 in the long set, and share the third colour's in the short one.
    void SetColor(InkColor color);

    /// Shows a level.
    /// @param percent  0 to 100; anything else is an unknown level
    /// @param module   module of the bitmaps; null searches the framework's resource modules
    void SetInkPercent(int percent, HINSTANCE module);

    /// Notes the ink left, in drops, and shows the picture anew. The picture follows the percentage alone.
    /// @return 1, or 0 when there is no such bitmap
    int SetInkLevel(int drops);

    /// Notes the drops used of a full tank's 800. Otherwise as SetInkLevel.
    int SetDropCount(int usedDrops);

    /// Shows the picture anew, from the bitmaps of `module`. @return as SetInkLevel
    int DrawInkLevel(HINSTANCE module);

private:
    friend class CGUIInkDisplay; // gives its tanks their bitmap type and draws them for a window in memory

    int m_nPercent;
    int m_nInkLevel; // drops
    BmpType m_nBmpType;
    int m_nFirstBmpID;
    int m_nLastBmpID;
    int m_nMaxDropCount;
    int m_iCurrentBmpID;
    CString m_strText; // not used
    COLORREF m_crTransparent;
    CSpy m_Spy;

    void SetBmpForInkLevel();
    void DrawOn(CDC* pDC);
};
