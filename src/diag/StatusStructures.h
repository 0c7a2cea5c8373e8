// The suite's shared status structures: what the printer communication library reports and what hosts hand to this
// library. Their layout is an agreement between modules that are built apart; the library only reads them.
#pragma once

#include <cstddef>

/// The printer's ink and cartridge report.
///
/// Cartridge 1 is the first position of the print head, cartridge 2 the second. A cartridge identity is one of
/// 48 (black), 80 (colour), 112 (photo), 128 (alternative colour), each standard yield, +1 low yield, +2 high yield,
/// +15 generic; 16 an invalid cartridge, 32 a missing one. Ink levels are per cent, 0 to 100; 101 and above, and -101,
/// are marks of the printer in place of a level.
struct INKINFO
{
    int InkStyle;                          ///< kind of ink system, passed through
    int InkPercent1;                       ///< black
    int InkPercent2;                       ///< first colour
    int InkPercent3;                       ///< second colour
    int InkPercent4;                       ///< third colour
    int InkPercent5;                       ///< first ink of a photo cartridge in position 2
    int InkPercent6;                       ///< second ink of a photo cartridge in position 2
    int InkPercent7;                       ///< third ink of a photo cartridge in position 2
    int InkPercent8;                       ///< further tanks, passed through
    int InkPercent9;                       ///< further tanks, passed through
    int InkPercent10;                      ///< further tanks, passed through
    int iChangedCartCount1;                ///< how often cartridge 1 was changed
    int iChangedCartCount2;                ///< how often cartridge 2 was changed
    int iLogCartID1;                       ///< logical identity of cartridge 1: what the printer treats it as
    int iLogCartID2;                       ///< logical identity of cartridge 2
    int iPhysCartID1;                      ///< physical identity of cartridge 1: what it is
    int iPhysCartID2;                      ///< physical identity of cartridge 2
    int iCart1Authenticity;                ///< status of cartridge 1; 2, 4 and 5 are flagged to the user
    int iCart2Authenticity;                ///< status of cartridge 2; 2, 4 and 5 are flagged to the user
    int iCart1AlignRequired;               ///< cartridge 1 wants an alignment
    int iCart2AlignRequired;               ///< cartridge 2 wants an alignment
    int iEstPagesRemaining;                ///< pages that the ink will last for, estimated
    int iCart1UID;                         ///< unique number of cartridge 1
    int iCart2UID;                         ///< unique number of cartridge 2
    unsigned char iCart1PrintheadDiag[20]; ///< print-head diagnosis of cartridge 1, raw
    unsigned char iCart2PrintheadDiag[20]; ///< print-head diagnosis of cartridge 2, raw
};
static_assert(sizeof(INKINFO) == 136);
static_assert(offsetof(INKINFO, iChangedCartCount1) == 44 && offsetof(INKINFO, iCart1PrintheadDiag) == 96);

/// The print heads' alignment.
struct ALIGNINFO
{
    int iAlignmentType; ///< which alignment the values belong to
    int iAlign1;        ///< alignment values 1 to 17, as the printer stores them
    int iAlign2;
    int iAlign3;
    int iAlign4;
    int iAlign5;
    int iAlign6;
    int iAlign7;
    int iAlign8;
    int iAlign9;
    int iAlign10;
    int iAlign11;
    int iAlign12;
    int iAlign13;
    int iAlign14;
    int iAlign15;
    int iAlign16;
    int iAlign17;
};
static_assert(sizeof(ALIGNINFO) == 72);

/// The alert part of a printer's status.
struct STATUSERRORINFO
{
    unsigned char* lpAlertStatusBytes; ///< the alert bytes as the printer sent them
    int iAlertStatusByteCount;         ///< how many there are
};
static_assert(offsetof(STATUSERRORINFO, iAlertStatusByteCount) == 8 && sizeof(STATUSERRORINFO) == 16);

/// A printer's whole status. The pointers belong to whoever filled the structure; none may be null.
struct STATUSINFO
{
    int iStatus;                    ///< status code
    STATUSERRORINFO* lpStatusError; ///< the alerts
    int iMedia;                     ///< medium in the first source
    int iMedia2;                    ///< medium in the second source
    unsigned char iPrinterDiag[20]; ///< printer diagnosis, raw
    INKINFO* lpInk;                 ///< the ink report
    ALIGNINFO* lpAlign;             ///< the alignment
};
static_assert(offsetof(STATUSINFO, lpStatusError) == 8 && offsetof(STATUSINFO, iMedia) == 16);
static_assert(offsetof(STATUSINFO, iPrinterDiag) == 24 && offsetof(STATUSINFO, lpInk) == 48);
static_assert(sizeof(STATUSINFO) == 64);

