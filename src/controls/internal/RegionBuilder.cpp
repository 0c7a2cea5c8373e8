// Collects horizontal runs of pixels and makes a region of them.
#include "controls/internal/RegionBuilder.h"
#include "diag/CSpy.h"
#include <algorithm>
#include <climits>

namespace
{
constexpr DWORD Growth = 100; ///< rectangles
constexpr DWORD Batch = 2000; ///< rectangles
static_assert(Batch % Growth == 0);
static_assert(sizeof(RGNDATAHEADER) == 32 && sizeof(RECT) == 16);

void TraceFailure(const char* text)
{
    CSpy().OutputData(CString(text));
}
} // namespace

namespace tvk
{
RegionBuilder::~RegionBuilder()
{
    if (m_data)
        ::GlobalUnlock(m_memory.Get());
}

bool RegionBuilder::Begin()
{
    m_capacity = Growth;
    m_memory.Reset(::GlobalAlloc(GMEM_MOVEABLE, BufferSize()));
    if (!m_memory)
    {
        TraceFailure("Wendrel:CTransparentBmp::BitmapToRegion: GlobalAlloc Failed.\n");
        return false;
    }
    if (!Lock())
        return false;
    m_data->rdh.dwSize = sizeof m_data->rdh;
    m_data->rdh.iType = RDH_RECTANGLES;
    m_data->rdh.nRgnSize = 0;
    StartBatch();
    return true;
}

bool RegionBuilder::AddRun(int start, int end, int y)
{
    if (m_data->rdh.nCount == m_capacity && !Grow())
        return false;
    RGNDATAHEADER& header = m_data->rdh;
    reinterpret_cast<RECT*>(m_data->Buffer)[header.nCount++] = {start, y, end, y + 1};
    RECT& bounds = header.rcBound;
    bounds.left = std::min<LONG>(bounds.left, start);
    bounds.top = std::min<LONG>(bounds.top, y);
    bounds.right = std::max<LONG>(bounds.right, end);
    bounds.bottom = std::max<LONG>(bounds.bottom, y + 1);
    return header.nCount < Batch || Flush();
}

HRGN RegionBuilder::Finish()
{
    // Also without a rectangle: that makes the empty region of a picture without a visible pixel.
    return Flush() ? m_region.Release() : nullptr;
}

bool RegionBuilder::Lock()
{
    m_data = static_cast<RGNDATA*>(::GlobalLock(m_memory.Get()));
    if (!m_data)
        TraceFailure("Wendrel:CTransparentBmp::BitmapToRegion: GlobalLock Failed.\n");
    return m_data != nullptr;
}

bool RegionBuilder::Grow()
{
    ::GlobalUnlock(m_memory.Get());
    m_data = nullptr;
    m_capacity += Growth;
    const HGLOBAL grown = ::GlobalReAlloc(m_memory.Get(), BufferSize(), GMEM_MOVEABLE);
    if (!grown)
    {
        TraceFailure("Wendrel:CTransparentBmp::BitmapToRegion: GlobalReAlloc Failed.\n");
        return false;
    }
    m_memory.Release(); // taken over by the grown block
    m_memory.Reset(grown);
    return Lock();
}

bool RegionBuilder::Flush()
{
    GdiObject<HRGN> part(::ExtCreateRegion(nullptr, BufferSize(), m_data));
    if (!part)
        return false;
    if (!m_region)
        m_region = std::move(part);
    else if (::CombineRgn(m_region.Get(), m_region.Get(), part.Get(), RGN_OR) == ERROR)
        return false;
    StartBatch();
    return true;
}

void RegionBuilder::StartBatch()
{
    m_data->rdh.nCount = 0;
    m_data->rdh.rcBound = {INT_MAX, INT_MAX, 0, 0}; // the first rectangle sets them
}

DWORD RegionBuilder::BufferSize() const
{
    return sizeof(RGNDATAHEADER) + m_capacity * sizeof(RECT);
}
} // namespace tvk
