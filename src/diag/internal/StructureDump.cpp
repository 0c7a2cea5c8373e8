#include "diag/internal/StructureDump.h"
#include "diag/internal/TraceText.h"
#include <array>
#include <cstring>
#include <span>

namespace tvk
{
namespace
{
enum class Form
{
    Dword,       // signed decimal, tagged "(DWORD)"
    Long,        // signed decimal, tagged "(long)"
    Int,         // signed decimal, tagged "(int)"
    Hex,         // hexadecimal, tagged "(DWORD)"
    Text,        // characters within the structure
    TextPointer, // pointer to a text
    Bytes,       // bytes within the structure
    Alerts,      // pointer to STATUSERRORINFO
    Ink,         // pointer to INKINFO
    Alignment    // pointer to ALIGNINFO
};

struct Field
{
    const char* label;
    Form form;
    std::size_t offset;
    std::size_t width;
};

// Numbers are 32 bits wide, pointers 64, and no field reaches behind its structure.
constexpr bool FitsStructure(std::span<const Field> fields, std::size_t size)
{
    for (const Field& field : fields)
    {
        const bool number = field.form <= Form::Hex;
        const bool inside = field.form == Form::Text || field.form == Form::Bytes;
        if (field.offset + field.width > size || (!inside && field.width != (number ? 4u : sizeof(void*))))
            return false;
    }
    return true;
}

constexpr Field Row(const char* label, Form form, std::size_t offset, std::size_t width)
{
    return {label, form, offset, width};
}

// A field whose label is its name, and a text whose label also shows its size.
#define FIELD(structure, form, field) Row("\t" #field, Form::form, offsetof(structure, field), sizeof(structure::field))
#define TEXT_FIELD(structure, field, size)                                                                             \
    Row("\t" #field "[" #size "]", Form::Text, offsetof(structure, field), sizeof(structure::field))

constexpr std::array InkFields = {
    FIELD(INKINFO, Dword, InkStyle),
    FIELD(INKINFO, Long, InkPercent1),
    FIELD(INKINFO, Long, InkPercent2),
    FIELD(INKINFO, Long, InkPercent3),
    FIELD(INKINFO, Long, InkPercent4),
    FIELD(INKINFO, Long, InkPercent5),
    FIELD(INKINFO, Long, InkPercent6),
    FIELD(INKINFO, Long, InkPercent7),
    FIELD(INKINFO, Long, InkPercent8),
    FIELD(INKINFO, Long, InkPercent9),
    FIELD(INKINFO, Long, InkPercent10),
    FIELD(INKINFO, Dword, iChangedCartCount1),
    FIELD(INKINFO, Dword, iChangedCartCount2),
    FIELD(INKINFO, Dword, iLogCartID1),
    FIELD(INKINFO, Dword, iLogCartID2),
    FIELD(INKINFO, Dword, iPhysCartID1),
    FIELD(INKINFO, Dword, iPhysCartID2),
    FIELD(INKINFO, Dword, iCart1Authenticity),
    FIELD(INKINFO, Dword, iCart2Authenticity),
    FIELD(INKINFO, Dword, iCart1AlignRequired),
    FIELD(INKINFO, Dword, iCart2AlignRequired),
    FIELD(INKINFO, Dword, iEstPagesRemaining),
    FIELD(INKINFO, Dword, iCart1UID),
    FIELD(INKINFO, Dword, iCart2UID),
    FIELD(INKINFO, Bytes, iCart1PrintheadDiag),
    FIELD(INKINFO, Bytes, iCart2PrintheadDiag),
};
static_assert(FitsStructure(InkFields, sizeof(INKINFO)));

constexpr std::array AlignmentFields = {
    FIELD(ALIGNINFO, Dword, iAlignmentType), FIELD(ALIGNINFO, Dword, iAlign1),  FIELD(ALIGNINFO, Dword, iAlign2),
    FIELD(ALIGNINFO, Dword, iAlign3),        FIELD(ALIGNINFO, Dword, iAlign4),  FIELD(ALIGNINFO, Dword, iAlign5),
    FIELD(ALIGNINFO, Dword, iAlign6),        FIELD(ALIGNINFO, Dword, iAlign7),  FIELD(ALIGNINFO, Dword, iAlign8),
    FIELD(ALIGNINFO, Dword, iAlign9),        FIELD(ALIGNINFO, Dword, iAlign10), FIELD(ALIGNINFO, Dword, iAlign11),
    FIELD(ALIGNINFO, Dword, iAlign12),       FIELD(ALIGNINFO, Dword, iAlign13), FIELD(ALIGNINFO, Dword, iAlign14),
    FIELD(ALIGNINFO, Dword, iAlign15),       FIELD(ALIGNINFO, Dword, iAlign16), FIELD(ALIGNINFO, Dword, iAlign17),
};
static_assert(FitsStructure(AlignmentFields, sizeof(ALIGNINFO)));

constexpr std::array StatusFields = {
    FIELD(STATUSINFO, Int, iStatus),
    Row("\tlpStatusError->lpAlertStatusBytes", Form::Alerts, offsetof(STATUSINFO, lpStatusError),
        sizeof(STATUSINFO::lpStatusError)),
    FIELD(STATUSINFO, Int, iMedia),
    FIELD(STATUSINFO, Int, iMedia2),
    FIELD(STATUSINFO, Bytes, iPrinterDiag),
    FIELD(STATUSINFO, Ink, lpInk),
    FIELD(STATUSINFO, Alignment, lpAlign),
};
static_assert(FitsStructure(StatusFields, sizeof(STATUSINFO)));

constexpr std::array PortFields = {
    FIELD(PORTINFO, Dword, iPortType),
    FIELD(PORTINFO, Dword, iBidiLevel),
    TEXT_FIELD(PORTINFO, SerialNumber, 32),
    FIELD(PORTINFO, Dword, iRes),
};
static_assert(FitsStructure(PortFields, sizeof(PORTINFO)));

constexpr std::array DeviceModeFields = {
    FIELD(LCDEVMODE, Text, dmPrinterFriendlyName),
    FIELD(LCDEVMODE, Dword, dmReturnState),
    FIELD(LCDEVMODE, Dword, dmOrientation),
    FIELD(LCDEVMODE, Dword, dmPageOrder),
    FIELD(LCDEVMODE, Dword, dmPaperSize),
    FIELD(LCDEVMODE, Dword, dmCustomPaperLength),
    FIELD(LCDEVMODE, Dword, dmCustomPaperWidth),
    FIELD(LCDEVMODE, Dword, dmCustomPaperUnits),
    FIELD(LCDEVMODE, Dword, dmCopies),
    FIELD(LCDEVMODE, Dword, dmDefaultSource),
    FIELD(LCDEVMODE, Dword, dmPrintQuality),
    FIELD(LCDEVMODE, Dword, dmColor),
    FIELD(LCDEVMODE, Dword, dmDuplex),
    FIELD(LCDEVMODE, Dword, dmCollate),
    FIELD(LCDEVMODE, Hex, dmPaperCategory),
    FIELD(LCDEVMODE, Dword, dmMediaType),
    FIELD(LCDEVMODE, Dword, dmPrintInstructionSheet),
    FIELD(LCDEVMODE, Dword, dmColorMode),
    FIELD(LCDEVMODE, Dword, dmHalftoning),
    FIELD(LCDEVMODE, Dword, dmMirror),
    FIELD(LCDEVMODE, Dword, dmJFOption),
    FIELD(LCDEVMODE, Dword, dmAutoMedia),
    FIELD(LCDEVMODE, Dword, dmMediaType1),
    FIELD(LCDEVMODE, Dword, dmMediaType2),
    FIELD(LCDEVMODE, Dword, dmUpdateMediaType2),
    FIELD(LCDEVMODE, Dword, dmRegion),
    FIELD(LCDEVMODE, Dword, dmPosterRows),
    FIELD(LCDEVMODE, Dword, dmPosterColumns),
    FIELD(LCDEVMODE, Dword, dmPosterCropMarks),
    FIELD(LCDEVMODE, Dword, dmPosterOverlap),
    FIELD(LCDEVMODE, Dword, dmNupPages),
    FIELD(LCDEVMODE, Dword, dmNupPageBorders),
    FIELD(LCDEVMODE, Dword, dmBookletSheetsPerBundle),
    FIELD(LCDEVMODE, Dword, dmBookletUnscaledPaperSize),
    FIELD(LCDEVMODE, Dword, dmBookletScaledPaperSize),
    FIELD(LCDEVMODE, Dword, dmBookletBookScaled),
    FIELD(LCDEVMODE, Dword, dmBookletFoldMarks),
    FIELD(LCDEVMODE, Dword, dmWebSmoothing),
    FIELD(LCDEVMODE, Dword, dmFitToPaperSize),
    FIELD(LCDEVMODE, Dword, dmSequenceBeginRight),
    FIELD(LCDEVMODE, Dword, dmSequenceBeginBottom),
    FIELD(LCDEVMODE, Dword, dmSequenceVertical),
    FIELD(LCDEVMODE, Dword, dmSaveCollate),
    FIELD(LCDEVMODE, Dword, dmSavePageOrder),
    FIELD(LCDEVMODE, Dword, dmSaveCopies),
    FIELD(LCDEVMODE, Dword, dmSavePrintQuality),
    FIELD(LCDEVMODE, Dword, dmSaveOrientation),
    FIELD(LCDEVMODE, Dword, dmSaveMediaType),
    FIELD(LCDEVMODE, Dword, dmSavePaperSize1),
    // Support's tools know these three at the end, though they lie in the middle of the structure.
    FIELD(LCDEVMODE, Dword, dmAutoImageSharpening),
    FIELD(LCDEVMODE, Dword, dmManualImageSharpeningValue),
    FIELD(LCDEVMODE, Dword, dmClaimPrintMode),
};
static_assert(FitsStructure(DeviceModeFields, sizeof(LCDEVMODE)));

constexpr std::array ProxyFields = {
    FIELD(UPDPROXYINFO, TextPointer, lpProxy),
    FIELD(UPDPROXYINFO, Int, iPort),
};
static_assert(FitsStructure(ProxyFields, sizeof(UPDPROXYINFO)));

constexpr std::array SubnetFields = {
    TEXT_FIELD(SUBNETINFO, Subnet, 16),
};
static_assert(FitsStructure(SubnetFields, sizeof(SUBNETINFO)));

constexpr std::array PrinterPortFields = {
    TEXT_FIELD(PRINTERPORTINFO, PortName, 32),      TEXT_FIELD(PRINTERPORTINFO, IPAddress, 16),
    TEXT_FIELD(PRINTERPORTINFO, SubnetMask, 16),    TEXT_FIELD(PRINTERPORTINFO, GatewayAddress, 16),
    TEXT_FIELD(PRINTERPORTINFO, Model, 32),         TEXT_FIELD(PRINTERPORTINFO, MACAddress, 32),
    FIELD(PRINTERPORTINFO, Int, Printer_installed), FIELD(PRINTERPORTINFO, Int, Printer_configured),
};
static_assert(FitsStructure(PrinterPortFields, sizeof(PRINTERPORTINFO)));

#undef FIELD
#undef TEXT_FIELD

template <class Value>
Value Load(const std::byte* place)
{
    Value value;
    std::memcpy(&value, place, sizeof value);
    return value;
}

void AppendField(std::string& record, const Field& field, const std::byte* place)
{
    switch (field.form)
    {
    case Form::Dword:
        return AppendNumber(record, "(DWORD)", Load<long>(place));
    case Form::Long:
        return AppendNumber(record, "(long)", Load<long>(place));
    case Form::Int:
        return AppendNumber(record, "(int)", Load<long>(place));
    case Form::Hex:
        return AppendHex(record, Load<unsigned long>(place));
    case Form::Text:
        return AppendText(record, reinterpret_cast<const char*>(place), field.width);
    case Form::TextPointer:
        return AppendText(record, Load<const char*>(place));
    case Form::Bytes:
        return AppendBytes(record, reinterpret_cast<const unsigned char*>(place), static_cast<int>(field.width));
    case Form::Alerts:
    {
        const auto* const alerts = Load<const STATUSERRORINFO*>(place);
        return AppendBytes(record, alerts ? alerts->lpAlertStatusBytes : nullptr,
                           alerts ? alerts->iAlertStatusByteCount : 0);
    }
    case Form::Ink:
        return AppendDump(record, Load<const INKINFO*>(place));
    case Form::Alignment:
        return AppendDump(record, Load<const ALIGNINFO*>(place));
    }
}

// A missing structure has all its lines, each with a text that no field of another form can show.
void AppendFields(std::string& record, const char* header, std::span<const Field> fields, const void* structure)
{
    record += header;
    for (const Field& field : fields)
    {
        record += field.label;
        if (structure)
            AppendField(record, field, static_cast<const std::byte*>(structure) + field.offset);
        else
            AppendText(record, nullptr);
    }
}
} // namespace

void AppendDump(std::string& record, const INKINFO* info)
{
    AppendFields(record, "(LPINKINFO)\n", InkFields, info);
}

void AppendDump(std::string& record, const ALIGNINFO* info)
{
    AppendFields(record, "(LPALIGNINFO)\n", AlignmentFields, info);
}

void AppendDump(std::string& record, const STATUSINFO* info)
{
    AppendFields(record, "(LPSTATUSINFO)\n", StatusFields, info);
}

void AppendDump(std::string& record, const PORTINFO* info)
{
    AppendFields(record, "(LPPORTINFO)\n", PortFields, info);
}

void AppendDump(std::string& record, const LCDEVMODE* mode)
{
    AppendFields(record, "(LPLCDEVMODE)\n", DeviceModeFields, mode);
}

void AppendDump(std::string& record, const UPDPROXYINFO* info)
{
    AppendFields(record, "(LPUPDPROXYINFO)\n", ProxyFields, info);
}

void AppendDump(std::string& record, const SUBNETINFO* info)
{
    AppendFields(record, "(LPSUBNETINFO)\n", SubnetFields, info);
}

void AppendDump(std::string& record, const PRINTERPORTINFO* info)
{
    AppendFields(record, "(LPPRINTERPORTINFO)\n", PrinterPortFields, info);
}
} // namespace tvk
