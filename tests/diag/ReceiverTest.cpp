// The trace receiver as its users know it: the program is started, sent pictures, and its files are read.
#include "diag/CSpy.h"
#include "diag/TracePicture.h"
#include "support/TestProduct.h"
#include "support/TraceWorld.h"
#include "system/internal/Handle.h"
#include <afxwin.h>
#include <gtest/gtest.h>
#include <cstddef>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <process.h>

namespace
{
const std::string Folder = "c:\\trace pictures";

class ReceiverTest : public testing::Test
{
protected:
    ReceiverTest() { CreateDirectoryA(Folder.c_str(), nullptr); }
    ~ReceiverTest() override
    {
        TerminateProcess(m_process.Get(), 1); // in case that it did not end by itself
        WaitForSingleObject(m_process.Get(), 10000);
        std::filesystem::remove_all(Folder);
    }

    void Start(int count)
    {
        const char* const program = "..\\..\\bin\\tracereceiver.exe";
        const std::string folder = "\"" + Folder + "\"", number = std::to_string(count);
        m_process.Reset(reinterpret_cast<HANDLE>(
            _spawnl(_P_NOWAIT, program, program, "--save", folder.c_str(), "--count", number.c_str(), nullptr)));
        for (int i = 0; i < 500 && !m_window; ++i, Sleep(20))
            m_window = FindWindowA(TRACE_RECEIVER_CLASS, TRACE_RECEIVER_TITLE);
        ASSERT_TRUE(m_window);
    }

    // The exit code of the receiver, which ends by itself.
    DWORD Finish()
    {
        DWORD code = ~0u;
        EXPECT_EQ(WaitForSingleObject(m_process.Get(), 10000), WAIT_OBJECT_0);
        GetExitCodeProcess(m_process.Get(), &code);
        return code;
    }

    // What the receiver answers: 1 for a picture taken.
    DWORD_PTR Send(const std::string& data, ULONG_PTR tag = 0) const
    {
        std::string copy = data;
        COPYDATASTRUCT message = {tag, static_cast<DWORD>(copy.size()), copy.data()};
        DWORD_PTR answer = 99;
        SendMessageTimeoutA(m_window, WM_COPYDATA, 0, reinterpret_cast<LPARAM>(&message), 0, 10000, &answer);
        return answer;
    }

private:
    tvk::KernelHandle m_process;
    HWND m_window = nullptr;
};

// A message with the comment "c", the label "l" and a picture of the given form.
std::string Message(int width, int height, int bitsPerPixel, const std::string& pixels)
{
    TracePictureHeader header = {};
    header.bitmap = {0,      width, height, (width * bitsPerPixel + 15) / 16 * 2, 1, static_cast<WORD>(bitsPerPixel),
                     nullptr};
    header.commentOffset = sizeof header;
    header.labelOffset = sizeof header + 2;
    header.pixelOffset = sizeof header + 4;
    header.pixelBytes = static_cast<unsigned long>(pixels.size());
    return std::string(reinterpret_cast<const char*>(&header), sizeof header) + std::string("c\0l\0", 4) + pixels;
}

// The colours of a bitmap file, "RRGGBB RRGGBB" line by line from the top.
std::string ColoursOf(const std::string& file)
{
    const std::string bytes = FileText(Folder + "\\" + file);
    if (bytes.size() < sizeof(BITMAPFILEHEADER) + sizeof(BITMAPINFOHEADER))
        return "no such file";
    const auto& start = *reinterpret_cast<const BITMAPFILEHEADER*>(bytes.data());
    BITMAPINFOHEADER info; // lies at no multiple of four
    std::memcpy(&info, bytes.data() + sizeof start, sizeof info);
    EXPECT_EQ(start.bfType, 0x4D42);
    EXPECT_EQ(start.bfSize, bytes.size());
    EXPECT_EQ(info.biBitCount, 24);
    const LONG lineBytes = (info.biWidth * 3 + 3) / 4 * 4;
    EXPECT_EQ(start.bfOffBits + static_cast<DWORD>(lineBytes * info.biHeight), bytes.size());
    std::string text;
    for (LONG y = info.biHeight - 1; y >= 0; --y)
        for (LONG x = 0; x < info.biWidth; ++x)
        {
            const auto* pixel =
                reinterpret_cast<const unsigned char*>(bytes.data()) + start.bfOffBits + y * lineBytes + x * 3;
            char colour[8];
            std::snprintf(colour, sizeof colour, "%02X%02X%02X", pixel[2], pixel[1], pixel[0]);
            text += (text.empty() ? "" : x ? " " : "\n") + std::string(colour);
        }
    return text;
}
} // namespace

