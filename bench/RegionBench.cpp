// Rows of regions: a bitmap's region against the region calls that its rectangles need, and against the obvious ways.
#include "Harness.h"
#include "Shapes.h"
#include <afxwin.h>
#include "controls/CTransparentBmp.h"
#include <algorithm>
#include <cstring>

namespace
{
constexpr size_t BatchSize = 2000;
constexpr size_t Growth = 100;

/// The region calls alone: batches that are ready to be handed over.
class Batches
{
public:
    explicit Batches(const std::vector<RECT>& runs)
    {
        const size_t capacity = std::min(BatchSize, (runs.size() + Growth - 1) / Growth * Growth);
        for (size_t start = 0; start < runs.size(); start += BatchSize)
        {
            const size_t count = std::min(BatchSize, runs.size() - start);
            std::vector<char> buffer(sizeof(RGNDATAHEADER) + capacity * sizeof(RECT));
            auto* data = reinterpret_cast<RGNDATA*>(buffer.data());
            data->rdh = {sizeof(RGNDATAHEADER),
                         RDH_RECTANGLES,
                         static_cast<DWORD>(count),
                         0,
                         {0, runs[start].top, 10000, runs[start + count - 1].bottom}};
            std::memcpy(data->Buffer, &runs[start], count * sizeof(RECT));
            m_buffers.push_back(std::move(buffer));
        }
    }

    void MakeRegion() const
    {
        HRGN region = nullptr;
        for (const auto& buffer : m_buffers)
        {
            const HRGN part = ExtCreateRegion(nullptr, static_cast<DWORD>(buffer.size()),
                                              reinterpret_cast<const RGNDATA*>(buffer.data()));
            if (!region)
            {
                region = part;
                continue;
            }
            CombineRgn(region, region, part, RGN_OR);
            DeleteObject(part);
        }
        DeleteObject(region);
    }

private:
    std::vector<std::vector<char>> m_buffers;
};

/// Runs a region call by call.
HRGN CombineRuns(const std::vector<RECT>& runs)
{
    const HRGN region = CreateRectRgn(0, 0, 0, 0);
    for (const RECT& run : runs)
    {
        const HRGN part = CreateRectRgnIndirect(&run);
        CombineRgn(region, region, part, RGN_OR);
        DeleteObject(part);
    }
    return region;
}

/// Everything that the system must do for a region, without looking at a single pixel.
void MakeReadableCopy(const bench::Shape& shape)
{
    const HDC memory = CreateCompatibleDC(nullptr);
    const BITMAPINFO format = {{sizeof(BITMAPINFOHEADER), shape.width, shape.height, 1, 32, BI_RGB, 0, 0, 0, 0, 0}, {}};
    void* bits = nullptr;
    const HBITMAP copy = CreateDIBSection(memory, &format, DIB_RGB_COLORS, &bits, nullptr, 0);
    const HDC source = CreateCompatibleDC(memory);
    const HGDIOBJ first = SelectObject(memory, copy), second = SelectObject(source, shape.bitmap);
    BitBlt(memory, 0, 0, shape.width, shape.height, source, 0, 0, SRCCOPY);
    SelectObject(memory, first);
    SelectObject(source, second);
    DeleteDC(source);
    DeleteObject(copy);
    DeleteDC(memory);
}

bool Regions()
{
    CTransparentBmp bitmap;
    const auto ours = [&](const bench::Shape& shape)
    {
        return bench::Repeated("BitmapToRegion",
                               [&] { DeleteObject(bitmap.BitmapToRegion(shape.bitmap, bench::ShapeKey, nullptr)); });
    };
    bench::Shape noise(640, 480), button(200, 60);
    bench::MakeNoise(noise);
    bench::MakeButton(button);
    const Batches noiseBatches(bench::Runs(noise)), buttonBatches(bench::Runs(button));

    const auto noiseCalls = bench::Repeated("the region calls alone", [&] { noiseBatches.MakeRegion(); });
    const bool noiseMet =
        bench::Compare("region of 640 x 480 noise", ours(noise), {{noiseCalls, bench::Goal::AtMost, 1.05}}, 1, 21);

    const auto buttonCalls = bench::Repeated("contexts, copy and region calls, no scan",
                                             [&]
                                             {
                                                 MakeReadableCopy(button);
                                                 buttonBatches.MakeRegion();
                                             });
    const auto perRun = bench::Repeated("a CombineRgn for every run",
                                        [&]
                                        {
                                            MakeReadableCopy(button);
                                            DeleteObject(CombineRuns(bench::Runs(button)));
                                        });
    const auto byPixel = bench::Repeated("pixel by pixel",
                                         [&]
                                         {
                                             const HDC context = CreateCompatibleDC(nullptr);
                                             const HGDIOBJ former = SelectObject(context, button.bitmap);
                                             const HRGN region = CreateRectRgn(0, 0, 0, 0);
                                             for (int y = 0; y < button.height; ++y)
                                                 for (int x = 0; x < button.width; ++x)
                                                     if (GetPixel(context, x, y) != bench::ShapeKey)
                                                     {
                                                         const HRGN part = CreateRectRgn(x, y, x + 1, y + 1);
                                                         CombineRgn(region, region, part, RGN_OR);
                                                         DeleteObject(part);
                                                     }
                                             DeleteObject(region);
                                             SelectObject(context, former);
                                             DeleteDC(context);
                                         });
    const bool buttonMet = bench::Compare("region of a 200 x 60 button", ours(button),
                                          {{buttonCalls, bench::Goal::AtMost, 2.0},
                                           {perRun, bench::Goal::AtLeast, 1.0},
                                           {byPixel, bench::Goal::AtLeast, 20.0}},
                                          20, 41);
    return noiseMet && buttonMet;
}

const bench::Registration Registered("region", Regions);
} // namespace
