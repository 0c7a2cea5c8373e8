// Pictures for the trace receiver: the message as it arrives, the numbers, and what is dropped.
#include "diag/CSpy.h"
#include "diag/TracePicture.h"
#include "support/NothingLeft.h"
#include "support/TraceWorld.h"
#include "support/Watch.h"
#include <afxwin.h>
#include <gtest/gtest.h>
#include <cstring>

namespace
{
// A dialog with the receiver's title; keeps what it is sent.
class Receiver
{
public:
    Receiver()
    {
        struct
        {
            DLGTEMPLATE dialog = {WS_POPUP | WS_CAPTION, 0, 0, 0, 0, 50, 50};
            WORD menuClassTitle[3] = {};
        } const empty;
        window = CreateDialogIndirectParamA(nullptr, &empty.dialog, nullptr, Procedure, reinterpret_cast<LPARAM>(this));
        SetWindowTextA(window, TRACE_RECEIVER_TITLE);
    }
    ~Receiver() { DestroyWindow(window); }

    std::vector<std::string> messages;
    HWND window;

private:
    static INT_PTR CALLBACK Procedure(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam)
    {
        if (message == WM_INITDIALOG)
            SetWindowLongPtrA(dialog, DWLP_USER, lParam);
        if (message != WM_COPYDATA)
            return FALSE;
        const auto* copy = reinterpret_cast<COPYDATASTRUCT*>(lParam);
        EXPECT_EQ(copy->dwData, 0u);
        EXPECT_EQ(wParam, 0u) << "no sender";
        reinterpret_cast<Receiver*>(GetWindowLongPtrA(dialog, DWLP_USER))
            ->messages.emplace_back(static_cast<const char*>(copy->lpData), copy->cbData);
        return TRUE;
    }
};

// A number as four bytes of a message.
std::string Word(unsigned long value)
{
    return std::string(reinterpret_cast<const char*>(&value), sizeof value);
}

unsigned long WordAt(const std::string& message, std::size_t offset)
{
    unsigned long value = 0;
    std::memcpy(&value, message.data() + offset, sizeof value);
    return value;
}

unsigned long NumberOf(const std::string& message)
{
    return WordAt(message, 32);
}

std::string CommentOf(const std::string& message)
{
    return message.substr(56).c_str();
}

// 32-bit pixels that all differ.
std::string SamplePixels(int width, int height)
{
    std::string pixels;
    for (int i = 0; i < width * height; ++i)
        pixels += Word(0x00010203u * (i + 1) & 0x00FFFFFFu);
    return pixels;
}

class TracePictures : public testing::Test
{
protected:
    TracePictures()
    {
        bitmap.CreateBitmap(3, 2, 1, 32, SamplePixels(3, 2).data());
        dc.CreateCompatibleDC(nullptr);
        former = dc.SelectObject(&bitmap);
    }
    ~TracePictures() override { dc.SelectObject(former); }

    void Send(bool numbered = false) { spy.OutputData("Label", 7, &bitmap, "comment", numbered); }
    void SendRectangle() { spy.OutputData("Label", 7, &dc, 1, 1, 2, 2, "comment", false); }

    TraceWorld world{4};
    CSpy spy;
    CBitmap bitmap;
    CDC dc;
    CBitmap* former;
};
} // namespace

TEST_F(TracePictures, TheWholeMessage)
{
    BYTE mono[] = {0xAA, 0x80, 0x55, 0x00};
    const std::string longText(100000, 'c');
    Receiver receiver;
    Send();
    ASSERT_EQ(receiver.messages.size(), 1u);
    unsigned long number = NumberOf(receiver.messages[0]);
    const auto expect = [&](const char* givenLabel, const CString& givenComment, int width, int height,
                            int bitsPerPixel, int lineBytes, const std::string& pixels)
    {
        const std::string label = givenLabel ? givenLabel : "", comment = static_cast<LPCSTR>(givenComment);
        SCOPED_TRACE(label.substr(0, 20));
        CBitmap picture;
        ASSERT_TRUE(picture.CreateBitmap(width, height, 1, bitsPerPixel, pixels.data()));
        spy.OutputData(givenLabel, -5, &picture, givenComment, false);
        const auto labelOffset = static_cast<unsigned long>(56 + comment.size() + 1);
        const auto pixelOffset = static_cast<unsigned long>(labelOffset + label.size() + 1);
        const unsigned long pixelBytes = height * lineBytes;
        const std::string expected = Word(0) + Word(width) + Word(height) + Word(lineBytes) +
                                     Word(1u | static_cast<unsigned>(bitsPerPixel) << 16) + Word(0) + Word(0) +
                                     Word(0) + Word(++number) + Word(static_cast<unsigned long>(-5)) + Word(56) +
                                     Word(labelOffset) + Word(pixelOffset) + Word(pixelBytes) + comment + '\0' + label +
                                     '\0' + pixels;
        EXPECT_EQ(testing::PrintToString(receiver.messages.back()), testing::PrintToString(expected));
    };
    expect("Tank", "after the fill", 3, 2, 32, 12, SamplePixels(3, 2));
    expect("", "", 1, 1, 32, 4, SamplePixels(1, 1));
    expect("mono", "9 x 2", 9, 2, 1, 2, std::string(reinterpret_cast<char*>(mono), 4));
    expect(nullptr, CString("cut\0here", 8), 1, 1, 32, 4, SamplePixels(1, 1));
    expect(longText.c_str(), longText.c_str(), 1, 1, 32, 4, SamplePixels(1, 1));
    EXPECT_EQ(world.Log(), "") << "pictures write no record";
}

