#include "Papers.h"
#include "system/CPrinterData.h"
#include <afxwin.h>
#include <winspool.h>
#include <algorithm>
#include <cstdio>
#include <cstring>

namespace
{
constexpr size_t NameSize = 64; // of each name in the driver's answer

struct DriverPaper
{
    short id;
    std::string name;
};

std::vector<DriverPaper> DriverPapers(const char* printer)
{
    const int count = static_cast<int>(DeviceCapabilitiesA(printer, nullptr, DC_PAPERS, nullptr, nullptr));
    if (count <= 0)
        return {};
    const size_t size = static_cast<size_t>(count);
    std::vector<short> ids(size);
    std::vector<char> names(size * NameSize);
    DeviceCapabilitiesA(printer, nullptr, DC_PAPERS, reinterpret_cast<char*>(ids.data()), nullptr);
    DeviceCapabilitiesA(printer, nullptr, DC_PAPERNAMES, names.data(), nullptr);
    std::vector<DriverPaper> papers;
    for (size_t i = 0; i < size; ++i)
    {
        const char* const name = names.data() + i * NameSize;
        papers.push_back({ids[i], std::string(name, strnlen(name, NameSize))});
    }
    return papers;
}

std::string NameOf(const std::vector<DriverPaper>& papers, short id)
{
    const auto found =
        std::find_if(papers.begin(), papers.end(), [id](const DriverPaper& paper) { return paper.id == id; });
    return found != papers.end() ? found->name : "paper " + std::to_string(id);
}
} // namespace

std::vector<Paper> PapersOf(const char* printer)
{
    std::vector<Paper> result;
    CPrinterData data;
    const std::vector<DriverPaper> papers = DriverPapers(printer);
    for (const DriverPaper& paper : papers)
    {
        CRect area, twinArea;
        CPoint dpi;
        if (!data.GetPrintableArea(printer, paper.id, area, dpi))
            return {};
        char text[64];
        std::snprintf(text, sizeof text, "%ld x %ld at (%ld, %ld), %ld dpi", area.right, area.bottom, area.left,
                      area.top, dpi.x);
        short twin = paper.id;
        const bool borderless = data.GetBorderlessPaperSize(printer, twin, twinArea) != 0;
        result.push_back({paper.name, text, borderless ? NameOf(papers, twin) : "none"});
    }
    return result;
}
