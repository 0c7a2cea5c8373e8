// The message that carries a picture to the trace receiver, a separate program: what CSpy sends and the receiver reads.
#pragma once

#include <windows.h>
#include <cstddef>

/// Window class and title of the receiver's dialog.
inline constexpr char TRACE_RECEIVER_CLASS[] = "#32770";
inline constexpr char TRACE_RECEIVER_TITLE[] = "GTrace Receiver";

/// Start of the data of a picture message (WM_COPYDATA with dwData 0 and wParam 0). Behind it follow the comment, the
/// label, both ending in a NUL, and the pixels as GetBitmapBits gives them: top line first, each line padded to a
/// multiple of two bytes. Offsets count bytes from the start of this structure.
struct TracePictureHeader
{
    BITMAP bitmap;               ///< as GetObjectA gives it; bmBits means nothing to the receiver
    unsigned long number;        ///< number of the picture in the sending process, from 1
    int type;                    ///< the caller's type code, passed through
    unsigned long commentOffset; ///< always sizeof(TracePictureHeader)
    unsigned long labelOffset;   ///< commentOffset + length of the comment + 1
    unsigned long pixelOffset;   ///< labelOffset + length of the label + 1
    unsigned long pixelBytes;    ///< bmPlanes * bmHeight * bmWidthBytes
};
static_assert(sizeof(BITMAP) == 32 && sizeof(TracePictureHeader) == 56);
static_assert(offsetof(TracePictureHeader, number) == 32 && offsetof(TracePictureHeader, pixelBytes) == 52);
