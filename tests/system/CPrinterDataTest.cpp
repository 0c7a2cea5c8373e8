// Papers and settings of a printer that is installed for the test, with the system's PostScript driver and the
// description of the sample printer; and what is left of each failing spooler call.
#include "system/CPrinterData.h"
#include "IatPatch.h"
#include "TestProduct.h"
#include "install/InstalledPrinter.h"
#include <gtest/gtest.h>
#include <array>
#include <string>
#include <vector>

namespace
{
const char* const PrinterName = "A test printer with a name beyond thirty-one characters";
const PrinterDriver Driver = {"A test driver", CString(TestFolder().c_str()) + "larkmoor.ppd"};

std::ostream& operator<<(std::ostream& out, const CRect& rect)
{
    return out << rect.left << ',' << rect.top << ' ' << rect.right << ',' << rect.bottom;
}

struct Area
{
    int result;
    CRect rect;
    CPoint dpi;

    bool operator==(const Area& other) const
    {
        return result == other.result && rect == other.rect && dpi == other.dpi;
    }
    friend std::ostream& operator<<(std::ostream& out, const Area& area)
    {
        return out << area.result << ": " << area.rect << " at " << area.dpi.x << ',' << area.dpi.y;
    }
};
const Area NoArea = {0, CRect(0, 0, 0, 0), CPoint(0, 0)};

Area PrintableArea(CPrinterData& data, short paper, const char* printer = PrinterName)
{
    Area area = {-1, CRect(1, 2, 3, 4), CPoint(5, 6)};
    area.result = data.GetPrintableArea(printer, paper, area.rect, area.dpi);
    return area;
}

/// The twin's id as `dpi.x`.
Area Borderless(CPrinterData& data, short paper, const char* printer = PrinterName)
{
    Area area = {-1, CRect(1, 2, 3, 4), CPoint(0, 0)};
    area.result = data.GetBorderlessPaperSize(printer, paper, area.rect);
    area.dpi.x = paper;
    return area;
}
const Area NoTwin = {0, CRect(0, 0, 0, 0), CPoint(-1, 0)};

/// GetPrinterDevNames is private: an explicit instantiation may name it all the same.
int DevNames(CPrinterData& data, const char* printer, void** names, void* open);
template <auto Member>
struct PrivateMember
{
    friend int DevNames(CPrinterData& data, const char* printer, void** names, void* open)
    {
        return (data.*Member)(printer, names, open);
    }
};
template struct PrivateMember<&CPrinterData::GetPrinterDevNames>;

class PrinterData : public testing::Test
{
  protected:
    static void SetUpTestSuite() { AddPrinter(PrinterName, Driver); }
    static void TearDownTestSuite() { RemovePrinter(PrinterName, Driver); }

