// CPrinterData: the papers of an installed printer, as its driver prints on them.
#pragma once

#include <afx.h>
#include <afxwin.h>
#include <winspool.h>

/// Asks the print spooler and the driver about one installed printer: its settings, and for every paper size that the
/// driver offers the page and the part of it that the printer can reach. From these it tells the printable area of a
/// paper and which paper is its borderless twin.
///
/// The papers are read at the first question, which takes a device context for each of them, and kept for the life of
/// the object, also when a later question names another printer: make a new object for each printer. A failed reading
/// leaves nothing behind, and the next question tries again.
///
/// Failures are results (0 or null); nothing is traced or thrown. Lengths are device pixels of the resolution that the
/// printer is set to.
class AFX_EXT_CLASS CPrinterData
{
public:
    /// Asks nothing yet.
    CPrinterData();
    virtual ~CPrinterData();
    CPrinterData(const CPrinterData&) = delete;
    CPrinterData& operator=(const CPrinterData&) = delete;

    /// What the spooler knows about a printer.
    /// @param printer  the printer's name; opened for this call when `hPrinter` is null
    /// @param hPrinter an open printer, or null
    /// @return a block that the caller frees with GlobalFree; null on failure
    PRINTER_INFO_2A* GetPrinterInfo2(const char* printer, void* hPrinter);

    /// The printer's current device mode.
    /// @param printer  the printer's name; opened for this call when `hPrinter` is null
    /// @param hDevMode receives a movable memory handle, unlocked, that the caller frees with GlobalFree; null on
    ///                 failure, except that a block which somebody else holds locked is handed out all the same. With a
    ///                 null pointer nothing is asked, and the call fails.
    /// @param hPrinter an open printer, or null
    /// @return 1, or 0 on failure
    int GetPrinterDevMode(const char* printer, void** hDevMode, void* hPrinter);

    /// The printable area of a paper size.
    /// @param paper the paper's id in the driver; of several papers with this id the last one counts
    /// @param area  receives the offsets of the printable area as left and top, and its width and height (not the far
    ///              edges) as right and bottom
    /// @param dpi   receives the resolution
    /// @return 1; or 0 with `area` and `dpi` all zero when the papers cannot be read or the driver has no such paper
    int GetPrintableArea(const char* printer, short paper, CRect& area, CPoint& dpi);

    /// The paper size of the same physical page that is printed up to its edges; this may be the paper itself. Of
    /// several such papers the driver's last one is the answer; of several papers with the id asked for the first one
    /// tells the page.
    /// @param paper in: the paper's id in the driver; out: the id of its borderless twin, -1 when there is none
    /// @param area  receives the page from (0, 0) to its width and height; all zero when there is no twin
    /// @return 1, or 0 when there is no twin, no such paper, or the papers cannot be read
    int GetBorderlessPaperSize(const char* printer, short& paper, CRect& area);

private:
    /// A paper as the driver's device context for it tells.
    struct Paper
    {
        int physicalWidth;
        int physicalHeight;
        int offsetX;
        int offsetY;
        int printableWidth;
        int printableHeight;
    };

    /// Hands out a DEVNAMES block for the printer, which the caller frees with GlobalFree. Returns 1, or 0 on failure.
    int GetPrinterDevNames(const char* printer, void** hDevNames, void* hPrinter);
    int LoadPaperSizeData(const char* printer);

    bool ReadPapers(const char* printer);
    void DeletePapers();
    bool IsLoaded() const;

    int m_nPaperCount;            // 0 until the papers are read
    unsigned short* m_pwPaperIDs; // the driver's ids, in its order
    int m_nDPIX;
    int m_nDPIY;
    Paper* m_pPapers; // one for each id, in the same order
};
