// The tanks' pictures, seen on real windows.
#include "TankWindow.h"
#include "controls/Pictures.h"
#include "support/NothingLeft.h"
#include "support/TestProduct.h"
#include "ink/CGUIInkDisplay.h"
#include "ink/InkDisplay.h"
#include <gtest/gtest.h>
#include <climits>
#include <functional>
#include <numeric>

namespace
{
/// The bitmaps of some inks: the first and the last in the short and in the long set.
struct Series
{
    std::vector<int> colors;
    int first[2];
    int last[2];
};
const Series AllSeries[] = {
    {{0, 6, 7, 9, 15}, {381, 191}, {389, 203}},
    {{1}, {334, 134}, {342, 142}},
    {{2}, {351, 151}, {359, 159}},
    {{3}, {366, 166}, {374, 174}},
    {{4, 8, 10, 12, 13}, {366, 221}, {374, 233}},
    {{5, 11, 14}, {366, 271}, {374, 283}},
};

constexpr int NoLevel = 190;
constexpr int LastStep = 99; // of whatever series

// A step for each beginning twelfth; the series of eight steps ends at two thirds.
constexpr std::pair<int, int> StepOfPercent[] = {
    {INT_MIN, NoLevel},
    {-101, NoLevel},
    {-1, NoLevel},
    {0, 0},
    {1, 1},
    {8, 1},
    {9, 2},
    {25, 3},
    {50, 6},
    {59, 8},
    {66, 8},
    {67, 9},
    {75, 9},
    {99, 12},
    {100, LastStep},
    {101, NoLevel},
    {127, NoLevel},
    {INT_MAX, NoLevel},
};

int Expected(int first, int last, int step)
{
    if (step == LastStep)
        return last;
    return step == NoLevel || step > last - first ? NoLevel : first + step;
}

void Show(CGUIInkTank& tank, int color, int percent)
{
    tank.SetColor(static_cast<CGUIInkTank::InkColor>(color));
    tank.SetInkPercent(percent, TankWindow::Bitmaps());
}

/// A report of the two cartridges with the levels 10, 20, ... 70.
INKINFO Report(int first, int second)
{
    INKINFO ink{};
    ink.InkPercent1 = 10;
    ink.InkPercent2 = 20;
    ink.InkPercent3 = 30;
    ink.InkPercent4 = 40;
    ink.InkPercent5 = 50;
    ink.InkPercent6 = 60;
    ink.InkPercent7 = 70;
    ink.iLogCartID1 = first;
    ink.iLogCartID2 = second;
    return ink;
}
} // namespace

TEST(Tank, ShowsTheBitmapOfItsInkAndLevel)
{
    for (int type = 0; type < 2; ++type)
    {
        TankWindow window(type);
        for (const Series& series : AllSeries)
            for (const int color : series.colors)
                for (const auto& [percent, step] : StepOfPercent)
                {
                    if (color != series.colors.front() && percent != 0 && percent != 100)
                        continue; // the series was seen with another ink
                    Show(window.Tank(0), color, percent);
                    EXPECT_EQ(window.Shown(0), Expected(series.first[type], series.last[type], step))
                        << "type " << type << " ink " << color << " at " << percent;
                }
    }
}

TEST(Tank, KeepsItsSeriesForAnInkOrTypeThatIsNone)
{
    TankWindow window;
    Show(window.Tank(0), CGUIInkTank::InkColor2, 0);
    EXPECT_EQ(window.Shown(0), 151);
    for (const int color : {16, -1, INT_MAX})
    {
        Show(window.Tank(0), color, 100);
        EXPECT_EQ(window.Shown(0), 159) << color;
    }
    CGUIInkTank otherType(2), withoutWindow;
    Show(otherType, CGUIInkTank::InkColor2, 0);
    EXPECT_EQ(otherType.DrawInkLevel(TankWindow::Bitmaps()), 0) << "no bitmap set: no series at all";
    Show(withoutWindow, CGUIInkTank::InkBlack, 50);
    EXPECT_FALSE(window.Window().GetUpdateRect(nullptr)) << "another window was invalidated";
}

TEST(Tank, DropsDoNotChangeThePicture)
{
    TankWindow window;
    CGUIInkTank& tank = window.Tank(0);
    Show(tank, CGUIInkTank::InkBlack, 9);
    EXPECT_EQ(tank.DrawInkLevel(TankWindow::Bitmaps()), 1);
    EXPECT_EQ(tank.SetDropCount(300), 0) << "without a module the bitmap is looked for in the host's own";
    const HINSTANCE former = AfxGetResourceHandle();
    AfxSetResourceHandle(TankWindow::Bitmaps());
    EXPECT_EQ(tank.SetDropCount(300), 1);
    EXPECT_EQ(tank.SetInkLevel(0), 1);
    AfxSetResourceHandle(former);
    EXPECT_EQ(window.Shown(0), 193);
}

TEST(Tank, LeavesNothingBehind)
{
    TankWindow window;
    ExpectNothingLeftBehind(1010,
                            [&](int round)
                            {
                                Show(window.Tank(0), round % 16, round % 102);
                                UpdateWindow(window.Tank(0).m_hWnd);
                            });
}

