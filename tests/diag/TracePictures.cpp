// Pictures for the trace receiver: the message as it arrives, the numbers, and what is dropped.
#include "diag/CSpy.h"
#include "diag/TracePicture.h"
#include "support/NothingLeft.h"
#include "support/IatPatch.h"
#include "support/TestProduct.h"
#include "support/TraceWorld.h"
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
    Receiver(const Receiver&) = delete;
    Receiver& operator=(const Receiver&) = delete;

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

// The comment of a message.
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
    const struct
    {
        const char *label, *comment;
        int width, height, bitsPerPixel, lineBytes;
        std::string pixels;
    } cases[] = {
        {"Tank", "after the fill", 3, 2, 32, 12, SamplePixels(3, 2)},
        {"", "", 1, 1, 32, 4, SamplePixels(1, 1)},
        {"mono", "9 x 2", 9, 2, 1, 2, std::string(reinterpret_cast<char*>(mono), 4)},
    };
    Receiver receiver;
    Send();
    ASSERT_EQ(receiver.messages.size(), 1u);
    unsigned long number = WordAt(receiver.messages[0], 32);
    for (const auto& row : cases)
    {
        SCOPED_TRACE(row.label);
        CBitmap picture;
        ASSERT_TRUE(picture.CreateBitmap(row.width, row.height, 1, row.bitsPerPixel, row.pixels.data()));
        spy.OutputData(row.label, -5, &picture, row.comment, false);
        const unsigned long labelOffset = static_cast<unsigned long>(56 + std::strlen(row.comment) + 1);
        const unsigned long pixelOffset = static_cast<unsigned long>(labelOffset + std::strlen(row.label) + 1);
        const unsigned long pixelBytes = row.height * row.lineBytes;
        const std::string expected = Word(0) + Word(row.width) + Word(row.height) + Word(row.lineBytes) +
                                     Word(1u | static_cast<unsigned>(row.bitsPerPixel) << 16) + Word(0) + Word(0) +
                                     Word(0) + Word(++number) + Word(static_cast<unsigned long>(-5)) + Word(56) +
                                     Word(labelOffset) + Word(pixelOffset) + Word(pixelBytes) + row.comment + '\0' +
                                     row.label + '\0' + row.pixels;
        EXPECT_EQ(testing::PrintToString(receiver.messages.back()), testing::PrintToString(expected));
    }
    EXPECT_EQ(world.Log(), "") << "pictures write no record";
}

TEST_F(TracePictures, EveryPictureTakesANumberAlsoWhenNobodyReceivesIt)
{
    unsigned long number = 0;
    {
        Receiver receiver;
        Send(true);
        number = WordAt(receiver.messages.at(0), 32);
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
    EXPECT_EQ(WordAt(receiver.messages[0], 32), number + 2);
    EXPECT_EQ(CommentOf(receiver.messages[1]), "GT #" + std::to_string(number + 3) + ": comment");
}

TEST_F(TracePictures, TextsOfAnyKind)
{
    Receiver receiver;
    spy.OutputData(nullptr, 0, &bitmap, CString("cut\0here", 8), false);
    const std::string longText(100000, 'c');
    spy.OutputData(longText.c_str(), 0, &bitmap, longText.c_str(), false);
    ASSERT_EQ(receiver.messages.size(), 2u);
    EXPECT_EQ(receiver.messages[0].substr(56, 5), std::string("cut\0\0", 5));
    EXPECT_EQ(receiver.messages[1].substr(56), longText + '\0' + longText + '\0' + SamplePixels(3, 2));
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

TEST_F(TracePictures, WhatFailsSendsNothingAndLeavesNothingBehind)
{
    const HMODULE framework = GetModuleHandleA("tvkframe.dll");
    static HWND gone;
    gone = Receiver().window;
    const auto huge = +[](HANDLE, int, void* place) -> int
    {
        *static_cast<BITMAP*>(place) = {0, 0x7FFFFFFF, 0x7FFFFFFF, 0x7FFFFFFF, 4, 32, nullptr};
        return sizeof(BITMAP);
    };
    const auto as = [](auto* function) { return reinterpret_cast<void (*)()>(function); };
    const struct
    {
        const char* function;
        HMODULE module;
        void (*replacement)();
        bool takesNumber;
    } cases[] = {
        {"CreateCompatibleBitmap", framework, as(+[](HDC, int, int) -> HBITMAP { return nullptr; }), false},
        {"CreateCompatibleDC", framework, as(+[](HDC) -> HDC { return nullptr; }), false},
        {"SelectObject", LibraryUnderTest(), as(+[](HDC, HGDIOBJ) -> HGDIOBJ { return nullptr; }), false},
        {"BitBlt", framework, as(+[](HDC, int, int, int, int, HDC, int, int, DWORD) -> BOOL { return FALSE; }), false},
        {"FindWindowA", LibraryUnderTest(), as(+[](const char*, const char*) -> HWND { return nullptr; }), true},
        {"FindWindowA", LibraryUnderTest(), as(+[](const char*, const char*) -> HWND { return gone; }), true},
        {"GetObjectA", LibraryUnderTest(), as(+[](HANDLE, int, void*) -> int { return 0; }), true},
        {"GetObjectA", LibraryUnderTest(), as(huge), true},
        {"GetBitmapBits", LibraryUnderTest(), as(+[](HBITMAP, LONG, void*) -> LONG { return 0; }), true},
    };
    Receiver receiver;
    Send();
    unsigned long number = WordAt(receiver.messages.at(0), 32);
    constexpr int Rounds = 40;
    for (const auto& row : cases)
    {
        SCOPED_TRACE(row.function);
        receiver.messages.clear();
        {
            const IatPatch patch(row.module, row.function, row.replacement);
            ExpectNothingLeftBehind(Rounds, [&](int) { SendRectangle(); });
        }
        EXPECT_TRUE(receiver.messages.empty());
        Send();
        ASSERT_EQ(receiver.messages.size(), 1u);
        number += row.takesNumber ? Rounds + 1 : 1;
        EXPECT_EQ(WordAt(receiver.messages[0], 32), number);
    }
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