/// The port that a printer is attached to.
struct PORTINFO
{
    int iPortType;         ///< kind of port
    int iBidiLevel;        ///< how far the port talks back
    char SerialNumber[32]; ///< the printer's serial number
    int iRes;              ///< reserved
};
static_assert(offsetof(PORTINFO, SerialNumber) == 8 && offsetof(PORTINFO, iRes) == 40 && sizeof(PORTINFO) == 44);

/// The proxy that updates are fetched through.
struct UPDPROXYINFO
{
    char* lpProxy; ///< the proxy's name or address; never null
    int iPort;     ///< its port number
};
static_assert(offsetof(UPDPROXYINFO, iPort) == 8 && sizeof(UPDPROXYINFO) == 16);

/// A subnet to search for network printers.
struct SUBNETINFO
{
    char Subnet[16]; ///< address in dotted form
};
static_assert(sizeof(SUBNETINFO) == 16);

/// A network printer and its port.
struct PRINTERPORTINFO
{
    char PortName[32];       ///< name of the port
    char IPAddress[16];      ///< the printer's address, dotted
    char SubnetMask[16];     ///< its subnet mask, dotted
    char GatewayAddress[16]; ///< its gateway, dotted
    char Model[32];          ///< the printer's model name
    char MACAddress[32];     ///< its hardware address
    int iReserved;           ///< of the communication library's own use; never traced
    int Printer_installed;   ///< not 0: a driver is installed for it
    int Printer_configured;  ///< not 0: it has a network configuration
};
static_assert(offsetof(PRINTERPORTINFO, IPAddress) == 32 && offsetof(PRINTERPORTINFO, Model) == 80);
static_assert(offsetof(PRINTERPORTINFO, MACAddress) == 112 && offsetof(PRINTERPORTINFO, iReserved) == 144);
static_assert(sizeof(PRINTERPORTINFO) == 156);

/// The printer driver's private device mode. The fields are the driver's; the dump only shows them.
struct LCDEVMODE
{
    char dmPrinterFriendlyName[256]; ///< the printer that these settings belong to
    int dmReturnState;               ///< how the preferences were left
    int dmOrientation;
    int dmPageOrder;
    int dmPaperSize;
    int dmCustomPaperLength;
    int dmCustomPaperWidth;
    int dmCustomPaperUnits;
    int dmCopies;
    int dmDefaultSource;
    int dmPrintQuality;
    int dmColor;
    int dmDuplex;
    int dmCollate;
    unsigned int dmPaperCategory; ///< bits
    int dmMediaType;
    int dmReserved1; ///< not traced
    int dmPrintInstructionSheet;
    int dmColorMode;
    int dmHalftoning;
    int dmMirror;
    int dmJFOption;
    int dmAutoMedia;
    int dmMediaType1;
    int dmMediaType2;
    int dmUpdateMediaType2;
    int dmReserved2[2]; ///< not traced
    int dmClaimPrintMode;
    int dmRegion;
    int dmAutoImageSharpening;
    int dmManualImageSharpeningValue;
    int dmPosterRows;
    int dmPosterColumns;
    int dmPosterCropMarks;
    int dmReserved3[32]; ///< not traced
    int dmPosterOverlap;
    int dmNupPages;
    int dmNupPageBorders;
    int dmBookletSheetsPerBundle;
    int dmBookletUnscaledPaperSize;
    int dmBookletScaledPaperSize;
    int dmBookletBookScaled;
    int dmBookletFoldMarks;
    int dmWebSmoothing;
    int dmFitToPaperSize;
    int dmSequenceBeginRight;
    int dmSequenceBeginBottom;
    int dmSequenceVertical;
    int dmSaveCollate; ///< dmSave…: the user's values while a special mode overrides them
    int dmSavePageOrder;
    int dmSaveCopies;
    int dmSavePrintQuality;
    int dmSaveOrientation;
    int dmSaveMediaType;
    int dmSavePaperSize1;
};
static_assert(offsetof(LCDEVMODE, dmReturnState) == 64 * 4 && offsetof(LCDEVMODE, dmMediaType) == 78 * 4);
static_assert(offsetof(LCDEVMODE, dmPrintInstructionSheet) == 80 * 4);
static_assert(offsetof(LCDEVMODE, dmClaimPrintMode) == 91 * 4 && offsetof(LCDEVMODE, dmPosterRows) == 95 * 4);
static_assert(offsetof(LCDEVMODE, dmPosterOverlap) == 130 * 4 && sizeof(LCDEVMODE) == 150 * 4);
