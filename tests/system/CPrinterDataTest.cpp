// Papers and settings of a printer that is installed for the test, with the system's PostScript driver and the
// description of the sample printer; and what is left of each failing spooler call.
#include "system/CPrinterData.h"
#include "install/InstalledPrinter.h"
#include "support/Watch.h"
#include <gtest/gtest.h>
#include <array>
#include <map>
#include <memory>
#include <new>
#include <tuple>
#include <vector>

namespace
{
const char* const PrinterName = "A test printer with a name beyond thirty-one characters";
const PrinterDriver Driver = {"A test driver", CString(TestFolder().c_str()) + "larkmoor.ppd"};

/// The answer as "result: left,top right,bottom" and what else it holds.
std::string Answer(int result, const CRect& rect, const std::string& rest)
{
    CString text;
    text.Format("%d: %ld,%ld %ld,%ld ", result, rect.left, rect.top, rect.right, rect.bottom);
    return std::string(text) + rest;
}

std::string PrintableArea(CPrinterData& data, short paper, const char* printer = PrinterName)
{
    CRect rect(1, 2, 3, 4);
    CPoint dpi(5, 6);
    const int result = data.GetPrintableArea(printer, paper, rect, dpi);
    return Answer(result, rect, "at " + std::to_string(dpi.x) + "," + std::to_string(dpi.y));
}
const char* const NoArea = "0: 0,0 0,0 at 0,0";
const char* const A4Area = "1: 37,38 2404,3320 at 300,300";

std::string Borderless(CPrinterData& data, short paper, const char* printer = PrinterName)
{
    CRect rect(1, 2, 3, 4);
    const int result = data.GetBorderlessPaperSize(printer, paper, rect);
    return Answer(result, rect, "paper " + std::to_string(paper));
}
const char* const NoTwin = "0: 0,0 0,0 paper -1";
const char* const A4Twin = "1: 0,0 2479,3508 paper 257";

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

const char* const NewArray = "_ZnayRKSt9nothrow_t";

/// The spooler, drawing and memory calls of the class, one of which may fail: what they make is weighed against what is
/// given back.
struct Ledger
{
    Ledger(const char* call, int at, int failed = -1) : failing(call), failAt(at), failure(failed) {}
    int At(const std::string& call) const { return call == failing ? failAt : 0; }
    int Outstanding() const
    {
        return open.Done() - close.Calls() + context.Done() - deleteContext.Calls() + allocate.Done() - free.Calls() +
               arrays.Done() - deleteArrays.Calls();
    }

