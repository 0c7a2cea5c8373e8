// What the records look like: one line a value, one line a field of a structure.
#include "diag/CSpy.h"
#include "support/IatPatch.h"
#include "support/TestProduct.h"
#include "support/TraceWorld.h"
#include <gtest/gtest.h>
#include <cfloat>
#include <climits>
#include <cstring>
#include <functional>
#include <sstream>

namespace
{
// The steps that derived classes can use.
class Steps : public CSpy
{
public:
    using CSpy::AddToBufferBase16;
    using CSpy::GetTimeStamp;
    using CSpy::WriteBuffer;
};

// The one record of a structure, with a line feed at its end.
template <class Structure>
std::string RecordOf(Structure* structure)
{
    TraceWorld world;
    EXPECT_EQ(CSpy().OutputData(structure), 1);
    const std::vector<std::string> records = world.Records();
    return (records.size() == 1 ? records[0] : std::to_string(records.size()) + " records") + "\n";
}

// What the 32-bit words of a structure are filled with.
int Word(int index)
{
    return index % 2 ? index * 1000003 : -index * 999983;
}

// A structure made of words, whatever its fields are called.
template <class Structure>
Structure FromWords()
{
    int words[sizeof(Structure) / sizeof(int)];
    for (std::size_t i = 0; i < std::size(words); ++i)
        words[i] = Word(static_cast<int>(i));
    Structure structure;
    std::memcpy(&structure, words, sizeof structure);
    return structure;
}

// The dump of consecutive words; the labels are separated by blanks.
std::string WordRows(const char* tag, int index, const char* labels)
{
    std::string text;
    std::istringstream stream(labels);
    for (std::string label; stream >> label;)
        text += "\t" + label + tag + std::to_string(Word(index++)) + "\n";
    return text;
}

// Bytes 0, 1, 2, ... and 15, 31, 47, ... in the arrays at the end of the ink report.
INKINFO SampleInk()
{
    INKINFO ink = FromWords<INKINFO>();
    for (int i = 0; i < 20; ++i)
    {
        ink.iCart1PrintheadDiag[i] = static_cast<unsigned char>(i);
        ink.iCart2PrintheadDiag[i] = static_cast<unsigned char>(15 + i * 16);
    }
    return ink;
}

const std::string InkDump =
    "(LPINKINFO)\n" + WordRows("(DWORD)", 0, "InkStyle") +
    WordRows("(long)", 1,
             "InkPercent1 InkPercent2 InkPercent3 InkPercent4 InkPercent5 InkPercent6 InkPercent7 InkPercent8 "
             "InkPercent9 InkPercent10") +
    WordRows("(DWORD)", 11,
             "iChangedCartCount1 iChangedCartCount2 iLogCartID1 iLogCartID2 iPhysCartID1 iPhysCartID2 "
             "iCart1Authenticity iCart2Authenticity iCart1AlignRequired iCart2AlignRequired iEstPagesRemaining "
             "iCart1UID iCart2UID") +
    "\tiCart1PrintheadDiag(LPBYTE)0  1  2  3  4  5  6  7  8  9  a  b  c  d  e  f  10  11  12  13  \n"
    "\tiCart2PrintheadDiag(LPBYTE)f  1f  2f  3f  4f  5f  6f  7f  8f  9f  af  bf  cf  df  ef  ff  f  1f  2f  3f  \n";

const std::string AlignDump =
    "(LPALIGNINFO)\n" + WordRows("(DWORD)", 0,
                                 "iAlignmentType iAlign1 iAlign2 iAlign3 iAlign4 iAlign5 iAlign6 iAlign7 iAlign8 "
                                 "iAlign9 iAlign10 iAlign11 iAlign12 iAlign13 iAlign14 iAlign15 iAlign16 iAlign17");
} // namespace