TEST_F(TracePictures, EveryPictureTakesANumberAlsoWhenNobodyReceivesIt)
{
    unsigned long number = 0;
    {
        Receiver receiver;
        Send(true);
        number = NumberOf(receiver.messages.at(0));
        EXPECT_EQ(CommentOf(receiver.messages[0]), "GT #" + std::to_string(number) + ": comment");
        EXPECT_EQ(WordAt(receiver.messages[0], 44), 56 + CommentOf(receiver.messages[0]).size() + 1);
    }
    Send(true); // nobody is there
    Receiver receiver;
    Send(false); // numbers count, though not shown
    spy.OutputData("no picture", 7, static_cast<CBitmap*>(nullptr), "takes no number", true);
    spy.OutputData("no picture", 7, static_cast<CDC*>(nullptr), 0, 0, 1, 1, "takes no number", true);
    {
        TraceWorld off(5);
        CSpy silent;
        silent.OutputData("off", 7, &bitmap, "takes no number", true);
    }
    CSpy other; // shares the numbers
    other.OutputData("Label", 7, &bitmap, "comment", true);
    ASSERT_EQ(receiver.messages.size(), 2u);
    EXPECT_EQ(CommentOf(receiver.messages[0]), "comment");
    EXPECT_EQ(NumberOf(receiver.messages[0]), number + 2);
    EXPECT_EQ(CommentOf(receiver.messages[1]), "GT #" + std::to_string(number + 3) + ": comment");
}

TEST_F(TracePictures, PixelsOfADibSectionAsTheSystemGivesThem)
{
    // Its lines are padded to four bytes, those that the system gives to two.
    BITMAPINFO info = {};
    info.bmiHeader = {sizeof info.bmiHeader, 3, 2, 1, 24, BI_RGB, 0, 0, 0, 0, 0};
    void* bits = nullptr;
    CBitmap dib;
    dib.Attach(CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &bits, nullptr, 0));
    std::memcpy(bits, "bbbbbbbbb...ttttttttt...", 24); // bottom line first
    Receiver receiver;
    spy.OutputData("dib", 0, &dib, "", false);
    ASSERT_EQ(receiver.messages.size(), 1u);
    const std::string& message = receiver.messages[0];
    const std::string pixels = message.substr(WordAt(message, 48));
    EXPECT_EQ(WordAt(message, 52), 24u);
    ASSERT_EQ(pixels.size(), 24u);
    EXPECT_EQ(pixels.substr(0, 9) + pixels.substr(10, 9), "tttttttttbbbbbbbbb");
    EXPECT_EQ(pixels.substr(20), std::string(4, '\0')) << "left-overs of this process's memory";
}

TEST_F(TracePictures, ARectangleOfADeviceContext)
{
    Receiver receiver;
    spy.OutputData("part", 9, &dc, 1, 0, 2, 2, "of it", false);
    ASSERT_EQ(receiver.messages.size(), 1u);
    const std::string& message = receiver.messages[0];
    const std::string all = SamplePixels(3, 2);
    EXPECT_EQ(message.substr(4, 8), Word(2) + Word(2));
    EXPECT_EQ(WordAt(message, 36), 9u);
    EXPECT_EQ(message.substr(56), std::string("of it\0part\0", 11) + all.substr(4, 8) + all.substr(16, 8));
}

TEST_F(TracePictures, AThousandPicturesLeaveNothingBehind)
{
    Receiver receiver;
    ExpectNothingLeftBehind(
        [&](int)
        {
            Send();
            SendRectangle();
        });
    EXPECT_EQ(receiver.messages.size(), 2000u);
}

TEST_F(TracePictures, WhatFailsSendsNothingAndLeavesNothingBehind)
{
    const HMODULE library = LibraryUnderTest(), framework = GetModuleHandleA("tvkframe.dll");
    Receiver receiver;
    Send();
    unsigned long number = NumberOf(receiver.messages.at(0));
    const auto expectNextNumber = [&](bool oneIsMissing)
    {
        EXPECT_EQ(receiver.messages.size(), 1u);
        SendRectangle();
        number += oneIsMissing ? 2 : 1;
        EXPECT_EQ(NumberOf(receiver.messages.back()), number);
        receiver.messages.pop_back();
    };
    const auto expectNothing = [&](const char* function, RefuseFunction refuse, HMODULE caller, bool takesNumber)
    {
        SCOPED_TRACE(function);
        const NoDrawingObjectLeft nothingLeft;
        {
            const auto refused = refuse(function, 1, caller);
            SendRectangle();
        }
        expectNextNumber(takesNumber);
    };
    expectNothing(REFUSED(CreateCompatibleBitmap), framework, false);
    expectNothing(REFUSED(CreateCompatibleDC), framework, false);
    expectNothing(REFUSED(SelectObject), library, false);
    expectNothing(REFUSED(BitBlt), framework, false);
    expectNothing(REFUSED(FindWindowA), library, true);
    expectNothing(REFUSED(GetObjectA), library, true);
    expectNothing(REFUSED(GetBitmapBits), library, true);
    {
        const IatPatch huge(
            library, "GetObjectA",
            +[](HANDLE, int, void* place) -> int
            {
                *static_cast<BITMAP*>(place) = {0, 0x7FFFFFFF, 0x7FFFFFFF, 0x7FFFFFFF, 4, 32, nullptr};
                return sizeof(BITMAP);
            });
        Send();
    }
    expectNextNumber(true);
    {
        const Watch<decltype(&FindWindowA)> gone("FindWindowA", 1, library, Receiver().window);
        Send();
    }
    expectNextNumber(true);
}