TEST(Tanks, ShowTheCartridgesByMode)
{
    constexpr auto Long = CGUIInkTank::BmpLongSeries, Short = CGUIInkTank::BmpShortSeries;
    constexpr struct
    {
        int mode, format, first, second;
        CGUIInkTank::BmpType type;
        int shown[4];
    } choices[] = {
        {4, 1, 80, 48, Long, {193, 137, 155, 171}},     {0, 2, 16, 32, Long, {193, 137, 155, 171}},
        {-1, 1, 0, 0, Short, {383, 337, 355, 371}},     {1, 1, 80, 48, Long, {0, 224, 0, 0}},
        {1, 2, 48, 80, Long, {0, 193, 0, 0}},           {1, 1, 112, 48, Long, {0, 274, 0, 0}},
        {2, 2, 80, 48, Long, {224, 193, 0, 0}},         {2, 1, 80, 48, Long, {193, 224, 0, 0}},
        {2, 0, 143, 63, Long, {193, 224, 0, 0}},        {2, 2, 80, 112, Long, {224, 277, 0, 0}},
        {2, 2, 112, 48, Long, {274, 193, 0, 0}},        {2, 2, 80, 48, Short, {369, 383, 0, 0}},
        {2, 2, 32, 16, Long, {NoLevel, NoLevel, 0, 0}}, {2, 2, 51, 80, Short, {NoLevel, 369, 0, 0}},
    };
    for (const auto& choice : choices)
    {
        const TestProduct product({{"IDO_PRINTHEADFORMAT", static_cast<unsigned long>(choice.format)}});
        TankWindow window;
        CGUIInkDisplay display;
        INKINFO ink = Report(choice.first, choice.second);
        display.SetInkInfo(&ink, nullptr);
        display.InitializeInkTanks(&window.Tank(0), &window.Tank(1), &window.Tank(2), &window.Tank(3), choice.type,
                                   choice.mode, TankWindow::Bitmaps());
        for (int i = 0; i < 4; ++i)
            EXPECT_EQ(window.Shown(i), choice.shown[i]) << "mode " << choice.mode << " format " << choice.format << ": "
                                                        << choice.first << ", " << choice.second << " tank " << i;
    }
}

TEST(Tanks, ShowUnknownLevelsAndSkipWhatIsNotThere)
{
    TankWindow window;
    InkDisplay display;
    const auto show = [&](int mode)
    {
        display.InitializeInkTanks(&window.Tank(0), nullptr, &window.Tank(2), nullptr, CGUIInkTank::BmpLongSeries, mode,
                                   TankWindow::Bitmaps());
        return std::vector<int>{window.Shown(0), window.Shown(1), window.Shown(2), window.Shown(3)};
    };
    EXPECT_EQ(show(4), (std::vector<int>{NoLevel, 0, NoLevel, 0})) << "no report";
    INKINFO ink = Report(80, 80);
    display.SetInkInfo(&ink, nullptr);
    EXPECT_EQ(show(4), (std::vector<int>{193, 0, 155, 0}));
    display.UpdateInkTank(CGUIInkTank::InkPhoto, 2, 100);
    EXPECT_EQ(window.Shown(2), 283);
    for (const int none : {-1, 1, 4, INT_MAX})
        display.UpdateInkTank(CGUIInkTank::InkPhoto, none, 100);
    EXPECT_EQ(window.Shown(0), 193);
    ink.InkPercent3 = 120; // one mark among three levels
    EXPECT_EQ(show(2)[0], NoLevel);
    ink.InkPercent3 = -101;
    EXPECT_EQ(show(2)[0], NoLevel);
}

TEST(Tanks, CanBeDrawnIntoMemory)
{
    constexpr int ids[] = {193, 137, 155, 171};
    for (const DWORD layout : {0ul, static_cast<DWORD>(WS_EX_LAYOUTRTL)})
    {
        TankWindow window(CGUIInkTank::BmpLongSeries, layout);
        CGUIInkDisplay display;
        INKINFO ink = Report(80, 48);
        display.SetInkInfo(&ink, nullptr);
        display.InitializeInkTanks(&window.Tank(0), &window.Tank(1), &window.Tank(2), &window.Tank(3),
                                   CGUIInkTank::BmpLongSeries, 4, TankWindow::Bitmaps());
        const Surface memory(TankWindow::Tanks * TankWindow::Distance, 124, 1);
        std::vector<COLORREF> expected = memory.Pixels();
        for (int tank = 0; tank < TankWindow::Tanks; ++tank)
        {
            const std::vector<COLORREF> picture = TankBitmap(ids[tank]);
            for (int i = 0; i < TankWindow::Width * TankWindow::Height; ++i)
            {
                const int x = 6 + tank * TankWindow::Distance + i % TankWindow::Width, y = 10 + i / TankWindow::Width;
                if (picture[static_cast<size_t>(i)] != Hole)
                    expected[static_cast<size_t>(y * memory.Width() + x)] = picture[static_cast<size_t>(i)];
            }
        }
        display.DrawTanks(CDC::FromHandle(memory.Context()));
        EXPECT_TRUE(memory.Pixels() == expected) << "layout " << layout;
    }
}

TEST(TankPictures, FillFromEmptyToFullAndTellTheUnknownLevel)
{
    const auto difference = [](const std::vector<COLORREF>& a, const std::vector<COLORREF>& b)
    { return std::inner_product(a.begin(), a.end(), b.begin(), 0, std::plus<>(), std::not_equal_to<>()); };
    for (const Series& series : AllSeries)
        for (int type = 0; type < 2; ++type)
        {
            const std::vector<COLORREF> empty = TankBitmap(series.first[type]);
            EXPECT_GT(difference(empty, TankBitmap(NoLevel)), TankWindow::Width * TankWindow::Height / 5);
            int filled = 0;
            for (int id = series.first[type] + 1; id <= series.last[type]; ++id)
            {
                const int inked = difference(empty, TankBitmap(id));
                EXPECT_GT(inked, filled) << id;
                filled = inked;
            }
        }
}
