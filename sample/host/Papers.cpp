#include "Papers.h"
#include "system/CPrinterData.h"
#include <afxwin.h>
#include <winspool.h>
#include <algorithm>
#include <array>
#include <cstdio>
#include <cstring>

namespace
{
struct DriverPaper
{
    short id;
    std::string name;
};

/// A list that the driver has of its papers, with entries of this type; empty when it has none or does not tell.
template <class Entry>
std::vector<Entry> DriverList(const char* printer, WORD list)
{
    const int count = DeviceCapabilitiesA(printer, nullptr, list, nullptr, nullptr);
    if (count <= 0)
        return {};
    std::vector<Entry> entries(static_cast<size_t>(count));
    const int told = DeviceCapabilitiesA(printer, nullptr, list, reinterpret_cast<char*>(entries.data()), nullptr);
    entries.resize(static_cast<size_t>(std::clamp(told, 0, count)));
    return entries;
}

/// What a paper without a name is called.
std::string NumberedName(short id)
{
    return "Paper " + std::to_string(id);
}

std::vector<DriverPaper> DriverPapers(const char* printer)
{
    using Name = std::array<char, 64>; // a NUL only behind shorter ones
    const auto names = DriverList<Name>(printer, DC_PAPERNAMES);
    std::vector<DriverPaper> papers;
    for (const short id : DriverList<short>(printer, DC_PAPERS))
    {
        const size_t index = papers.size();
        papers.push_back({id, index < names.size()
                                  ? std::string(names[index].data(), strnlen(names[index].data(), names[index].size()))
                                  : NumberedName(id)});
    }
    return papers;
}

std::string NameOf(const std::vector<DriverPaper>& papers, short id)
{
    const auto found =
        std::find_if(papers.begin(), papers.end(), [id](const DriverPaper& paper) { return paper.id == id; });
    return found != papers.end() ? found->name : NumberedName(id);
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
        std::snprintf(text, sizeof text, "%ld x %ld at (%ld, %ld)", area.right, area.bottom, area.left, area.top);
        short twin = paper.id;
        const bool borderless = data.GetBorderlessPaperSize(printer, twin, twinArea) != 0;
        result.push_back(
            {paper.name, text, std::to_string(dpi.x) + " dpi", borderless ? NameOf(papers, twin) : "none"});
    }
    return result;
}
