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
#include "../install/Step.h"
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
    Heading("Its ink, as it was last reported");
    const bool ink = ReportInk(printer);
    Heading("The trace that all of it wrote");
    ReportTrace(trace);
    const bool good = settings && registry && support && papers && ink;
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
    const bool rightToLeft = std::strcmp(layout, "rtl") == 0;
    if (!rightToLeft && std::strcmp(layout, "ltr") != 0)
    {
        std::printf("no layout %s; the layouts are: ltr rtl\n", layout);
        return 2;
    }
    if (TakeTour(folder, rightToLeft) < 0)
    {
        std::printf("the pictures could not be saved in %s\n", folder);
        return 1;
    }
    return 0;
}

struct Command
{
    const char* name;
    int fewest, most; // arguments
    int (*run)(int count, char** arguments);
};

constexpr int AnyNumber = 1000;
constexpr Command Commands[] = {
    {"report", 0, 1, [](int count, char** arguments) { return Report(count ? CString(arguments[0]) : PrinterName()); }},
    {"window", 0, AnyNumber, [](int count, char** arguments) { return ShowWindow(count, arguments); }},
    {"link", 1, AnyNumber,
     [](int count, char** arguments) { return PrintAddress(arguments[0], count - 1, arguments + 1); }},
    {"journey", 0, 0, [](int, char**) { return ReportJourney(LastInkReport(PrinterName())) ? 0 : 1; }},
    {"tour", 2, 2, [](int, char** arguments) { return Tour(arguments[0], arguments[1]); }},
};

int Run(const Command& command, int count, char** arguments)
{
    try
    {
        return command.run(count, arguments);
    }
    catch (const StepFailure& failure)
    {
        std::printf("%s\n", failure.what());
        return 1;
    }
}

CWinApp Application;
} // namespace

int main(int argc, char** argv)
{
    if (!AfxWinInit(GetModuleHandleA(nullptr), nullptr, GetCommandLineA(), SW_SHOW))
        return 1;
    const char* const name = argc > 1 ? argv[1] : "report";
    const int count = argc > 2 ? argc - 2 : 0;
    for (const Command& command : Commands)
        if (std::strcmp(command.name, name) == 0 && count >= command.fewest && count <= command.most)
            return Run(command, count, argv + 2);
    std::printf("demohost report [PRINTER] | window [FIELD=NUMBER...] |\n"
                "         link KIND [FIELD=NUMBER...] | journey | tour FOLDER ltr|rtl\n");
    return 2;
}
