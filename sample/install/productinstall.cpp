// productinstall [--printer NAME] [--trace 0-4]: installs the sample product into this machine, as the suite's
// installer does: the files of the driver's and the system directory, a printer, its registry keys, the supplies key,
// shortcuts.
// productinstall --remove: takes all of it out again.
//
// Every step is one line of output. A step that fails ends the installation with exit code 1; --remove then takes out
// what was done so far.
#include "InstalledFiles.h"
#include "InstalledPrinter.h"
#include "InstalledShortcuts.h"
#include "ProgramEntry.h"
#include "RegistryTree.h"
#include "Step.h"
#include "settings/TvkIniFile.h"
#include "settings/TvkProduct.h"

#include <cstdio>
#include <cstring>
#include <functional>

namespace
{
const char* const Printers = "SYSTEM\\CurrentControlSet\\Control\\Print\\Printers";
const char* const Software = "SOFTWARE"; // the parent that every product shares
const char* const TraceKey = "SOFTWARE\\TORVANE";

CString Setting(const char* key)
{
    CString value;
    return TvkProduct().GetSetting(key, value);
}

CString PrinterDataKey(const CString& printer)
{
    return CString(Printers) + "\\" + printer + "\\PrinterDriverData";
}

CString SuppliesKey()
{
    const bool ownStore = TvkProduct().CompareSetting("IDO_ONECLICK_INK_ORDER", 1ul) != 0;
    return Setting(ownStore ? "IDO_SUPPLIES_REG_PATH" : "IDO_MORVAY_SUPPLIES_REG_PATH") + Setting("IDO_PRINTER_MODEL");
}

void InstallFiles()
{
    for (const InstalledFile& file : ProductFiles())
    {
        InstallFile(file);
        Report("installed", file.target);
    }
}

void InstallProgramEntry(const CString& printer)
{
    CSafeRegistry registry;
    const CString key = ProgramEntry();
    WriteText(registry, HKEY_LOCAL_MACHINE, key, "DisplayName", ProductName());
    WriteText(registry, HKEY_LOCAL_MACHINE, key, "UninstallString", "productinstall.exe --remove");
    WriteText(registry, HKEY_LOCAL_MACHINE, key, "Printer", printer);
    Report("listed as a program", key);
}

PrinterDriver Driver()
{
    return {Setting("IDO_MFG") + " " + Setting("IDO_PRINTER_MODEL"),
            ProgramFolder() + "product\\printer\\" + TvkProduct::GetProductPrefix() + "ink.ppd"};
}

/// The driver's own key: without it the library keeps the printer's settings per user.
void InstallPrinter(const CString& printer)
{
    AddPrinter(printer, Driver());
    Report("printer installed", printer);
    CSafeRegistry registry;
    const CString key = PrinterDataKey(printer);
    WriteText(registry, HKEY_LOCAL_MACHINE, key, "OriginalFriendlyName", printer);
    Report("printer registered", key);
}

/// The keys in which the suite's programs keep what they remember for this printer.
void InstallPrinterKeys(const CString& printer)
{
    CSafeRegistry registry;
    registry.SetFriendlyName(printer);
    WriteText(registry, nullptr, "PrinterDriverData", "Model", Setting("IDO_MODEL"));
    Report("printer's settings key", registry.GetSubKey());
    for (const char* key : {"JSW", "RZB", "PSW"})
    {
        MakeKey(registry, nullptr, key);
        registry.Close();
        Report("printer's settings key", registry.GetSubKey());
    }
}

/// Beside the printer communication library, which answers it (sample/product/communication.c).
CString StatusFile()
{
    const CString library = Setting("IDO_COMX_DLL_FILENAME");
    return DriverFolder() + library.Left(library.ReverseFind('.')) + ".ini";
}

/// What a printer would have reported by now: colour cartridge first, black second; the yellow ink is nearly used up.
void InstallPrinterStatus(const CString& printer)
{
    constexpr const char* Values[][2] = {
        {"SerialNumber", "LM460-0142-7"},
        {"InkStyle", "2"},
        {"InkPercent1", "62"},
        {"InkPercent2", "35"},
        {"InkPercent3", "71"},
        {"InkPercent4", "8"},
        {"LogicalCartridge1", "82"},
        {"LogicalCartridge2", "50"},
        {"PhysicalCartridge1", "82"},
        {"PhysicalCartridge2", "50"},
        {"SavedCartridge1", "82"},
        {"SavedCartridge2", "50"},
    };
    TvkIniFile ini;
    for (const auto& [key, value] : Values)
        if (!ini.WriteINI(StatusFile(), printer, key, value))
            throw StepFailure("cannot write " + std::string(key) + " to " + std::string(StatusFile()));
    Report("printer's last report", StatusFile());
}

void InstallSupplies()
{
    CSafeRegistry registry;
    const CString key = SuppliesKey();
    WriteText(registry, HKEY_LOCAL_MACHINE, key, Setting("IDO_KEY_NAME_SERVICETAG"), "7LM4600");
    Report("supplies key", key);
}

/// Without --trace a switch that is already set stays as it is.
void InstallTraceSwitch(int trace)
{
    CSafeRegistry registry;
    if (trace < 0)
        MakeKey(registry, HKEY_LOCAL_MACHINE, TraceKey);
    else
        WriteNumber(registry, HKEY_LOCAL_MACHINE, TraceKey, "GUILOG", static_cast<unsigned long>(trace));
    Report("trace switch", TraceKey);
}

void Install(CString printer, int trace)
{
    InstallFiles();
    // From here on the configuration library tells the exact model.
    if (printer.IsEmpty())
        printer = ProductName();
    InstallProgramEntry(printer);
    InstallPrinter(printer);
    InstallPrinterKeys(printer);
    InstallPrinterStatus(printer);
    InstallSupplies();
    InstallShortcuts(ProgramFolder());
    InstallTraceSwitch(trace);
    std::printf("%s is installed.\n", static_cast<LPCSTR>(printer));
}

/// Undoes every step, last one first; goes on after a failure, so that as little as possible stays behind.
bool Remove()
{
    const CString printer = InstalledPrinter();
    bool clean = true;
    const auto undo = [&clean](const CString& subject, const std::function<void()>& step)
    {
        try
        {
            step();
            Report("gone", subject);
        }
        catch (const StepFailure& failure)
        {
            std::printf("FAILED: %s\n", failure.what());
            clean = false;
        }
    };

    undo(TraceKey, [] { RemoveValue(TraceKey, "GUILOG", Software); });
    undo("shortcuts", RemoveShortcuts);
    undo(SuppliesKey(), [] { RemoveTree(SuppliesKey(), Software); });
    if (!printer.IsEmpty())
    {
        for (const char* ident : {"IDO_OEM_INKJET_IDENT", "IDO_OEM_INKJET_IDENT32"})
        {
            const CString key = Setting(ident) + "\\IJPrtSettings\\" + printer;
            undo(key, [&key] { RemoveTree(key, Software); });
        }
        undo(PrinterDataKey(printer),
             [&printer] { RemoveValue(PrinterDataKey(printer), "OriginalFriendlyName", Printers); });
        undo(printer, [&printer] { RemovePrinter(printer, Driver()); });
        undo(StatusFile(), [] { RemoveFile({"", StatusFile()}); });
    }
    undo(ProgramEntry(), [] { RemoveTree(ProgramEntry(), Programs); });
    for (const auto& files : {ProductFiles(), WrittenFiles()})
        for (const InstalledFile& file : files)
            undo(file.target, [&file] { RemoveFile(file); });
    RemoveAddedSkinFolder();
    if (printer.IsEmpty())
        std::printf("The list of programs names no printer: the product was not, or not wholly, installed.\n");
    return clean && !printer.IsEmpty();
}

int Usage()
{
    std::fprintf(stderr, "usage: productinstall [--printer NAME] [--trace 0-4]\n"
                         "       productinstall --remove\n");
    return 2;
}
} // namespace

void Report(const char* done, const CString& subject)
{
    std::printf("%-24s %s\n", done, static_cast<LPCSTR>(subject));
}

int main(int argc, char** argv)
{
    CString printer;
    int trace = -1; // as it is
    bool remove = false;
    for (int i = 1; i < argc; ++i)
    {
        const bool more = i + 1 < argc;
        if (std::strcmp(argv[i], "--remove") == 0)
            remove = true;
        else if (more && std::strcmp(argv[i], "--printer") == 0)
            printer = argv[++i];
        else if (more && std::strcmp(argv[i], "--trace") == 0 && std::strlen(argv[i + 1]) == 1 &&
                 std::strchr("01234", *argv[i + 1]))
            trace = *argv[++i] - '0';
        else
            return Usage();
    }
    if (printer.Find('\\') >= 0)
        return Usage(); // a registry key's name
    try
    {
        if (remove)
            return Remove() ? 0 : 1;
        Install(printer, trace);
        return 0;
    }
    catch (const StepFailure& failure)
    {
        std::printf("FAILED: %s\n", failure.what());
        return 1;
    }
}
