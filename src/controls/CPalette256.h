// A palette of 256 colours for drawing one bitmap resource.
#pragma once

#include <afxwin.h>

/// The palette that a bitmap resource is drawn with on displays of few colours: the bitmap's own colour table first,
/// then an even spread of colours, so that every palette has 256 entries. On true-colour displays it changes nothing.
class AFX_EXT_CLASS CPalette256 : public CPalette
{
    DECLARE_DYNAMIC(CPalette256)

public:
    /// An empty object: no system palette yet.
    CPalette256();
    /// Deletes the system palette.
    ~CPalette256() override;

    /// Makes the palette for the bitmap with this resource identifier in the framework's current resource module
    /// (AfxGetResourceHandle). A palette made earlier is deleted; it must not be selected into a context any more.
    /// A bitmap that is missing, damaged or without a colour table gets the even spread alone.
    /// @return TRUE, or FALSE when the system cannot make a palette.
    BOOL CreatePalette256(UINT nResourceID);
};
