#include "system/CPrinterData.h"
#include <cstring>
#include <new>
#include <utility>
#include "system/internal/Handle.h"

namespace
{
struct PrinterTraits : tvk::NullHandleTraits<HANDLE>
{
    static void Close(HANDLE printer) noexcept { ::ClosePrinter(printer); }
};
using Printer = tvk::Owner<PrinterTraits>;

/// The spooler's functions take texts as writable that they only read.
char* Writable(const char* text)
{
    return const_cast<char*>(text);
}

Printer OpenByName(const char* name)
{
    Printer printer;
    return ::OpenPrinterA(Writable(name), printer.Receive(), nullptr) ? std::move(printer) : Printer();
}

/// The printer that the caller has open, else the one opened by name for as long as the object lives.
class UsedPrinter
{
public:
    UsedPrinter(const char* name, HANDLE open) : m_own(open ? Printer() : OpenByName(name)), m_open(open) {}
    HANDLE Get() const { return m_open ? m_open : m_own.Get(); }

private:
    Printer m_own;
    HANDLE m_open;
};

/// A movable block at a fixed address for a scope.
template <class T>
class Locked
{
public:
    explicit Locked(const tvk::GlobalMemory& memory)
        : m_memory(memory.Get()), m_block(memory ? static_cast<T*>(::GlobalLock(m_memory)) : nullptr)
    {
    }
    ~Locked()
    {
        if (m_block)
            ::GlobalUnlock(m_memory);
    }
    Locked(const Locked&) = delete;
    Locked& operator=(const Locked&) = delete;

    T* Get() const { return m_block; }
    T* operator->() const { return m_block; }
    explicit operator bool() const { return m_block != nullptr; }
    const char* TextAt(std::size_t offset) const { return reinterpret_cast<const char*>(m_block) + offset; }

private:
    HGLOBAL m_memory;
    T* m_block;
};

std::size_t SizeWithNul(const char* text)
{
    return text ? std::strlen(text) + 1 : 1;
}

/// Appends the text and its NUL; null is the empty text.
char* Append(char* to, const char* text)
{
    const std::size_t size = SizeWithNul(text);
    std::memcpy(to, text ? text : "", size);
    return to + size;
}

/// The names as the system's print dialogs exchange them; null on failure.
tvk::GlobalMemory MakeDevNames(const char* driver, const char* device, const char* output)
{
    const std::size_t deviceOffset = sizeof(DEVNAMES) + SizeWithNul(driver);
    const std::size_t outputOffset = deviceOffset + SizeWithNul(device);
    if (outputOffset > 0xFFFF) // the offsets are 16-bit words
        return {};
    tvk::GlobalMemory memory(::GlobalAlloc(GHND, outputOffset + SizeWithNul(output)));
    const Locked<DEVNAMES> names(memory);
    if (!names)
        return {};
    names->wDriverOffset = sizeof(DEVNAMES);
    names->wDeviceOffset = static_cast<WORD>(deviceOffset);
    names->wOutputOffset = static_cast<WORD>(outputOffset);
    names->wDefault = 0;
    char* end = reinterpret_cast<char*>(names.Get()) + sizeof(DEVNAMES);
    end = Append(end, driver);
    end = Append(end, device);
    Append(end, output);
    return memory;
}
static_assert(sizeof(DEVNAMES) == 8);
} // namespace

CPrinterData::CPrinterData() : m_nPaperCount(0), m_pwPaperIDs(nullptr), m_nDPIX(0), m_nDPIY(0), m_pPapers(nullptr) {}

CPrinterData::~CPrinterData()
{
    DeletePapers();
}

PRINTER_INFO_2A* CPrinterData::GetPrinterInfo2(const char* printer, void* hPrinter)
{
    const UsedPrinter open(printer, hPrinter);
    if (!open.Get())
        return nullptr;
    DWORD size = 0;
    if (!::GetPrinterA(open.Get(), 2, nullptr, 0, &size) && ::GetLastError() != ERROR_INSUFFICIENT_BUFFER)
        return nullptr;
    tvk::GlobalMemory memory(::GlobalAlloc(GPTR, size));
    // Fixed memory: its handle is its address.
    if (!memory || !::GetPrinterA(open.Get(), 2, static_cast<BYTE*>(memory.Get()), size, &size))
        return nullptr;
    return static_cast<PRINTER_INFO_2A*>(memory.Release());
}

int CPrinterData::GetPrinterDevMode(const char* printer, void** hDevMode, void* hPrinter)
{
    if (!hDevMode)
        return 0;
    *hDevMode = nullptr;
    const UsedPrinter open(printer, hPrinter);
    if (!open.Get())
        return 0;
    const LONG size = ::DocumentPropertiesA(nullptr, open.Get(), Writable(printer), nullptr, nullptr, 0);
    if (size <= 0)
        return 0;
    tvk::GlobalMemory memory(::GlobalAlloc(GHND, static_cast<SIZE_T>(size)));
    auto* mode = memory ? static_cast<DEVMODEA*>(::GlobalLock(memory.Get())) : nullptr;
    if (!mode)
        return 0;
    const LONG result = ::DocumentPropertiesA(nullptr, open.Get(), Writable(printer), mode, nullptr, DM_OUT_BUFFER);
    ::SetLastError(NO_ERROR);
    const bool unlocked = !::GlobalUnlock(memory.Get()) && ::GetLastError() == NO_ERROR;
    // A block that somebody else still holds a lock on is theirs to read: it is not freed.
    if (result != IDOK && unlocked)
        memory.Reset();
    *hDevMode = memory.Release();
    return result == IDOK;
}

