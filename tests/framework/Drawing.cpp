// Geometry, drawing objects and device contexts.
#include <afxwin.h>
#include "support/NothingLeft.h"
#include <gtest/gtest.h>

TEST(Geometry, Rectangles)
{
    CRect rect(10, 20, 30, 60);
    EXPECT_EQ(rect.Size(), CSize(20, 40));
    EXPECT_EQ(rect.CenterPoint(), CPoint(20, 40));
    EXPECT_EQ(rect + CPoint(1, 2), CRect(11, 22, 31, 62));
    EXPECT_EQ(rect - CSize(1, 2), CRect(9, 18, 29, 58));
    EXPECT_EQ(rect & CRect(0, 0, 20, 30), CRect(10, 20, 20, 30));
    EXPECT_EQ(rect | CRect(0, 0, 20, 30), CRect(0, 0, 30, 60));
    EXPECT_EQ(rect.MulDiv(1, 2), CRect(5, 10, 15, 30));
    rect.InflateRect(1, 2, 3, 4);
    EXPECT_EQ(rect, CRect(9, 18, 33, 64));
    rect.DeflateRect(1, 2, 3, 4);
    rect.MoveToXY(0, 0);
    EXPECT_EQ(rect, CRect(CPoint(0, 0), CSize(20, 40)));
    EXPECT_TRUE(rect.PtInRect(CPoint(19, 39)) && !rect.PtInRect(CPoint(20, 39)));
    rect.TopLeft() = CPoint(50, 70);
    rect.NormalizeRect();
    EXPECT_EQ(rect, CRect(20, 40, 50, 70));
    EXPECT_EQ(CPoint(static_cast<LPARAM>(0xFFFE0003)), CPoint(3, -2)) << "the halves of a message are signed";
    EXPECT_EQ(CPoint(5, 7) - CPoint(1, 2), CSize(4, 5));
    const RECT plain = {20, 40, 50, 70};
    EXPECT_TRUE(rect == plain && plain == rect && !(rect != plain));
}

TEST(Drawing, FromHandleAnswersTheAttachedObject)
{
    CBitmap bitmap;
    ASSERT_TRUE(bitmap.CreateBitmap(4, 4, 1, 32, nullptr));
    EXPECT_EQ(CBitmap::FromHandle(bitmap), &bitmap);
    EXPECT_EQ(CGdiObject::FromHandle(bitmap.m_hObject), &bitmap);
    EXPECT_EQ(CBitmap::FromHandle(nullptr), nullptr);
    const HGDIOBJ handle = bitmap.Detach();
    CBitmap* temporary = CBitmap::FromHandle(static_cast<HBITMAP>(handle));
    EXPECT_TRUE(temporary != &bitmap && temporary->m_hObject == handle);
    EXPECT_EQ(CBitmap::FromHandle(static_cast<HBITMAP>(handle)), temporary);
    CGdiObject::DeleteTempMap();
    EXPECT_EQ(GetObjectType(handle), static_cast<DWORD>(OBJ_BITMAP)) << "a temporary object owns nothing";
    EXPECT_TRUE(DeleteObject(handle));
}

TEST(Drawing, DrawsWithSelectedObjects)
{
    CDC dc;
    ASSERT_TRUE(dc.CreateCompatibleDC(nullptr));
    CBitmap bitmap;
    ASSERT_TRUE(bitmap.CreateBitmap(20, 20, 1, 32, nullptr));
    CBitmap* oldBitmap = dc.SelectObject(&bitmap);
    EXPECT_EQ(dc.GetCurrentBitmap(), &bitmap);
    CBrush brush(RGB(255, 0, 0));
    CPen pen(PS_SOLID, 1, RGB(0, 255, 0));
    CBrush* oldBrush = dc.SelectObject(&brush);
    CPen* oldPen = dc.SelectObject(&pen);
    EXPECT_TRUE(dc.Rectangle(0, 0, 20, 20));
    EXPECT_EQ(dc.GetPixel(0, 0), RGB(0, 255, 0));
    EXPECT_EQ(dc.GetPixel(10, 10), RGB(255, 0, 0));
    dc.FillSolidRect(5, 5, 2, 2, RGB(1, 2, 3));
    EXPECT_EQ(dc.GetPixel(6, 6), RGB(1, 2, 3));
    EXPECT_EQ(dc.GetBkColor(), RGB(1, 2, 3));
    EXPECT_EQ(dc.SetTextColor(RGB(9, 9, 9)), RGB(0, 0, 0));
    EXPECT_EQ(dc.GetTextColor(), RGB(9, 9, 9));
    EXPECT_EQ(dc.SelectObject(oldPen), &pen);
    EXPECT_EQ(dc.SelectObject(oldBrush), &brush);
    EXPECT_EQ(dc.SelectObject(oldBitmap), &bitmap);
    LOGBRUSH look;
    EXPECT_TRUE(brush.GetLogBrush(&look));
    EXPECT_EQ(look.lbColor, RGB(255, 0, 0));
}

TEST(Drawing, FreesWhatItOwns)
{
    ExpectNothingLeftBehind(210,
                            [](int)
                            {
                                CDC dc;
                                dc.CreateCompatibleDC(nullptr);
                                CBitmap bitmap;
                                bitmap.CreateBitmap(8, 8, 1, 32, nullptr);
                                CBitmap* old = dc.SelectObject(&bitmap);
                                CRgn region, copy;
                                region.CreateEllipticRgn(0, 0, 8, 8);
                                copy.CreateRectRgn(0, 0, 0, 0);
                                EXPECT_EQ(copy.CopyRgn(&region), COMPLEXREGION);
                                EXPECT_TRUE(copy.EqualRgn(&region));
                                dc.SelectClipRgn(&region);
                                CFont font;
                                font.CreatePointFont(100, "MS Shell Dlg");
                                dc.SelectObject(old);
                                CClientDC screen(nullptr);
                                EXPECT_NE(screen.GetPixel(0, 0), CLR_INVALID);
                            });
}
