// Static picture controls with a transparent colour.
#include "Pictures.h"
#include "controls/CTransStaticBmp.h"
#include "support/Screen.h"
#include <gtest/gtest.h>

namespace
{
constexpr int Left = 30;
constexpr int Top = 8;
constexpr int Size = 40;

/// Paints a background whose every pixel tells its place.
class Host : public CWnd
{
public:
    static inline int shade = 0;
    static COLORREF Background(int x, int y) { return RGB(x, y, x + y + shade); }

protected:
    afx_msg BOOL OnEraseBkgnd(CDC* context)
    {
        for (int y = 0; y < 60; ++y)
            for (int x = 0; x < 100; ++x)
                context->SetPixelV(x, y, Background(x, y));
        return TRUE;
    }
    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(Host, CWnd)
    ON_WM_ERASEBKGND()
END_MESSAGE_MAP()

class StaticPictures : public testing::TestWithParam<DWORD>
{
};

TEST_P(StaticPictures, ShowThePictureOverTheParentsBackground)
{
    const Picture first(25, 20, 24, 1), second(30, 30, 8, 2);
    const PictureLibrary library({{1, first.Dib()}, {2, second.Dib()}});
    Host host;
    host.CreateEx(GetParam(), AfxRegisterWndClass(0), "host", WS_POPUP | WS_CLIPCHILDREN, 10, 20, 100, 60, nullptr,
                  nullptr);
    host.ShowWindow(SW_SHOWNOACTIVATE);
    CTransStaticBmp control;
    ASSERT_TRUE(control.Create("", WS_CHILD | WS_VISIBLE, CRect(Left, Top, Left + Size, Top + Size), &host));
    const auto expectShown = [&](const Picture* picture, const char* what)
    {
        host.UpdateWindow();
        control.UpdateWindow();
        for (int y = 0; y < Size; ++y)
            for (int x = 0; x < Size; ++x)
            {
                const bool visible = picture && x < picture->Width() && y < picture->Height() && !picture->IsHole(x, y);
                ASSERT_EQ(ShownPixel(control, {x, y}),
                          visible ? picture->At(x, y) : Host::Background(Left + x, Top + y))
                    << what << ": " << x << ", " << y;
            }
    };
    expectShown(nullptr, "no picture yet");
    for (const int mode : {CTransStaticBmp::Plain, CTransStaticBmp::Keep})
    {
        EXPECT_EQ(control.Initialize(1, first.Key(), mode, library.Module()), 1);
        expectShown(&first, "the first");
        EXPECT_EQ(control.Initialize(2, second.Key(), mode, library.Module()), 1);
        expectShown(&second, "the second leaves nothing of the first");
        ++Host::shade;
        host.Invalidate();
        control.Invalidate();
        expectShown(&second, "painted again, over another background");
        EXPECT_EQ(control.Initialize(3, second.Key(), mode, library.Module()), 0);
        expectShown(nullptr, "no such picture");
    }
    EXPECT_EQ(control.Initialize(1, first.Key(), CTransStaticBmp::Keep | CTransStaticBmp::Stretch, library.Module()),
              1);
    control.UpdateWindow();
    int changed = 0;
    for (int x = 0; x < Size; ++x)
        changed += ShownPixel(control, {x, Size - 1}) != Host::Background(Left + x, Top + Size - 1);
    EXPECT_GT(changed, 0) << "stretched to the control's last row";
    host.DestroyWindow();
}

INSTANTIATE_TEST_SUITE_P(Layouts, StaticPictures, testing::Values(0, WS_EX_LAYOUTRTL));
} // namespace
