#include "InkReport.h"
#include "links/CComxDataRetriever.h"
#include <charconv>
#include <iterator>

namespace
{
struct Field
{
    const char* name;
    int INKINFO::*member;
};

constexpr Field Fields[] = {
    {"InkStyle", &INKINFO::InkStyle},
    {"InkPercent1", &INKINFO::InkPercent1},
    {"InkPercent2", &INKINFO::InkPercent2},
    {"InkPercent3", &INKINFO::InkPercent3},
    {"InkPercent4", &INKINFO::InkPercent4},
    {"InkPercent5", &INKINFO::InkPercent5},
    {"InkPercent6", &INKINFO::InkPercent6},
    {"InkPercent7", &INKINFO::InkPercent7},
    {"InkPercent8", &INKINFO::InkPercent8},
    {"InkPercent9", &INKINFO::InkPercent9},
    {"InkPercent10", &INKINFO::InkPercent10},
    {"iLogCartID1", &INKINFO::iLogCartID1},
    {"iLogCartID2", &INKINFO::iLogCartID2},
    {"iPhysCartID1", &INKINFO::iPhysCartID1},
    {"iPhysCartID2", &INKINFO::iPhysCartID2},
    {"iCart1Authenticity", &INKINFO::iCart1Authenticity},
    {"iCart2Authenticity", &INKINFO::iCart2Authenticity},
    {"iEstPagesRemaining", &INKINFO::iEstPagesRemaining},
};
} // namespace

INKINFO SampleInkReport()
{
    INKINFO report = {};
    report.InkStyle = 2;
    report.InkPercent1 = 18;
    report.InkPercent2 = 58;
    report.InkPercent3 = 62;
    report.InkPercent4 = 41;
    report.iLogCartID1 = report.iPhysCartID1 = 80; // colour, standard yield
    report.iLogCartID2 = report.iPhysCartID2 = 50; // black, high yield
    report.iEstPagesRemaining = 120;
    return report;
}

INKINFO LastInkReport(const char* printer)
{
    static constexpr int INKINFO::*Levels[] = {&INKINFO::InkPercent1, &INKINFO::InkPercent2, &INKINFO::InkPercent3,
                                               &INKINFO::InkPercent4, &INKINFO::InkPercent5, &INKINFO::InkPercent6,
                                               &INKINFO::InkPercent7, &INKINFO::InkPercent8, &INKINFO::InkPercent9,
                                               &INKINFO::InkPercent10};
    static_assert(std::size(Levels) == PRINTERCACHE_INKS);
    CComxDataRetriever cache;
    if (!cache.GetPrinterCacheData(printer))
        return SampleInkReport();
    INKINFO report = {};
    report.InkStyle = static_cast<int>(cache.GetInkStyle());
    for (int ink = 0; ink < PRINTERCACHE_INKS; ++ink)
        report.*Levels[ink] = static_cast<int>(cache.GetInkPercent(ink + 1));
    report.iLogCartID1 = static_cast<int>(cache.GetLogCartId(1));
    report.iLogCartID2 = static_cast<int>(cache.GetLogCartId(2));
    report.iPhysCartID1 = static_cast<int>(cache.GetPhysCartId(1));
    report.iPhysCartID2 = static_cast<int>(cache.GetPhysCartId(2));
    report.iEstPagesRemaining = PagesUnknown;
    return report;
}

bool SetInkField(INKINFO& report, const std::string& assignment)
{
    const size_t equals = assignment.find('=');
    if (equals == std::string::npos)
        return false;
    int value = 0;
    const char* const end = assignment.data() + assignment.size();
    const auto parsed = std::from_chars(assignment.data() + equals + 1, end, value);
    if (parsed.ec != std::errc() || parsed.ptr != end)
        return false;
    for (const Field& field : Fields)
    {
        if (assignment.compare(0, equals, field.name) == 0)
        {
            report.*field.member = value;
            return true;
        }
    }
    return false;
}
