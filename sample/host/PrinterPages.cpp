#include "PrinterPages.h"
#include "Papers.h"
#include "links/CComxDataRetriever.h"
#include "locale/OEMTeleIni.h"
#include <cstdio>
#include <memory>

bool ReportSupport()
{
    const auto support = std::make_unique<OEMTeleIni>(); // its lists are too large for the stack
    CString country;
    const CString number = support->GetDefaultPhoneNumber(country);
    std::printf("Your country: %s, support %s\n", static_cast<LPCSTR>(country), static_cast<LPCSTR>(number));
    support->GetPhoneNumberList();
    constexpr int Shown = 6;
    for (int i = 0; i < support->m_nCount && i < Shown; ++i)
        std::printf("  %s\n", static_cast<LPCSTR>(support->m_strDisplay[i]));
    if (support->m_nCount > Shown)
        std::printf("  and %d more\n", support->m_nCount - Shown);
    return support->m_nCount > 0;
}

bool ReportPapers(const char* printer)
{
    const std::vector<Paper> papers = PapersOf(printer);
    std::printf("%-30s%-36s%s\n", "PAPER", "PRINTABLE AREA (pixels)", "BORDERLESS TWIN");
    for (const Paper& paper : papers)
        std::printf("%-30s%-36s%s\n", paper.name.c_str(), (paper.area + ", " + paper.resolution).c_str(),
                    paper.twin.c_str());
    return !papers.empty();
}

bool ReportInk(const char* printer)
{
    CComxDataRetriever cache;
    if (!cache.GetPrinterCacheData(printer))
    {
        std::printf("Nothing is known of \"%s\".\n", printer);
        return false;
    }
    std::printf("Printer %s, cartridges %lu and %lu\n", static_cast<LPCSTR>(cache.GetSerialNumber()),
                cache.GetLogCartId(1), cache.GetLogCartId(2));
    for (int ink = 1; ink <= PRINTERCACHE_INKS; ++ink)
        if (const unsigned long level = cache.GetInkPercent(ink))
            std::printf("  ink %d: %lu %%\n", ink, level);
    return true;
}
