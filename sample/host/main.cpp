// The demo host: what an application of the suite does with the library, on the sample product.
//   demohost report [PRINTER]         prints settings and their sources, a registry round trip, and the trace of it all
//   demohost window [FIELD=NUMBER...] shows the job status window on an ink report with these fields changed
//   demohost link KIND [FIELD=NUMBER...] prints the address of a link for an ink report with these fields changed
//   demohost journey                  clicks the supplies link and prints what came of it
//   demohost tour FOLDER ltr|rtl      drives the window through its states and saves a picture of each
#include "InkReport.h"
#include "JobStatusWindow.h"
#include "Journey.h"
#include "LinkAddress.h"
#include "Links.h"
#include "PrinterPages.h"
#include "RegistryReport.h"
#include "SettingsReport.h"
#include "Tour.h"
#include "TraceLog.h"
#include "../install/ProgramEntry.h"
#include <afxwin.h>
#include "settings/TvkProduct.h"
#include <cstdio>
#include <cstring>

namespace
{
void Heading(const char* text)
{
    std::printf("\n=== %s\n\n", text);
}

void ReportTrace(TraceLog& trace)
{
    trace.NewRecords();
    const auto& records = trace.Records();
    constexpr size_t Shown = 24;
    std::printf("%zu records in %s; the last %zu:\n\n", records.size(), trace.Path().c_str(),
                records.size() < Shown ? records.size() : Shown);
    for (size_t i = records.size() < Shown ? 0 : records.size() - Shown; i < records.size(); ++i)
        std::printf("%s\n", records[i].c_str());
}

int Report(const char* printer)
{
    TraceLog trace;
    if (!trace.IsOn())
        std::printf("The trace could not be switched on: no rights to its key.\n");
    std::printf("Product prefix \"%s\"\n", static_cast<LPCSTR>(TvkProduct::GetProductPrefix()));

    Heading("Settings, and where each value came from");
    const bool settings = ReportSettings(trace);
    Heading("Settings of one printer in the registry");
    const bool registry = ReportRegistry(printer);
    Heading("Support by telephone");
    const bool support = ReportSupport();
    Heading("What the printer can print on");
    const bool papers = ReportPapers(printer);
    Heading("The trace that all of it wrote");
    ReportTrace(trace);
    const bool good = settings && registry && support && papers;
    std::printf("\n%s\n", good ? "All done." : "Something went wrong, see above.");
    return good ? 0 : 1;
}

/// Changes fields of the report; says which one is none.
bool SetInkFields(INKINFO& report, int fieldCount, char** fields)
{
    for (int i = 0; i < fieldCount; ++i)
    {
        if (!SetInkField(report, fields[i]))
        {
            std::printf("not a field of the ink report and a number: %s\n", fields[i]);
            return false;
        }
    }
    return true;
}

int ShowWindow(int fieldCount, char** fields)
{
    INKINFO report = LastInkReport(PrinterName());
    if (!SetInkFields(report, fieldCount, fields))
        return 2;
    JobStatusWindow(report, 2).DoModal();
    return 0;
}

int PrintAddress(const char* kind, int fieldCount, char** fields)
{
    INKINFO report = LastInkReport(PrinterName());
    if (!SetInkFields(report, fieldCount, fields))
        return 2;
    for (const LinkKind& link : LinkKinds)
    {
        if (std::strcmp(link.kind, kind) == 0)
        {
            CString subUrl;
            TvkProduct().GetSetting(link.subUrlKey, subUrl);
            std::printf("%s\n", static_cast<LPCSTR>(LinkAddress().Of(subUrl, report)));
            return 0;
        }
    }
    std::printf("no link of the kind %s; the kinds are:", kind);
    for (const LinkKind& link : LinkKinds)
        std::printf(" %s", link.kind);
    std::printf("\n");
    return 2;
}

int Tour(const char* folder, const char* layout)
{
    const int pictures = TakeTour(folder, std::strcmp(layout, "rtl") == 0);
    if (pictures < 0)
    {
        std::printf("the pictures could not be saved in %s\n", folder);
        return 1;
    }
    return 0;
}

int Usage()
{
    std::printf("demohost report [PRINTER] | window [FIELD=NUMBER...] |\n"
                "         link KIND [FIELD=NUMBER...] | journey | tour FOLDER ltr|rtl\n");
    return 2;
}

CWinApp Application;
} // namespace

int main(int argc, char** argv)
{
    if (!AfxWinInit(GetModuleHandleA(nullptr), nullptr, GetCommandLineA(), SW_SHOW))
        return 1;
    const char* const command = argc > 1 ? argv[1] : "report";
    if (std::strcmp(command, "report") == 0)
        return Report(argc > 2 ? CString(argv[2]) : PrinterName());
    if (std::strcmp(command, "window") == 0)
        return ShowWindow(argc - 2, argv + 2);
    if (std::strcmp(command, "link") == 0 && argc > 2)
        return PrintAddress(argv[2], argc - 3, argv + 3);
    if (std::strcmp(command, "journey") == 0)
        return ReportJourney(LastInkReport(PrinterName())) ? 0 : 1;
    if (std::strcmp(command, "tour") == 0 && argc == 4)
        return Tour(argv[2], argv[3]);
    return Usage();
}
