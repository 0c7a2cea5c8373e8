// Collects horizontal runs of pixels and makes a region of them.
#pragma once

#include "system/internal/Handle.h"

namespace tvk
{
/// Builds a region from runs of pixels given row by row. The runs are collected in one growing buffer and turned into
/// regions in batches: making a region of many rectangles at once costs more than in proportion to their number.
/// A failing memory call is written to the trace log.
class RegionBuilder
{
public:
    RegionBuilder() = default;
    RegionBuilder(const RegionBuilder&) = delete;
    RegionBuilder& operator=(const RegionBuilder&) = delete;
    ~RegionBuilder();

    /// Allocates the buffer; call it once, first. False when that fails.
    bool Begin();

    /// Adds the pixels from `start` to before `end` of row `y`. False when memory or the region calls fail.
    bool AddRun(int start, int end, int y);

    /// The region of all runs, empty when there were none; null when it cannot be made. The caller deletes it.
    HRGN Finish();

private:
    bool Lock();
    bool Grow();
    bool Flush();
    void StartBatch();
    DWORD BufferSize() const;

    GlobalMemory m_memory;
    RGNDATA* m_data = nullptr; ///< the locked memory
    DWORD m_capacity = 0;      ///< in rectangles
    GdiObject<HRGN> m_region;
};
} // namespace tvk
