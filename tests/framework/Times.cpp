// Times and differences of times.
#include <afx.h>
#include <gtest/gtest.h>
#include <array>

TEST(Time, ComesApartAsItWasPutTogether)
{
    const CTime time(2024, 2, 29, 13, 5, 9);
    EXPECT_EQ((std::array{time.GetYear(), time.GetMonth(), time.GetDay(), time.GetHour(), time.GetMinute(),
                          time.GetSecond()}),
              (std::array{2024, 2, 29, 13, 5, 9}));
    EXPECT_EQ(time.GetDayOfWeek(), 5); // a Thursday
    SYSTEMTIME system;
    ASSERT_TRUE(time.GetAsSystemTime(system));
    EXPECT_EQ(CTime(system), time);
    EXPECT_EQ(CTime(MAKEWORD(0x5D, 0x58), MAKEWORD(0xA4, 0x68)), CTime(2024, 2, 29, 13, 5, 8)) << "two-second steps";
    const FILETIME file = {0xD53E8000, 0x019DB1DE}; // the first second of 1970
    EXPECT_EQ(CTime(file).GetTime(), 0);
}

TEST(Time, Formats)
{
    const CTime time(86400 + 3661);
    EXPECT_EQ(time.FormatGmt("%Y-%m-%d %H:%M:%S"), "1970-01-02 01:01:01");
    EXPECT_EQ(time.FormatGmt("") + time.FormatGmt("%%"), "%");
    const CString filler('x', 1000); // longer than the buffer it begins with
    EXPECT_EQ(time.FormatGmt(filler + "%H"), filler + "01");
    EXPECT_EQ(CTime(2024, 1, 2, 3, 4, 5).Format("%d.%m.%y"), "02.01.24");
    EXPECT_EQ(CTimeSpan(3, 4, 5, 6).Format("%D|%H|%M|%S|%%"), "3|04|05|06|%");
}

TEST(Time, Arithmetic)
{
    const CTime noon(2023, 6, 1, 12, 0, 0);
    const CTimeSpan span(1, 2, 3, 4);
    EXPECT_EQ((std::array<LONGLONG, 3>{span.GetTotalSeconds(), span.GetTotalHours(), span.GetHours()}),
              (std::array<LONGLONG, 3>{93784, 26, 2}));
    EXPECT_TRUE((noon + span) - noon == span && noon + span - span == noon);
    EXPECT_TRUE(noon - span < noon && noon + span > noon && noon <= noon && noon != noon + span);
    EXPECT_LE((CTime::GetCurrentTime() - CTime(time(nullptr))).GetTotalSeconds(), 1);
}