TEST(TraceRecords, ValuesHaveTheirTagsAndForms)
{
    const unsigned char bytes[] = {0x0A, 0xFF, 0x00, 0x10};
    const unsigned char* const none = nullptr;
    const std::string longText(70000, 'x');
    TraceWorld world;
    CSpy spy;
    std::vector<std::string> expected;
    const auto record = [&](const std::string& body, const auto&... value)
    {
        EXPECT_EQ(spy.OutputData(value...), 1) << body;
        expected.push_back(body);
    };
    record("(int)42", 42);
    record("(int)-2147483648", INT_MIN);
    record("(DWORD)7", 7ul);
    record("(DWORD)-1", 0xFFFFFFFFul);
    record("(DWORD)-2147024891", 0x80070005ul);
    record("(long)2147483647", LONG_MAX);
    record("(float)1.500000", 1.5f);
    record("(float)-0.100000", -0.1f);
    record("(float)340282346638528859811704183484516925440.000000", FLT_MAX);
    record("(char)Supplies: %s 100%", "Supplies: %s 100%");
    record("(char)", "");
    record("(char)\nHelpPath: ", "\nHelpPath: ");
    record("(char)ab", CString("ab\0cd", 5));
    record("(char)" + longText, longText.c_str());
    record("(LPBYTE)a  ff  0  10  ", bytes, 4);
    record("(LPBYTE)a  ", bytes, 1);
    record("(LPBYTE)", bytes, 0);
    record("(LPBYTE)", bytes, -3);
    record("(LPBYTE)NULL", none, 4);
    record("(LPBYTE)NULL", none, -1);
    EXPECT_EQ(world.Records(), expected);
}

TEST(TraceRecords, HexadecimalNumbersAreForDerivedClasses)
{
    TraceWorld world;
    {
        Steps steps;
        EXPECT_EQ(steps.AddToBufferBase16(0xABC01ul), 1);
        EXPECT_EQ(steps.AddToBufferBase16(0ul), 1);
        steps.WriteBuffer();
    }
    EXPECT_EQ(world.Log(), "(DWORD)abc01\n(DWORD)0\n");
}

TEST(TraceRecords, TheTimeStampIsTheLocalTime)
{
    Steps steps;
    for (int month = 1; month <= 12; ++month)
    {
        static SYSTEMTIME now;
        now.wYear = static_cast<WORD>(1999 + month);
        now.wMonth = static_cast<WORD>(month);
        now.wDay = now.wHour = static_cast<WORD>(month * 2 - 1);
        now.wMinute = static_cast<WORD>(60 - month);
        now.wSecond = static_cast<WORD>(month);
        const IatPatch patch(
            LibraryUnderTest(), "GetLocalTime", +[](SYSTEMTIME* time) -> void { *time = now; });
        EXPECT_EQ(steps.GetTimeStamp(), CTime(now).Format("%H:%M:%S <%B %d, %Y>"));
    }
}

TEST(TraceRecords, StatusAndItsNestedStructures)
{
    unsigned char alerts[] = {0xDE, 0xAD, 0x00};
    STATUSERRORINFO error = {alerts, 3};
    INKINFO ink = SampleInk();
    ALIGNINFO align = FromWords<ALIGNINFO>();
    STATUSINFO status = {-5, &error, 11, 12, {}, &ink, &align};
    for (int i = 0; i < 20; ++i)
        status.iPrinterDiag[i] = static_cast<unsigned char>(i * 13);
    const auto dump = [&](const std::string& bytes)
    {
        return "(LPSTATUSINFO)\n\tiStatus(int)-5\n\tlpStatusError->lpAlertStatusBytes(LPBYTE)" + bytes +
               "\n\tiMedia(int)11\n\tiMedia2(int)12\n\tiPrinterDiag(LPBYTE)0  d  1a  27  34  41  "
               "4e  5b  68  75  82  8f  9c  a9  b6  c3  d0  dd  ea  f7  \n\tlpInk" +
               InkDump + "\tlpAlign" + AlignDump;
    };
    EXPECT_EQ(RecordOf(&status), dump("de  ad  0  "));
    EXPECT_EQ(RecordOf(&ink), InkDump);
    error = {nullptr, 3};
    EXPECT_EQ(RecordOf(&status), dump("NULL"));
    EXPECT_EQ(RecordOf(&align), AlignDump);
}