int CPrinterData::GetPrinterDevNames(const char* printer, void** hDevNames, void* hPrinter)
{
    if (!hDevNames)
        return 0;
    *hDevNames = nullptr;
    const tvk::GlobalMemory block(GetPrinterInfo2(printer, hPrinter));
    if (!block)
        return 0;
    const auto* info = static_cast<const PRINTER_INFO_2A*>(block.Get());
    *hDevNames = MakeDevNames(info->pDriverName, info->pPrinterName, info->pPortName).Release();
    return *hDevNames != nullptr;
}

int CPrinterData::GetPrintableArea(const char* printer, short paper, CRect& area, CPoint& dpi)
{
    area = CRect(0, 0, 0, 0);
    dpi = CPoint(0, 0);
    if (!IsLoaded() && !LoadPaperSizeData(printer))
        return 0;
    const auto wanted = static_cast<unsigned short>(paper);
    // A driver may list a paper again to correct what it said before: the last one counts.
    int found = m_nPaperCount;
    while (found > 0 && m_pwPaperIDs[found - 1] != wanted)
        --found;
    if (found == 0)
        return 0;
    const Paper& answer = m_pPapers[found - 1];
    dpi = CPoint(m_nDPIX, m_nDPIY);
    // Right and bottom hold the extent, not the far edges: hosts count on it.
    area = CRect(answer.offsetX, answer.offsetY, answer.printableWidth, answer.printableHeight);
    return 1;
}

int CPrinterData::GetBorderlessPaperSize(const char* printer, short& paper, CRect& area)
{
    const auto wanted = static_cast<unsigned short>(paper);
    paper = -1;
    area = CRect(0, 0, 0, 0);
    if (!IsLoaded() && !LoadPaperSizeData(printer))
        return 0;
    int asked = 0;
    while (asked < m_nPaperCount && m_pwPaperIDs[asked] != wanted)
        ++asked;
    if (asked == m_nPaperCount)
        return 0;
    // Drivers list the special forms of a paper behind the plain one: the search begins at the end.
    for (int i = m_nPaperCount - 1; i >= 0; --i)
    {
        const Paper& candidate = m_pPapers[i];
        if (candidate.physicalWidth != m_pPapers[asked].physicalWidth ||
            candidate.physicalHeight != m_pPapers[asked].physicalHeight || candidate.offsetX != 0 ||
            candidate.offsetY != 0)
            continue;
        paper = static_cast<short>(m_pwPaperIDs[i]);
        area = CRect(0, 0, candidate.printableWidth, candidate.printableHeight);
        return 1;
    }
    return 0;
}

int CPrinterData::LoadPaperSizeData(const char* printer)
{
    if (ReadPapers(printer))
        return 1;
    DeletePapers();
    return 0;
}

bool CPrinterData::ReadPapers(const char* printer)
{
    const Printer open = OpenByName(printer);
    if (!open)
        return false;
    HGLOBAL handle = nullptr;
    const int modeRead = GetPrinterDevMode(printer, &handle, open.Get());
    const tvk::GlobalMemory modeMemory(handle);
    const Locked<DEVMODEA> mode(modeMemory);
    handle = nullptr;
    const int namesRead = GetPrinterDevNames(printer, &handle, open.Get());
    const tvk::GlobalMemory namesMemory(handle);
    const Locked<DEVNAMES> names(namesMemory);
    if (!modeRead || !mode || !namesRead || !names)
        return false;
    const char* driver = names.TextAt(names->wDriverOffset);
    const char* device = names.TextAt(names->wDeviceOffset);
    const char* output = names.TextAt(names->wOutputOffset);

    const int count = ::DeviceCapabilitiesA(printer, output, DC_PAPERS, nullptr, mode.Get());
    if (count <= 0)
        return false;
    DeletePapers();
    m_pwPaperIDs = new (std::nothrow) unsigned short[count]();
    m_pPapers = new (std::nothrow) Paper[count]();
    if (!m_pwPaperIDs || !m_pPapers ||
        ::DeviceCapabilitiesA(printer, output, DC_PAPERS, reinterpret_cast<char*>(m_pwPaperIDs), mode.Get()) == -1)
        return false;
    m_nPaperCount = count;

    for (int i = 0; i < count; ++i)
    {
        mode->dmPaperSize = static_cast<short>(m_pwPaperIDs[i]);
        mode->dmFields |= DM_PAPERSIZE; // without it drivers keep the paper they have
        if (::DocumentPropertiesA(nullptr, open.Get(), Writable(printer), mode.Get(), mode.Get(),
                                  DM_IN_BUFFER | DM_OUT_BUFFER) < 0)
            return false;
        const tvk::DeviceContext context(::CreateDCA(driver, device, output, mode.Get()));
        if (!context)
            return false;
        const auto pixels = [&context](int index) { return ::GetDeviceCaps(context.Get(), index); };
        if (i == 0)
        {
            m_nDPIX = pixels(LOGPIXELSX);
            m_nDPIY = pixels(LOGPIXELSY);
        }
        m_pPapers[i] = {pixels(PHYSICALWIDTH),   pixels(PHYSICALHEIGHT), pixels(PHYSICALOFFSETX),
                        pixels(PHYSICALOFFSETY), pixels(HORZRES),        pixels(VERTRES)};
    }
    return true;
}

/// Also the count: the next question reads again.
void CPrinterData::DeletePapers()
{
    delete[] m_pwPaperIDs;
    m_pwPaperIDs = nullptr;
    delete[] m_pPapers;
    m_pPapers = nullptr;
    m_nPaperCount = 0;
}

bool CPrinterData::IsLoaded() const
{
    return m_nPaperCount > 0;
}