    CPrinterData m_data;
};

// The calls that the class makes, counted; one of them may fail. What it opens, allocates and makes is weighed against
// what it gives back.
enum Call
{
    OPEN,
    INFO,
    PROPERTIES,
    CAPABILITIES,
    CONTEXT,
    ALLOCATE,
    CALLS
};
std::array<int, CALLS> g_made;
Call g_failing;
int g_failAt, g_failure, g_outstanding;

bool Fails(Call call)
{
    return ++g_made[call] == g_failAt && call == g_failing;
}

BOOL WINAPI CountOpen(LPSTR name, HANDLE* printer, PRINTER_DEFAULTSA* defaults)
{
    const BOOL opened = !Fails(OPEN) && OpenPrinterA(name, printer, defaults);
    g_outstanding += opened;
    return opened;
}
BOOL WINAPI CountClose(HANDLE printer)
{
    --g_outstanding;
    return ClosePrinter(printer);
}
BOOL WINAPI CountInfo(HANDLE printer, DWORD level, BYTE* info, DWORD size, DWORD* needed)
{
    if (!Fails(INFO))
        return GetPrinterA(printer, level, info, size, needed);
    SetLastError(ERROR_ACCESS_DENIED);
    return FALSE;
}
LONG WINAPI CountProperties(HWND window, HANDLE printer, LPSTR name, DEVMODEA* out, DEVMODEA* in, DWORD mode)
{
    return Fails(PROPERTIES) ? g_failure : DocumentPropertiesA(window, printer, name, out, in, mode);
}
int WINAPI CountCapabilities(LPCSTR printer, LPCSTR port, WORD what, LPSTR out, const DEVMODEA* mode)
{
    return Fails(CAPABILITIES) ? g_failure : DeviceCapabilitiesA(printer, port, what, out, mode);
}
HDC WINAPI CountContext(LPCSTR driver, LPCSTR device, LPCSTR output, const DEVMODEA* mode)
{
    const HDC context = Fails(CONTEXT) ? nullptr : CreateDCA(driver, device, output, mode);
    g_outstanding += context != nullptr;
    return context;
}
BOOL WINAPI CountDelete(HDC context)
{
    --g_outstanding;
    return DeleteDC(context);
}
HGLOBAL WINAPI CountAllocate(UINT flags, SIZE_T size)
{
    const HGLOBAL memory = Fails(ALLOCATE) ? nullptr : GlobalAlloc(flags, size);
    g_outstanding += memory != nullptr;
    return memory;
}
HGLOBAL WINAPI CountFree(HGLOBAL memory)
{
    --g_outstanding;
    return GlobalFree(memory);
}

struct Ledger
{
    Ledger(Call failing, int failAt, int failure = -1)
    {
        g_made = {};
        g_failing = failing;
        g_failAt = failAt;
        g_failure = failure;
        g_outstanding = 0;
    }
    HMODULE library = LibraryUnderTest();
    IatPatch open{library, "OpenPrinterA", CountOpen};
    IatPatch close{library, "ClosePrinter", CountClose};
    IatPatch info{library, "GetPrinterA", CountInfo};
    IatPatch properties{library, "DocumentPropertiesA", CountProperties};
    IatPatch capabilities{library, "DeviceCapabilitiesA", CountCapabilities};
    IatPatch context{library, "CreateDCA", CountContext};
    IatPatch deleteContext{library, "DeleteDC", CountDelete};
    IatPatch allocate{library, "GlobalAlloc", CountAllocate};
    IatPatch free{library, "GlobalFree", CountFree};
};

// A driver that says of each paper, in its order, what stands here.
struct ScriptedPaper
{
    WORD id;
    int values[6];
};
const std::vector<ScriptedPaper> ScriptedPapers = {
    {9, {1000, 2000, 10, 20, 980, 1960}},  {300, {1000, 2000, 0, 0, 990, 1990}}, // the extent is the driver's, not the
                                                                                 // page's
    {301, {1000, 2000, 0, 0, 1000, 2000}}, {302, {1000, 2000, 0, 1, 1000, 1999}}, {303, {1000, 2000, 1, 0, 999, 2000}},
    {9, {800, 900, 5, 6, 700, 800}},       {0xFFFE, {500, 600, 0, 0, 500, 600}},  {1, {800, 901, 5, 6, 700, 800}},
};
std::size_t g_paper;

int WINAPI ScriptedCapabilities(LPCSTR, LPCSTR, WORD, LPSTR out, const DEVMODEA*)
{
    for (std::size_t i = 0; out && i < ScriptedPapers.size(); ++i)
        reinterpret_cast<WORD*>(out)[i] = ScriptedPapers[i].id;
    return static_cast<int>(ScriptedPapers.size());
}
LONG WINAPI ScriptedProperties(HWND window, HANDLE printer, LPSTR name, DEVMODEA* out, DEVMODEA* in, DWORD mode)
{
    if (in)
    {
        EXPECT_EQ(static_cast<WORD>(in->dmPaperSize), ScriptedPapers[g_paper].id);
        EXPECT_TRUE(in->dmFields & DM_PAPERSIZE);
        EXPECT_EQ(mode, static_cast<DWORD>(DM_IN_BUFFER | DM_OUT_BUFFER));
        return IDOK;
    }
    return DocumentPropertiesA(window, printer, name, out, in, mode);
}
int WINAPI ScriptedCaps(HDC, int index)
{
    constexpr int Indexes[] = {PHYSICALWIDTH, PHYSICALHEIGHT, PHYSICALOFFSETX, PHYSICALOFFSETY, HORZRES, VERTRES};
    if (index == LOGPIXELSX || index == LOGPIXELSY)
        return (index == LOGPIXELSX ? 600 : 1200) + static_cast<int>(g_paper);
    for (int i = 0; i < 6; ++i)
        if (Indexes[i] == index)
            return ScriptedPapers[g_paper].values[i];
    return -1;
}
BOOL WINAPI NextPaper(HDC context)
{
    ++g_paper;
    return DeleteDC(context);
}

TEST_F(PrinterData, TellsThePrintableAreaOfEachPaper)
{
    const struct
    {
        short paper;
        Area expected;
    } papers[] = {
        {DMPAPER_A4, {1, CRect(37, 38, 2404, 3320), CPoint(300, 300)}},
        {DMPAPER_LETTER, {1, CRect(75, 38, 2400, 3112), CPoint(300, 300)}},
        {257, {1, CRect(0, 0, 2479, 3508), CPoint(300, 300)}}, // A4 borderless
        {258, {1, CRect(0, 0, 1179, 1770), CPoint(300, 300)}}, // photo, borderless
        {DMPAPER_A3, NoArea},
        {-1, NoArea},
        {0, NoArea},
    };
    for (const auto& [paper, expected] : papers)
        EXPECT_EQ(PrintableArea(m_data, paper), expected) << paper;
    EXPECT_EQ(PrintableArea(m_data, DMPAPER_A4, "no such printer").result, 1) << "the papers are kept";
    EXPECT_EQ(PrintableArea(m_data, DMPAPER_ENV_DL).result, 1) << "listed twice";
}

TEST_F(PrinterData, FindsTheBorderlessTwin)
{
    const struct
    {
        short paper;
        Area expected;
    } papers[] = {
        {DMPAPER_A4, {1, CRect(0, 0, 2479, 3508), CPoint(257, 0)}},
        {257, {1, CRect(0, 0, 2479, 3508), CPoint(257, 0)}},
        {256, {1, CRect(0, 0, 1179, 1770), CPoint(258, 0)}},
        {DMPAPER_LETTER, NoTwin},
        {DMPAPER_ENV_DL, NoTwin},
        {DMPAPER_A3, NoTwin},
        {-1, NoTwin},
    };
    for (const auto& [paper, expected] : papers)
        EXPECT_EQ(Borderless(m_data, paper), expected) << paper;
}

TEST_F(PrinterData, TakesTheLastOrTheFirstOfEqualPapers)
{
    g_paper = 0;
    const HMODULE library = LibraryUnderTest();
    const IatPatch capabilities(library, "DeviceCapabilitiesA", ScriptedCapabilities);
    const IatPatch properties(library, "DocumentPropertiesA", ScriptedProperties);
    const IatPatch caps(library, "GetDeviceCaps", ScriptedCaps);
    const IatPatch next(library, "DeleteDC", NextPaper);
    const CPoint dpi(600, 1200); // the first paper's
    EXPECT_EQ(PrintableArea(m_data, 9), (Area{1, CRect(5, 6, 700, 800), dpi})) << "the last one's";
    EXPECT_EQ(PrintableArea(m_data, -2), (Area{1, CRect(0, 0, 500, 600), dpi}));
    EXPECT_EQ(g_paper, ScriptedPapers.size());
    EXPECT_EQ(Borderless(m_data, 9), (Area{1, CRect(0, 0, 1000, 2000), CPoint(301, 0)})) << "the first one's";
    EXPECT_EQ(Borderless(m_data, 300), (Area{1, CRect(0, 0, 1000, 2000), CPoint(301, 0)})) << "the last twin";
    EXPECT_EQ(Borderless(m_data, -2), (Area{1, CRect(0, 0, 500, 600), CPoint(-2, 0)})) << "itself";
    EXPECT_EQ(Borderless(m_data, 1), NoTwin);
}

TEST_F(PrinterData, HandsOutWhatTheSpoolerKnows)
{
    HANDLE open = nullptr;
    ASSERT_TRUE(OpenPrinterA(const_cast<char*>(PrinterName), &open, nullptr));
    for (const HANDLE handle : {HANDLE(nullptr), open, open}) // the caller's handle stays open
    {
        PRINTER_INFO_2A* info = m_data.GetPrinterInfo2(PrinterName, handle);
        ASSERT_TRUE(info);
        EXPECT_STREQ(info->pPrinterName, PrinterName);
        EXPECT_STREQ(info->pDriverName, Driver.name);
        EXPECT_STREQ(info->pPortName, "LPT1:");
        EXPECT_FALSE(GlobalFree(info));

        HGLOBAL memory = nullptr;
        ASSERT_EQ(m_data.GetPrinterDevMode(PrinterName, &memory, handle), 1);
        EXPECT_EQ(GlobalFlags(memory) & GMEM_LOCKCOUNT, 0u);
        const auto* mode = static_cast<const DEVMODEA*>(GlobalLock(memory));
        EXPECT_EQ(std::string(reinterpret_cast<const char*>(mode->dmDeviceName)), std::string(PrinterName, 31));
        EXPECT_TRUE(mode->dmFields & DM_PAPERSIZE);
        EXPECT_GE(GlobalSize(memory), SIZE_T(mode->dmSize) + mode->dmDriverExtra);
        GlobalUnlock(memory);
        EXPECT_FALSE(GlobalFree(memory));

        ASSERT_EQ(DevNames(m_data, PrinterName, &memory, handle), 1);
        const std::string name = PrinterName;
        const std::string texts = std::string(Driver.name) + '\0' + name + '\0' + "LPT1:" + '\0';
        const WORD device = static_cast<WORD>(8 + Driver.name.GetLength() + 1);
        const WORD offsets[] = {8, device, static_cast<WORD>(device + name.size() + 1), 0};
        ASSERT_EQ(GlobalSize(memory), sizeof offsets + texts.size());
        EXPECT_EQ(GlobalFlags(memory) & GMEM_LOCKCOUNT, 0u);
        EXPECT_EQ(std::string(static_cast<char*>(GlobalLock(memory)), GlobalSize(memory)),
                  std::string(reinterpret_cast<const char*>(offsets), sizeof offsets) + texts);
        GlobalUnlock(memory);
        EXPECT_FALSE(GlobalFree(memory));
    }
    EXPECT_EQ(DevNames(m_data, PrinterName, nullptr, open), 0);
    ClosePrinter(open);
}

TEST_F(PrinterData, KnowsNoPrinterOfAnotherName)
{
    for (const std::string& name : {std::string("no such printer"), std::string(), std::string(300, 'n')})
    {
        EXPECT_FALSE(m_data.GetPrinterInfo2(name.c_str(), nullptr)) << name;
        HGLOBAL memory = &memory;
        EXPECT_EQ(m_data.GetPrinterDevMode(name.c_str(), &memory, nullptr), 0) << name;
        EXPECT_FALSE(memory) << name;
        EXPECT_EQ(PrintableArea(m_data, DMPAPER_A4, name.c_str()), NoArea) << name;
        EXPECT_EQ(Borderless(m_data, DMPAPER_A4, name.c_str()), NoTwin) << name;
    }
    EXPECT_EQ(PrintableArea(m_data, DMPAPER_A4).result, 1) << "a failed reading leaves nothing behind";
}

TEST_F(PrinterData, LeavesNothingBehindWhenACallFails)
{
    const struct
    {
        Call call;
        int ordinal;
        int failure;
    } failures[] = {
        {OPEN, 1, 0},        {PROPERTIES, 1, -1}, {PROPERTIES, 1, 0},    {PROPERTIES, 2, -1},  {PROPERTIES, 2, 0},
        {PROPERTIES, 3, -1}, {PROPERTIES, 5, -1}, {INFO, 1, 0},          {INFO, 2, 0},         {ALLOCATE, 1, 0},
        {ALLOCATE, 2, 0},    {ALLOCATE, 3, 0},    {CAPABILITIES, 1, -1}, {CAPABILITIES, 1, 0}, {CAPABILITIES, 2, -1},
        {CONTEXT, 1, 0},     {CONTEXT, 3, 0},     {CONTEXT, 7, 0},
    };
    for (const auto& [call, ordinal, failure] : failures)
    {
        SCOPED_TRACE(testing::Message() << "call " << call << ", " << ordinal << ": " << failure);
        const Ledger ledger(call, ordinal, failure);
        CPrinterData data;
        EXPECT_EQ(PrintableArea(data, DMPAPER_A4), NoArea);
        EXPECT_EQ(g_outstanding, 0);
        EXPECT_GE(g_made[call], ordinal) << "the failure did not happen";
        EXPECT_EQ(Borderless(data, DMPAPER_A4).dpi.x, 257) << "a later question reads again";
        EXPECT_EQ(g_outstanding, 0);
        const int contexts = g_made[CONTEXT];
        EXPECT_EQ(PrintableArea(data, DMPAPER_A4).result, 1);
        EXPECT_EQ(g_made[CONTEXT], contexts) << "and is the last to read";
    }
}

TEST_F(PrinterData, GivesTheMemoryOfAFailedDeviceModeBack)
{
    for (const int failing : {1, 2})
    {
        const Ledger ledger(PROPERTIES, failing);
        HGLOBAL memory = &memory;
        EXPECT_EQ(m_data.GetPrinterDevMode(PrinterName, &memory, nullptr), 0);
        EXPECT_FALSE(memory);
        EXPECT_EQ(g_outstanding, 0);
    }
}
} // namespace
