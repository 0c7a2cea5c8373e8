// The demo host: what an application of the suite does with the library, on the sample product.
//   demohost [PRINTER]    prints settings and their sources, a registry round trip, and the trace that all of it wrote
#include "RegistryReport.h"
#include "SettingsReport.h"
#include "TraceLog.h"
#include <afx.h>
#include "settings/TvkProduct.h"
#include <cstdio>

namespace
{
constexpr char SamplePrinter[] = "Torvane Larkmoor 460";

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
} // namespace

int main(int argc, char** argv)
{
    const char* printer = argc > 1 ? argv[1] : SamplePrinter;
    TraceLog trace;
    if (!trace.IsOn())
        std::printf("The trace could not be switched on: no rights to its key.\n");
    std::printf("Product prefix \"%s\"\n", static_cast<LPCSTR>(TvkProduct::GetProductPrefix()));

    Heading("Settings, and where each value came from");
    const bool settings = ReportSettings(trace);
    Heading("Settings of one printer in the registry");
    const bool registry = ReportRegistry(printer);
    Heading("The trace that all of it wrote");
    ReportTrace(trace);
    std::printf("\n%s\n", settings && registry ? "All done." : "Something went wrong, see above.");
    return settings && registry ? 0 : 1;
}
