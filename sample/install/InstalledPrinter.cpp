#include "InstalledPrinter.h"
#include "Step.h"
#include <windows.h>
#include <winspool.h>
#include <vector>

namespace
{
constexpr char Environment[] = "Windows x64";
constexpr char SystemDriver[] = "wineps.drv";

/// The spooler's structures take texts as writable that it only reads.
char* Text(const char* text)
{
    return const_cast<char*>(text);
}

/// An installed printer, open for everything; null when there is none of this name.
class Printer
{
public:
    explicit Printer(const CString& name)
    {
        PRINTER_DEFAULTSA defaults = {nullptr, nullptr, PRINTER_ALL_ACCESS};
        if (!OpenPrinterA(Text(name), &m_handle, &defaults))
            m_handle = nullptr;
    }
    ~Printer()
    {
        if (m_handle)
            ClosePrinter(m_handle);
    }
    Printer(const Printer&) = delete;
    Printer& operator=(const Printer&) = delete;
    explicit operator bool() const { return m_handle != nullptr; }

    CString DriverName() const
    {
        DWORD size = 0;
        GetPrinterA(m_handle, 2, nullptr, 0, &size);
        std::vector<BYTE> info(size);
        if (size == 0 || !GetPrinterA(m_handle, 2, info.data(), size, &size))
            throw StepFailure("the spooler does not describe the printer", GetLastError());
        return reinterpret_cast<const PRINTER_INFO_2A*>(info.data())->pDriverName;
    }
    bool Delete() { return DeletePrinter(m_handle) != 0; }

private:
    HANDLE m_handle = nullptr;
};

CString NameOf(const CString& file)
{
    return file.Mid(file.ReverseFind('\\') + 1);
}

/// The spooler copies a driver's files from here to the folder of their version below it.
CString SpoolerFolder()
{
    char folder[MAX_PATH] = "";
    DWORD size = 0;
    if (!GetPrinterDriverDirectoryA(nullptr, Text(Environment), 1, reinterpret_cast<BYTE*>(folder), sizeof folder,
                                    &size))
        throw StepFailure("the spooler does not name its driver directory", GetLastError());
    return CString(folder) + "\\";
}

void AddDriver(const PrinterDriver& driver)
{
    const CString description = SpoolerFolder() + NameOf(driver.description);
    if (!CopyFileA(driver.description, description, FALSE))
        throw StepFailure("cannot copy to " + std::string(description), GetLastError());
    DRIVER_INFO_3A info = {};
    info.cVersion = 3;
    info.pName = Text(driver.name);
    info.pEnvironment = Text(Environment);
    info.pDriverPath = Text(SystemDriver);
    info.pConfigFile = Text(SystemDriver);
    info.pDataFile = Text(description);
    info.pDefaultDataType = Text("RAW");
    if (!AddPrinterDriverExA(nullptr, 3, reinterpret_cast<BYTE*>(&info), APD_COPY_NEW_FILES | APD_COPY_FROM_DIRECTORY))
        throw StepFailure("cannot install the printer driver " + std::string(driver.name), GetLastError());
}

void DeleteCopy(const CString& file)
{
    if (!DeleteFileA(file) && GetLastError() != ERROR_FILE_NOT_FOUND)
        throw StepFailure("cannot delete " + std::string(file), GetLastError());
}
} // namespace

void AddPrinter(const CString& printer, const PrinterDriver& driver)
{
    AddDriver(driver);
    if (Printer(printer))
        return;
    PRINTER_INFO_2A info = {};
    info.pPrinterName = Text(printer);
    info.pDriverName = Text(driver.name);
    info.pPortName = Text("LPT1:");
    info.pPrintProcessor = Text("WinPrint");
    info.pDatatype = Text("RAW");
    const HANDLE added = ::AddPrinterA(nullptr, 2, reinterpret_cast<BYTE*>(&info));
    if (!added)
        throw StepFailure("cannot install the printer " + std::string(printer), GetLastError());
    ClosePrinter(added);
}

void RemovePrinter(const CString& printer, const PrinterDriver& driver)
{
    Printer installed(printer);
    if (installed && installed.DriverName() == driver.name && !installed.Delete())
        throw StepFailure("cannot remove the printer " + std::string(printer), GetLastError());
    // The spooler keeps the files of a driver that it removes; it keeps the driver while another printer uses it.
    if (!DeletePrinterDriverA(nullptr, Text(Environment), Text(driver.name)))
        return;
    DeleteCopy(SpoolerFolder() + NameOf(driver.description));
    DeleteCopy(SpoolerFolder() + "3\\" + NameOf(driver.description));
}