    const std::string failing;
    const int failAt, failure;
    const HMODULE library = LibraryUnderTest();
    Watch<decltype(&OpenPrinterA)> open{"OpenPrinterA", At("OpenPrinterA")};
    Watch<decltype(&ClosePrinter)> close{"ClosePrinter"};
    Watch<decltype(&GetPrinterA)> info{"GetPrinterA", At("GetPrinterA")};
    Watch<decltype(&DocumentPropertiesA)> properties{"DocumentPropertiesA", At("DocumentPropertiesA"), library,
                                                     failure};
    Watch<decltype(&DeviceCapabilitiesA)> papers{"DeviceCapabilitiesA", At("DeviceCapabilitiesA"), library, failure};
    Watch<decltype(&CreateDCA)> context{"CreateDCA", At("CreateDCA")};
    Watch<decltype(&DeleteDC)> deleteContext{"DeleteDC"};
    Watch<decltype(&GlobalAlloc)> allocate{"GlobalAlloc", At("GlobalAlloc")};
    Watch<decltype(&GlobalFree)> free{"GlobalFree"};
    Watch<decltype(&GlobalLock), struct Lock> lock{"GlobalLock", At("GlobalLock")};
    Watch<void*(WINAPI*)(std::size_t, const std::nothrow_t&)> arrays{NewArray, At(NewArray)};
    Watch<void(WINAPI*)(void*)> deleteArrays{"_ZdaPv"};
};

// A driver that says of each paper, in its order, what stands here: page, offsets, extent.
const std::vector<std::pair<WORD, std::array<int, 6>>> ScriptedPapers = {
    {9, {1000, 2000, 10, 20, 980, 1960}},
    {300, {1000, 2000, 0, 0, 990, 1990}}, // an extent is the driver's word, not
                                          // the page's
    {301, {1000, 2000, 0, 0, 1000, 2000}},
    {302, {1000, 2000, 0, 1, 1000, 1999}},
    {303, {1000, 2000, 1, 0, 999, 2000}},
    {9, {800, 900, 5, 6, 700, 800}},
    {0xFFFE, {500, 600, 0, 0, 500, 600}},
    {1, {800, 901, 5, 6, 700, 800}},
};
std::size_t g_paper;

int WINAPI ScriptedCapabilities(LPCSTR device, LPCSTR output, WORD, LPSTR out, const DEVMODEA*)
{
    EXPECT_STREQ(device, PrinterName);
    EXPECT_STREQ(output, "LPT1:");
    for (std::size_t i = 0; out && i < ScriptedPapers.size(); ++i)
        reinterpret_cast<WORD*>(out)[i] = ScriptedPapers[i].first;
    return static_cast<int>(ScriptedPapers.size());
}
LONG WINAPI ScriptedProperties(HWND window, HANDLE printer, LPSTR name, DEVMODEA* out, DEVMODEA* in, DWORD mode)
{
    if (!in)
        return DocumentPropertiesA(window, printer, name, out, in, mode);
    EXPECT_EQ(static_cast<WORD>(in->dmPaperSize), ScriptedPapers[g_paper].first);
    EXPECT_TRUE(in->dmFields & DM_PAPERSIZE);
    EXPECT_EQ(mode, static_cast<DWORD>(DM_IN_BUFFER | DM_OUT_BUFFER));
    return g_paper % 2 ? IDOK : 0; // any answer but a negative one is fine
}
HDC WINAPI ScriptedContext(LPCSTR driver, LPCSTR device, LPCSTR output, const DEVMODEA* mode)
{
    EXPECT_EQ(std::string(driver) + device + output, std::string(Driver.name) + PrinterName + "LPT1:");
    return CreateDCA(driver, device, output, mode);
}
int WINAPI ScriptedCaps(HDC, int index)
{
    const auto& values = ScriptedPapers[g_paper].second;
    const std::map<int, int> caps = {{PHYSICALWIDTH, values[0]},
                                     {PHYSICALHEIGHT, values[1]},
                                     {PHYSICALOFFSETX, values[2]},
                                     {PHYSICALOFFSETY, values[3]},
                                     {HORZRES, values[4]},
                                     {VERTRES, values[5]},
                                     {LOGPIXELSX, 600 + static_cast<int>(g_paper)},
                                     {LOGPIXELSY, 1200 + static_cast<int>(g_paper)}};
    return caps.at(index);
}
BOOL WINAPI NextPaper(HDC context)
{
    ++g_paper;
    return DeleteDC(context);
}

TEST_F(PrinterData, TellsThePrintableAreaAndTheBorderlessTwinOfEachPaper)
{
    const std::tuple<short, const char*, const char*> papers[] = {
        {DMPAPER_A4, A4Area, A4Twin},
        {257, "1: 0,0 2479,3508 at 300,300", A4Twin},                         // A4 borderless
        {256, "1: 37,37 1104,1583 at 300,300", "1: 0,0 1179,1770 paper 258"}, // photo
        {258, "1: 0,0 1179,1770 at 300,300", "1: 0,0 1179,1770 paper 258"},
        {DMPAPER_LETTER, "1: 75,38 2400,3112 at 300,300", NoTwin},
        {DMPAPER_ENV_DL, "1: 75,150 1150,2300 at 300,300", NoTwin}, // listed twice
        {DMPAPER_A3, NoArea, NoTwin},
        {-1, NoArea, NoTwin},
        {0, NoArea, NoTwin},
    };
    for (const auto& [paper, area, twin] : papers)
    {
        EXPECT_EQ(PrintableArea(m_data, paper), area) << paper;
        EXPECT_EQ(Borderless(m_data, paper), twin) << paper;
    }
    EXPECT_EQ(PrintableArea(m_data, DMPAPER_A4, "no such printer"), A4Area) << "the papers are kept";
}

TEST_F(PrinterData, TakesTheLastOrTheFirstOfEqualPapers)
{
    g_paper = 0;
    const HMODULE library = LibraryUnderTest();
    const IatPatch capabilities(library, "DeviceCapabilitiesA", ScriptedCapabilities);
    const IatPatch properties(library, "DocumentPropertiesA", ScriptedProperties);
    const IatPatch context(library, "CreateDCA", ScriptedContext);
    const IatPatch caps(library, "GetDeviceCaps", ScriptedCaps);
    const IatPatch next(library, "DeleteDC", NextPaper);
    // The resolution is the first paper's.
    EXPECT_EQ(PrintableArea(m_data, 9), "1: 5,6 700,800 at 600,1200") << "the last one's";
    EXPECT_EQ(PrintableArea(m_data, -2), "1: 0,0 500,600 at 600,1200");
    EXPECT_EQ(g_paper, ScriptedPapers.size());
    EXPECT_EQ(Borderless(m_data, 9), "1: 0,0 1000,2000 paper 301") << "the first one's";
    EXPECT_EQ(Borderless(m_data, 300), "1: 0,0 1000,2000 paper 301") << "the last twin";
    EXPECT_EQ(Borderless(m_data, -2), "1: 0,0 500,600 paper -2") << "itself";
    EXPECT_EQ(Borderless(m_data, 1), NoTwin);
}

/// The bytes of a block that was handed out unlocked; frees it.
std::string Taken(HGLOBAL memory)
{
    EXPECT_EQ(GlobalFlags(memory) & GMEM_LOCKCOUNT, 0u);
    const std::string bytes(static_cast<char*>(GlobalLock(memory)), GlobalSize(memory));
    GlobalUnlock(memory);
    EXPECT_FALSE(GlobalFree(memory));
    return bytes;
}

TEST_F(PrinterData, HandsOutWhatTheSpoolerKnows)
{
    HANDLE open = nullptr;
    ASSERT_TRUE(OpenPrinterA(const_cast<char*>(PrinterName), &open, nullptr));
    const std::string driver(Driver.name), name = PrinterName;
    const WORD device = static_cast<WORD>(8 + driver.size() + 1), output = static_cast<WORD>(device + name.size() + 1);
    const WORD offsets[] = {8, device, output, 0};
    const std::string names = std::string(reinterpret_cast<const char*>(offsets), sizeof offsets) + driver + '\0' +
                              name + '\0' + "LPT1:" + '\0';
    for (const HANDLE handle : {HANDLE(nullptr), open, open}) // the caller's handle stays open
    {
        PRINTER_INFO_2A* info = m_data.GetPrinterInfo2(PrinterName, handle);
        ASSERT_TRUE(info);
        EXPECT_EQ(info->pPrinterName, name);
        EXPECT_EQ(info->pDriverName, driver);
        EXPECT_STREQ(info->pPortName, "LPT1:");
        EXPECT_FALSE(GlobalFree(info));

        HGLOBAL memory = nullptr;
        ASSERT_EQ(m_data.GetPrinterDevMode(PrinterName, &memory, handle), 1);
        const std::string bytes = Taken(memory);
        const auto* mode = reinterpret_cast<const DEVMODEA*>(bytes.data());
        EXPECT_EQ(reinterpret_cast<const char*>(mode->dmDeviceName), name.substr(0, 31));
        EXPECT_TRUE(mode->dmFields & DM_PAPERSIZE);
        EXPECT_GE(bytes.size(), std::size_t(mode->dmSize) + mode->dmDriverExtra);
        ASSERT_EQ(DevNames(m_data, PrinterName, &memory, handle), 1);
        EXPECT_EQ(Taken(memory), names);
    }
    EXPECT_EQ(m_data.GetPrinterDevMode(PrinterName, nullptr, open), 0);
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
    EXPECT_EQ(PrintableArea(m_data, DMPAPER_A4), A4Area) << "a failed reading leaves nothing behind";
}

TEST_F(PrinterData, LeavesNothingBehindWhenACallFails)
{
    using Ordinals = std::vector<int>;
    const std::tuple<const char*, int, Ordinals> failures[] = {
        {"OpenPrinterA", 0, {1}},
        {"GetPrinterA", 0, {1, 2}},
        {"DocumentPropertiesA", -1, {1, 2, 3, 5}},
        {"DocumentPropertiesA", 0, {1, 2}},
        {"DeviceCapabilitiesA", -1, {1, 2}},
        {"DeviceCapabilitiesA", 0, {1}},
        {"CreateDCA", 0, {1, 3, 7}},
        {"GlobalAlloc", 0, {1, 2, 3}},
        {NewArray, 0, {1, 2}},
        {"GlobalLock", 0, {1, 2, 3, 4}},
    };
    for (const auto& [call, failure, ordinals] : failures)
        for (const int ordinal : ordinals)
        {
            SCOPED_TRACE(testing::Message() << call << " " << ordinal << ": " << failure);
            const Ledger ledger(call, ordinal, failure);
            auto data = std::make_unique<CPrinterData>();
            EXPECT_EQ(PrintableArea(*data, DMPAPER_A4), NoArea);
            EXPECT_EQ(ledger.Outstanding(), 0);
            EXPECT_EQ(Borderless(*data, DMPAPER_A4), A4Twin) << "a later question reads again";
            const int contexts = ledger.context.Calls();
            EXPECT_EQ(PrintableArea(*data, DMPAPER_A4), A4Area);
            EXPECT_EQ(ledger.context.Calls(), contexts) << "and is the last to read";
            data.reset();
            EXPECT_EQ(ledger.Outstanding(), 0);
        }
}

TEST_F(PrinterData, HandsOutAFailedDeviceModeOnlyWhileSomebodyHoldsIt)
{
    HGLOBAL memory = &memory;
    for (const int failing : {1, 2})
    {
        const Ledger ledger("DocumentPropertiesA", failing);
        EXPECT_EQ(m_data.GetPrinterDevMode(PrinterName, &memory, nullptr), 0);
        EXPECT_FALSE(memory);
        EXPECT_EQ(ledger.Outstanding(), 0);
    }
    const IatPatch holding(
        LibraryUnderTest(), "DocumentPropertiesA",
        +[](HWND window, HANDLE printer, LPSTR name, DEVMODEA* out, DEVMODEA* in, DWORD mode) -> LONG {
            return out      ? GlobalLock(GlobalHandle(out)),
                   IDCANCEL : DocumentPropertiesA(window, printer, name, out, in, mode);
        });
    EXPECT_EQ(m_data.GetPrinterDevMode(PrinterName, &memory, nullptr), 0);
    ASSERT_TRUE(memory);
    EXPECT_EQ(GlobalFlags(memory) & GMEM_LOCKCOUNT, 1u);
    GlobalUnlock(memory);
    GlobalFree(memory);
}
} // namespace