TEST(TraceRecords, PortsProxyAndSubnet)
{
    PORTINFO port = {1, 2, "SN-0001", -3};
    EXPECT_EQ(RecordOf(&port),
              "(LPPORTINFO)\n\tiPortType(DWORD)1\n\tiBidiLevel(DWORD)2\n\tSerialNumber[32](char)SN-0001\n"
              "\tiRes(DWORD)-3\n");
    // A field filled to its last character has no NUL; what follows it must not be shown.
    std::memset(port.SerialNumber, 'S', sizeof port.SerialNumber);
    port.iRes = 0x41414141;
    EXPECT_EQ(RecordOf(&port), "(LPPORTINFO)\n\tiPortType(DWORD)1\n\tiBidiLevel(DWORD)2\n\tSerialNumber[32](char)" +
                                   std::string(32, 'S') + "\n\tiRes(DWORD)1094795585\n");
    char proxyName[] = "proxy.example";
    const UPDPROXYINFO proxy = {proxyName, 8080};
    EXPECT_EQ(RecordOf(&proxy), "(LPUPDPROXYINFO)\n\tlpProxy(char)proxy.example\n\tiPort(int)8080\n");
    const SUBNETINFO subnet = {"192.168.1.0"};
    EXPECT_EQ(RecordOf(&subnet), "(LPSUBNETINFO)\n\tSubnet[16](char)192.168.1.0\n");
    const PRINTERPORTINFO printer = {"IP_1", "10.0.0.2", "255.0.0.0", "10.0.0.1", "Model", "00:11", 99, 1, -1};
    EXPECT_EQ(RecordOf(&printer),
              "(LPPRINTERPORTINFO)\n\tPortName[32](char)IP_1\n\tIPAddress[16](char)10.0.0.2\n"
              "\tSubnetMask[16](char)255.0.0.0\n\tGatewayAddress[16](char)10.0.0.1\n\tModel[32](char)Model\n"
              "\tMACAddress[32](char)00:11\n\tPrinter_installed(int)1\n\tPrinter_configured(int)-1\n");
    EXPECT_EQ(RecordOf(static_cast<PRINTERPORTINFO*>(nullptr)),
              "(LPPRINTERPORTINFO)\n\tPortName[32](char)NULL\n\tIPAddress[16](char)NULL\n\tSubnetMask[16](char)NULL\n"
              "\tGatewayAddress[16](char)NULL\n\tModel[32](char)NULL\n\tMACAddress[32](char)NULL\n"
              "\tPrinter_installed(char)NULL\n\tPrinter_configured(char)NULL\n");
}

TEST(TraceRecords, DeviceMode)
{
    // Labels with the word that each shows, in the order of the lines.
    const char* const lines =
        "dmReturnState 64 dmOrientation 65 dmPageOrder 66 dmPaperSize 67 dmCustomPaperLength 68 dmCustomPaperWidth "
        "69 "
        "dmCustomPaperUnits 70 dmCopies 71 dmDefaultSource 72 dmPrintQuality 73 dmColor 74 dmDuplex 75 dmCollate "
        "76 "
        "dmPaperCategory 77 dmMediaType 78 dmPrintInstructionSheet 80 dmColorMode 81 dmHalftoning 82 dmMirror 83 "
        "dmJFOption 84 dmAutoMedia 85 dmMediaType1 86 dmMediaType2 87 dmUpdateMediaType2 88 dmRegion 92 "
        "dmPosterRows 95 dmPosterColumns 96 dmPosterCropMarks 97 dmPosterOverlap 130 dmNupPages 131 "
        "dmNupPageBorders 132 dmBookletSheetsPerBundle 133 dmBookletUnscaledPaperSize 134 "
        "dmBookletScaledPaperSize 135 dmBookletBookScaled 136 dmBookletFoldMarks 137 dmWebSmoothing 138 "
        "dmFitToPaperSize 139 dmSequenceBeginRight 140 dmSequenceBeginBottom 141 dmSequenceVertical 142 "
        "dmSaveCollate 143 dmSavePageOrder 144 dmSaveCopies 145 dmSavePrintQuality 146 dmSaveOrientation 147 "
        "dmSaveMediaType 148 dmSavePaperSize1 149 dmAutoImageSharpening 93 dmManualImageSharpeningValue 94 "
        "dmClaimPrintMode 91";
    LCDEVMODE mode = FromWords<LCDEVMODE>();
    std::memset(mode.dmPrinterFriendlyName, 'P', sizeof mode.dmPrinterFriendlyName);
    std::string expected = "(LPLCDEVMODE)\n\tdmPrinterFriendlyName(char)" + std::string(256, 'P') + "\n";
    std::istringstream stream(lines);
    std::string label;
    for (int index; stream >> label >> index;)
        expected += "\t" + label + "(DWORD)" + (index == 77 ? "496ee27" : std::to_string(Word(index))) + "\n";
    EXPECT_EQ(RecordOf(&mode), expected);
}