TEST_F(ReceiverTest, SavesWhatATracedProcessSendsAndEnds)
{
    const TraceWorld world(4);
    CSpy spy;
    CBitmap bitmap;
    const DWORD pixels[] = {0x112233, 0x445566, 0x778899, 0xAABBCC, 0xDDEEFF, 0x000001};
    ASSERT_TRUE(bitmap.CreateBitmap(3, 2, 1, 32, pixels));
    std::ofstream(Folder + "\\0001-Ink_tank_____.bmp") << "of an earlier run";
    Start(2);
    spy.OutputData("Ink tank\\../\"", 1, &bitmap, "comment", true);
    spy.OutputData("", 1, &bitmap, "", true);
    EXPECT_EQ(Finish(), 0u);
    EXPECT_EQ(ColoursOf("0001-Ink_tank_____.bmp"), "no such file");
    EXPECT_EQ(ColoursOf("0002-Ink_tank_____.bmp"), "112233 445566 778899\nAABBCC DDEEFF 000001");
    EXPECT_EQ(ColoursOf("0003-.bmp"), "112233 445566 778899\nAABBCC DDEEFF 000001");
}

TEST_F(ReceiverTest, ReadsEveryDepth)
{
    const struct
    {
        int width, height, bitsPerPixel;
        std::string pixels;
        const char* colours;
    } cases[] = {
        {9, 1, 1, "\x55\x80", "000000 FFFFFF 000000 FFFFFF 000000 FFFFFF 000000 FFFFFF FFFFFF"},
        {3, 1, 4, "\xF0\x50", "FFFFFF 000000 555555"},
        {1, 2, 8, std::string("\x80\0\xFF\0", 4), "808080\nFFFFFF"},
        {3, 1, 16, std::string("\x00\x7C\xE0\x03\x1F\x00", 6), "FF0000 00FF00 0000FF"},
        {1, 2, 24, std::string("\x01\x02\x03\0\x04\x05\x06\0", 8), "030201\n060504"},
        {1, 1, 32, "\x01\x02\x03\xFF", "030201"},
    };
    Start(static_cast<int>(std::size(cases)));
    for (const auto& row : cases)
        EXPECT_EQ(Send(Message(row.width, row.height, row.bitsPerPixel, row.pixels)), 1u) << row.bitsPerPixel;
    EXPECT_EQ(Finish(), 0u);
    int number = 0;
    for (const auto& row : cases)
        EXPECT_EQ(ColoursOf("000" + std::to_string(++number) + "-l.bmp"), row.colours) << row.bitsPerPixel;
}

TEST_F(ReceiverTest, RefusesFaultyMessagesAndLivesOn)
{
    using Header = TracePictureHeader;
    constexpr DWORD head = sizeof(Header); // comment, label and pixels follow in steps of two
    const std::string good = Message(2, 2, 32, std::string(16, '\x40'));
    Start(1);
    for (const size_t size : {size_t{0}, sizeof(Header) - 1, sizeof(Header), good.size() - 1})
        EXPECT_EQ(Send(good.substr(0, size)), 0u) << size << " bytes";
    EXPECT_EQ(Send(good, 1), 0u);
    const auto expectRefused = [&](size_t offset, std::initializer_list<DWORD> values)
    {
        for (const DWORD value : values)
        {
            std::string faulty = good;
            std::memcpy(faulty.data() + offset, &value, sizeof value);
            EXPECT_EQ(Send(faulty), 0u) << "at " << offset << ": " << value;
        }
    };
    expectRefused(offsetof(Header, commentOffset), {0, head + 2, 0xFFFFFFFF});
    expectRefused(offsetof(Header, labelOffset), {head + 4, head + 1});
    expectRefused(offsetof(Header, pixelOffset), {head + 3, 0xFFFFFFFF});
    expectRefused(offsetof(Header, pixelBytes), {17, 15, 0xFFFFFFFF});
    expectRefused(offsetof(Header, bitmap.bmWidth), {0, 3, 0x7FFFFFFF});
    expectRefused(offsetof(Header, bitmap.bmHeight), {0xFFFFFFFE, 3, 0x10000000});
    expectRefused(offsetof(Header, bitmap.bmPlanes), {32 << 16 | 2, 7 << 16 | 1, 0 << 16 | 1}); // and the depth
    EXPECT_EQ(Send(good), 1u);
    EXPECT_EQ(Finish(), 0u);
    EXPECT_EQ(ColoursOf("0001-l.bmp"), "404040 404040\n404040 404040");
}
